#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QScrollBar>
#include <QTabWidget>
#include <QTest>
#include <QTimer>

#include "intel/ui/CodeJumperPane.h"
#include "intel/ui/CodeJumperTree.h"
#include "intel/ui/OutlineList.h"
#include "res/ui/UiText.h"
#include "settings/Settings.h"
#include "shell/ui/CommandRouter.h"
#include "shell/ui/FileOperations.h"
#include "shell/ui/QuillDoc.h"
#include "shell/ui/QuillView.h"
#include "shell/ui/StatusPanes.h"
#include "shell/ui/ViewSettingsControl.h"
#include "ui/ShellFixture.h"

namespace quill {
namespace {

class CodeJumper : public ShellFixture {
 protected:
  CodeJumperPane& Pane() { return *Frame().findChild<CodeJumperPane*>(); }
  CCodeJumperTree& Tree() { return Pane().Tree(); }
  QTreeWidgetItem* Item(const QString& name) {
    const auto items = Tree().findItems(name, Qt::MatchExactly | Qt::MatchRecursive);
    if (items.isEmpty()) throw std::runtime_error("no item " + ToBytes(name));
    return items.front();
  }
  static std::string Rows(const OutlineList& list) {
    std::string rows;
    for (int i = 0; i < list.model()->rowCount(); ++i)
      rows += ToBytes(list.model()->index(i, 0).data().toString()) + "|";
    return rows;
  }
  static QPoint PlaceOfRow(OutlineList& list, int row) {
    return list.visualRect(list.model()->index(row, 0)).center();
  }
  /// The labels of the menu that the menu key opens in a view; then chooses the entry that begins so.
  std::string MenuOf(QAbstractItemView& view, const QString& choice = {}) {
    std::string labels;
    QTimer::singleShot(0, [&labels, &choice] {
      auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
      for (QAction* action : menu->actions()) {
        const QString label = action->text().remove('&');
        if (!label.isEmpty()) labels += ToBytes(label) + "|";
        if (!choice.isEmpty() && label.startsWith(choice)) action->trigger();
      }
      menu->close();
    });
    const QPoint place = view.visualRect(view.currentIndex()).center();
    QContextMenuEvent event(QContextMenuEvent::Keyboard, place, view.viewport()->mapToGlobal(place));
    QApplication::sendEvent(view.viewport(), &event);
    return labels;
  }
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
  Pane().Filter().setText("alp");
  EXPECT_EQ(Shown(), "Functions: Alpha(x)*\n");
  Pane().Filter().clear();
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
    Q_EMIT Tree().itemClicked(Item(name), 0);
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

  Press("Ctrl+Shift+J");
  Type("zet");
  Press("Return");
  EXPECT_EQ(View().CaretPos().line, 4);
  EXPECT_TRUE(View().hasFocus());
  Frame().findChild<CodeJumperPane*>()->Filter().clear();

  const auto waitsFor = [this](const char* name) {
    return QTest::qWaitFor([this, name] { return Shown().find(name) != std::string::npos; }, 30000);
  };
  EXPECT_TRUE(waitsFor("part()")) << "included files are read a little later";
  jumpTo("part()");
  EXPECT_TRUE(View().FilePath().ends_with("part.vsl"));
  View().SetCaretPos({0, 0});
  Type("function unsaved() ");
  Press("Alt+Left");
  EXPECT_TRUE(View().FilePath().ends_with("a.vsl"));
  EXPECT_TRUE(waitsFor("unsaved()")) << "as it is in its window";

