#pragma once
#include <QPainter>
#include <cstdint>

#include "text/ui/EditorFont.h"
#include "text/ui/GlyphBatch.h"
#include "text/ui/ViewPalette.h"

namespace quill {

/// Where the margin's columns lie, in pixels from the view's left edge: marks, line numbers, folding.
struct MarginLayout {
  int numbersLeft = 0;
  int numbersRight = 0;  ///< equal to numbersLeft when numbers are off
  int foldingLeft = 0;
  int width = 0;  ///< where the text area begins

  static MarginLayout For(const EditorFont& font, int32_t lineCount, bool numbers, bool folding);
  bool HasFolding() const { return foldingLeft < width - kTextGap; }
  bool IsInFolding(int x) const { return HasFolding() && x >= foldingLeft && x < width - kTextGap; }

  static constexpr int kTextGap = 3;  ///< between the margin's edge and the text
};

/// What the margin shows beside one line.
struct MarginPicture {
  int32_t number = 0;  ///< line number, from 1
  uint32_t flags = 0;
  int32_t depthBefore = 0;  ///< open blocks above the line
  int32_t depthAfter = 0;   ///< open blocks below it
  bool collapsed = false;
  bool caretLine = false;
};

/// Paints the margin of lines; numbers go to the batch, everything else to the painter.
class MarginPainter {
 public:
  MarginPainter(QPainter& painter, GlyphBatch& batch, const EditorFont& font, const ViewPalette& palette,
                const MarginLayout& layout)
      : m_painter(painter), m_batch(batch), m_font(font), m_palette(palette), m_layout(layout) {}

  /// The margin's background over some rows.
  void PaintBackground(int top, int height);
  void Paint(const MarginPicture& line, int top, int height);

 private:
  void PaintMarks(uint32_t flags, int top, int height);
  void PaintRibbon(const QRectF& place);
  void PaintNumbersIn(const QRectF& box, const QString& numbers);
  void PaintNumber(const MarginPicture& line, int top);
  void PaintFolding(const MarginPicture& line, int top, int height);

  QPainter& m_painter;
  GlyphBatch& m_batch;
  const EditorFont& m_font;
  const ViewPalette& m_palette;
  const MarginLayout& m_layout;
};

}  // namespace quill
