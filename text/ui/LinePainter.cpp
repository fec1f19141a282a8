#include "text/ui/LinePainter.h"

#include <algorithm>

namespace quill {
namespace {

constexpr double kUnits = ColumnMetrics::kUnitsPerPixel;
constexpr int kBarWidth = 2;
constexpr int kLineEndWidth = 6;  ///< pixels that a selected line end is drawn with
constexpr int kFieldGap = 2;      ///< pixels between a field's text and its box

}  // namespace

LinePainter::LinePainter(QPainter& painter, GlyphBatch& batch, const EditorFont& font,
                         const ColumnMetrics& metrics, const ViewPalette& palette)
    : m_painter(painter), m_batch(batch), m_font(font), m_metrics(metrics), m_palette(palette) {}

void LinePainter::Paint(const LinePicture& line, const QRect& area, int scrollX) {
  m_places.clear();
  int64_t x = line.visibleX;
  m_places.push_back(x);
  for (int32_t column = line.visible.start; column < line.visible.end; ++column) {
    x = m_metrics.Walk(line.text.substr(static_cast<size_t>(column), 1), x);
    m_places.push_back(x);
  }
  const double origin = area.left() - scrollX;
  PaintBackground(line, area, origin);
  PaintGuides(line, area, origin);
  AddText(line, area, origin);
  PaintFields(line, area, origin);
  if (line.collapsed) PaintFoldedMark(line, area, origin);
}

double LinePainter::PlaceOf(int32_t column, const LinePicture& line) const {
  const int32_t clamped = std::clamp(column, line.visible.start, line.visible.end);
  return static_cast<double>(m_places[static_cast<size_t>(clamped - line.visible.start)]) / kUnits;
}

void LinePainter::PaintBackground(const LinePicture& line, const QRect& area, double origin) {
  m_painter.fillRect(area, m_palette.Colour(line.caretLine ? kColourCaretLine : kColourBackground));
  const auto fill = [&](double from, double to, const QColor& colour) {
    m_painter.fillRect(QRectF(origin + from, area.top(), to - from, area.height()), colour);
  };
  for (const ColumnRange& match : line.matches) {
    if (match.end <= line.visible.start || match.start > line.visible.end) continue;
    fill(PlaceOf(match.start, line), PlaceOf(match.end, line), m_palette.Match());
  }
  if (line.brace >= line.visible.start && line.brace < line.visible.end) {
    const double from = PlaceOf(line.brace, line);
    const double to = PlaceOf(line.brace + 1, line);
    fill(from, to, m_palette.BraceBox());
  }
  if (!line.selection.IsEmpty()) {
    fill(PlaceOf(line.selection.start, line), PlaceOf(line.selection.end, line),
         m_palette.Colour(kColourSelectionBackground));
  }
  const double end = PlaceOf(line.visible.end, line);
  const double blank = static_cast<double>(m_metrics.Advance(' ')) / kUnits;
  if (line.paddingWidth > 0) {
    const double start = end + line.paddingStart * blank;
    fill(start, start + line.paddingWidth * blank, m_palette.Colour(kColourSelectionBackground));
  } else if (line.selectionPastEnd && line.visible.end == static_cast<int32_t>(line.text.size())) {
    fill(end, end + kLineEndWidth, m_palette.Colour(kColourSelectionBackground));
  }
  if (line.bar >= line.visible.start && line.bar <= line.visible.end) {
    const double bar = PlaceOf(line.bar, line) + line.paddingStart * blank;
    fill(bar, bar + kBarWidth, m_palette.Colour(kColourText));
  }
}

void LinePainter::PaintGuides(const LinePicture& line, const QRect& area, double origin) {
  if (line.guides.empty()) return;
  const double blank = static_cast<double>(m_metrics.Advance(' ')) / kUnits;
  const QColor colour = m_palette.Colour(kColourIndentGuide);
  for (const int32_t column : line.guides) {
    const int x = static_cast<int>(origin + column * blank);
    if (x < area.left() || x > area.right()) continue;
    // Dots on every second pixel row of the view, whatever the line height.
    for (int y = area.top() + (area.top() & 1); y <= area.bottom(); y += 2) {
      m_painter.fillRect(x, y, 1, 1, colour);
    }
  }
}

void LinePainter::AddText(const LinePicture& line, const QRect& area, double origin) {
  const double baseline = area.top() + m_font.Ascent();
  auto block = line.blocks.begin();
  int32_t index = kColourText;
  for (int32_t column = line.visible.start; column < line.visible.end; ++column) {
    while (block != line.blocks.end() && block->column <= column) index = (block++)->colour;
    const char c = line.text[static_cast<size_t>(column)];
    if (c == ' ' || c == '\t') continue;
    QRgb rgb = m_palette.Rgb(index);
    if (line.selection.Contains(column)) {
      rgb = m_palette.Rgb(kColourSelectionText);
    } else if (column == line.brace) {
      rgb = m_palette.Rgb(kColourBrace);
    }
    const double x = static_cast<double>(m_places[static_cast<size_t>(column - line.visible.start)]) / kUnits;
    m_batch.Add(rgb, m_palette.IsBold(index), c, QPointF(origin + x, baseline));
  }
}

void LinePainter::PaintFields(const LinePicture& line, const QRect& area, double origin) {
  m_painter.setBrush(Qt::NoBrush);
  m_painter.setPen(m_palette.Colour(kColourFolding));
  for (const ColumnRange& field : line.fields) {
    if (field.end < line.visible.start || field.start > line.visible.end) continue;
    // The text keeps its place: the box stands in the gaps beside it.
    const int left = static_cast<int>(origin + PlaceOf(field.start, line)) - kFieldGap;
    const int right = static_cast<int>(origin + PlaceOf(field.end, line)) + kFieldGap;
    m_painter.drawRect(left, area.top(), right - left, area.height() - 1);
  }
}

void LinePainter::PaintFoldedMark(const LinePicture& line, const QRect& area, double origin) {
  const double blank = static_cast<double>(m_metrics.Advance(' ')) / kUnits;
  const double left = origin + PlaceOf(line.visible.end, line) + blank;
  const QRectF box(static_cast<int>(left) + 0.5, area.top() + 2.5, static_cast<int>(blank * 3) + 4,
                   area.height() - 5);
  m_painter.setPen(m_palette.Colour(kColourFolding));
  m_painter.drawRect(box);
  for (int i = 0; i < 3; ++i) {
    const double x = box.left() + box.width() * (i + 1) / 4.0 - 1;
    m_painter.fillRect(QRectF(static_cast<int>(x), static_cast<int>(box.center().y()), 2, 2),
                       m_palette.Colour(kColourFolding));
  }
}

}  // namespace quill
