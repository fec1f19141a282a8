#pragma once
#include "text/edit/EditTarget.h"

namespace quill {

/// Typed characters and Enter. Remembers the last typed character, so that a word typed in one go is
/// undone as one step. One per view; it is the view that ignores typing while a mouse button is down.
class TypingSession {
 public:
  /// `c` is 32 or above. It replaces the selection, or in overwrite mode the next character, and is put
  /// into every line of a column selection. False when refused: read-only, or no printable character.
  bool TypeCharacter(EditTarget& target, char c);
  /// In overwrite mode goes to the next line, if there is one; else splits the line.
  bool TypeEnter(EditTarget& target);
  /// The next character begins a step of its own.
  void Forget() { m_active = false; }

 private:
  bool m_active = false;
  TextPosition m_place;  ///< behind the last typed character
  char m_character = 0;
};

}  // namespace quill
