#include "text/ui/PrintJob.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPrinter>
#include <algorithm>
#include <utility>
#include <vector>

#include "base/CodePage1252.h"
#include "res/ui/UiText.h"
#include "text/ui/CrystalTextView.h"

namespace quill {
namespace {

constexpr double kHundredthsPerInch = 2540.0;
constexpr double kUnits = ColumnMetrics::kUnitsPerPixel;

/// One printing: the painter, its measures, and the pages.
class Pages {
 public:
  Pages(CCrystalTextView& view, QPrinter& printer, QPainter& painter, const PageMargins& margins)
      : m_view(view),
        m_painter(painter),
        m_palette(ViewPalette::ForPaper(view.Settings().colours)),
        m_font(view.Font()),
        m_body(Body(printer, margins)) {
    m_font.setPointSizeF(view.Settings().fontSize);
    m_boldFont = m_font;
    m_boldFont.setBold(true);
    const QFontMetricsF measure(m_font, &printer);
    m_lineHeight = measure.height();
    m_ascent = measure.ascent();
    ColumnMetrics::Advances advances{};
    for (size_t byte = 0; byte < advances.size(); ++byte) {
      const QChar c(cp1252::ToUnicode(static_cast<char>(byte)));
      advances[byte] = static_cast<int32_t>(std::max(1.0, measure.horizontalAdvance(c)) * kUnits);
    }
    m_metrics.Set(advances, view.Settings().tabSize);
  }

  PrintLayout Layout() const {
    const double textHeight =
        m_body.height() - 2 * m_lineHeight;  // the last two rows: a gap and the page text
    return PrintLayout(*m_view.Buffer(), m_metrics, static_cast<int64_t>(m_body.width() * kUnits),
                       static_cast<int32_t>(textHeight / m_lineHeight));
  }

  void Paint(const PrintLayout& layout, int32_t page, const QString& title) {
    double top = m_body.top();
    for (const PrintLayout::Row& row : layout.Rows(page)) {
      PaintRow(row, top + m_ascent);
      top += m_lineHeight;
    }
    const QString number =
        UiText(StringId::kPrintedPage, {QString::number(page + 1), QString::number(layout.PageCount())});
    const QRectF foot(m_body.left(), m_body.bottom() - m_lineHeight, m_body.width(), m_lineHeight);
    m_painter.setFont(m_font);
    m_painter.setPen(Qt::black);
    m_painter.drawText(foot, Qt::AlignRight | Qt::AlignBottom, number);
    const double room =
        m_body.width() - QFontMetricsF(m_font, m_painter.device()).horizontalAdvance(number + "  ");
    m_painter.drawText(foot, Qt::AlignLeft | Qt::AlignBottom,
                       QFontMetricsF(m_font, m_painter.device()).elidedText(title, Qt::ElideMiddle, room));
  }

 private:
  static QRectF Body(const QPrinter& printer, const PageMargins& margins) {
    const QRectF paper = printer.paperRect(QPrinter::DevicePixel);
    const double scale = printer.resolution() / kHundredthsPerInch;
    QRectF body(paper.left() + margins.left * scale, paper.top() + margins.top * scale,
                paper.width() - (margins.left + margins.right) * scale,
                paper.height() - (margins.top + margins.bottom) * scale);
    // Margins that leave nothing would print nothing.
    if (body.width() < paper.width() / 10) body.setWidth(paper.width() / 10);
    if (body.height() < paper.height() / 10) body.setHeight(paper.height() / 10);
    return body;
  }

  void PaintRow(const PrintLayout::Row& row, double baseline) {
    const std::string_view text = m_view.Buffer()->Line(row.line);
    std::vector<TextBlock> blocks(static_cast<size_t>(MostBlocks(static_cast<int32_t>(text.size()))));
    int32_t count = 0;
    if (row.start < row.end) {
      m_view.ColourLine(m_view.Model().States().StateAt(row.line), row.line, blocks.data(), &count);
    }
    int64_t x = row.x;
    for (int32_t i = 0; i < count; ++i) {
      const TextBlock& block = blocks[static_cast<size_t>(i)];
      const int32_t blockEnd =
          i + 1 < count ? blocks[static_cast<size_t>(i) + 1].column : static_cast<int32_t>(text.size());
      const int32_t from = std::max(block.column, row.start);
      const int32_t to = std::min(blockEnd, row.end);
      if (from >= to) continue;
      x = PaintRun(text.substr(static_cast<size_t>(from), static_cast<size_t>(to - from)), block.colour, x,
                   row.x, baseline);
    }
  }

  /// Draws a run from tab to tab; returns the place behind it.
  int64_t PaintRun(std::string_view text, int32_t colour, int64_t x, int64_t rowX, double baseline) {
    m_painter.setFont(m_palette.IsBold(colour) ? m_boldFont : m_font);
    m_painter.setPen(m_palette.Colour(colour));
    while (!text.empty()) {
      const std::string_view piece = text.substr(0, text.find('\t'));
      if (!piece.empty()) {
        m_painter.drawText(QPointF(m_body.left() + static_cast<double>(x - rowX) / kUnits, baseline),
                           QString::fromStdU16String(cp1252::ToUnicode(piece)));
        x = m_metrics.Walk(piece, x);
      }
      text.remove_prefix(piece.size());
      if (text.empty()) break;
      x = m_metrics.Walk("\t", x);
      text.remove_prefix(1);
    }
    return x;
  }

  CCrystalTextView& m_view;
  QPainter& m_painter;
  ViewPalette m_palette;
  QFont m_font;
  QFont m_boldFont;
  QRectF m_body;
  ColumnMetrics m_metrics;
  double m_lineHeight = 1;
  double m_ascent = 1;
};

}  // namespace

PrintJob::PrintJob(CCrystalTextView& view, const PageMargins& margins, QString title)
    : m_view(view), m_margins(margins), m_title(std::move(title)) {}

bool PrintJob::Print(QPrinter& printer, const Progress& progress) {
  printer.setFullPage(true);  // the margins are ours
  QPainter painter;
  if (!painter.begin(&printer)) return false;
  Pages pages(m_view, printer, painter, m_margins);
  const PrintLayout layout = pages.Layout();
  const int32_t first = printer.fromPage() > 0 ? std::min(printer.fromPage(), layout.PageCount()) : 1;
  const int32_t last =
      printer.toPage() > 0 ? std::min(printer.toPage(), layout.PageCount()) : layout.PageCount();
  for (int32_t page = first; page <= last; ++page) {
    if (progress && !progress(page, layout.PageCount())) {
      printer.abort();
      return false;
    }
    if (page > first && !printer.newPage()) return false;
    pages.Paint(layout, page - 1, m_title);
  }
  return painter.end();
}

}  // namespace quill
