#pragma once
#include <cstdint>
#include <string_view>

#include "text/edit/EditTarget.h"

namespace quill {

/// What stands behind a command's name where it is used.
enum class CallForm : uint8_t {
  kNameOnly,   ///< it is not called
  kNothingIn,  ///< brackets with nothing between them
  kArguments,
};
/// `parameters` is a command's parameter text.
CallForm FormOfCall(std::string_view parameters);

namespace edit {

enum class CallWritten : uint8_t {
  kRefused,  ///< the text is read-only
  kDone,
  kDoneAndClosed,  ///< a closing bracket came by itself; it stands at the caret
};
/// Writes a command in the place of `word`, as one undo step: its name and brackets, but for those that
/// stand behind the word already. The closing one is left to the user when closing brackets do not come by
/// themselves. The caret goes to where the arguments are written.
CallWritten WriteCall(EditTarget& target, TextRange word, std::string_view name, CallForm form);

}  // namespace edit
}  // namespace quill
