#include "text/edit/TypingSession.h"

#include <utility>

#include "base/CodePage1252.h"
#include "text/edit/ColumnBlock.h"
#include "text/edit/DeleteCommands.h"
#include "text/edit/Indentation.h"
#include "text/edit/UndoStep.h"

namespace quill {
namespace {

bool LeavesBraceOpen(std::string_view text) {
  int depth = 0;
  for (size_t i = text.size(); i-- > 0 && depth >= 0;) {
    depth += text[i] == '}' ? 1 : text[i] == '{' ? -1 : 0;
  }
  return depth < 0;
}

}  // namespace

bool TypingSession::Continues(const EditTarget& target, Run run) const {
  const CCrystalTextBuffer& buffer = target.Buffer();
  // A saved text is the end of a step: else undoing would go past it.
  return m_run == run && m_changes == buffer.ChangeCount() && target.Caret() == m_place &&
         !target.HasSelection() && !buffer.History().IsAtSaved();
}

void TypingSession::Remember(const EditTarget& target, Run run, TextPosition place, char c) {
  m_run = run;
  m_place = place;
  m_character = c;
  m_changes = target.Buffer().ChangeCount();
}

void TypingSession::CaretMoved(const EditTarget& target) {
  if (target.Caret() != m_place || target.HasSelection()) Forget();
}

bool TypingSession::TypeCharacter(EditTarget& target, char c) {
  CCrystalTextBuffer& buffer = target.Buffer();
  if (buffer.IsReadOnly() || static_cast<uint8_t>(c) < ' ') return false;
  if (target.IsColumnSelection()) {
    Forget();
    return edit::TypeIntoBlock(target, {&c, 1}, action::kTyping);
  }
  if (TypeOver(target, c)) return true;
  const TextPosition caret = target.Caret();
  const bool joins =
      Continues(target, Run::kTyping) && cp1252::IsAsciiAlnum(c) == cp1252::IsAsciiAlnum(m_character);
  // Of the characters before this one: the hook is told the last record alone.
  if (joins) buffer.JoinLastRecords();
  UndoStep step(target, action::kTyping, joins);
  if (target.HasSelection()) {
    step.DeleteSelection();
  } else if (target.IsOverwriting() && caret.character < buffer.LineLength(caret.line)) {
    step.Delete({caret, {caret.line, caret.character + 1}});
  }
  const TextPosition end = step.Insert(target.Caret(), {&c, 1});
  Remember(target, Run::kTyping, end, c);
  target.PlaceCaret(end);
  step.CloseWithHook();
  FollowHook(target, c);
  return true;
}

void TypingSession::FollowHook(EditTarget& target, char c) {
  CCrystalTextBuffer& buffer = target.Buffer();
  // What it did belongs to the character.
  const uint64_t edits = buffer.ChangeCount() - std::exchange(m_changes, buffer.ChangeCount());
  if (edits != 1) return;
  const auto last = buffer.History().Last();
  const TextPosition caret = target.Caret();
  const bool closed =
      last && last->IsInsert() && last->action == action::kIndent && last->range.start == caret;
  if (closed) m_closers.Add(buffer, {last->range.end.line, last->range.end.character - 1});
  if (c == ')' && caret.character > 0) m_closers.Remove({caret.line, caret.character - 1});
}

std::optional<TextPosition> TypingSession::CloserAhead(const EditTarget& target, char c) const {
  const CCrystalTextBuffer& buffer = target.Buffer();
  const EditSettings settings = target.Settings();
  const auto at = [&](TextPosition place) {
    return buffer.Line(place.line).substr(static_cast<size_t>(place.character), 1);
  };
  TextPosition place = target.Caret();
  if (c == ')') {
    // Behind a "()" of the line it stays, and between "(" and ")" it is the hook that steps over.
    const std::string_view before = buffer.Line(place.line).substr(0, static_cast<size_t>(place.character));
    const bool hookDoes = settings.autoIndent && settings.autoBrackets && before.ends_with('(');
    if (hookDoes || before.find("()") != std::string_view::npos) return std::nullopt;
  } else if (c == '}') {
    while (at(place).empty() || cp1252::IsSpace(at(place).front())) {
      const TextPosition next = PlaceAfter(buffer, place);
      if (next == place) return std::nullopt;
      place = next;
    }
  } else if (c != ']') {
    return std::nullopt;
  }
  const bool isThere = at(place) == std::string_view(&c, 1) && m_closers.Has(buffer, place);
  return isThere ? std::optional(place) : std::nullopt;
}

bool TypingSession::TypeOver(EditTarget& target, char c) {
  if (!target.Settings().typeOverClosers || target.IsOverwriting() || target.HasSelection()) return false;
  std::optional<TextPosition> closer = CloserAhead(target, c);
  if (!closer) return false;
  m_closers.Remove(*closer);
  const TextPosition caret = target.Caret();
  const std::string_view before =
      target.Buffer().Line(caret.line).substr(0, static_cast<size_t>(caret.character));
  const bool onEmptyLine = LeadingWhiteSpace(before) >= caret.character;
  if (closer->line > caret.line && (onEmptyLine || LeavesBraceOpen(before))) {
    // The line was begun for this bracket, or the block ends on the line on which it began.
    const TextRange between =
        onEmptyLine ? TextRange{{caret.line, 0}, {closer->line, 0}} : TextRange{caret, *closer};
    UndoStep step(target, action::kIndent);
    step.Delete(between, FlagsFollow::kText);
    closer = PositionAfterDelete(*closer, between);
  }
  target.PlaceCaret({closer->line, closer->character + 1});
  Forget();
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
  Forget();
  UndoStep step(target, action::kTyping);
  step.DeleteSelection();
  target.PlaceCaret(step.Insert(target.Caret(), "\r\n"));
  step.CloseWithHook();
  return true;
}

bool TypingSession::TypeBackspace(EditTarget& target) {
  if (target.HasSelection() || target.IsColumnSelection()) return Forget(), edit::DeleteLeft(target);
  return Erase(target, Run::kBackspace, PlaceBefore(target.Buffer(), target.Caret()));
}

bool TypingSession::TypeDelete(EditTarget& target) {
  if (target.HasSelection() || target.IsColumnSelection()) return Forget(), edit::DeleteRight(target);
  return Erase(target, Run::kDelete, PlaceAfter(target.Buffer(), target.Caret()));
}

bool TypingSession::Erase(EditTarget& target, Run run, TextPosition to) {
  CCrystalTextBuffer& buffer = target.Buffer();
  if (buffer.IsReadOnly()) return false;
  const TextRange range = TextRange::Between(target.Caret(), to);
  if (range.IsEmpty()) return true;
  const std::string_view erased = buffer.PieceOf(range, range.start.line);
  const char c = erased.empty() ? '\n' : erased.front();
  const bool inWord = cp1252::IsWordChar(c);
  const bool wasInWord = cp1252::IsWordChar(m_character);
  const bool passesWordStart = run == Run::kBackspace ? wasInWord && !inWord : !wasInWord && inWord;
  const bool joins = Continues(target, run) && !passesWordStart;
  UndoStep step(target, run == Run::kBackspace ? action::kBackspace : action::kDelete, joins);
  step.Delete(range);
  // Else a history of so many records would hold no more keys than that.
  if (joins) buffer.JoinLastRecords();
  Remember(target, run, range.start, c);
  target.PlaceCaret(range.start);
  return true;
}

}  // namespace quill
