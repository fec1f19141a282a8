#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>
#include <QToolBar>

#include "res/Menus.h"
#include "res/ui/UiText.h"
#include "shell/ui/CommandRouter.h"
#include "shell/ui/DockBars.h"
#include "shell/ui/QuillDoc.h"
#include "shell/ui/QuillView.h"
#include "shell/ui/Workspace.h"
#include "ui/ShellFixture.h"

namespace quill {
namespace {

class MenuCommands : public ShellFixture {
 protected:
  /// A menu as text, a line an entry: marks for checked and disabled, the label, the key.
  std::string Print(const std::string& path) {
    QMenu* menu = MenuAction(path)->menu();
    std::string text;
    for (QAction* action : menu->actions()) {
      if (!action->isVisible()) continue;
      if (action->isSeparator()) {
        text += "--\n";
        continue;
      }
      const std::string label = ToBytes(action->text());
      const std::string key = ToBytes(action->shortcut().toString());
      text += std::string(action->isChecked() ? "v " : "") + (action->isEnabled() ? "" : "- ") +
              PlainLabel(label) +
              (label.find('\t') != std::string::npos ? label.substr(label.find('\t'))
               : key.empty()                         ? ""
                                                     : "\t" + key) +
              (action->menu() != nullptr ? " >" : "") + "\n";
    }
    return text;
  }
};

TEST_F(MenuCommands, MenusShowWhatCanBeDoneNow) {
  ASSERT_EQ(Start(), CQuillApp::Started::kRunning);
  std::string bar;
  for (QAction* action : Frame().menuBar()->actions()) bar += ToBytes(action->text()) + " ";
  EXPECT_EQ(bar, "&File &Edit &View &Project &Debug &Options Plugins &Window &Help ");
  EXPECT_EQ(Print("File"),
            "New\tCtrl+N\nOpen\tCtrl+O\n- Reload\tCtrl+R\nRecover Unsaved Text\n--\nClose\tCtrl+W\nClose "
            "All\tCtrl+Shift+W\n--\n"
            "Save\tCtrl+S\nSave As\tCtrl+Shift+S\n- Save All\tCtrl+Alt+S\nRead-Only\nLine Ends >\n--\n"
            "- Copy Path\n- Open Containing Folder\n--\nPage Setup\n"
            "Print\tCtrl+P\nPrint to PDF\n--\n- No recent files\n--\nExit\tCtrl+Q\n");
  EXPECT_EQ(Print("Edit > Bookmarks"),
            "Toggle bookmark\tCtrl+F2\nNext bookmark\tF2\nPrevious bookmark\tShift+F2\n"
            "Clear bookmarks\tCtrl+Shift+F2\n--\nSet Numbered Bookmark >\nGo to Numbered Bookmark >\n"
            "- Remove Numbered Bookmark\nClear Numbered Bookmarks\n");
  EXPECT_EQ(Print("Edit > Outlining"),
            "Toggle Block\tAlt+C\nExpand All\tCtrl+Num '+'\nCollapse All\tCtrl+Num '-'\n");
  Open("a.vsl", "x");
  Type("y");
  EXPECT_EQ(Print("Window"),
            "New Window\n--\nv Tabbed\n- Cascade\n- Tile Horizontally\n- Tile Vertically\n--\n"
            "- Next\tCtrl+Tab\n- Previous\tCtrl+Shift+Tab\n--\n- Close Others\n"
            "- Close to the Right\nClose All\n--\nv 1 a.vsl*\n");
  EXPECT_EQ(MenuAction("File > 1 " + m_folder.Path("a.vsl"))->statusTip(), "Opens this file again");
}

TEST_F(MenuCommands, EveryCommandOfTheTableHasAHandlerOrSaysWhyNot) {
  ASSERT_EQ(Start(), CQuillApp::Started::kRunning);
  for (const Command& command : Commands()) {
    const bool handled = Parts().router.HasHandler(command.id);
    EXPECT_NE(handled, !UnavailableReason(command).empty()) << command.name;
    QAction* action = Parts().router.Action(command.id);
    Parts().router.Refresh(command.id);
    if (!handled) {
      EXPECT_FALSE(action->isEnabled()) << command.name;
      EXPECT_EQ(action->statusTip(), UiText(UnavailableReason(command))) << command.name;
    }
    EXPECT_FALSE(action->statusTip().isEmpty()) << command.name;
  }
}

TEST_F(MenuCommands, WithoutADocumentEveryCommandIsSafeAndGivesAReason) {
  WriteFlag(m_settings, settings::kStartBlank, false);
  ASSERT_EQ(Start(), CQuillApp::Started::kRunning);
  for (const Command& command : Commands()) {
    QAction* action = Parts().router.Action(command.id);
    Parts().router.Refresh(command.id);
    if (action->isEnabled() || !action->isVisible()) continue;
    EXPECT_TRUE(action->statusTip().endsWith(".")) << command.name << ": " << ToBytes(action->statusTip());
  }
  EXPECT_FALSE(Choose("Edit > Undo"));
  EXPECT_FALSE(Choose("Window > New Window"));
}

TEST_F(MenuCommands, UndoAndRedoNameTheirActionsAndBothRedoKeysWork) {
  ASSERT_EQ(Start(), CQuillApp::Started::kRunning);
  EXPECT_EQ(MenuAction("Edit > Undo")->text(), "&Undo\tCtrl+Z");
  EXPECT_EQ(MenuAction("Edit > Redo")->text(), "&Redo\tCtrl+Z");
  Type("a");
  EXPECT_EQ(MenuAction("Edit > Undo Typing")->text(), "&Undo Typing\tCtrl+Z");
  Press("Ctrl+Z");
  EXPECT_EQ(ActiveText(), "");
  EXPECT_EQ(MenuAction("Edit > Redo Typing")->text(), "&Redo Typing\tCtrl+Y");
  Press("Ctrl+Y");
  EXPECT_EQ(ActiveText(), "a");
  Press("Ctrl+Z");
  Press("Ctrl+Shift+Z");
  EXPECT_EQ(ActiveText(), "a");
}

TEST_F(MenuCommands, EditCommandsWorkByKeyAndByMenuOnTheActiveView) {
  ASSERT_EQ(Start(), CQuillApp::Started::kRunning);
  struct Row {
    const char *before, *key, *menu, *after;
  };
  const Row rows[] = {
      {"a\r\nb", "Ctrl+D", "Edit > Lines and Case > Duplicate Line", "a|a|b"},
      {"a\r\nb", "Alt+Down", "Edit > Lines and Case > Move Line Down", "b|a"},
      {"a\r\nb", "Ctrl+Shift+K", "Edit > Lines and Case > Delete Line", "b"},
      {"a\r\nb", "Ctrl+Alt+C", "Edit > Comment Line", "//a|b"},
      {"//a\r\nb", "Ctrl+Shift+C", "Edit > Uncomment Line", "a|b"},
      {"ab", "Del", "Edit > Delete", "b"},
      {"a\r\nb", "Ctrl+]", "Edit > Lines and Case > Indent", "\ta|b"},
  };
  int number = 0;
  for (const Row& row : rows) {
    Open(std::to_string(++number) + ".vsl", row.before);
    Press(row.key);
    EXPECT_EQ(ActiveText(), row.after) << row.key;
    Press("Ctrl+Z");
    View().SetCaretPos({0, 0});
    EXPECT_TRUE(Choose(row.menu)) << row.menu;
    EXPECT_EQ(ActiveText(), row.after) << row.menu;
    Press("Ctrl+Z");
  }
  Open("case.vsl", "word");
  EXPECT_FALSE(Choose("Edit > Lines and Case > Upper Case")) << "without a selection";
  Press("Ctrl+A");
  Press("Ctrl+Shift+U");
  EXPECT_EQ(ActiveText(), "WORD");
}

TEST_F(MenuCommands, ToolbarsHaveTheirButtonsInOrderWithTheKeyInTheTip) {
  ASSERT_EQ(Start(), CQuillApp::Started::kRunning);
  std::string titles;
  for (QToolBar* bar : Parts().bars.ToolBarWidgets()) titles += ToBytes(bar->windowTitle()) + " ";
  EXPECT_EQ(titles, "File Edit Debug Bookmark ");
  EXPECT_EQ(Parts().router.Action(CommandId::kFileOpen)->toolTip(), "Open (Ctrl+O)");
  EXPECT_FALSE(Parts().router.Action(CommandId::kFileOpen)->icon().isNull());
}

TEST_F(MenuCommands, AStripOfImagesBesideTheProgramGivesTheToolbarsTheirs) {
  // Two colours, one row a pixel high would be no picture: one white square for the first button.
  std::string strip(128, '\0');
  strip[0] = 0x0A;
  strip[2] = strip[3] = 1;
  strip[8] = strip[10] = 15;
  strip[65] = 1;
  strip[66] = 2;
  m_folder.Write("bin/buttons_qil.pcx", strip + std::string("\x7F", 1) + std::string(31, '\x7F'));
  ASSERT_EQ(Start(), CQuillApp::Started::kRunning);
  const QImage image = Parts().router.Action(CommandId::kFileNew)->icon().pixmap(16, 16).toImage();
  EXPECT_EQ(image.pixel(1, 1), qRgb(255, 255, 255));
  EXPECT_EQ(qAlpha(image.pixel(0, 0)), 0) << "the colour of the first pixel is transparent";
}

TEST_F(MenuCommands, ViewSwitchesAreStoredAtOnceAndShownInEveryView) {
  ASSERT_EQ(Start(), CQuillApp::Started::kRunning);
  const CQuillView& first = View();
  Choose("Window > New Window");
  const struct {
    const char* menu;
    const FlagSetting& setting;
    bool ViewSettings::*shown;
  } rows[] = {
      {"Options > Show Line Numbers", settings::kShowLineNumbers, &ViewSettings::showLineNumbers},
      {"Options > Show Folding", settings::kShowFolding, &ViewSettings::showFolding},
      {"Options > Indentation Guide", settings::kIndentionGuide, &ViewSettings::indentationGuide},
      {"Options > Highlight Selected Line", settings::kHighlightLine, &ViewSettings::highlightLine},
  };
  for (const auto& row : rows) {
    EXPECT_TRUE(MenuAction(row.menu)->isChecked()) << row.menu;
    EXPECT_TRUE(Choose(row.menu)) << row.menu;
    EXPECT_FALSE(ReadFlag(m_settings, row.setting)) << row.menu;
    EXPECT_FALSE(first.Settings().*row.shown || View().Settings().*row.shown) << row.menu;
    EXPECT_FALSE(MenuAction(row.menu)->isChecked()) << row.menu;
  }
}

}  // namespace
}  // namespace quill
