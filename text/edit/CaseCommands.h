#pragma once
#include "text/edit/EditTarget.h"

namespace quill::edit {

enum class LetterCase : uint8_t { kLower, kUpper };

/// Changes the selected letters, whole lines or block, as one undo step; the selection stays. Nothing
/// without a selection. False when read-only.
bool ChangeCase(EditTarget& target, LetterCase letterCase);

}  // namespace quill::edit
