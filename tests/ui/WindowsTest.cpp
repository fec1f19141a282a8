// Windows, tabs and status bar as a user goes about with them.
#include <QApplication>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QTabBar>
#include <QTest>

#include "shell/ui/QuillView.h"
#include "ui/ScreenFixture.h"

namespace quill {
namespace {

using Answer = Prompts::Answer;

class Windows : public ScreenFixture {
 protected:
  Windows() {
    WriteFlag(m_settings, settings::kShowFullPathTitle, true);
    Start();
  }

  void ClickTab(int index) {
    QTest::mouseClick(&TabBar(), Qt::LeftButton, {}, TabBar().tabRect(index).center());
    Pump();
  }
  QMdiArea& Area() { return *Frame().findChild<QMdiArea*>(); }
  std::vector<QRect> Places() {
    std::vector<QRect> places;
    for (const QMdiSubWindow* window : Area().subWindowList()) places.push_back(window->geometry());
    return places;
  }
  bool HasEntry(const std::string& path) { return MenuAction(path) != nullptr; }
  bool IsChecked(const std::string& path) { return MenuAction(path)->isChecked(); }
};

TEST_F(Windows, TabsAndTheWindowMenuActivateDocuments) {
  for (const char* name : {"a.vsl", "b.vsl", "c.vsl"}) Open(name, std::string(1, *name));
  ClickTab(0);
  EXPECT_EQ(ActiveText(), "a");
  Type("1");
  EXPECT_EQ(ActiveText(), "1a") << "the focus is in its text";
  EXPECT_TRUE(Choose("Window > 2 b.vsl"));
  EXPECT_EQ(Tabs(), "a.vsl* [b.vsl] c.vsl");
  Type("2");
  EXPECT_EQ(ActiveText(), "2b");
  EXPECT_TRUE(IsChecked("Window > 2 b.vsl*"));
  EXPECT_FALSE(IsChecked("Window > 1 a.vsl*"));
  EXPECT_FALSE(IsChecked("Window > 3 c.vsl"));
  EXPECT_EQ(MenuAction("Window > 3 c.vsl")->text(), "&3 c.vsl");
  EXPECT_EQ(Area().subWindowList()[0]->toolTip().toStdString(), m_folder.Path("a.vsl"));

  Press("Ctrl+S");
  Press("Ctrl+W");
  EXPECT_EQ(TabBar().count(), 2);
  EXPECT_EQ(Tabs(), "[a.vsl*] c.vsl");
  Type("x");
  EXPECT_EQ(ActiveText(), "1xa") << "the one used before has the focus at once";
  EXPECT_FALSE(HasEntry("Window > 3 c.vsl"));
  for (int i = 3; i < 12; ++i) Press("Ctrl+N");
  EXPECT_TRUE(HasEntry("Window > 11 Untitled10"));
}

TEST_F(Windows, OneDocumentInTwoWindowsIsEditedInBothAndEachKeepsItsCaretAtItsText) {
  Open("a.vsl", "one\r\ntwo\r\nthree");
  View().SetCaretPos({2, 3});
  EXPECT_TRUE(Choose("Window > New Window"));
  EXPECT_EQ(Tabs(), "a.vsl:1 [a.vsl:2]");
  EXPECT_TRUE(HasEntry("Window > 1 a.vsl:1"));
  EXPECT_EQ(Caret(), "1:1");
  Type("0");
  Press("Return");
  ClickTab(0);
  EXPECT_EQ(ActiveText(), "0|one|two|three");
  EXPECT_EQ(Caret(), "4:4") << "one line further down, before the same letter";
  Press("Ctrl+Z");
  Press("Ctrl+Z");
  EXPECT_EQ(ActiveText(), "one|two|three");
  ClickTab(1);
  EXPECT_EQ(Caret(), "1:1");
  EXPECT_TRUE(Choose("Window > New Window"));
  EXPECT_EQ(Tabs(), "a.vsl:1 a.vsl:2 [a.vsl:3]");
  ClickTab(0);
  Press("Ctrl+W");
  EXPECT_EQ(Tabs().find(":3"), std::string::npos) << Tabs();
}

TEST_F(Windows, WithoutTabsTheyAreTiledCascadedAndMaximised) {
  for (const char* name : {"a.vsl", "b.vsl", "c.vsl"}) Open(name, name);
  EXPECT_FALSE(Choose("Window > Cascade"));
  EXPECT_TRUE(Choose("Window > Tabbed"));
  const auto cascaded = Places();
  ASSERT_EQ(cascaded.size(), 3U);
  EXPECT_NE(cascaded[0].topLeft(), cascaded[1].topLeft()) << "each can be seen";
  EXPECT_NE(cascaded[1].topLeft(), cascaded[2].topLeft());
  EXPECT_LT(cascaded[0].width(), Area().viewport()->width());
  EXPECT_EQ(Frame().windowTitle().count("c.vsl"), 1);

  Area().activeSubWindow()->showMaximized();
  Pump();
  EXPECT_EQ(Frame().windowTitle().count("c.vsl"), 1) << "a maximised window adds nothing";
  EXPECT_TRUE(Choose("Window > Tile Horizontally"));
  int height = 0;
  for (const QRect& place : Places()) {
    EXPECT_EQ(place.width(), Area().viewport()->width());
    EXPECT_EQ(place.y(), height);
    height += place.height();
  }
  EXPECT_EQ(height, Area().viewport()->height());
  EXPECT_TRUE(Choose("Window > Tile Vertically"));
  int width = 0;
  for (const QRect& place : Places()) {
    EXPECT_EQ(place.height(), Area().viewport()->height());
    EXPECT_EQ(place.x(), width);
    width += place.width();
  }
  EXPECT_EQ(width, Area().viewport()->width());
  EXPECT_TRUE(Choose("Window > 1 a.vsl"));
  EXPECT_EQ(ActiveText(), "a.vsl");
  EXPECT_TRUE(Choose("Window > Tabbed"));
  EXPECT_EQ(Tabs(), "[a.vsl] b.vsl c.vsl");
}

// Status bar

TEST_F(Windows, ThePanesBelongToTheActiveViewAndFollowTheTabs) {
  Open("a.vsl", "one\r\ntwo one\r\none");
  Press("Ins");
  EXPECT_EQ(Panes(), "Ln 1, Col 1|DOS|OVR|100%");
  Press("Ctrl+F3");
  EXPECT_TRUE(QTest::qWaitFor([this] { return Panes() == "2 of 3|Ln 2, Col 8|DOS|OVR|100%"; })) << Panes();
  Open("b.vsl", "x\n\rx\n\rx");
  EXPECT_EQ(Panes(), "Ln 1, Col 1|UNIX|INS|100%");
  Press("Ctrl+F3");
  EXPECT_TRUE(QTest::qWaitFor([this] { return Panes() == "2 of 3|Ln 2, Col 2|UNIX|INS|100%"; })) << Panes();
  Press("F3");
  Press("Ctrl+-");
  EXPECT_EQ(Panes(), "3 of 3|Ln 3, Col 2|UNIX|INS|90%");
  m_prompts.Expect("Document now read-only!", Answer::kOk);
  EXPECT_TRUE(Choose("File > Read-Only"));
  EXPECT_EQ(Panes(), "3 of 3|Ln 3, Col 2|UNIX|INS|READ|90%");
  ClickTab(0);
  EXPECT_EQ(Panes(), "2 of 3|Ln 2, Col 8|DOS|OVR|100%");
  Press("Ins");
  EXPECT_EQ(Panes(), "2 of 3|Ln 2, Col 8|DOS|INS|100%");
  Press("Escape");
  EXPECT_EQ(Panes(), "Ln 2, Col 8|DOS|INS|100%") << "no pane without matches";
  ClickTab(1);
  EXPECT_EQ(Panes(), "3 of 3|Ln 3, Col 2|UNIX|INS|READ|90%");
  EXPECT_TRUE(Choose("Window > New Window"));
  EXPECT_EQ(Panes(), "Ln 1, Col 1|UNIX|INS|READ|100%") << "each window has its own place and zoom";
  EXPECT_TRUE(Choose("View > Status Bar"));
  EXPECT_EQ(Panes(), "");
  EXPECT_TRUE(Choose("View > Status Bar"));
  EXPECT_EQ(Panes(), "Ln 1, Col 1|UNIX|INS|READ|100%");
}

// Closing

TEST_F(Windows, ACancelInTheMiddleOfSavingAllLosesNothing) {
  const auto modify = [this] {
    for (const char* name : {"a.vsl", "b.vsl"}) {
      Open(name, "");
      Type(name);
    }
    Press("Ctrl+N");
    Type("new");
    Open("c.vsl", "");
    Type("c");
  };
  modify();
  const std::string fresh = "Untitled2";
  EXPECT_EQ(Tabs(), "a.vsl* b.vsl* " + fresh + "* [c.vsl*]");
  for (const char* how : {"File > Close All", "Window > Close All", "File > Exit"}) {
    m_prompts.ExpectSaveAll("a.vsl, b.vsl, " + fresh + ", c.vsl", Answer::kCancel);
    EXPECT_TRUE(Choose(how));
    EXPECT_EQ(Tabs(), "a.vsl* b.vsl* " + fresh + "* [c.vsl*]") << how;
    EXPECT_EQ(m_folder.Read("a.vsl"), "") << how;
  }
  m_prompts.ExpectSaveAll("a.vsl, b.vsl, " + fresh + ", c.vsl", Answer::kSave);
  m_prompts.ExpectFile("");
  EXPECT_TRUE(Choose("File > Close All"));
  EXPECT_EQ(Tabs(), "a.vsl b.vsl " + fresh + "* [c.vsl*]") << "those before are saved, none is closed";
  EXPECT_EQ(m_folder.Read("a.vsl") + m_folder.Read("b.vsl") + m_folder.Read("c.vsl"), "a.vslb.vsl");

  ClickTab(0);
  Type("+");
  m_prompts.ExpectFile("");
  EXPECT_TRUE(Choose("File > Save All"));
  EXPECT_EQ(Tabs(), "[a.vsl] b.vsl " + fresh + "* c.vsl*");
  m_prompts.ExpectFile(m_folder.Path("d.vsl"));
  EXPECT_TRUE(Choose("File > Save All"));
  EXPECT_EQ(Tabs(), "[a.vsl] b.vsl d.vsl c.vsl");
  EXPECT_EQ(m_folder.Read("d.vsl") + m_folder.Read("c.vsl"), "newc");
  EXPECT_FALSE(Choose("File > Save All")) << "nothing is left to save";
  EXPECT_TRUE(Choose("File > Close All"));
  EXPECT_EQ(TabBar().count(), 0);
}

TEST_F(Windows, TheQuestionAboutOneTextShowsIt) {
  Open("a.vsl", "");
  Type("x");
  Open("b.vsl", "");
  m_prompts.Expect("Save the changes to \"a.vsl\"?", Answer::kCancel);
  EXPECT_TRUE(Choose("File > Close All"));
  EXPECT_EQ(Tabs(), "[a.vsl*] b.vsl");
}

TEST_F(Windows, TheTitleFollowsTheNameAndTheTab) {
  const auto title = [this] { return Frame().windowTitle().toStdString(); };
  Press("Ctrl+N");
  Type("x");
  m_prompts.ExpectFile(m_folder.Path("named.vsl"));
  Press("Ctrl+S");
  EXPECT_NE(title().find("named.vsl"), std::string::npos) << title();
  m_prompts.ExpectFile(m_folder.Path("other.vsl"));
  Press("Ctrl+Shift+S");
  EXPECT_NE(title().find("other.vsl"), std::string::npos) << title();
  EXPECT_EQ(title().find("named.vsl"), std::string::npos) << title();
}

}  // namespace
}  // namespace quill
