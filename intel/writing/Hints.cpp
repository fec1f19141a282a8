#include "intel/writing/Hints.h"

#include <algorithm>

#include "base/CodePage1252.h"
#include "intel/outline/Definitions.h"
#include "intel/vocabulary/CommandDatabase.h"
#include "intel/writing/ObjectMembers.h"
#include "text/buffer/CrystalTextBuffer.h"

namespace quill {
namespace {

/// As the outline has it, "name(a, b)"; empty when the script defines no such function.
std::string_view FunctionWithParameters(std::string_view name, const Outline& outline) {
  const std::vector<OutlineRef>& functions = outline.Order(OutlineRoot::kFunctions);
  // In order; what follows a name sorts before the letters of a longer one.
  const auto at = std::partition_point(functions.begin(), functions.end(), [&](OutlineRef ref) {
    return CompareNoCase(outline.TextOf(ref), name) < 0;
  });
  const bool found = !name.empty() && at != functions.end() && cp1252::EqualNoCase(outline.WordOf(*at), name);
  return found ? outline.TextOf(*at) : std::string_view();
}

}  // namespace

bool HintText::Update(const CCrystalTextBuffer& buffer, TextPosition caret,
                      std::optional<std::string_view> completionEntry, const CommandDatabase& commands,
                      const Outline& outline) {
  const bool inText = caret.line >= 0 && caret.line < buffer.LineCount();
  const std::string_view line = inText ? buffer.Line(caret.line) : std::string_view();
  const std::string_view word = completionEntry.value_or(IdentifierAt(line, caret.character).In(line));
  m_command = commands.FindCommandIndex(word);
  if (m_command < 0) m_command = commands.FindCommandIndex(QualifiedMember(line, caret.character, outline));
  const OpenCall call = OpenCallAt(buffer, caret);
  const bool callIsKnown = !call.name.empty();
  if (m_command < 0 && callIsKnown) m_command = commands.FindCommandIndex(call.name);

  std::string_view text, name;
  if (m_command >= 0) {
    text = commands.GetCommandParameters(m_command);
    name = commands.GetCommandName(m_command);
  } else {
    if (callIsKnown) text = FunctionWithParameters(call.name, outline);
    if (text.empty()) text = FunctionWithParameters(word, outline);
    name = BareName(OutlineRoot::kFunctions, text);
  }
  const bool changed = text != m_text;
  if (changed) m_text = text;
  const bool isTheCall = callIsKnown && cp1252::EqualNoCase(call.name, name);
  m_argument = isTheCall ? ArgumentPart(m_text, call.argument) : TextPart{};
  return changed;
}

HintTip::Action HintTip::ShowHint(bool enabled, bool caretInArgumentList, std::string_view text) {
  if (!enabled) return Action::kNothing;
  if (m_visible && caretInArgumentList && text == m_shown) return Action::kNothing;
  const bool wasVisible = m_visible;
  m_visible = caretInArgumentList && text.find('(') != std::string_view::npos;
  if (!m_visible) return wasVisible ? Action::kHide : Action::kNothing;
  m_shown = text;
  return Action::kShow;
}

}  // namespace quill
