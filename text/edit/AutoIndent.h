#pragma once
#include <cstdint>
#include <string_view>

#include "text/edit/EditTarget.h"

namespace quill::edit {

/// What follows a typed character by itself: closing brackets, the unindent of "}", the indentation of a
/// new line. To be called from the view's undo-group hook with its arguments, the caret being behind the
/// insertion; what it inserts forms undo steps of its own.
void AfterInsertion(EditTarget& target, int32_t actionCode, std::string_view text);

}  // namespace quill::edit
