#include "text/view/PrintLayout.h"

#include <algorithm>

namespace quill {

PrintLayout::PrintLayout(const CCrystalTextBuffer& buffer, const ColumnMetrics& metrics, int64_t width,
                         int32_t rowsPerPage)
    : m_buffer(buffer), m_metrics(metrics), m_width(width), m_rowsPerPage(std::max(1, rowsPerPage)) {
  int32_t rowOfPage = 0;
  for (Row row = RowAt(0, 0, 0); row.line < buffer.LineCount(); row = Next(row)) {
    if (rowOfPage == 0) m_pages.push_back(row);
    rowOfPage = (rowOfPage + 1) % m_rowsPerPage;
  }
  if (m_pages.empty()) m_pages.push_back({0, 0, 0, 0});
}

PrintLayout::Row PrintLayout::RowAt(int32_t line, int32_t start, int64_t x) const {
  Row row{line, start, start, x};
  if (line >= m_buffer.LineCount()) return row;
  const std::string_view rest = m_buffer.Line(line).substr(static_cast<size_t>(start));
  int64_t end = x;
  const int32_t fitting = m_metrics.CountUpTo(rest, end, x + m_width, false);
  row.end = start + (rest.empty() ? 0 : std::max(1, fitting));
  return row;
}

PrintLayout::Row PrintLayout::Next(const Row& row) const {
  if (row.end >= m_buffer.LineLength(row.line)) return RowAt(row.line + 1, 0, 0);
  const std::string_view printed = m_buffer.Line(row.line).substr(static_cast<size_t>(row.start),
                                                                  static_cast<size_t>(row.end - row.start));
  return RowAt(row.line, row.end, m_metrics.Walk(printed, row.x));
}

std::vector<PrintLayout::Row> PrintLayout::Rows(int32_t page) const {
  std::vector<Row> rows;
  if (m_buffer.LineCount() == 0) return rows;
  Row row = m_pages[static_cast<size_t>(page)];
  while (row.line < m_buffer.LineCount() && static_cast<int32_t>(rows.size()) < m_rowsPerPage) {
    rows.push_back(row);
    row = Next(row);
  }
  return rows;
}

}  // namespace quill
