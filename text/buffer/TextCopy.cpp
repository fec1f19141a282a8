#include "text/buffer/TextCopy.h"

#include "text/buffer/CrystalTextBuffer.h"

namespace quill {
namespace {

constexpr size_t kReadableBehind = 16;

}  // namespace

TextCopy::TextCopy(const CCrystalTextBuffer& buffer) {
  const int32_t lines = buffer.LineCount();
  size_t size = kReadableBehind;
  for (int32_t line = 0; line < lines; ++line) size += buffer.Line(line).size();
  m_text.reserve(size);
  m_starts.reserve(static_cast<size_t>(lines) + 1);
  for (int32_t line = 0; line < lines; ++line) {
    m_starts.push_back(m_text.size());
    m_text += buffer.Line(line);
  }
  m_starts.push_back(m_text.size());
  m_text.append(kReadableBehind, '\0');
}

}  // namespace quill
