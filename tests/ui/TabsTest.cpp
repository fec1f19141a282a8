// Tabs, what surrounds them, and the way through the windows by Ctrl+Tab.
#include <QClipboard>
#include <QHelpEvent>
#include <QListWidget>
#include <QTabBar>
#include <QTest>
#include <QToolButton>
#include <QToolTip>
#include <QWindow>
#include <algorithm>
#include <filesystem>

#include "shell/ui/QuillDoc.h"
#include "shell/ui/QuillView.h"
#include "shell/ui/Workspace.h"
#include "ui/PopupMenu.h"
#include "ui/ScreenFixture.h"

namespace quill {
namespace {

using Answer = Prompts::Answer;

class DocumentTabs : public ScreenFixture {
 protected:
  DocumentTabs() { Start(); }

  void OpenAll(std::initializer_list<const char*> names) {
    for (const char* name : names) {
      std::filesystem::create_directories(std::filesystem::path(m_folder.Path(name)).parent_path());
      Open(name, name);
    }
  }
  QToolButton& ListButton() { return *Frame().findChild<QToolButton*>("TabList"); }
  std::string ContextMenu(int tab, const std::string& label = {}) {
    return ChooseFromPopup(
        [&] {
          const QPoint place = TabBar().mapTo(&Frame(), TabBar().tabRect(tab).center());
          QTest::mousePress(Frame().windowHandle(), Qt::RightButton, {}, place);
          Pump();
          QTest::mouseRelease(Frame().windowHandle(), Qt::RightButton, {}, place);
        },
        label);
  }
  std::string TipAt(QWidget& widget, QPoint place) {
    QToolTip::hideText();
    EXPECT_TRUE(QTest::qWaitFor([] { return !QToolTip::isVisible(); }));
    QHelpEvent event(QEvent::ToolTip, place, widget.mapToGlobal(place));
    QApplication::sendEvent(&widget, &event);
    return ToBytes(QToolTip::text());
  }

