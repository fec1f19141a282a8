#pragma once
#include <array>
#include <span>
#include <string>
#include <string_view>

#include "res/CommandId.h"
#include "res/Strings.h"

namespace quill {

/// What a command is about.
enum class CommandArea : uint8_t {
  kCore,
  kFind,
  kFindInFiles,
  kProjects,
  kDebugging,
  kWatches,
  kSuiteTools,
  kPlugins,
  kOptionsPages,
  kKeyboardPage,
  kOutline,
  kHints,
  kCompletion,
  kScriptTools,
  kManual,
};

/// Most default keys that one command has.
constexpr int kMaxShortcuts = 3;
using Shortcuts = std::array<std::string_view, kMaxShortcuts>;

/// One command of the program. All texts are ASCII and end with a zero behind their last character.
struct Command {
  CommandId id = CommandId::kNone;
  /// Stable name, "menu.word": what a stored key binding refers to.
  std::string_view name;
  /// The menu entry, with "&" before its mnemonic. A part after a tab is the key text to show as it
  /// stands while the default keys are in force.
  std::string_view menuText;
  /// Default keys in portable form ("Ctrl+Shift+Z", "Ctrl+Num++" for the number pad); empty ones last.
  Shortcuts shortcuts{};
  /// One sentence for the status bar and the tooltip.
  std::string_view help;
  /// Base name of the SVG in res/icons; empty for none.
  std::string_view icon;
  bool checkable = false;
  CommandArea area = CommandArea::kCore;
};

/// Every command, each exactly once.
std::span<const Command> Commands();

/// The command with that number or name; null when there is none.
const Command* FindCommand(CommandId id);
const Command* FindCommand(std::string_view name);

/// Why the commands of an area cannot be used: one sentence; empty once it is built.
std::string_view UnavailableReason(CommandArea area);
inline std::string_view UnavailableReason(const Command& command) {
  return UnavailableReason(command.area);
}

/// The default keys of a command, empty ones left out.
std::span<const std::string_view> ShortcutsOf(const Command& command);

/// The menu text without mnemonic marks, key text and trailing "...": for tooltips and lists.
std::string PlainLabel(std::string_view menuText);

}  // namespace quill
