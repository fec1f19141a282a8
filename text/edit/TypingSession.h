#pragma once
#include <cstdint>
#include <optional>

#include "text/edit/AutoClosers.h"
#include "text/edit/EditTarget.h"

namespace quill {

/// Typed characters, Enter, Backspace and Delete. Remembers the last key, so that a word that is typed or
/// taken away in one go is undone as one step. One per view; it is the view that ignores typing while a mouse
/// button is down.
class TypingSession {
 public:
  /// `c` is 32 or above. It replaces the selection, or in overwrite mode the next character, and is put
  /// into every line of a column selection. A closing bracket goes past the one at the caret that the editor
  /// has inserted by itself. False when refused: read-only, or no printable character.
  bool TypeCharacter(EditTarget& target, char c);
  /// In overwrite mode goes to the next line, if there is one; else splits the line.
  bool TypeEnter(EditTarget& target);
  /// The Backspace and the Delete key, as `edit::DeleteLeft` and `edit::DeleteRight`. In a run, a word goes
  /// in one step with the blanks and signs that stand behind it. False when read-only.
  bool TypeBackspace(EditTarget& target);
  bool TypeDelete(EditTarget& target);
  /// To be called when the caret or the selection may have changed: the next key begins a step of its own
  /// unless the caret stands where the last one left it.
  void CaretMoved(const EditTarget& target);
  /// True while nothing but the last key has changed the text.
  bool IsAtLastKey(const EditTarget& target) const {
    return m_run != Run::kNone && m_changes == target.Buffer().ChangeCount();
  }
  /// What followed from the last key is done and belongs to its step: the next key may join it.
  void GoOn(const EditTarget& target) {
    m_place = target.Caret();
    m_changes = target.Buffer().ChangeCount();
  }
  /// A closing bracket at that place came by itself: typing it goes past it.
  void AddCloser(CCrystalTextBuffer& buffer, TextPosition place) { m_closers.Add(buffer, place); }
  /// Another text is edited from now on; to be called while the old one is there.
  void LeaveText() {
    Forget();
    m_closers.Clear();
  }
  /// The next key begins a step of its own.
  void Forget() { m_run = Run::kNone; }

 private:
  enum class Run : uint8_t { kNone, kTyping, kBackspace, kDelete };

  /// True when nothing has happened since the last key, which was of the same run.
  bool Continues(const EditTarget& target, Run run) const;
  void Remember(const EditTarget& target, Run run, TextPosition place, char c);
  /// Where the closing bracket stands that a typed one goes past.
  std::optional<TextPosition> CloserAhead(const EditTarget& target, char c) const;
  bool TypeOver(EditTarget& target, char c);
  /// Sees what the hook has done about a typed character.
  void FollowHook(EditTarget& target, char c);
  bool Erase(EditTarget& target, Run run, TextPosition to);

  AutoClosers m_closers;
  Run m_run = Run::kNone;
  TextPosition m_place;    ///< where the last key left the caret
  char m_character = 0;    ///< that it typed or took away
  uint64_t m_changes = 0;  ///< the buffer's count then
};

}  // namespace quill
