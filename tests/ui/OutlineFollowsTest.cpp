// The Code Jumper beside the text: when it follows what is typed and which window it belongs to.
#include <QApplication>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QListView>
#include <QTabWidget>
#include <QTest>
#include <QTreeWidget>

#include "intel/ui/CodeJumperPane.h"
#include "res/ui/UiText.h"
#include "shell/ui/QuillView.h"
#include "ui/ScreenFixture.h"

namespace quill {
namespace {

class OutlineFollows : public ScreenFixture {
 protected:
  static constexpr int kPause = 300;  ///< milliseconds

  QLineEdit& Filter() { return *Frame().findChild<CodeJumperPane*>()->findChild<QLineEdit*>(); }
  bool WaitsFor(const std::string& names, int milliseconds = 5000) {
    return QTest::qWaitFor([&] { return Names() == names; }, milliseconds);
  }
};

TEST_F(OutlineFollows, TypingIsFollowedAfterAPauseAndOnlyWhenItIsAskedFor) {
  Start();  // a new user has it on
  Open("a.vsl", "");
  Type("var a;");
  QElapsedTimer sinceKey;
  for (int i = 0; i < 8 && Names().empty(); ++i) {
    sinceKey.start();
    Type(" ");
    WaitsFor("a", kPause / 3);
  }
  EXPECT_TRUE(WaitsFor("a"));
  EXPECT_GE(sinceKey.elapsed(), kPause) << "each key begins the pause anew";
  Press("Ctrl+A");
  Type("var b;");
  EXPECT_EQ(Names(), "a");
  EXPECT_TRUE(WaitsFor("b")) << "again and again";

  m_folder.Write("a.vsl", "var c;");
  m_prompts.Expect("Reload \"a.vsl\" and lose the changes made since it was saved?", Prompts::Answer::kYes);
  Press("Ctrl+R");
  EXPECT_TRUE(WaitsFor("c")) << "a text that is read again has changed";

  WriteFlag(m_settings, settings::kAutoRefresh, false);
  Frame().ApplySettingsToViews();
  Press("Ctrl+Home");
  Type("var d;");
  Press("Return");
  EXPECT_FALSE(WaitsFor("c d", 2 * kPause));
  EXPECT_EQ(Names(), "c");
  EXPECT_TRUE(Choose("Edit > Script > Refresh Code Jumper"));
  EXPECT_EQ(Names(), "c d");
}

TEST_F(OutlineFollows, ItShowsTheScriptOfTheActiveTabAndMarksTheFunctionAroundItsCaret) {
  Start();
  Open("a.vsl", "function one()\r\n{\r\n}\r\n// between\r\nfunction two()\r\n{\r\n}\r\n");
  Open("b.vsl", "action three()\r\n{\r\n}\r\n\r\n");
  struct Step {
    const char* key;
    const char* names;
  };
  const Step steps[] = {
      {"Down", "three*"},
      {"Ctrl+End", "three"},
      {"Ctrl+Tab", "one()* two()"},
      {"Down", "one()* two()"},
      {"Down", "one()* two()"},
      {"Down", "one() two()"},
      {"Down", "one() two()*"},
      {"Ctrl+End", "one() two()"},
      {"Ctrl+Shift+Tab", "three"},
      {"Up", "three"},
      {"Up", "three*"},
  };
  for (const Step& step : steps) {
    Press(step.key);
    EXPECT_EQ(Names(), step.names) << step.key << " " << Tabs() << " " << Caret();
  }
  QTest::mouseClick(&TabBar(), Qt::LeftButton, {}, TabBar().tabRect(0).center());
  Pump();
  EXPECT_EQ(Names(), "one() two()");
  Press("Up");
  EXPECT_EQ(Names(), "one() two()*");
}

TEST_F(OutlineFollows, FindNameLeadsToTheFieldAndDoubleClickAndEnterToTheText) {
  Start();
  Open("a.vsl", "function one()\r\n{\r\n}\r\nfunction two()\r\n{\r\n}\r\nvar speed;\r\n");
  EXPECT_TRUE(Choose("View > Code Jumper"));
  EXPECT_FALSE(Filter().isVisible());
  Press("Ctrl+Shift+J");
  EXPECT_TRUE(Filter().isVisible());
  Type("one");
  EXPECT_EQ(QApplication::focusWidget(), &Filter());
  Press("Escape");
  EXPECT_EQ(Filter().text(), "");
  EXPECT_EQ(QApplication::focusWidget(), &Filter()) << "the first Esc is for the field";
  Type("one");
  View().setFocus();
  Press("Ctrl+Shift+J");
  Type("two");
  EXPECT_EQ(Filter().text(), "two") << "what stood there is typed over";
  QTreeWidgetItem* two = Outline().topLevelItem(5)->child(0);
  EXPECT_EQ(two->text(0), "two()");
  const QPoint place = Outline().visualItemRect(two).center();
  QTest::mouseDClick(Outline().viewport(), Qt::LeftButton, {}, place);
  QTest::mouseClick(Outline().viewport(), Qt::LeftButton, {}, place);
  EXPECT_EQ(Caret(), "4:10");
  EXPECT_EQ(QApplication::focusWidget(), &View());
  Press("Ctrl+Shift+J");
  Type("spe");
  Press("Return");
  EXPECT_EQ(Caret(), "7:5");
  EXPECT_EQ(QApplication::focusWidget(), &View());
}

TEST_F(OutlineFollows, F12AndCtrlClickJumpAndAltLeftComesBackOverTwoDocuments) {
  WriteFlag(m_settings, settings::kLoadIncluded, true);
  m_folder.Write("part.vsl",
                 "// a part\r\nfunction part()\r\n{\r\n\treturn(part_value);\r\n}\r\nvar part_value;\r\n");
  Start();
  Open("a.vsl",
       "include <part.vsl>;\r\nfunction main()\r\n{\r\n\tpart();\r\n\tmain();\r\n\tunknown();\r\n}\r\n");
  Click(5, 3, Qt::ControlModifier);
  EXPECT_EQ(Caret(), "6:4") << "nothing is known of it";
  Click(4, 3, Qt::ControlModifier);
  EXPECT_EQ(Caret(), "2:10");
  Click(3, 3, Qt::ControlModifier);
  EXPECT_EQ(Tabs(), "a.vsl [part.vsl]");
  EXPECT_EQ(Caret(), "2:10");
  Click(3, 10, Qt::ControlModifier);
  EXPECT_EQ(Caret(), "6:5") << "in a window that was opened by a jump, too";
  View().SetCaretPos({3, 12});
  Press("F12");
  EXPECT_EQ(Caret(), "6:5");
  const char* const back[] = {"[part.vsl] 4:13", "[part.vsl] 4:11", "[a.vsl] 4:4", "[a.vsl] 5:4"};
  for (const char* expected : back) {
    Press("Alt+Left");
    const std::string tabs = Tabs();
    EXPECT_EQ(tabs.substr(tabs.find('['), tabs.find(']') + 1 - tabs.find('[')) + " " + Caret(), expected);
  }
  EXPECT_TRUE(Choose("Edit > Script > Go Back"));
  EXPECT_EQ(Caret(), "5:4") << "there is no other place";
  EXPECT_EQ(QApplication::focusWidget(), &View());

  View().SetSelection({4, 1}, {4, 5});
  Click(4, 3, Qt::ControlModifier);
  EXPECT_EQ(CaretLine(), 4) << "with a selection it is no jump";
}

TEST_F(OutlineFollows, SortedOrInTheOrderOfTheText) {
  Start();
  Open("a.vsl", "var zeta;\r\nvar alpha;\r\n");
  auto* lists = Frame().findChild<CodeJumperPane*>()->findChild<QTabWidget*>();
  const auto first = [lists] {
    const auto* list = qobject_cast<QListView*>(lists->currentWidget());
    return ToBytes(list->model()->index(0, 0).data().toString());
  };
  EXPECT_EQ(first(), "alpha");
  WriteFlag(m_settings, settings::kSortCodeJumper, false);
  Frame().ApplySettingsToViews();
  EXPECT_EQ(first(), "zeta") << "at once";
  Open("b.vsl", "var y;\r\nvar x;\r\n");
  EXPECT_EQ(first(), "y") << "and in the next script";
}

}  // namespace
}  // namespace quill