  View().SetCaretPos({0, 0});
  Type("var typed; ");
  EXPECT_TRUE(QTest::qWaitFor([this] { return Shown().find("typed") != std::string::npos; }))
      << "without any settings the outline follows the text";
}

TEST_F(CodeJumper, ListsGlobalVariablesWithValuesAndAllElementsWithNamedFiles) {
  m_folder.Write("part.vsl", "var part;\r\n");
  Start();
  Open("a.vsl",
       "include <part.vsl>;\r\nvar b = 2;\r\nvar a[3];\r\nfunction f(x)\r\n{\r\n\tvar local;\r\n}\r\n"
       "bmap pic = <Pic.bmp>;\r\nif (a < b || b > a)\r\nsound snd = <gone.vsl>;\r\n");
  OutlineList& variables = Pane().Variables();
  OutlineList& elements = Pane().Elements();
  EXPECT_EQ(Rows(variables), "a[3]|b = 2|");
  EXPECT_EQ(Rows(elements), "a|b|f|local|pic|snd|gone.vsl|part.vsl|Pic.bmp|b || b|");

  QTest::mouseClick(variables.viewport(), Qt::LeftButton, {}, PlaceOfRow(variables, 1));
  EXPECT_EQ(View().CaretPos(), (TextPosition{1, 4}));
  EXPECT_TRUE(View().hasFocus());

  WriteFlag(m_settings, settings::kSortCodeJumper, false);
  Parts().viewSettings.ApplyToAll();
  EXPECT_EQ(Rows(variables), "b = 2|a[3]|");
  EXPECT_EQ(Rows(elements), "b|a|f|local|pic|snd|part.vsl|Pic.bmp|gone.vsl|b || b|");
  EXPECT_EQ(Shown().substr(0, 16), "Bitmaps: pic = <") << "the tree does not care";

  Frame().findChild<QTabWidget*>()->setCurrentWidget(&elements);
  const auto enter = [this, &elements](int row) {
    elements.setFocus();
    elements.setCurrentIndex(elements.model()->index(row, 0));
    Press("Return");
  };
  enter(7);
  EXPECT_EQ(View().CaretPos(), (TextPosition{7, 12})) << "a bitmap is not opened";
  enter(8);
  EXPECT_EQ(View().CaretPos(), (TextPosition{9, 13})) << "nor is a script that is not there";
  QTest::mouseClick(elements.viewport(), Qt::LeftButton, {}, PlaceOfRow(elements, 6));
  EXPECT_EQ(View().CaretPos(), (TextPosition{0, 9}));
  QTest::mouseDClick(elements.viewport(), Qt::LeftButton, {}, PlaceOfRow(elements, 6));
  QTest::mouseRelease(elements.viewport(), Qt::LeftButton, {}, {1, 1});
  Pump();
  EXPECT_TRUE(View().FilePath().ends_with("part.vsl"));
  EXPECT_EQ(Rows(variables), "part|");
  Press("Alt+Left");
  EXPECT_TRUE(View().FilePath().ends_with("a.vsl"));
}

TEST_F(CodeJumper, IsWalkedByKeys) {
  Start();
  Open("a.vsl",
       "var speed;\r\nfunction stop()\r\n{\r\n}\r\nfunction spin()\r\n{\r\n}\r\nbmap b = <x.bmp>;\r\n");
  Tree().setFocus();
  Tree().setCurrentItem(Tree().topLevelItem(5));
  Press("Return");
  EXPECT_TRUE(Tree().topLevelItem(5)->isExpanded()) << "Enter on a kind";
  Press("Down");
  EXPECT_EQ(View().CaretPos().line, 0) << "moving is not jumping";
  Press("Return");
  EXPECT_EQ(View().CaretPos().line, 4);
  EXPECT_TRUE(View().hasFocus());

  Tree().setFocus();
  Type("s");
  EXPECT_TRUE(Pane().Filter().hasFocus());
  Type("to");
  EXPECT_EQ(Shown(), "Functions: stop()\n");
  EXPECT_EQ(Rows(Pane().Variables()), "");
  Press("Return");
  EXPECT_EQ(View().CaretPos().line, 1) << "Enter in the field takes the first that fits";
  Pane().Filter().setFocus();
  Press("Down");
  EXPECT_EQ(Tree().currentItem(), Item("stop()"));
  Press("Backspace");
  EXPECT_EQ(Pane().Filter().text(), "st");
  Press("Escape");
  EXPECT_EQ(Pane().Filter().text(), "");
  EXPECT_TRUE(Pane().Filter().hasFocus());
  Press("Escape");
  EXPECT_TRUE(View().hasFocus());

  Pane().Filter().setFocus();
  Type("x.bmp");
  Press("Return");
  EXPECT_EQ(View().CaretPos(), (TextPosition{7, 5})) << "the bitmap's definition has the file's name";
  Pane().Elements().setFocus();
  Press("Escape");
  EXPECT_TRUE(View().hasFocus());
}

TEST_F(CodeJumper, OpensItsMenusByKeyAndCopiesNames) {
  Start();
  Open("a.vsl", "function go(x)\r\n{\r\n}\r\nvar v = 1;\r\npath \"my media\";\r\ninclude <in.h>;\r\n");
  Tree().setCurrentItem(Tree().topLevelItem(0));
  EXPECT_EQ(MenuOf(Tree(), "Expand"), "Expand All|Collapse All|Refresh|");
  EXPECT_TRUE(Tree().topLevelItem(5)->isExpanded() && Tree().topLevelItem(15)->isExpanded());
  Tree().setCurrentItem(Item("go(x)"));
  EXPECT_EQ(MenuOf(Tree(), "Copy"), "Copy Name|Expand All|Collapse All|Refresh|");
  EXPECT_EQ(QApplication::clipboard()->text(), "go");
  Tree().setCurrentItem(Item("my media"));
  MenuOf(Tree(), "Copy");
  EXPECT_EQ(QApplication::clipboard()->text(), "my media");
  MenuOf(Tree(), "Collapse");
  EXPECT_FALSE(Tree().topLevelItem(5)->isExpanded());

  OutlineList& elements = Pane().Elements();
  elements.setCurrentIndex(elements.model()->index(2, 0));
  EXPECT_EQ(MenuOf(elements, "Copy"), "Open File|Copy Name|");
  EXPECT_EQ(QApplication::clipboard()->text(), "in.h");
  Pane().Variables().setCurrentIndex(Pane().Variables().model()->index(0, 0));
  EXPECT_EQ(MenuOf(Pane().Variables(), "Copy"), "Copy Name|");
  EXPECT_EQ(QApplication::clipboard()->text(), "v");

  View().SetCaretPos({3, 0});
  QTest::keyClicks(&View(), "var w; ");
  Tree().setCurrentItem(Tree().topLevelItem(0));
  MenuOf(Tree(), "Refresh");
  EXPECT_EQ(Rows(Pane().Variables()), "w|");
}

TEST_F(CodeJumper, UnfoldsWhatItJumpsToAndShowsWhatFollows) {
  Start();
  std::string text;
  for (int i = 0; i < 300; ++i) text += "//\r\n";
  Open("a.vsl", "action up\r\n{\r\n\tvar inner;\r\n}\r\n" + text + "function far()\r\n{\r\n}\r\n" + text);
  EXPECT_TRUE(Choose("Edit > Outlining > Collapse All"));
  const auto jump = [this](const QString& name) {
    Q_EMIT Tree().itemClicked(Item(name), 0);
    const int32_t above = View().CaretPos().line - View().TopLine();
    EXPECT_GE(above, 0) << ToBytes(name);
    EXPECT_LE(above, View().PageRows() / 2) << ToBytes(name);
  };
  jump("far()");
  EXPECT_EQ(View().CaretPos(), (TextPosition{304, 9}));
  jump("inner");
  EXPECT_EQ(View().CaretPos(), (TextPosition{2, 5}));
  EXPECT_FALSE(View().Model().Folds().IsHidden(2));
}

TEST_F(CodeJumper, ComesBackToTextsWithoutAFileAndToThoseThatGotOne) {
  Start();
  Open("a.vsl", "function go()\r\n{\r\n}\r\n");
  EXPECT_TRUE(Choose("File > New"));
  CQuillDoc& fresh = Document();
  Type("function mine()");
  for (int i = 0; i < 3; ++i) Press("Return");
  EXPECT_TRUE(Choose("Edit > Script > Refresh Code Jumper"));
  const TextPosition place = View().CaretPos();
  Q_EMIT Tree().itemClicked(Item("mine()"), 0);
  EXPECT_EQ(View().CaretPos().line, 0);
  Press("Alt+Left");
  EXPECT_EQ(View().CaretPos(), place);

  Q_EMIT Tree().itemClicked(Item("mine()"), 0);
  m_prompts.ExpectFile(m_folder.Path("named.vsl"));
  EXPECT_TRUE(Choose("File > Save"));
  Parts().files.Open(m_folder.Path("a.vsl"));
  Pump();
  Press("Alt+Left");
  EXPECT_EQ(&Document(), &fresh) << "it has another name by now";
  EXPECT_EQ(View().CaretPos(), place);

  EXPECT_TRUE(Choose("File > New"));
  Type("function lost()");
  EXPECT_TRUE(Choose("Edit > Script > Refresh Code Jumper"));
  Q_EMIT Tree().itemClicked(Item("lost()"), 0);
  m_prompts.Expect("Save the changes to \"Untitled3\"?", Prompts::Answer::kNo);
  EXPECT_TRUE(Parts().files.Close(Document()));
  Pump();
  Press("Alt+Left");
  EXPECT_EQ(ToBytes(Parts().statusBar.currentMessage()), "There is no place to go back to.");
}

TEST_F(CodeJumper, KeepsTheMarkedFunctionInSightAndTheTreeWhereItWasScrolled) {
  Start();
  std::string text;
  for (int i = 100; i < 300; ++i) text += "function f" + std::to_string(i) + "()\r\n{\r\n}\r\n";
  Open("a.vsl", text);
  Tree().topLevelItem(5)->setExpanded(true);
  const auto isInSight = [this](const QString& name) {
    return Tree().viewport()->rect().contains(Tree().visualItemRect(Item(name)));
  };
  EXPECT_FALSE(isInSight("f280()"));
  View().SetCaretPos({541, 0});
  EXPECT_TRUE(isInSight("f280()"));
  Tree().verticalScrollBar()->setValue(3);
  EXPECT_TRUE(Choose("Edit > Script > Refresh Code Jumper"));
  EXPECT_EQ(Tree().verticalScrollBar()->value(), 3) << "the user scrolled away from it";
  View().SetCaretPos({0, 0});
  EXPECT_TRUE(isInSight("f100()"));
  Tree().topLevelItem(5)->setExpanded(false);
  View().SetCaretPos({541, 0});
  EXPECT_FALSE(Tree().topLevelItem(5)->isExpanded()) << "a mark expands nothing";
}

TEST_F(CodeJumper, CutsMonstrousNamesAndShowsMarkupInTipsAsText) {
  Start();
  Open("a.vsl", "var " + std::string(10000, 'n') + ";\r\nvar x <b>bold</b>;\r\n");
  EXPECT_LT(Tree().topLevelItem(15)->child(0)->text(0).size(), 300);
  const QAbstractItemModel& variables = *Pane().Variables().model();
  EXPECT_EQ(variables.index(1, 0).data(Qt::ToolTipRole).toString(),
            "<p>x &lt;b&gt;bold&lt;/b&gt;<br>Line 2</p>");
  QLabel tip(variables.index(0, 0).data(Qt::ToolTipRole).toString());
  tip.setWordWrap(true);
  EXPECT_LT(tip.sizeHint().width(), 1000);
  Tree().ExpandRoots();
  Frame().repaint();
  EXPECT_EQ(Tree().horizontalScrollBar()->maximum(), 0);
  EXPECT_EQ(Pane().Variables().horizontalScrollBar()->maximum(), 0);
}

TEST_F(CodeJumper, ComesBackDividedAsItWasLeft) {
  Start();
  auto* lists = Frame().findChild<QTabWidget*>();
  lists->setCurrentWidget(&Pane().Elements());
  EXPECT_TRUE(QTest::qWaitFor(
      [this] { return ReadBinary(AppProfile(m_settings), profile::kCodeJumperPanes).has_value(); }));
  Quit();
  Start();
  EXPECT_EQ(Frame().findChild<QTabWidget*>()->currentWidget(), &Pane().Elements());
  AppProfile profile(m_settings);
  std::string damaged = *ReadBinary(profile, profile::kCodeJumperPanes);
  damaged.back() ^= 1;
  WriteBinary(profile, profile::kCodeJumperPanes, damaged);
  Quit();
  Start();
  EXPECT_EQ(Frame().findChild<QTabWidget*>()->currentWidget(), &Pane().Variables());
}

}  // namespace
}  // namespace quill
