// Who gets a key or a click while the completion list, the tip, marks of a search or stops of a template
// are there.
#include <QApplication>
#include <QLineEdit>
#include <QListView>
#include <QTest>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextCursor>
#include <QTreeWidget>
#include <filesystem>

#include "shell/ui/QuillView.h"
#include "support/Paths.h"
#include "ui/ScreenFixture.h"

namespace quill {
namespace {

class PopupKeys : public ScreenFixture {
 protected:
  void WriteTemplate(const std::string& name, const std::string& text) {
    std::filesystem::create_directories(m_folder.Path("bin/qil_templates"));
    m_folder.Write("bin/qil_templates/" + name + ".txt", text);
  }
  /// Clears the text and types another one.
  void Begin(const std::string& text) {
    PressAll({"Escape", "Ctrl+A", "Del"});
    Type(text);
  }
};

TEST_F(PopupKeys, ADotListsTheMembersOfAnObjectThatWasJustWritten) {
  Start();
  Open("a.vsl", "");
  const struct {
    const char* definition;
    const char* access;
    const char* first;
  } rows[] = {
      {"panel* gauge;", "gauge.", "alpha"},
      {"sky* dome;", "dome.", "blue"},
      {"font* letters;", "letters.", "height"},
      {"var gauge_2;", "gauge_2.", "closed"},
  };
  for (const auto& row : rows) {
    Type(row.definition);
    Press("Return");
    Type(row.access);
    EXPECT_EQ(Selected(), row.first) << row.access;
    PressAll({"Escape", "Return"});
  }
  EXPECT_EQ(Names(), "") << "the outline was not read for that";
}

TEST_F(PopupKeys, EscapeClosesOneThingAfterTheOther) {
  Start();
  Open("a.vsl", "wait\r\nwait\r\n");
  Press("Ctrl+F3");
  Press("Ctrl+End");
  Type("wait(ent_tu");
  Press("Ctrl+Space");
  const std::string marks = "3|";
  EXPECT_EQ(Selected(), "ent_turn");
  EXPECT_NE(Tip(), "");
  EXPECT_TRUE(QTest::qWaitFor([&] { return Panes().starts_with(marks); })) << Panes();
  Press("Escape");
  EXPECT_EQ(Selected(), "closed");
  EXPECT_NE(Tip(), "") << "it is the list's";
  EXPECT_EQ(Panes().substr(0, marks.size()), marks) << "it is the list's";
  Press("Escape");
  EXPECT_EQ(Tip(), "");
  Press("Escape");
  EXPECT_EQ(Panes().substr(0, 2), "Ln");
  EXPECT_EQ(Line(), "wait(ent_tu)");
}

TEST_F(PopupKeys, TheListHasItsKeysBeforeTemplatesAndCaret) {
  WriteTemplate("gauge_hi", "for ($1; $2) $0");
  WriteTemplate("gauge_hide", "while ($1) $0");
  Start();
  Open("a.vsl", "");

  const struct {
    const char* typed;
    std::vector<const char*> keys;
    const char* line;
    const char* caret;
  } cases[] = {
      // Templates come before what else has their name.
      {"gauge_hi", {"Ctrl+Space", "Tab"}, "for (; ) ", "3:6"},
      {"gauge_hi", {"Ctrl+Space", "Return"}, "for (; ) ", "3:6"},
      {"gauge_hi", {"Ctrl+Space", "Down", "Tab"}, "for (; ) ", "3:6"},
      {"gauge_hi", {"Ctrl+Space", "Down", "Down", "Return"}, "while () ", "3:8"},
      {"gauge_hi", {"Ctrl+Space", "Down", "Down", "Down", "Tab"}, "gauge_hide", "3:11"},
      {"gauge_hi", {"Ctrl+Space", "Down", "Down", "Down", "Down", "Enter"}, "gauge_high", "3:11"},
      {"gauge_hi", {"Ctrl+Space", "PgDown", "Return"}, "gauge_high", "3:11"},
      {"gauge_hi", {"Ctrl+Space", "Up"}, "gauge_hi", "3:9"},
      {"gauge_hi", {"Tab"}, "for (; ) ", "3:6"},
      {"gauge_hi", {"Ctrl+Space", "Escape", "Tab"}, "for (; ) ", "3:6"},
      {"gauge_hi", {"Ctrl+Space", "Tab", "Tab"}, "for (; ) ", "3:8"},
      // In a list that opened by itself Tab takes, Enter only what was chosen.
      {"gauge_h", {"Tab"}, "for (; ) ", "3:6"},
      {"gauge_h", {"Return"}, "gauge_h", "4:1"},
      // Within a template Tab is the list's when the user asked for it or chose in it.
      {"gauge_hi",
       {"Tab", "g", "a", "u", "Ctrl+Space", "Down", "Down", "Down", "Down", "Tab"},
       "for (gauge_high; ) ",
       "3:16"},
      {"gauge_hi", {"Tab", "g", "a", "u", "Down", "Down", "Tab"}, "for (while () ; ) ", "3:13"},
      {"gauge_hi", {"Tab", "g", "a", "u", "Tab"}, "for (gau; ) ", "3:11"},
      {"gauge_hi", {"Tab", "g", "a", "u", "Escape", "Tab"}, "for (gau; ) ", "3:11"},
      {"gauge_hi", {"Tab", "g", "a", "u", "Escape", "Escape", "Tab"}, "for (gau\t; ) ", "3:10"},
  };
  for (const auto& c : cases) {
    Begin("var gauge_hide;");
    Press("Return");
    Type("var gauge_high;");
    Press("Return");
    Type(c.typed);
    std::string label = c.typed;
    for (const char* key : c.keys) {
      label += std::string(" ") + key;
      Press(key);
    }
    EXPECT_EQ(LineAt(2), c.line) << label;
    EXPECT_EQ(Caret(), c.caret) << label;
  }
}

TEST_F(PopupKeys, ThePressOfAButtonTheWheelAndTheFocusCloseTheList) {
  Start();
  Open("a.vsl", "var gauge_hide;\r\nvar gauge_width;\r\n");
  const auto open = [this] {
    View().setFocus();
    Begin("var gauge_hide, gauge_width; gau");
    Press("Ctrl+Space");
    EXPECT_EQ(Selected(), "gauge_hide");
  };
  open();
  QTest::mousePress(View().viewport(), Qt::LeftButton, {}, At(0, 32) - QPoint(2, 0));
  EXPECT_EQ(Selected(), "closed") << "where the caret is already";
  QTest::mouseRelease(View().viewport(), Qt::LeftButton, {}, At(0, 32) - QPoint(2, 0));
  open();
  QTest::mousePress(View().viewport(), Qt::RightButton, {}, At(0, 32));
  EXPECT_EQ(Selected(), "closed");
  QTest::mouseRelease(View().viewport(), Qt::RightButton, {}, At(0, 32));
  open();
  Wheel();
  EXPECT_EQ(Selected(), "closed");
  open();
  Outline().setFocus();
  EXPECT_EQ(Selected(), "closed");
  open();
  Frame().move(Frame().pos() + QPoint(3, 3));
  Pump();
  EXPECT_EQ(Selected(), "closed");
}

TEST_F(PopupKeys, TheTipThatWasAskedForGoesWithTheNextThingThatHappens) {
  Start();
  std::string text = "wait(1);\r\n";
  for (int i = 0; i < 200; ++i) text += "//\r\n";
  Open("a.vsl", text);
  const auto ask = [this] {
    View().setFocus();
    View().SetCaretPos({0, 2});
    View().ScrollToLine(0);
    Press("Ctrl+Shift+Space");
    EXPECT_EQ(Tip(), "wait(number frames)");
  };
  ask();
  Press("Escape");
  EXPECT_EQ(Tip(), "");
  ask();
  Press("Right");
  EXPECT_EQ(Tip(), "");
  ask();
  Wheel();
  EXPECT_EQ(Tip(), "");
  ask();
  Outline().setFocus();
  EXPECT_EQ(Tip(), "");
  ask();
  Frame().resize(Frame().size() - QSize(10, 10));
  Pump();
  EXPECT_EQ(Tip(), "");
  ask();
  QTest::mouseClick(View().viewport(), Qt::RightButton, {}, At(0, 2));
  EXPECT_EQ(Tip(), "");
  ask();
  Open("b.vsl", "");
  EXPECT_EQ(Tip(), "");
}

// Templates

TEST_F(PopupKeys, EachWindowHasItsOwnStopsAndTheMenuWritesInTheActiveOne) {
  WriteTemplate("loop", "for ($1; $2) $0");
  Start();
  Open("a.vsl", "x\r\n");
  Press("Ctrl+End");
  EXPECT_TRUE(Choose("Window > New Window"));
  EXPECT_EQ(Tabs(), "a.vsl:1 [a.vsl:2]");
  Press("Ctrl+End");
  EXPECT_TRUE(Choose("Edit > Insert > Code Templates > loop"));
  EXPECT_EQ(Caret(), "2:6") << "at the first stop, in the window that is active";
  Press("Ctrl+Tab");
  Press("Ctrl+Home");
  Press("Tab");
  EXPECT_EQ(LineAt(0), "\tx") << "no stop is this window's";
  Press("Return");
  EXPECT_EQ(ActiveText(), "\t|\tx|for (; ) ");
  Press("Ctrl+Tab");
  EXPECT_EQ(Tabs(), "a.vsl:1* [a.vsl:2*]");
  Type("a");
  Press("Tab");
  Type("b");
  EXPECT_EQ(LineAt(2), "for (a; b) ") << "the stops went down with their line";

  Open("b.vsl", "");
  EXPECT_TRUE(Choose("Edit > Insert > Code Templates > loop"));
  EXPECT_EQ(ActiveText(), "for (; ) ");
  PressAll({"Ctrl+Z", "Ctrl+Y", "Home", "Tab"});
  EXPECT_EQ(ActiveText(), "\tfor (; ) ") << "the caret left the stops";
}

TEST_F(PopupKeys, ReloadingEndsATemplate) {
  WriteTemplate("loop", "for ($1; $2) $0");
  Start();
  Open("a.vsl", "");
  Type("loop");
  Press("Tab");
  m_folder.Write("a.vsl", "for (; ) //");
  m_prompts.Expect("Reload \"a.vsl\" and lose the changes made since it was saved?", Prompts::Answer::kYes);
  Press("Ctrl+R");
  View().SetCaretPos({0, 5});
  Press("Tab");
  EXPECT_EQ(ActiveText(), "for (\t; ) //");
}

// Help

TEST_F(PopupKeys, TheHelpFollowsTheCaretAndTheSelectedRow) {
  Start();
  EXPECT_EQ(Help(), "");
  Open("a.vsl", "wait(1);\r\nnothing\r\nabs(2);\r\n");
  View().SetCaretPos({0, 2});
  EXPECT_EQ(Help(), "wait(number frames)");
  Press("Down");
  EXPECT_EQ(Help(), "wait(number frames)") << "no command: the last one stays";
  Press("Down");
  EXPECT_EQ(Help(), "abs(number value)");
  Press("Ctrl+End");
  Type("ent_");
  Press("Ctrl+Space");
  const std::string first = Selected();
  EXPECT_EQ(Help().substr(0, first.size() + 1), first + "(");
  Press("Down");
  Press("Down");
  EXPECT_NE(Selected(), first);
  EXPECT_EQ(Help().substr(0, Selected().size() + 1), Selected() + "(");
  Press("Escape");

  Open("b.vsl", "sleep(1);");
  View().SetCaretPos({0, 2});
  EXPECT_EQ(Help().substr(0, 6), "sleep(") << "in every window";
  EXPECT_TRUE(Choose("View > Command Help"));
  View().SetCaretPos({0, 0});
  Type("wait ");
  Press("Left");
  EXPECT_EQ(Help().substr(0, 6), "sleep(") << "nobody looks";
  EXPECT_TRUE(Choose("View > Command Help"));
  Press("Left");
  EXPECT_EQ(Help(), "wait(number frames)");
}

TEST_F(PopupKeys, TheLinkInTheHelpOpensTheManualAtTheCommand) {
  for (const char* name : {"quill.qhc", "quill.qch"}) {
    const std::filesystem::path made = std::string(QUILL_BIN_DIR "/") + name;
    if (!std::filesystem::exists(made)) GTEST_SKIP() << "the manual was not made";
    std::filesystem::copy(made, m_folder.Path("bin"));
  }
  Start();
  Open("a.vsl", "abs(wait);");
  for (const char* command : {"abs", "wait"}) {
    View().SetCaretPos({0, static_cast<int32_t>(ActiveText().find(command)) + 1});
    QTextBrowser& pane = HelpPane();
    QTextCursor link = pane.document()->find("Open in the manual");
    ASSERT_FALSE(link.isNull());
    pane.setTextCursor(link);
    pane.ensureCursorVisible();
    QTest::mouseClick(pane.viewport(), Qt::LeftButton, {}, pane.cursorRect().center() - QPoint(10, 0));
    Pump();
    QWidget* manual = QApplication::activeWindow();
    ASSERT_NE(manual, &Frame()) << command;
    EXPECT_EQ(manual->windowTitle().toStdString(), std::string(command) + " - Vesper Editor Manual");
    QApplication::setActiveWindow(&Frame());
  }
}

}  // namespace
}  // namespace quill
