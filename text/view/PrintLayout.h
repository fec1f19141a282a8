#pragma once
#include <cstdint>
#include <vector>

#include "settings/ProfileTable.h"
#include "text/buffer/TextCopy.h"
#include "text/view/ColumnMetrics.h"

namespace quill {

/// Distances from the paper's edges in hundredths of a millimetre.
struct PageMargins {
  int32_t left = profile::kLeftMargin.fallback;
  int32_t right = profile::kRightMargin.fallback;
  int32_t top = profile::kTopMargin.fallback;
  int32_t bottom = profile::kBottomMargin.fallback;
};

/// How a text is cut into printed pages, in as many steps as one likes. A line that is wider than the page
/// goes on in the next row.
class PrintLayout {
 public:
  /// Text and metrics outlive it. `width` in 1/64 of the metrics' pixel; at least one row a page and one
  /// character a row are printed.
  PrintLayout(const TextCopy& text, const ColumnMetrics& metrics, int64_t width, int32_t rowsPerPage);

  struct Row {
    int32_t line;
    int32_t start;  ///< columns of the line, the end excluded
    int32_t end;
    int64_t x;  ///< place of `start` in the line, 1/64 pixel
  };
  /// Cuts on through about `budget` characters. False when nothing is left to be cut.
  bool Continue(int64_t budget);
  /// Of the pages that were cut so far; at least 1.
  int32_t PageCount() const { return static_cast<int32_t>(m_pages.size()); }
  /// Lines that were cut so far.
  int32_t LinesDone() const { return m_next.line; }
  /// `page` from 0.
  std::vector<Row> Rows(int32_t page) const;

 private:
  Row RowAt(int32_t line, int32_t start, int64_t x) const;
  /// The first row after `row`.
  Row Next(const Row& row) const;

  const TextCopy& m_text;
  const ColumnMetrics& m_metrics;
  int64_t m_width;
  int32_t m_rowsPerPage;
  Row m_next;                ///< the first row that was not looked at
  int32_t m_rowOfPage = 0;   ///< its place on its page
  std::vector<Row> m_pages;  ///< the first row of each
};

}  // namespace quill
