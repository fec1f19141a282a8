#pragma once
#include <cstdint>

#include "text/buffer/CrystalTextBuffer.h"
#include "text/buffer/LineRange.h"
#include "text/buffer/TextPosition.h"
#include "text/view/VisualColumns.h"

namespace quill {

/// How text is edited.
struct EditSettings {
  int32_t tabSize = 3;          ///< columns of a tab stop, and blanks of one indentation step; at least 1
  bool keepSpaces = false;      ///< indent with blanks instead of tab characters
  bool autoIndent = true;       ///< also switches on the bracket aids
  bool autoBrackets = true;     ///< closing brackets come by themselves
  bool typeOverClosers = true;  ///< and typing one goes past it
};

/// What an editing operation needs of the view that it works for. Operations place caret and selection
/// themselves after each change; a view that moves them along with changes on its own is not disturbed.
class EditTarget {
 public:
  virtual ~EditTarget() = default;
  virtual CCrystalTextBuffer& Buffer() const = 0;
  /// The source of its edits.
  virtual EditSource Source() = 0;
  virtual EditSettings Settings() const = 0;
  virtual bool IsOverwriting() const = 0;

  virtual TextPosition Caret() const = 0;
  /// The end of the selection that stays; equal to the caret without a selection.
  virtual TextPosition Anchor() const = 0;
  virtual void Select(TextPosition anchor, TextPosition caret) = 0;
  /// The selection is a block of columns with anchor and caret at two corners; it may be zero columns
  /// wide and many lines high.
  virtual bool IsColumnSelection() const { return false; }
  virtual void SetColumnSelection(bool) {}
  /// The corners of a column selection, whose columns may lie behind the ends of their lines.
  virtual BlockCorner AnchorCorner() const { return CornerOf(Anchor()); }
  virtual BlockCorner CaretCorner() const { return CornerOf(Caret()); }
  /// Makes a column selection. One that knows no columns behind a line's end takes the line's end.
  virtual void SelectBlock(BlockCorner anchor, BlockCorner caret) {
    SetColumnSelection(true);
    Select(PlaceOf(anchor), PlaceOf(caret));
  }
  /// The nearest lines that no collapsed block hides; the line count, or -1, when there is none.
  virtual int32_t NextShown(int32_t line) const { return line + 1; }
  virtual int32_t PreviousShown(int32_t line) const { return line - 1; }

  BlockCorner CornerOf(TextPosition place) const {
    return {place.line, ColumnOf(Buffer().Line(place.line), place.character, Settings().tabSize)};
  }
  TextPosition PlaceOf(BlockCorner corner) const {
    return {corner.line, CharacterAtColumn(Buffer().Line(corner.line), corner.column, Settings().tabSize)};
  }
  TextRange Selection() const { return TextRange::Between(Anchor(), Caret()); }
  bool HasSelection() const { return Anchor() != Caret(); }
  /// Drops the selection.
  void PlaceCaret(TextPosition place) {
    SetColumnSelection(false);
    Select(place, place);
  }
};

/// The lines of the selection, or the caret line. A last line in which nothing is selected is left out.
inline LineRange SelectedLines(const EditTarget& target) {
  const TextRange selection = target.Selection();
  const bool untouched = selection.end.character == 0 && selection.end.line > selection.start.line;
  return {selection.start.line, untouched ? selection.end.line - 1 : selection.end.line};
}

}  // namespace quill
