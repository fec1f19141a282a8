#include "res/Commands.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <map>
#include <regex>
#include <set>

#include "res/Menus.h"
#include "support/Paths.h"

namespace quill {
namespace {

using enum CommandId;

bool IsPlainText(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return c == '\t' || (c >= ' ' && c <= '~'); });
}

/// Lower-case mnemonic of a menu text; 0 for none.
char MnemonicOf(std::string_view text) {
  const size_t mark = text.find('&');
  return mark == std::string_view::npos ? 0 : static_cast<char>(std::tolower(text.at(mark + 1)));
}

/// Calls `visit(menu)` for a menu and everything below it.
template <typename Visit>
void ForEachMenu(const Menu& menu, const Visit& visit) {
  visit(menu);
  for (const MenuEntry& entry : menu.entries)
    if (entry.submenu) ForEachMenu(*entry.submenu, visit);
}

TEST(Commands, AreFoundByTheirUniqueNumberAndName) {
  for (const Command& command : Commands()) {
    EXPECT_EQ(FindCommand(command.id), &command) << command.name;
    EXPECT_EQ(FindCommand(command.name), &command) << command.name;
    EXPECT_TRUE(IsPlainText(command.menuText) && IsPlainText(command.help)) << command.name;
    EXPECT_FALSE(command.help.empty() || command.help.ends_with('.')) << command.name;
  }
  EXPECT_EQ(FindCommand(kNone), nullptr);
  EXPECT_EQ(FindCommand("edit.none"), nullptr);
}

TEST(Commands, NoKeyBelongsToTwoCommandsOrHidesAMenu) {
  const std::regex form(
      R"((Ctrl\+)?(Alt\+)?(Shift\+)?(Num\+)?([A-Z0-9+=\-\[\]]|F[1-9]|F1[0-2]|Up|Down|Left|Right|)"
      R"(Tab|Space|Backspace|Del|Ins))");
  std::map<std::string_view, std::string_view> owners;
  for (const Menu& menu : MenuBar()) {
    static std::set<std::string> keys;
    if (const char mnemonic = MnemonicOf(menu.text)) {
      const std::string key = std::string("Alt+") + static_cast<char>(std::toupper(mnemonic));
      owners.emplace(*keys.insert(key).first, menu.text);
    }
  }
  for (const Command& command : Commands()) {
    for (std::string_view key : ShortcutsOf(command)) {
      const auto [owner, isNew] = owners.emplace(key, command.name);
      EXPECT_TRUE(isNew) << key << ": " << command.name << " and " << owner->second;
      EXPECT_TRUE(std::regex_match(std::string(key), form)) << key;
    }
  }
}

TEST(Commands, EveryNamedIconIsAFile) {
  for (const Command& command : Commands()) {
    if (command.icon.empty()) continue;
    const std::string path = QUILL_SOURCE_DIR "/res/icons/" + std::string(command.icon) + ".svg";
    EXPECT_TRUE(std::filesystem::exists(path)) << command.name << ": " << path;
  }
}

TEST(Commands, FixedEntriesHaveTheirTextsAndKeys) {
  struct Row {
    CommandId id;
    const char *path, *text, *key;
  };
  const Row rows[] = {
      {kEditUndo, "Edit", "&Undo\tCtrl+Z", "Ctrl+Z"},
      {kEditRedo, "Edit", "&Redo\tCtrl+Z", "Ctrl+Y"},
      {kEditIndentAll, "Edit", "Indent All\tCtrl+Alt+A", "Ctrl+Alt+A"},
      {kEditCommentLine, "Edit", "Comment Line\tCtrl+Alt+C", "Ctrl+Alt+C"},
      {kEditUncommentLine, "Edit", "Uncomment Line\tCtrl+Shift+C", "Ctrl+Shift+C"},
      {kEditInsertDate, "Edit", "Insert Date", ""},
      {kEditFindInFiles, "Edit", "Find In Files", "Ctrl+Shift+F"},
      {kBookmarkToggle, "Edit > Bookmarks", "&Toggle bookmark", "Ctrl+F2"},
      {kBookmarkClear, "Edit > Bookmarks", "&Clear bookmarks", "Ctrl+Shift+F2"},
      {kBookmarkSet9, "Edit > Bookmarks > Set Numbered Bookmark", "Set Bookmark &9", "Ctrl+Shift+9"},
      {kBookmarkGo0, "Edit > Bookmarks > Go to Numbered Bookmark", "Go to Bookmark &0", "Ctrl+0"},
      {kOutlineToggleBlock, "Edit > Outlining", "T&oggle Block\tAlt+C", "Alt+C"},
      {kOutlineExpandAll, "Edit > Outlining", "&Expand All\tCtrl+Num '+'", "Ctrl+Num++"},
      {kOutlineCollapseAll, "Edit > Outlining", "&Collapse All\tCtrl+Num '-'", "Ctrl+Num+-"},
      {kDebugTestRun, "Debug", "Test Run", "F5"},
      {kDebugSetCurrentFile, "Debug", "Set current file to run", "Alt+F5"},
      {kDebugSyntaxCheck, "Debug", "Syntax Check", "F6"},
      {kDebugStepOver, "Debug", "Step Over", "F4"},
      {kDebugGoToPosition, "Debug", "Goto current debugposition", "F10"},
      {kDebugToggleBreakpoint, "Debug", "Toggle Breakpoint", "F9"},
      {kDebugDeleteAllWatches, "Debug", "Delete All Watches", ""},
      {kOptionsHighlightLine, "Options", "H&ighlight Selected Line", ""},
      {kOptionsIndentGuide, "Options", "Indentation Guide", ""},
      {kOptionsLineNumbers, "Options", "Show Line Numbers", ""},
      {kPluginPlaceholder, "Plugins", "No plugins loaded", ""},
      {kHelpManual, "Help", "&Manual", "F1"},
  };
  for (const Row& row : rows) {
    const Command* command = FindCommand(row.id);
    ASSERT_NE(command, nullptr) << row.text;
    EXPECT_EQ(command->menuText, row.text);
    EXPECT_EQ(command->shortcuts[0], row.key) << row.text;
    EXPECT_EQ(MenuPath(row.id), row.path) << row.text;
  }
  const auto redoKeys = ShortcutsOf(*FindCommand(kEditRedo));
  EXPECT_EQ(std::vector(redoKeys.begin(), redoKeys.end()),
            (std::vector<std::string_view>{"Ctrl+Y", "Ctrl+Shift+Z"}));
  EXPECT_EQ(static_cast<int>(kPluginPlaceholder), 221);
  EXPECT_EQ(kPluginLast - kPluginFirst, 9);
}

