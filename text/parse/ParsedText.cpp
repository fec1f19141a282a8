#include "text/parse/ParsedText.h"

#include "text/buffer/CrystalTextBuffer.h"

namespace quill {

std::shared_ptr<ParsedText> ParsedText::Of(CCrystalTextBuffer& buffer) {
  auto parsed = std::dynamic_pointer_cast<ParsedText>(buffer.FirstObserver());
  if (parsed == nullptr) {
    parsed = std::make_shared<ParsedText>(buffer);
    buffer.SetFirstObserver(parsed);
  }
  return parsed;
}

void ParsedText::OnBufferUpdate(const BufferObserver*, const TextChange* change, uint32_t hints,
                                int32_t line) {
  m_states.OnTextChange(change, hints, line);
  m_folds.OnTextChange(change, hints, line);
  m_settler.OnTextChange(change, hints, line);
  m_depths.OnTextChange(change, hints, line);
  m_braces.OnTextChange(change, hints, line);
}

}  // namespace quill
