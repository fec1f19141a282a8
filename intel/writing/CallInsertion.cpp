#include "intel/writing/CallInsertion.h"

#include <algorithm>
#include <string>

#include "base/CodePage1252.h"
#include "text/edit/UndoStep.h"

namespace quill {

CallForm FormOfCall(std::string_view parameters) {
  const size_t open = parameters.find('(');
  if (open == std::string_view::npos) return CallForm::kNameOnly;
  const std::string_view inside = parameters.substr(open + 1);
  const auto first = std::find_if_not(inside.begin(), inside.end(), cp1252::IsSpace);
  return first != inside.end() && *first == ')' ? CallForm::kNothingIn : CallForm::kArguments;
}

namespace edit {

CallWritten WriteCall(EditTarget& target, TextRange word, std::string_view name, CallForm form) {
  if (target.Buffer().IsReadOnly()) return CallWritten::kRefused;
  const std::string_view behind =
      target.Buffer().Line(word.end.line).substr(static_cast<size_t>(word.end.character));
  const auto next = std::find_if_not(behind.begin(), behind.end(), cp1252::IsSpace);
  auto written = CallWritten::kDone;
  std::string text(name);
  auto caret = word.start.character + static_cast<int32_t>(name.size());
  if (next != behind.end() && *next == '(') {
    caret += static_cast<int32_t>(next - behind.begin()) + 1;
  } else if (form != CallForm::kNameOnly) {
    text += '(';
    ++caret;
    const EditSettings settings = target.Settings();
    const bool closes = settings.autoBrackets && settings.autoIndent;
    if (closes || form == CallForm::kNothingIn) text += ')';
    if (form == CallForm::kNothingIn) {
      ++caret;
    } else if (closes) {
      written = CallWritten::kDoneAndClosed;
    }
  }
  UndoStep step(target, action::kReplace);
  step.Delete(word);
  step.Insert(word.start, text);
  target.PlaceCaret({word.start.line, caret});
  return written;
}

}  // namespace edit
}  // namespace quill
