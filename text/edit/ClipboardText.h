#pragma once
#include <string>
#include <string_view>

#include "text/edit/EditTarget.h"

namespace quill::edit {

/// CR LF, LF CR, CR and LF all become CR LF.
std::string WithCrLf(std::string_view text);

/// The selected text, CR LF between lines; empty without a selection.
std::string CopySelection(const EditTarget& target);
/// Copies and deletes the selection as one undo step; nothing without one. False when read-only.
bool Cut(EditTarget& target, std::string& text);
/// Replaces the selection by a text with line ends of any kind. `asBlock`: the text was copied from a
/// column selection and goes in as a block. False when read-only.
bool Paste(EditTarget& target, std::string_view text, bool asBlock = false);

}  // namespace quill::edit
