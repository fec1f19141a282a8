#include "text/parse/LongLine.h"

#include <algorithm>

#include "text/buffer/CrystalTextBuffer.h"

namespace quill {

void LongLine::OnTextChange(const TextChange* change, uint32_t hints, int32_t) {
  if ((hints & hint::kReset) != 0) m_line = -1;
  if (change == nullptr || m_line < 0) return;
  const TextPosition start = change->range.start;
  if (start.line == m_line) {
    // The point at the changed column itself looked no further than the character before it.
    m_points.resize(std::min(m_points.size(), static_cast<size_t>(start.character / m_stride)));
  } else if (start.line < m_line && change->range.end.line > start.line) {
    m_line = -1;
  }
}

const std::vector<TextBlock>& LongLine::Blocks(const WordClasses& words, int32_t line, uint32_t state,
                                               int32_t from, int32_t to) {
  if (line != m_line || state != m_state) {
    m_points.clear();
    m_line = line;
    m_state = state;
  }
  const std::string_view text = m_buffer.Line(line);
  to = std::min(to, static_cast<int32_t>(text.size()));
  from = std::clamp(from, 0, to);
  const auto wanted = static_cast<size_t>(from / m_stride);
  ScanPoint point = m_points.empty() ? StartOfLine(state) : m_points.back();
  while (m_points.size() < wanted) {
    point = Skim(text.data(), point, static_cast<int32_t>(m_points.size() + 1) * m_stride);
    m_points.push_back(point);
  }
  point = wanted == 0 ? StartOfLine(state) : m_points[wanted - 1];
  m_blocks.resize(static_cast<size_t>(MostBlocks(to - point.column)) + 2);
  int32_t count = 0;
  ColourColumns(text, words, point, to, m_blocks.data(), &count);
  m_blocks.resize(static_cast<size_t>(count));
  return m_blocks;
}

}  // namespace quill
