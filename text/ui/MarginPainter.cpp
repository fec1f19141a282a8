#include "text/ui/MarginPainter.h"

#include <algorithm>
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

constexpr double kNarrowRibbon = 5;  ///< pixels, of a bookmark that shares its line
constexpr int kMostDigits = 3;       ///< that can be told apart in the column
constexpr int kSmallestDigit = 7;    ///< pixels high
constexpr double kDigitShape = 1.5;  ///< height of a digit to its width

/// The numbered bookmarks of a line, "0" to "9"; a "+" stands for those that have no room.
QString ShownNumbers(uint32_t flags) {
  QString numbers;
  for (int n = 0; n < 10; ++n) {
    if ((flags & line_flag::NumberedBookmark(n)) != 0) numbers += QString::number(n);
  }
  return numbers.size() <= kMostDigits ? numbers : numbers.left(kMostDigits - 1) + u'+';
}

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

/// One mark has the column for itself. Of several, the plain bookmark stands at the left, and what is on the
/// same line beside it; numbers stand within the breakpoint, or in a box of their own.
void MarginPainter::PaintMarks(uint32_t flags, int top, int height) {
  m_painter.save();
  m_painter.setRenderHint(QPainter::Antialiasing);
  m_painter.setPen(Qt::NoPen);
  const QString numbers = ShownNumbers(flags);
  const bool bookmark = (flags & line_flag::kBookmark) != 0;
  const bool breakpoint = (flags & line_flag::kBreakpoint) != 0;
  const bool beside = bookmark && (breakpoint || !numbers.isEmpty());
  const double size = std::min(height - 3.0, kMarksWidth - 5.0);
  QRectF box(2.5, top + (height - size) / 2, size, size);
  if (bookmark)
    PaintRibbon(beside ? QRectF(1, box.top(), kNarrowRibbon, size)
                       : box.adjusted(size * 0.15, 0, -size * 0.15, 0));
  if (beside) box.setLeft(1 + kNarrowRibbon + 1);
  if (numbers.size() > 1 || beside) box.setRight(kMarksWidth - 1);
  if (breakpoint) {
    const double side = std::min(box.width(), box.height());
    m_painter.setBrush(kBreakpointColour);
    m_painter.drawEllipse(
        numbers.size() > 1 ? box : QRectF(box.center() - QPointF(side, side) / 2, QSizeF(side, side)));
  } else if (!numbers.isEmpty()) {
    m_painter.setBrush(kBookmarkColour);
    m_painter.drawRoundedRect(box, 2.5, 2.5);
  }
  PaintNumbersIn(box, numbers);
  m_painter.restore();
}

/// With a notch at its lower end.
void MarginPainter::PaintRibbon(const QRectF& r) {
  const QPointF ribbon[] = {r.topLeft(), r.topRight(), r.bottomRight(),
                            QPointF(r.center().x(), r.bottom() - r.height() * 0.28), r.bottomLeft()};
  m_painter.setBrush(kBookmarkColour);
  m_painter.drawPolygon(ribbon, 5);
}

void MarginPainter::PaintNumbersIn(const QRectF& box, const QString& numbers) {
  if (numbers.isEmpty()) return;
  QFont font = m_font.Font();
  font.setBold(true);
  const double widest = box.width() / static_cast<double>(numbers.size()) * kDigitShape;
  font.setPixelSize(std::max(kSmallestDigit, static_cast<int>(std::min(box.height() * 0.85, widest))));
  m_painter.setFont(font);
  m_painter.setPen(Qt::white);
  m_painter.drawText(box, Qt::AlignCenter | Qt::TextDontClip, numbers);
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
