#include <QLineEdit>
#include <QTest>

#include "intel/ui/CodeJumperPane.h"
#include "intel/ui/CodeJumperTree.h"
#include "intel/ui/QuillView.h"
#include "shell/Settings.h"
#include "shell/ui/UiText.h"
#include "ui/ShellFixture.h"

namespace quill {
namespace {

class CodeJumper : public ShellFixture {
 protected:
  CCodeJumperTree& Tree() { return Frame().findChild<CodeJumperPane*>()->Tree(); }
  /// The shown rows that have children, with them: "Functions: a() b()".
  std::string Shown() {
    std::string text;
    for (int i = 0; i < Tree().topLevelItemCount(); ++i) {
      QTreeWidgetItem* row = Tree().topLevelItem(i);
      if (row->isHidden() || row->childCount() == 0) continue;
      text += ToBytes(row->text(0)) + ":";
      for (int n = 0; n < row->childCount(); ++n) {
        text += " " + ToBytes(row->child(n)->text(0)) + (row->child(n)->font(0).bold() ? "*" : "");
      }
      text += "\n";
    }
    return text;
  }
};

TEST_F(CodeJumper, ShowsTheActiveScriptMarksTheFunctionAndJumps) {
  Start();
  Open("a.vsl",
       "var score = 0;\r\nfunction zeta()\r\n{\r\n\tscore = 1;\r\n}\r\nfunction "
       "Alpha(x)\r\n{\r\n\tzeta();\r\n}\r\n");
  EXPECT_EQ(Tree().topLevelItemCount(), 18);
  EXPECT_EQ(Shown(), "Functions: Alpha(x) zeta()\nVariables: score = 0\n");
  View().SetCaretPos({3, 1});
  EXPECT_EQ(Shown(), "Functions: Alpha(x) zeta()*\nVariables: score = 0\n");

  View().SetCaretPos({7, 2});
  EXPECT_TRUE(Choose("Edit > Script > Go to Definition"));
  EXPECT_EQ(View().CaretPos().line, 1);
  Press("Alt+Left");
  EXPECT_EQ(View().CaretPos().line, 7);

  Tree().topLevelItem(5)->setExpanded(true);
  Frame().findChild<CodeJumperPane*>()->Filter().setText("alp");
  EXPECT_EQ(Shown(), "Functions: Alpha(x)*\n");
  Frame().findChild<CodeJumperPane*>()->Filter().clear();
  EXPECT_TRUE(Tree().topLevelItem(5)->isExpanded()) << "as before the filter";
  Tree().setCurrentItem(Tree().topLevelItem(5)->child(1));
  QTest::keyClick(&Tree(), Qt::Key_Return);
  EXPECT_EQ(View().CaretPos().line, 1);

  View().SetCaretPos({9, 0});
  Type("function late()");
  EXPECT_TRUE(Choose("Edit > Script > Refresh Code Jumper"));
  EXPECT_NE(Shown().find("late()"), std::string::npos);
  EXPECT_TRUE(View().Functions().Contains("late"));
}

TEST_F(CodeJumper, FindsItsPlacesInATextThatHasChangedSince) {
  WriteFlag(m_settings, settings::kLoadIncluded, true);
  m_folder.Write("part.vsl", "function part()\r\n{\r\n}\r\n");
  Start();
  Open("a.vsl",
       "include <part.vsl>;\r\nfunction zeta()\r\n{\r\n}\r\nfunction main()\r\n{\r\n\tzeta();\r\n}\r\n");
  View().SetCaretPos({1, 0});
  for (int i = 0; i < 3; ++i) Press("Return");
  Press("Up");
  Type("var fresh;");
  const auto jumpTo = [this](const QString& name) {
    for (QTreeWidgetItem* item : Tree().findItems(name, Qt::MatchExactly | Qt::MatchRecursive))
      Q_EMIT Tree().itemClicked(item, 0);
    Pump();
  };
  jumpTo("zeta()");
  EXPECT_EQ(View().CaretPos(), (TextPosition{4, 9})) << "three lines further down than when it was read";
  EXPECT_TRUE(Tree().findItems("fresh", Qt::MatchExactly | Qt::MatchRecursive).isEmpty()) << "not asked to";

  View().SetCaretPos({9, 3});
  Press("F12");
  EXPECT_EQ(View().CaretPos().line, 4);
  Press("Alt+Left");
  EXPECT_EQ(View().CaretPos(), (TextPosition{9, 3}));

  jumpTo("part()");
  EXPECT_TRUE(View().FilePath().ends_with("part.vsl"));
  View().SetCaretPos({0, 0});
  Type("function unsaved() ");
  Press("Alt+Left");
  EXPECT_TRUE(View().FilePath().ends_with("a.vsl"));
  EXPECT_FALSE(Tree().findItems("unsaved()", Qt::MatchExactly | Qt::MatchRecursive).isEmpty());

  WriteFlag(m_settings, settings::kAutoRefresh, true);
  View().SetCaretPos({0, 0});
  Type("var typed; ");
  EXPECT_TRUE(QTest::qWaitFor([this] { return Shown().find("typed") != std::string::npos; }));
}

}  // namespace
}  // namespace quill
