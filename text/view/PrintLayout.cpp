#include "text/view/PrintLayout.h"

#include <algorithm>

namespace quill {

PrintLayout::PrintLayout(const TextCopy& text, const ColumnMetrics& metrics, int64_t width,
                         int32_t rowsPerPage)
    : m_text(text),
      m_metrics(metrics),
      m_width(width),
      m_rowsPerPage(std::max(1, rowsPerPage)),
      m_next(RowAt(0, 0, 0)),
      m_pages{m_next} {}

bool PrintLayout::Continue(int64_t budget) {
  for (; m_next.line < m_text.LineCount() && budget > 0; m_next = Next(m_next)) {
    budget -= 1 + m_next.end - m_next.start;
    if (m_rowOfPage == m_rowsPerPage) {
      m_pages.push_back(m_next);
      m_rowOfPage = 0;
    }
    ++m_rowOfPage;
  }
  return m_next.line < m_text.LineCount();
}

PrintLayout::Row PrintLayout::RowAt(int32_t line, int32_t start, int64_t x) const {
  Row row{line, start, start, x};
  if (line >= m_text.LineCount()) return row;
  const std::string_view rest = m_text.Line(line).substr(static_cast<size_t>(start));
  int64_t end = x;
  const int32_t fitting = m_metrics.CountUpTo(rest, end, x + m_width, false);
  row.end = start + (rest.empty() ? 0 : std::max(1, fitting));
  return row;
}

PrintLayout::Row PrintLayout::Next(const Row& row) const {
  if (row.end >= m_text.LineLength(row.line)) return RowAt(row.line + 1, 0, 0);
  const std::string_view printed =
      m_text.Line(row.line).substr(static_cast<size_t>(row.start), static_cast<size_t>(row.end - row.start));
  return RowAt(row.line, row.end, m_metrics.Walk(printed, row.x));
}

std::vector<PrintLayout::Row> PrintLayout::Rows(int32_t page) const {
  std::vector<Row> rows;
  Row row = m_pages[static_cast<size_t>(page)];
  while (row.line < m_text.LineCount() && static_cast<int32_t>(rows.size()) < m_rowsPerPage) {
    rows.push_back(row);
    row = Next(row);
  }
  return rows;
}

}  // namespace quill
