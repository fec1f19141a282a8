#include "text/parse/RowColours.h"

#include "text/buffer/TextCopy.h"

namespace quill {

void RowColours::GoTo(int32_t line) {
  while (m_line < line) {
    const std::string_view text = m_text.Line(m_line);
    if (!text.empty()) {
      const ScanPoint end = Skim(text.data(), m_point, static_cast<int32_t>(text.size()));
      m_state = end.state & parse_state::kAcrossLines;
    }
    ++m_line;
    m_point = StartOfLine(m_state);
    m_blocks.clear();
    m_through = 0;
  }
}

std::span<const TextBlock> RowColours::Blocks(int32_t line, int32_t start, int32_t end) {
  GoTo(line);
  // A word that is longer than a row was coloured whole with its first one.
  if (end <= m_through) return m_blocks;
  const std::string_view text = m_text.Line(line);
  m_point = Skim(text.data(), m_point, start);
  ScanPoint point = m_point;
  m_blocks.resize(static_cast<size_t>(MostBlocks(end - start)) + 2);
  int32_t count = 0;
  ColourColumns(text, m_words, point, end, m_blocks.data(), &count);
  m_blocks.resize(static_cast<size_t>(count));
  m_through = point.column;
  return m_blocks;
}

}  // namespace quill
