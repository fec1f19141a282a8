#include "text/edit/AutoIndent.h"

#include <algorithm>
#include <string>

#include "base/CodePage1252.h"
#include "text/edit/Indentation.h"
#include "text/edit/UndoStep.h"

namespace quill::edit {
namespace {

std::string_view TextBefore(const EditTarget& target, TextPosition place) {
  return target.Buffer().Line(place.line).substr(0, static_cast<size_t>(place.character));
}

/// What closes an opening bracket that was typed; empty for none.
std::string ClosingText(const EditTarget& target, std::string_view opening) {
  const TextPosition caret = target.Caret();
  const std::string_view line = target.Buffer().Line(caret.line);
  if (opening == "[") return "]";
  if (opening == "(") {
    const size_t next = line.find_first_of("()", static_cast<size_t>(caret.character));
    return next != std::string_view::npos && line[next] == ')' ? "" : ")";
  }
  if (opening != "{") return {};
  // Tab characters only, whatever the indentation step is.
  const size_t tabs = std::min(line.find_first_not_of('\t'), line.size());
  return "\r\n" + std::string(tabs, '\t') + "}";
}

/// True when there was an opening bracket.
bool CloseBracket(EditTarget& target, std::string_view typed) {
  const std::string closing = ClosingText(target, typed);
  if (closing.empty()) return typed == "(";
  const TextPosition caret = target.Caret();
  UndoStep step(target, action::kIndent);
  step.Insert(caret, closing);
  target.PlaceCaret(caret);
  return true;
}

/// A ")" typed between "(" and a ")" goes again: the caret has stepped over the one that was there. Only
/// the first "()" of the line is looked at.
void StepOverParenthesis(EditTarget& target) {
  const TextPosition caret = target.Caret();
  const std::string_view before = TextBefore(target, caret);
  const size_t pair = before.find("()");
  if (pair == std::string_view::npos || pair + 2 != before.size()) return;
  if (target.Buffer().Line(caret.line).substr(before.size(), 1) != ")") return;  // nothing to step over
  UndoStep step(target, action::kIndent);
  step.Delete({{caret.line, caret.character - 1}, caret});
  target.PlaceCaret(caret);
}

void UnindentBrace(EditTarget& target) {
  const int32_t line = target.Caret().line;
  const std::string_view text = target.Buffer().Line(line);
  const int32_t step = LeadingStep(text, target.Settings());
  if (step == 0) return;
  const std::string shortened(text.substr(static_cast<size_t>(step)));
  const auto length = static_cast<int32_t>(text.size());
  UndoStep undo(target, action::kIndent);
  undo.ReplaceInLine({{line, 0}, {line, length}}, shortened);
  target.PlaceCaret({line, length - step});
}

void IndentNewLine(EditTarget& target) {
  const TextPosition caret = target.Caret();
  if (caret.line == 0) return;
  const std::string_view above = target.Buffer().Line(caret.line - 1);
  std::string indent;
  if (!above.empty() && above.back() == '{') {
    target.Buffer().CopyLeadingWhiteSpace(caret.line - 1, indent);
    indent += IndentStep(target.Settings());
  } else {
    const auto* end = std::find_if_not(above.begin(), above.end(), [](char c) { return cp1252::IsSpace(c); });
    indent.assign(above.begin(), end);
  }
  if (indent.empty()) return;
  UndoStep step(target, action::kAutoIndent);
  target.PlaceCaret(step.InsertPieces(caret, {indent}));
}

}  // namespace

void AfterInsertion(EditTarget& target, int32_t actionCode, std::string_view text) {
  const EditSettings settings = target.Settings();
  if (!settings.autoIndent || actionCode != action::kTyping || target.IsOverwriting()) return;
  if (target.Buffer().IsReadOnly()) return;
  if (settings.autoBrackets && CloseBracket(target, text)) return;
  if (settings.autoBrackets && text == ")") StepOverParenthesis(target);
  if (text == "}") UnindentBrace(target);
  if (text == "\r\n") IndentNewLine(target);
}

}  // namespace quill::edit
