#pragma once
#include "text/edit/EditTarget.h"

namespace quill::edit {

/// Indents every line by the depth of its braces, as one undo step; braces in strings and comments do not
/// count. A line that begins inside a string stays as it is, the lines of a comment move along with its
/// first one, and preprocessor lines and the words of conditional parts stay in column 0. Lines of white
/// space become empty. The caret stays on its text. False when read-only.
bool IndentAll(EditTarget& target);

}  // namespace quill::edit
