#include "text/view/WidthIndex.h"

#include <algorithm>

namespace quill {

void WidthIndex::Restart() {
  m_width = 0;
  m_widest = -1;
  m_next = 0;
}

void WidthIndex::MeasureLine(int32_t line) {
  const int64_t length = m_buffer.LineLength(line);
  const int64_t widestCharacter = std::max<int64_t>(m_metrics.TabWidth(), m_metrics.WidestAdvance());
  if (length * widestCharacter <= m_width) return;
  const int64_t width = m_metrics.Walk(m_buffer.Line(line), 0);
  if (width > m_width || line == m_widest) {
    m_width = width;
    m_widest = line;
  }
}

void WidthIndex::Measure(int32_t first, int32_t last) {
  last = std::min(last, m_buffer.LineCount() - 1);
  for (int32_t line = std::max(first, 0); line <= last; ++line) MeasureLine(line);
}

bool WidthIndex::Continue(int64_t budget) {
  const int32_t count = m_buffer.LineCount();
  while (m_next < count && budget > 0) {
    // A skipped line costs about as much as a few characters.
    budget -= 4 + (m_buffer.LineLength(m_next) >> 3);
    MeasureLine(m_next++);
  }
  return m_next < count;
}

void WidthIndex::OnTextChange(const TextChange& change) {
  const TextRange& range = change.range;
  const int32_t lines = range.end.line - range.start.line;
  if (m_widest >= range.start.line) {
    if (m_widest > range.start.line && change.inserted) {
      m_widest += lines;
    } else if (m_widest > range.end.line) {
      m_widest -= lines;
    } else if (!change.inserted || lines > 0) {
      Restart();  // the widest line became shorter or went away: others must be looked at again
      return;
    }
  }
  // A line that lost characters and was not the widest one still is not.
  if (!change.inserted && lines == 0 && m_next > range.start.line) return;
  constexpr int32_t kMeasureAtOnce = 1000;
  int32_t last = range.start.line;
  if (m_next > range.start.line) {
    if (!change.inserted) {
      m_next = std::max(range.start.line + 1, m_next - lines);
    } else if (lines <= kMeasureAtOnce) {
      m_next += lines;
      last = range.end.line;
    } else {
      m_next = range.start.line;
    }
  }
  Measure(range.start.line, last);
}

}  // namespace quill
