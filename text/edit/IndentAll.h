#pragma once
#include "text/edit/EditTarget.h"

namespace quill::edit {

/// Indents every line by the depth of its braces, as one undo step; braces in strings and comments do not
/// count. One step more have a statement that follows "if", "else", "while" or "for" without braces, what
/// belongs to a "case", and what goes on from the line above; arguments that stand below the first one are
/// kept there. Indenting twice changes nothing. A line that begins inside a string stays as it is, the lines
/// of a comment move along with its first one, and preprocessor lines and the words of conditional parts stay
/// in column 0. Lines of white space become empty. The caret stays on its text. False when read-only.
bool IndentAll(EditTarget& target);

}  // namespace quill::edit
