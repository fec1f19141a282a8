#pragma once
#include <span>
#include <string>
#include <string_view>

#include "res/CommandId.h"
#include "res/Strings.h"

namespace quill {

struct Menu;

/// One line of a menu, or several that belong together.
struct MenuEntry {
  enum class Kind : uint8_t {
    kCommands,   ///< the commands first..last, mostly one
    kSeparator,  ///< a line; two in a row, or one at an end, count as none
    kSubmenu,
    kSeries,  ///< entries first..last whose texts are known only at run time
  };
  Kind kind = Kind::kSeparator;
  CommandId first = CommandId::kNone;
  CommandId last = CommandId::kNone;
  const Menu* submenu = nullptr;
  /// Shown disabled while a series has no entry; number 0 for nothing.
  StringId emptyText{};
};

struct Menu {
  std::string_view text;  ///< with "&" before the mnemonic, if any
  std::span<const MenuEntry> entries;
};

/// A toolbar: its title and its buttons; `CommandId::kNone` is a gap between groups.
struct ToolBar {
  std::string_view title;
  std::span<const CommandId> buttons;
};

/// The menus of the menu bar, left to right.
std::span<const Menu> MenuBar();

/// The four toolbars, left to right.
std::span<const ToolBar> ToolBars();

/// Titles from the menu bar to the menu that holds the command, without mnemonic marks and joined by
/// " > "; empty when no menu holds it.
std::string MenuPath(CommandId id);

/// The toolbar with a button for the command; null when none has.
const ToolBar* ToolBarOf(CommandId id);

/// Number of a command's picture in a strip that holds the toolbars' buttons from left to right,
/// without the gaps; -1 for a command on no toolbar.
int ToolBarImageIndex(CommandId id);

}  // namespace quill
