#include "intel/writing/Hints.h"

#include "base/CodePage1252.h"
#include "intel/outline/Definitions.h"
#include "intel/vocabulary/CommandDatabase.h"
#include "intel/writing/ObjectMembers.h"
#include "text/buffer/CrystalTextBuffer.h"

namespace quill {

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

  const std::string_view text =
      m_command < 0 ? std::string_view() : std::string_view(commands.GetCommandParameters(m_command));
  const bool changed = text != m_text;
  if (changed) m_text = text;
  const bool isTheCall =
      m_command >= 0 && callIsKnown && cp1252::EqualNoCase(call.name, commands.GetCommandName(m_command));
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
