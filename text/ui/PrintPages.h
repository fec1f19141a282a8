#pragma once
#include <QFont>
#include <QPainter>
#include <QRectF>
#include <string_view>

#include "text/parse/RowColours.h"
#include "text/ui/PrintJob.h"

namespace quill {

/// The pages of one printing: their layout, and the painter that paints them.
class PrintPages {
 public:
  /// Both outlive it; the target is open. The painter is active until `End` unless the target refuses it.
  PrintPages(const PrintJob::Source& source, PrintTarget& target);

  bool IsActive() const { return m_painter.isActive(); }
  bool End() { return m_painter.end(); }
  PrintLayout& Layout() { return m_layout; }
  /// `page` from 0, in ascending order.
  void Paint(int32_t page);

 private:
  void PaintRow(const PrintLayout::Row& row, double baseline);
  /// Draws a run from tab to tab; returns the place behind it.
  int64_t PaintRun(std::string_view text, int32_t colour, int64_t x, int64_t rowX, double baseline);
  void PaintFoot(int32_t page);

  const PrintJob::Source& m_source;
  QPainter m_painter;
  QFont m_boldFont;
  QRectF m_body;
  double m_lineHeight;
  double m_ascent;
  ColumnMetrics m_metrics;
  PrintLayout m_layout;
  RowColours m_colours;
};

}  // namespace quill
