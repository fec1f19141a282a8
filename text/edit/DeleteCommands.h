#pragma once
#include "text/edit/EditTarget.h"

namespace quill {

/// The places beside one, over a line end where the line ends; the place itself at the text's ends.
TextPosition PlaceAfter(const CCrystalTextBuffer& buffer, TextPosition place);
TextPosition PlaceBefore(const CCrystalTextBuffer& buffer, TextPosition place);

}  // namespace quill

/// Each is one undo step and returns false when the text is read-only. With a selection, all of them
/// delete what is selected.
namespace quill::edit {

/// The Delete key: the next character, at a line's end the line end.
bool DeleteRight(EditTarget& target);
/// The Backspace key: the previous character, at a line's start the line end before it.
bool DeleteLeft(EditTarget& target);
/// Up to the start of the next or previous word; beyond the line's ends, the line end.
bool DeleteWordRight(EditTarget& target);
bool DeleteWordLeft(EditTarget& target);
/// Without a selection, nothing.
bool DeleteSelection(EditTarget& target);

}  // namespace quill::edit