  /// With the keys going to the window, as the platform sends them.
  void HoldTab(Qt::KeyboardModifiers held = Qt::ControlModifier) {
    QTest::keyPress(Frame().windowHandle(), Qt::Key_Tab, held);
    Pump();
  }
  void Release(Qt::KeyboardModifiers held = Qt::ControlModifier) {
    QTest::keyRelease(Frame().windowHandle(), Qt::Key_Tab, held);
    Pump();
  }
  /// The rows of the list of windows, the chosen one in brackets; empty while it is not there.
  std::string Switcher() {
    const auto* list = Frame().findChild<QListWidget*>("WindowSwitcher");
    std::string rows;
    for (int i = 0; list != nullptr && list->isVisible() && i < list->count(); ++i) {
      const std::string text = ToBytes(list->item(i)->text());
      rows += (rows.empty() ? "" : " ") + (i == list->currentRow() ? "[" + text + "]" : text);
    }
    return rows;
  }
};

TEST_F(DocumentTabs, NamesStayWholeHoweverManyThereAre) {
  Frame().resize(1280, 800);
  for (int i = 0; i < 14; ++i) Open("a_script_of_some_length_" + std::to_string(i) + ".vsl", "");
  for (int i = 0; i < TabBar().count(); ++i) {
    EXPECT_GT(TabBar().tabRect(i).width(), TabBar().fontMetrics().horizontalAdvance(TabBar().tabText(i)))
        << i;
  }
  const QRect current = TabBar().tabRect(TabBar().currentIndex());
  EXPECT_TRUE(TabBar().rect().contains(current)) << "the last one is scrolled to";
  int arrows = 0;
  for (const auto* button : TabBar().findChildren<QToolButton*>()) arrows += button->isVisible() ? 1 : 0;
  EXPECT_EQ(arrows, 2);
  ASSERT_TRUE(ListButton().isVisible());
  EXPECT_FALSE(ListButton().geometry().intersects(TabBar().geometry()));

  const std::string entries = ChooseFromPopup([this] { QTest::mouseClick(&ListButton(), Qt::LeftButton); },
                                              "2 a_script_of_some_length_1.vsl");
  EXPECT_EQ(std::ranges::count(entries, '|'), 13) << entries;
  EXPECT_TRUE(Tabs().find("[a_script_of_some_length_1.vsl]") != std::string::npos) << Tabs();
  Choose("Window > Tabbed");
  EXPECT_FALSE(ListButton().isVisible());
  Choose("Window > Tabbed");
  EXPECT_TRUE(ListButton().isVisible());
  EXPECT_FALSE(ListButton().geometry().intersects(TabBar().geometry()));
}

TEST_F(DocumentTabs, AlikeNamesShowTheirFolders) {
  OpenAll({"x/main.vsl", "hud.vsl", "y/main.vsl"});
  EXPECT_EQ(Tabs(), "main.vsl (x) hud.vsl [main.vsl (y)]");
  Type("1");
  EXPECT_EQ(Tabs(), "main.vsl (x) hud.vsl [main.vsl (y)*]");
  EXPECT_NE(MenuAction("Window > 1 main.vsl (x)"), nullptr);
  EXPECT_EQ(TipAt(TabBar(), TabBar().tabRect(0).center()), m_folder.Path("x/main.vsl"));
  EXPECT_EQ(TipAt(*View().viewport(), {200, 50}), "") << "nothing covers the text";
  m_prompts.ExpectFile(m_folder.Path("y/other.vsl"));
  Press("Ctrl+Shift+S");
  EXPECT_EQ(Tabs(), "main.vsl hud.vsl [other.vsl]");
  m_prompts.ExpectFile(m_folder.Path("hud.vsl.d.vsl"));
  Press("Ctrl+Shift+S");
  OpenAll({"z/hud.vsl"});
  Press("Ctrl+W");
  EXPECT_EQ(Tabs(), "main.vsl hud.vsl [hud.vsl.d.vsl]") << "the other one has gone";
  EXPECT_EQ(TipAt(TabBar(), TabBar().tabRect(2).center()), m_folder.Path("hud.vsl.d.vsl"));
}

TEST_F(DocumentTabs, TheirMenuIsForTheTabThatWasClicked) {
  std::string shown;
  m_showFolder = [&shown](const std::string& folder) {
    shown = folder;
    return !folder.ends_with("a");
  };
  Start();
  OpenAll({"1.vsl", "2.vsl", "3.vsl", "4.vsl", "a/5.vsl"});
  const std::string entries = ContextMenu(4);
  for (const char* entry :
       {"Close|Close Others|(Close to the Right)|", "|Copy Path|Open Containing Folder"}) {
    EXPECT_NE(entries.find(entry), std::string::npos) << entries;
  }
  ContextMenu(1, "Copy Path");
  EXPECT_EQ(ToBytes(QApplication::clipboard()->text()), m_folder.Path("2.vsl"));
  ContextMenu(1, "Open Containing Folder");
  EXPECT_EQ(shown, m_folder.Folder().string());
  m_prompts.Expect("The folder \"" + m_folder.Path("a") + "\" could not be shown.", Answer::kOk);
  ContextMenu(4, "Open Containing Folder");

  ContextMenu(1, "Close to the Right");
  EXPECT_EQ(Tabs(), "1.vsl [2.vsl]");
  ContextMenu(0, "Close Others");
  EXPECT_EQ(Tabs(), "[1.vsl]");
  EXPECT_EQ(ActiveText(), "1.vsl");
}

TEST_F(DocumentTabs, ClosingSeveralAsksOnceAndACancelKeepsAll) {
  OpenAll({"1.vsl", "2.vsl", "3.vsl"});
  Choose("Window > New Window");
  for (int tab : {1, 2}) {
    QTest::mouseClick(&TabBar(), Qt::LeftButton, {}, TabBar().tabRect(tab).center());
    Pump();
    Type("x");
  }
  EXPECT_EQ(Tabs(), "1.vsl 2.vsl* [3.vsl:1*] 3.vsl:2*");
  m_prompts.ExpectSaveAll("2.vsl, 3.vsl", Answer::kCancel);
  ContextMenu(0, "Close Others");
  EXPECT_EQ(Tabs(), "[1.vsl] 2.vsl* 3.vsl:1* 3.vsl:2*");
  m_prompts.Expect("Save the changes to \"2.vsl\"?", Answer::kDiscard);
  ContextMenu(2, "Close Others");
  EXPECT_EQ(Tabs(), "[3.vsl*]") << "one of its windows is left: not asked about";
  EXPECT_EQ(m_folder.Read("2.vsl"), "2.vsl");
}

TEST_F(DocumentTabs, CtrlTabGoesBackInUseWhileCtrlIsHeld) {
  OpenAll({"a.vsl", "b.vsl", "c.vsl", "d.vsl"});
  HoldTab();
  EXPECT_EQ(Switcher(), "d.vsl [c.vsl] b.vsl a.vsl");
  EXPECT_EQ(ActiveText(), "d.vsl") << "until the key is released";
  HoldTab();
  EXPECT_EQ(Switcher(), "d.vsl c.vsl [b.vsl] a.vsl");
  Release();
  EXPECT_EQ(Switcher(), "");
  EXPECT_EQ(ActiveText(), "b.vsl");
  Type("1");
  EXPECT_EQ(ActiveText(), "1b.vsl") << "the focus is in its text";

  Press("Ctrl+Tab");
  EXPECT_EQ(ActiveText(), "d.vsl") << "a short press goes there and back";
  Press("Ctrl+Tab");
  EXPECT_EQ(ActiveText(), "1b.vsl");
  HoldTab(Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(Switcher(), "b.vsl* d.vsl c.vsl [a.vsl]") << "round the end";
  QTest::keyClick(Frame().windowHandle(), Qt::Key_Escape, Qt::NoModifier);
  Pump();
  EXPECT_EQ(Switcher(), "");
  Release(Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(ActiveText(), "1b.vsl") << "Escape leaves all as it was";

  HoldTab();
  QApplication::setActiveWindow(nullptr);
  Pump();
  EXPECT_EQ(Switcher(), "") << "nothing stays over another program's window";
  QApplication::setActiveWindow(&Frame());
  Pump();
  Press("Ctrl+Z");
  Press("Ctrl+W");
  EXPECT_EQ(ActiveText(), "d.vsl") << "closing, too, goes back to the one used before";
}

}  // namespace
}  // namespace quill
