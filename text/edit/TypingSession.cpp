#include "text/edit/TypingSession.h"

#include "base/CodePage1252.h"
#include "text/edit/ColumnBlock.h"
#include "text/edit/UndoStep.h"

namespace quill {

bool TypingSession::TypeCharacter(EditTarget& target, char c) {
  const CCrystalTextBuffer& buffer = target.Buffer();
  if (buffer.IsReadOnly() || static_cast<uint8_t>(c) < ' ') return false;
  if (target.IsColumnSelection()) {
    Forget();
    return edit::TypeIntoBlock(target, {&c, 1}, action::kTyping);
  }
  const TextPosition caret = target.Caret();
  const bool joins =
      m_active && caret == m_place && cp1252::IsAsciiAlnum(c) == cp1252::IsAsciiAlnum(m_character);
  UndoStep step(target, action::kTyping, joins);
  if (target.HasSelection()) {
    step.DeleteSelection();
  } else if (target.IsOverwriting() && caret.character < buffer.LineLength(caret.line)) {
    step.Delete({caret, {caret.line, caret.character + 1}});
  }
  m_place = step.Insert(target.Caret(), {&c, 1});
  m_character = c;
  m_active = true;
  target.PlaceCaret(m_place);
  step.CloseWithHook();
  return true;
}

bool TypingSession::TypeEnter(EditTarget& target) {
  const CCrystalTextBuffer& buffer = target.Buffer();
  const int32_t below = target.NextShown(target.Caret().line);
  if (target.IsOverwriting() && below < buffer.LineCount()) {
    target.PlaceCaret({below, 0});
    return true;
  }
  if (buffer.IsReadOnly()) return false;
  UndoStep step(target, action::kTyping);
  step.DeleteSelection();
  target.PlaceCaret(step.Insert(target.Caret(), "\r\n"));
  step.CloseWithHook();
  return true;
}

}  // namespace quill