TEST(Commands, OnesNotBuiltYetSayWhyInASentence) {
  EXPECT_EQ(UnavailableReason(*FindCommand(kFileOpen)), "");
  for (const Command& command : Commands()) {
    const std::string_view reason = UnavailableReason(command);
    EXPECT_TRUE(reason.empty() || reason.ends_with(" in a later version.")) << command.name << ": " << reason;
  }
}

TEST(Commands, PlainLabelDropsMarksKeysAndDots) {
  EXPECT_EQ(PlainLabel("T&oggle Block\tAlt+C"), "Toggle Block");
  EXPECT_EQ(PlainLabel("&Open..."), "Open");
  EXPECT_EQ(PlainLabel("Save && &Close&"), "Save & Close");
}

TEST(Menus, StandInTheOrderThatUsersExpect) {
  std::string order;
  for (const Menu& menu : MenuBar()) order += std::string(menu.text) + " ";
  EXPECT_EQ(order, "&File &Edit &View &Project &Debug &Options Plugins &Window &Help ");
}

TEST(Menus, MnemonicsAreUniqueInEachMenuAndLinesStandBetweenEntries) {
  for (const Menu& top : MenuBar()) {
    ForEachMenu(top, [](const Menu& menu) {
      std::map<char, std::string_view> owners;
      const auto claim = [&](std::string_view text) {
        const char mnemonic = MnemonicOf(text);
        if (mnemonic == 0) return;
        const auto [owner, isNew] = owners.emplace(mnemonic, text);
        EXPECT_TRUE(isNew) << menu.text << ": " << text << " and " << owner->second;
      };
      bool afterLine = true;
      for (const MenuEntry& entry : menu.entries) {
        const bool isLine = entry.kind == MenuEntry::Kind::kSeparator;
        EXPECT_FALSE(isLine && afterLine) << menu.text;
        afterLine = isLine;
        if (entry.submenu) claim(entry.submenu->text);
        if (entry.kind != MenuEntry::Kind::kCommands) continue;
        for (int i = 0; i <= entry.last - entry.first; ++i) {
          const Command* command = FindCommand(entry.first + i);
          ASSERT_NE(command, nullptr) << menu.text << ": " << static_cast<int>(entry.first + i);
          EXPECT_FALSE(command->menuText.empty()) << command->name;
          claim(command->menuText);
        }
      }
      EXPECT_FALSE(afterLine) << menu.text;
    });
  }
}

TEST(Menus, HoldEveryCommandOnce) {
  std::map<CommandId, int> uses;
  for (const Menu& top : MenuBar()) {
    ForEachMenu(top, [&](const Menu& menu) {
      for (const MenuEntry& entry : menu.entries)
        for (int i = 0; i <= entry.last - entry.first; ++i) ++uses[entry.first + i];
    });
  }
  for (const Command& command : Commands()) EXPECT_EQ(uses[command.id], 1) << command.name;
}

TEST(ToolBars, HoldCommandsWithPicturesNumberedFromLeftToRight) {
  int next = 0;
  std::string titles;
  for (const ToolBar& bar : ToolBars()) {
    titles += std::string(bar.title) + " ";
    for (CommandId id : bar.buttons) {
      if (id == kNone) continue;
      ASSERT_NE(FindCommand(id), nullptr) << bar.title;
      EXPECT_FALSE(FindCommand(id)->icon.empty()) << FindCommand(id)->name;
      EXPECT_EQ(ToolBarImageIndex(id), next++) << FindCommand(id)->name;
      EXPECT_EQ(ToolBarOf(id), &bar);
    }
  }
  EXPECT_EQ(titles, "File Edit Debug Bookmark ");
  EXPECT_EQ(ToolBarImageIndex(kHelpAbout), -1);
  EXPECT_EQ(ToolBarOf(kHelpAbout), nullptr);
}

}  // namespace
}  // namespace quill
