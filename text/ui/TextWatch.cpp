#include "text/ui/TextWatch.h"

#include "text/ui/CrystalTextView.h"

namespace quill {

TextWatch::TextWatch(CCrystalTextView& view, Callbacks callbacks) : m_callbacks(std::move(callbacks)) {
  Follow(view.Buffer());
  connect(&view, &CCrystalTextView::BufferReplaced, this, [this, &view] {
    Follow(view.Buffer());
    m_callbacks.replaced();
  });
  connect(&view, &QObject::destroyed, this, [this] { Follow(nullptr); });
}

TextWatch::~TextWatch() {
  Follow(nullptr);
}

void TextWatch::Follow(CCrystalTextBuffer* buffer) {
  if (m_buffer != nullptr) m_buffer->RemoveView(this);
  m_buffer = buffer;
  if (buffer != nullptr) buffer->AddView(this);
}

void TextWatch::OnBufferUpdate(const BufferObserver*, const TextChange* change, uint32_t hints,
                               int32_t line) {
  m_callbacks.changed(change, hints, line);
}

}  // namespace quill
