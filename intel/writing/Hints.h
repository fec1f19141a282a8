#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "intel/outline/Outline.h"
#include "intel/writing/ArgumentList.h"
#include "text/buffer/TextPosition.h"

namespace quill {

class CCrystalTextBuffer;
class CommandDatabase;

/// The hint text of one view: the parameters of the command or function that the caret is about.
class HintText {
 public:
  /// Chooses anew: the command that `completionEntry` (the selected entry of a visible completion list),
  /// else the identifier at the caret, names; else a member behind an object's name; else the command
  /// whose argument list is open at the caret; else the script's function whose is, or that the identifier
  /// names. Returns whether the text changed.
  bool Update(const CCrystalTextBuffer& buffer, TextPosition caret,
              std::optional<std::string_view> completionEntry, const CommandDatabase& commands,
              const Outline& outline);

  /// Empty when there is none.
  const std::string& Text() const { return m_text; }
  /// The command's position in the database, or -1: what the help pane shows.
  int32_t Command() const { return m_command; }
  /// The part of the text that describes the argument at the caret.
  TextPart Argument() const { return m_argument; }

 private:
  std::string m_text;
  int32_t m_command = -1;
  TextPart m_argument;
};

/// Whether the tip with the hint text is to be shown, left or hidden. Keeps what the window last did.
class HintTip {
 public:
  enum class Action : uint8_t {
    kNothing,  ///< leave a visible tip as it is
    kHide,
    kShow,  ///< place it below the caret line, at the caret
  };

  /// `enabled` is the setting "HintsWhileWriting": while it is off, nothing happens at all. An empty text,
  /// or one without "(", hides the tip.
  Action ShowHint(bool enabled, bool caretInArgumentList, std::string_view text);
  bool IsVisible() const { return m_visible; }
  const std::string& ShownText() const { return m_shown; }
  /// The window hid the tip on its own.
  void Dismissed() { m_visible = false; }

 private:
  bool m_visible = false;
  std::string m_shown;
};

}  // namespace quill
