#pragma once
#include <ctime>
#include <string_view>

#include "text/edit/EditTarget.h"

/// Each is one undo step and returns false when the text is read-only.
namespace quill::edit {

/// Replaces the selection, if any; the caret goes behind the text. CR and CR LF split lines.
bool ReplaceSelectedText(EditTarget& target, std::string_view text);
/// The local date of `now` as "%Y-%m-%d" through `ReplaceSelectedText`.
bool InsertDate(EditTarget& target, std::time_t now);

/// Drops dragged text from elsewhere, with line ends of any kind, at a place and selects it.
bool DropText(EditTarget& target, TextPosition at, std::string_view text);
/// Moves or copies text to another place of the same buffer and selects it there. A move into the text
/// itself does nothing.
bool MoveText(EditTarget& target, TextRange from, TextPosition to, bool copy);
/// The other end of a drag to another window: takes the moved text away.
bool RemoveDraggedText(EditTarget& target, TextRange range);
/// The same with what is selected, lines or block.
bool RemoveDraggedSelection(EditTarget& target);

}  // namespace quill::edit
