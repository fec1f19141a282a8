#pragma once
#include "text/edit/EditTarget.h"

/// Commands on whole lines: the selected ones, or the caret line. Each is one undo step and returns false
/// when the text is read-only.
namespace quill::edit {

/// Puts "//" in front of every line, or takes the first "//" away that no letter precedes. The last line
/// of the selection counts also when the selection ends in its column 0. The caret goes to the next line.
bool CommentLines(EditTarget& target);
bool UncommentLines(EditTarget& target);

// Here a last line in which nothing is selected is left alone, and a collapsed block counts as one line.

/// The copy comes below, and is selected as the lines were.
bool DuplicateLines(EditTarget& target);
/// Past the line above or below; selection, flags and bookmarks go along.
bool MoveLinesUp(EditTarget& target);
bool MoveLinesDown(EditTarget& target);
bool DeleteLines(EditTarget& target);

}  // namespace quill::edit
