#pragma once
#include <cstdint>
#include <vector>

#include "settings/ProfileTable.h"
#include "text/buffer/CrystalTextBuffer.h"
#include "text/view/ColumnMetrics.h"

namespace quill {

/// Distances from the paper's edges in hundredths of a millimetre.
struct PageMargins {
  int32_t left = profile::kLeftMargin.fallback;
  int32_t right = profile::kRightMargin.fallback;
  int32_t top = profile::kTopMargin.fallback;
  int32_t bottom = profile::kBottomMargin.fallback;
};

/// How a text is cut into printed pages. A line that is wider than the page goes on in the next row.
class PrintLayout {
 public:
  /// `width` in 1/64 of the metrics' pixel; at least one row a page and one character a row are printed.
  PrintLayout(const CCrystalTextBuffer& buffer, const ColumnMetrics& metrics, int64_t width,
              int32_t rowsPerPage);

  struct Row {
    int32_t line;
    int32_t start;  ///< columns of the line, the end excluded
    int32_t end;
    int64_t x;  ///< place of `start` in the line, 1/64 pixel
  };
  /// At least 1.
  int32_t PageCount() const { return static_cast<int32_t>(m_pages.size()); }
  /// `page` from 0.
  std::vector<Row> Rows(int32_t page) const;

 private:
  Row RowAt(int32_t line, int32_t start, int64_t x) const;
  /// The first row after `row`.
  Row Next(const Row& row) const;

  const CCrystalTextBuffer& m_buffer;
  const ColumnMetrics& m_metrics;
  int64_t m_width;
  int32_t m_rowsPerPage;
  std::vector<Row> m_pages;  ///< the first row of each
};

}  // namespace quill
