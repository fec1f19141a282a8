#include "text/ui/MarginPainter.h"

#include <algorithm>
#include <bit>
#include <string>

#include "text/buffer/LineFlags.h"

namespace quill {
namespace {

constexpr int kMarksWidth = 18;
constexpr int kFoldingWidth = 14;
constexpr int kNumberPadding = 4;
constexpr int kFewestDigits = 3;

const QColor kBreakpointColour(0xD0, 0x2A, 0x2A);
const QColor kBookmarkColour(0x2F, 0x7F, 0xC8);

double DigitWidth(const EditorFont& font) {
  return static_cast<double>(font.Advances()['0']) / ColumnMetrics::kUnitsPerPixel;
}

}  // namespace

MarginLayout MarginLayout::For(const EditorFont& font, int32_t lineCount, bool numbers, bool folding) {
  MarginLayout layout;
  layout.numbersLeft = kMarksWidth;
  layout.numbersRight = kMarksWidth;
  if (numbers) {
    const int digits = std::max(kFewestDigits, static_cast<int>(std::to_string(lineCount).size()));
    layout.numbersRight += static_cast<int>(digits * DigitWidth(font)) + 2 * kNumberPadding;
  }
  layout.foldingLeft = layout.numbersRight;
  layout.width = layout.foldingLeft + (folding ? kFoldingWidth : 0) + kTextGap;
  return layout;
}

void MarginPainter::PaintBackground(int top, int height) {
  const int edge = m_layout.width - MarginLayout::kTextGap;
  m_painter.fillRect(0, top, edge, height, m_palette.Colour(kColourMargin));
  m_painter.fillRect(edge, top, MarginLayout::kTextGap, height, m_palette.Colour(kColourBackground));
}

void MarginPainter::Paint(const MarginPicture& line, int top, int height) {
  if ((line.flags & (line_flag::kBreakpoint | line_flag::kBookmark | line_flag::kNumberedBookmarks)) != 0) {
    PaintMarks(line.flags, top, height);
  }
  if (m_layout.numbersRight > m_layout.numbersLeft) PaintNumber(line, top);
  if (m_layout.HasFolding()) PaintFolding(line, top, height);
}

void MarginPainter::PaintMarks(uint32_t flags, int top, int height) {
  m_painter.save();
  m_painter.setRenderHint(QPainter::Antialiasing);
  m_painter.setPen(Qt::NoPen);
  const double size = std::min(height - 3.0, kMarksWidth - 5.0);
  const QRectF box(2.5, top + (height - size) / 2, size, size);
  if ((flags & line_flag::kBookmark) != 0) {
    // A ribbon with a notch at its lower end.
    const QRectF r = box.adjusted(size * 0.15, 0, -size * 0.15, 0);
    const QPointF ribbon[] = {r.topLeft(), r.topRight(), r.bottomRight(),
                              QPointF(r.center().x(), r.bottom() - size * 0.28), r.bottomLeft()};
    m_painter.setBrush(kBookmarkColour);
    m_painter.drawPolygon(ribbon, 5);
  }
  if ((flags & line_flag::kBreakpoint) != 0) {
    m_painter.setBrush(kBreakpointColour);
    m_painter.drawEllipse((flags & line_flag::kBookmark) != 0 ? box.adjusted(3, 3, 1, 1) : box);
  }
  if (const uint32_t numbered = flags & line_flag::kNumberedBookmarks; numbered != 0) {
    const bool alone = (flags & line_flag::kBreakpoint) == 0;
    if (alone) {
      m_painter.setBrush(kBookmarkColour);
      m_painter.drawRoundedRect(box, 2.5, 2.5);
    }
    QFont font = m_font.Font();
    font.setBold(true);
    font.setPixelSize(std::max(8, static_cast<int>(size * 0.85)));
    m_painter.setFont(font);
    m_painter.setPen(Qt::white);
    m_painter.drawText(box, Qt::AlignCenter, QString::number(std::countr_zero(numbered)));
  }
  m_painter.restore();
}

void MarginPainter::PaintNumber(const MarginPicture& line, int top) {
  const std::string digits = std::to_string(line.number);
  const double width = DigitWidth(m_font);
  double x = m_layout.numbersRight - kNumberPadding - width * static_cast<double>(digits.size());
  const QRgb rgb = m_palette.Rgb(kColourMarginText);
  for (const char digit : digits) {
    m_batch.Add(rgb, false, digit, QPointF(x, top + m_font.Ascent()));
    x += width;
  }
}

void MarginPainter::PaintFolding(const MarginPicture& line, int top, int height) {
  const QColor colour = m_palette.Colour(kColourFolding);
  const int centreX = m_layout.foldingLeft + kFoldingWidth / 2;
  const int centreY = top + height / 2;
  const bool isStart = (line.flags & line_flag::kBlockStart) != 0;
  const bool isEnd = (line.flags & line_flag::kBlockEnd) != 0;
  if (line.depthBefore > 0) {
    const int bottom = line.depthAfter > 0 ? top + height : centreY;
    m_painter.fillRect(centreX, top, 1, bottom - top, colour);
  }
  if (isEnd && line.depthBefore > 0) m_painter.fillRect(centreX, centreY, kFoldingWidth / 2 - 1, 1, colour);
  if (!isStart) return;
  if (!line.collapsed) m_painter.fillRect(centreX, centreY, 1, top + height - centreY, colour);
  const int half = std::min(4, height / 2 - 2);
  const QRect box(centreX - half, centreY - half, 2 * half, 2 * half);
  m_painter.fillRect(box, m_palette.Colour(kColourMargin));
  m_painter.setPen(colour);
  m_painter.drawRect(box);
  m_painter.fillRect(centreX - half + 2, centreY, 2 * half - 3, 1, colour);
  if (line.collapsed) m_painter.fillRect(centreX, centreY - half + 2, 1, 2 * half - 3, colour);
}

}  // namespace quill
