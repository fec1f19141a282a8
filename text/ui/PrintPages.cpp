#include "text/ui/PrintPages.h"

#include <QFontMetricsF>
#include <QPagedPaintDevice>
#include <algorithm>

#include "base/CodePage1252.h"
#include "res/ui/UiText.h"
#include "widgets/CodePageText.h"

namespace quill {
namespace {

constexpr double kHundredthsPerInch = 2540.0;
constexpr double kUnits = ColumnMetrics::kUnitsPerPixel;

QRectF BodyOf(const PrintTarget& target, const PageMargins& margins) {
  const QRectF paper = target.Paper();
  const double scale = target.Resolution() / kHundredthsPerInch;
  QRectF body(paper.left() + margins.left * scale, paper.top() + margins.top * scale,
              paper.width() - (margins.left + margins.right) * scale,
              paper.height() - (margins.top + margins.bottom) * scale);
  // Margins that leave nothing would print nothing.
  if (body.width() < paper.width() / 10) body.setWidth(paper.width() / 10);
  if (body.height() < paper.height() / 10) body.setHeight(paper.height() / 10);
  return body;
}

QFont BoldOf(QFont font) {
  font.setBold(true);
  return font;
}

ColumnMetrics MetricsOf(const QFontMetricsF& measure, int32_t tabSize) {
  ColumnMetrics::Advances advances{};
  for (size_t byte = 0; byte < advances.size(); ++byte) {
    const QChar c(cp1252::ToUnicode(static_cast<char>(byte)));
    advances[byte] = static_cast<int32_t>(std::max(1.0, measure.horizontalAdvance(c)) * kUnits);
  }
  ColumnMetrics metrics;
  metrics.Set(advances, tabSize);
  return metrics;
}

/// The last two rows of a page are a gap and the page number.
int32_t RowsOf(const QRectF& body, double lineHeight) {
  return static_cast<int32_t>((body.height() - 2 * lineHeight) / lineHeight);
}

}  // namespace

PrintPages::PrintPages(const PrintJob::Source& source, PrintTarget& target)
    : m_source(source),
      m_painter(&target.Device()),
      m_boldFont(BoldOf(source.font)),
      m_body(BodyOf(target, source.margins)),
      m_lineHeight(QFontMetricsF(source.font, &target.Device()).height()),
      m_ascent(QFontMetricsF(source.font, &target.Device()).ascent()),
      m_metrics(MetricsOf(QFontMetricsF(source.font, &target.Device()), source.tabSize)),
      m_layout(source.text, m_metrics, static_cast<int64_t>(m_body.width() * kUnits),
               RowsOf(m_body, m_lineHeight)),
      m_colours(source.text, source.words.Get()) {}

void PrintPages::Paint(int32_t page) {
  double top = m_body.top();
  for (const PrintLayout::Row& row : m_layout.Rows(page)) {
    if (row.start < row.end) PaintRow(row, top + m_ascent);
    top += m_lineHeight;
  }
  PaintFoot(page);
}

void PrintPages::PaintFoot(int32_t page) {
  const QString number =
      UiText(StringId::kPrintedPage, {QString::number(page + 1), QString::number(m_layout.PageCount())});
  const QRectF foot(m_body.left(), m_body.bottom() - m_lineHeight, m_body.width(), m_lineHeight);
  const QFontMetricsF measure(m_source.font, m_painter.device());
  m_painter.setFont(m_source.font);
  m_painter.setPen(Qt::black);
  m_painter.drawText(foot, Qt::AlignRight | Qt::AlignBottom, number);
  const double room = m_body.width() - measure.horizontalAdvance(number + "  ");
  m_painter.drawText(foot, Qt::AlignLeft | Qt::AlignBottom,
                     measure.elidedText(m_source.title, Qt::ElideMiddle, room));
}

void PrintPages::PaintRow(const PrintLayout::Row& row, double baseline) {
  const std::string_view text = m_source.text.Line(row.line);
  const std::span<const TextBlock> blocks = m_colours.Blocks(row.line, row.start, row.end);
  int64_t x = row.x;
  for (size_t i = 0; i < blocks.size(); ++i) {
    const int32_t blockEnd = i + 1 < blocks.size() ? blocks[i + 1].column : row.end;
    const int32_t from = std::max(blocks[i].column, row.start);
    const int32_t to = std::min(blockEnd, row.end);
    if (from >= to) continue;
    x = PaintRun(text.substr(static_cast<size_t>(from), static_cast<size_t>(to - from)), blocks[i].colour, x,
                 row.x, baseline);
  }
}

int64_t PrintPages::PaintRun(std::string_view text, int32_t colour, int64_t x, int64_t rowX,
                             double baseline) {
  m_painter.setFont(m_source.palette.IsBold(colour) ? m_boldFont : m_source.font);
  m_painter.setPen(m_source.palette.Colour(colour));
  while (!text.empty()) {
    const std::string_view piece = text.substr(0, text.find('\t'));
    if (!piece.empty()) {
      m_painter.drawText(QPointF(m_body.left() + static_cast<double>(x - rowX) / kUnits, baseline),
                         FromCodePage(piece));
      x = m_metrics.Walk(piece, x);
    }
    text.remove_prefix(piece.size());
    if (text.empty()) break;
    x = m_metrics.Walk("\t", x);
    text.remove_prefix(1);
  }
  return x;
}

}  // namespace quill
