#pragma once
#include <QPainter>
#include <array>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "text/parse/ColourTable.h"
#include "text/parse/ScriptColouring.h"
#include "text/ui/EditorFont.h"
#include "text/ui/GlyphBatch.h"
#include "text/ui/ViewPalette.h"
#include "text/view/ColumnMetrics.h"

namespace quill {

/// Columns of a line, the end excluded.
struct ColumnRange {
  int32_t start = 0;
  int32_t end = 0;
  bool IsEmpty() const { return start >= end; }
  bool Contains(int32_t column) const { return column >= start && column < end; }
};

/// What one line shows, as far as its painting needs to know.
struct LinePicture {
  std::string_view text;
  std::span<const TextBlock> blocks;
  ColumnRange visible;   ///< the characters that the text area shows
  int64_t visibleX = 0;  ///< place of the first of them, 1/64 pixel from the line's start
  ColumnRange selection;
  bool selectionPastEnd = false;  ///< the line end is selected as well
  int32_t paddingStart = 0;       ///< blanks between the line's end and a column selection behind it
  int32_t paddingWidth = 0;       ///< selected blanks behind the line's end
  int32_t bar = -1;               ///< the caret of a block without columns is before this character
  int32_t brace = -1;             ///< column of a matched brace
  bool caretLine = false;
  bool collapsed = false;                ///< head of a collapsed block
  std::span<const int32_t> guides;       ///< columns of indentation guides
  std::span<const ColumnRange> matches;  ///< found text
  std::span<const ColumnRange> fields;   ///< places to be filled in; an empty one stands at its column
};

/// Paints the text area of lines. Backgrounds go to the painter at once, characters to the batch.
class LinePainter {
 public:
  LinePainter(QPainter& painter, GlyphBatch& batch, const EditorFont& font, const ColumnMetrics& metrics,
              const ViewPalette& palette);

  /// `area` is the line's strip of the text area, `scrollX` the pixel of the line at its left edge.
  void Paint(const LinePicture& line, const QRect& area, int scrollX);

 private:
  struct Cursor;
  void PaintBackground(const LinePicture& line, const QRect& area, double origin);
  void PaintGuides(const LinePicture& line, const QRect& area, double origin);
  void AddText(const LinePicture& line, const QRect& area, double origin);
  void PaintFields(const LinePicture& line, const QRect& area, double origin);
  void PaintFoldedMark(const LinePicture& line, const QRect& area, double origin);
  /// Pixels from the line's start to a visible column or the place behind the last one.
  double PlaceOf(int32_t column, const LinePicture& line) const;

  QPainter& m_painter;
  GlyphBatch& m_batch;
  const EditorFont& m_font;
  const ColumnMetrics& m_metrics;
  const ViewPalette& m_palette;
  std::vector<int64_t> m_places;  ///< of the visible columns, 1/64 pixel, and of the one behind them
};

}  // namespace quill
