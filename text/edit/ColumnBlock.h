#pragma once
#include <cstdint>
#include <string>
#include <string_view>

#include "text/edit/EditTarget.h"

namespace quill {

/// A selected block: lines first to last, columns left to right as they are shown (right not included).
struct ColumnBlock {
  int32_t firstLine = 0;
  int32_t lastLine = 0;
  int32_t left = 0;
  int32_t right = 0;

  /// The characters of a line that begin inside the block; an empty range at the line's end when the
  /// line is too short.
  TextRange RangeOn(const CCrystalTextBuffer& buffer, int32_t line, int32_t tabSize) const;
  int32_t Width() const { return right - left; }
};

/// The block between the corners anchor and caret.
ColumnBlock BlockOf(const EditTarget& target);

namespace edit {

/// The block's lines with CR LF between them.
std::string CopyBlock(const EditTarget& target);
/// Replaces the block by a text without line ends on every line; short lines are filled up with blanks.
/// The block becomes zero columns wide behind the text. With an empty text it is deleted.
bool TypeIntoBlock(EditTarget& target, std::string_view text, int32_t actionCode);
/// Deletes the block, or next to a block without columns one character of every line.
bool DeleteInBlock(EditTarget& target, bool toTheLeft, int32_t actionCode);
/// Puts the lines of a text (CR LF between them) one below the other at the block's or the caret's
/// column, in new lines after the last one where needed. A single line goes to every line of a block.
bool PasteBlock(EditTarget& target, std::string_view text);
/// Drops a block that was dragged from elsewhere, with line ends of any kind, at a place and selects it.
bool DropBlock(EditTarget& target, TextPosition at, std::string_view text);
/// Moves or copies a block to another place of the same buffer and selects it there. A move into the block
/// itself does nothing.
bool MoveBlock(EditTarget& target, const ColumnBlock& from, TextPosition to, bool copy);

}  // namespace edit
}  // namespace quill
