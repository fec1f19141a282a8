#pragma once
#include <QObject>
#include <functional>

#include "text/buffer/BufferView.h"

namespace quill {

class CCrystalTextBuffer;
class CCrystalTextView;

/// Tells of every change of the text that a view shows, and of the view's getting another text.
class TextWatch : public QObject, private BufferView {
 public:
  struct Callbacks {
    /// Arguments as in `BufferView::OnBufferUpdate`.
    std::function<void(const TextChange* change, uint32_t hints, int32_t line)> changed;
    std::function<void()> replaced;
  };

  TextWatch(CCrystalTextView& view, Callbacks callbacks);
  ~TextWatch() override;

 private:
  void Follow(CCrystalTextBuffer* buffer);
  void OnBufferUpdate(BufferView* source, const TextChange* change, uint32_t hints, int32_t line) override;
  void OnUndoGroupClosed(int32_t, std::string_view) override {}

  Callbacks m_callbacks;
  CCrystalTextBuffer* m_buffer = nullptr;
};

}  // namespace quill
