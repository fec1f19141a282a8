// Scripts that are too large to be read at once: their names come in parts, and only those near to what is in
// sight have rows.
#include <QLineEdit>
#include <QScrollBar>
#include <QTabWidget>
#include <QTest>

#include "intel/ui/CodeJumperPane.h"
#include "intel/ui/CodeJumperTree.h"
#include "intel/ui/OutlineList.h"
#include "res/ui/UiText.h"
#include "shell/ui/FileOperations.h"
#include "shell/ui/QuillDoc.h"
#include "shell/ui/QuillView.h"
#include "ui/ScreenFixture.h"

namespace quill {
namespace {

constexpr int kFunctions = 3000;
constexpr int kVariablesEach = 6;  ///< behind each function
constexpr int kLinesEach = 1 + kVariablesEach;
constexpr int kWait = 30000;  ///< milliseconds
constexpr int kMostRows = 1100;

/// "f00042()"
QString FunctionName(int number) {
  return QString("f%1()").arg(number, 5, 10, QChar('0'));
}

class LargeOutline : public ScreenFixture {
 protected:
  CodeJumperPane& Pane() { return *Frame().findChild<CodeJumperPane*>(); }
  CCodeJumperTree& Tree() { return Pane().Tree(); }
  QTreeWidgetItem& Functions() { return *Tree().topLevelItem(5); }
  QScrollBar& Bar() { return *Tree().verticalScrollBar(); }
  static std::string LargeText() {
    std::string text;
    for (int i = 0; i < kFunctions; ++i) {
      text += "function " + ToBytes(FunctionName(i)) + "\r\n";
      for (int v = 0; v < kVariablesEach; ++v) {
        text += "var v" + std::to_string(i) + "_" + std::to_string(v) + ";\r\n";
      }
    }
    return text;
  }
  /// The names of functions, rows that tell of more included.
  int Count() {
    int count = 0;
    for (int i = 0; i < Functions().childCount(); ++i) {
      const QString text = Functions().child(i)->text(0);
      QString number;
      for (const QChar c : text) {
        if (c.isDigit()) number += c;
      }
      count += text.startsWith("...") ? number.toInt() : 1;
    }
    return count;
  }
  bool WaitsForAll(int count = kFunctions) {
    return QTest::qWaitFor([this, count] { return Count() == count; }, kWait);
  }
  /// -1 for none.
  int RowOf(const QString& name) {
    for (int i = 0; i < Functions().childCount(); ++i) {
      if (Functions().child(i)->text(0) == name) return i;
    }
    return -1;
  }
  bool IsInSight(const QString& name) {
    const int row = RowOf(name);
    return row >= 0 && Tree().viewport()->rect().contains(Tree().visualItemRect(Functions().child(row)));
  }
  /// Whether rows of functions follow one another without a gap, and are not too many.
  bool IsWhole() {
    int last = -1;
    for (int i = 0; i < Functions().childCount(); ++i) {
      const QString text = Functions().child(i)->text(0);
      if (text.startsWith("...")) continue;
      const int number = text.mid(1, 5).toInt();
      if (last >= 0 && number != last + 1) return false;
      last = number;
    }
    return Functions().childCount() <= kMostRows && Count() == kFunctions;
  }
};

TEST_F(LargeOutline, HasRowsForWhatIsInSightAndIsScrolledToItsEndAndBack) {
  Start();
  Open("a.vsl", LargeText());
  ASSERT_TRUE(WaitsForAll());
  EXPECT_TRUE(View().Functions().Contains("f02999"));
  Functions().setExpanded(true);
  const auto scrollsTo = [this](int end, const QString& name) {
    bool whole = true;
    const bool there = QTest::qWaitFor(
        [&] {
          Bar().setValue(end < 0 ? Bar().minimum() : Bar().maximum());
          whole = whole && IsWhole();
          return IsInSight(name);
        },
        kWait);
    return there && whole;
  };
  EXPECT_TRUE(scrollsTo(1, FunctionName(kFunctions - 1)));
  Tree().setCurrentItem(Functions().child(RowOf(FunctionName(kFunctions - 2))));
  EXPECT_TRUE(scrollsTo(-1, FunctionName(0)));
  EXPECT_TRUE(Tree().currentItem() == nullptr || Tree().currentItem()->text(0) == FunctionName(2998))
      << "rows that get other names are not the current one";

  View().SetCaretPos({2000 * kLinesEach, 3});
  EXPECT_TRUE(IsInSight(FunctionName(2000))) << "the function around the caret";
  EXPECT_TRUE(Functions().child(RowOf(FunctionName(2000)))->font(0).bold());
  EXPECT_TRUE(IsWhole());
  Q_EMIT Tree().itemClicked(Functions().child(RowOf(FunctionName(2003))), 0);
  EXPECT_EQ(View().CaretPos(), (TextPosition{2003 * kLinesEach, 9}));
  Q_EMIT Tree().itemClicked(Functions().child(0), 0);
  EXPECT_EQ(View().CaretPos(), (TextPosition{2003 * kLinesEach, 9}))
      << "what stands for more names leads nowhere";

  QAbstractItemModel& variables = *Pane().Variables().model();
  EXPECT_LE(variables.rowCount(), kMostRows);
  EXPECT_TRUE(QTest::qWaitFor(
      [&] {
        QScrollBar& bar = *Pane().Variables().verticalScrollBar();
        bar.setValue(bar.maximum());
        return variables.rowCount() == kFunctions * kVariablesEach;
      },
      kWait));
}

TEST_F(LargeOutline, FollowsTheTextAndTheFilter) {
  Start();
  Open("a.vsl", LargeText());
  ASSERT_TRUE(WaitsForAll());
  Press("Ctrl+Shift+J");
  Type("f02995");
  Press("Return");
  EXPECT_EQ(View().CaretPos(), (TextPosition{2995 * kLinesEach, 9}))
      << "at once, whether or not the rows are there";
  EXPECT_EQ(Functions().childCount(), 1);
  Pane().Filter().clear();
  EXPECT_TRUE(WaitsForAll());

  Functions().setExpanded(true);
  View().SetCaretPos({12000, 0});
  const int scrolled = Bar().value();
  View().SetCaretPos({0, 0});
  Type("function a_new(x)");
  Press("Return");
  EXPECT_TRUE(WaitsForAll(kFunctions + 1)) << "after a pause";
  EXPECT_GT(scrolled, 0);
  Press("Ctrl+Shift+J");
  Type("a_new");
  EXPECT_TRUE(QTest::qWaitFor([this] { return Functions().childCount() == 1; }, kWait));
  EXPECT_EQ(Functions().child(0)->text(0), "a_new(x)");
  Pane().Filter().clear();

  View().setFocus();
  View().SetCaretPos({0, 0});
  Press("Return");
  View().SetCaretPos({2000 * kLinesEach + 2, 10});
  Press("F12");
  EXPECT_EQ(View().CaretPos(), (TextPosition{2000 * kLinesEach + 2, 9}))
      << "two lines further down than when it was read";
}

TEST_F(LargeOutline, IsLeftWhileItIsRead) {
  Start();
  const std::string path = m_folder.Write("a.vsl", LargeText());
  Open("b.vsl", "function small()\r\n");
  CQuillDoc* large = Parts().files.Open(path);
  ASSERT_NE(large, nullptr);
  EXPECT_TRUE(Parts().files.Close(*large)) << "before any event";
  EXPECT_FALSE(QTest::qWaitFor([this] { return Names() != "small()*"; }, 1000)) << "nothing comes late";

  Parts().files.Open(path);
  Press("Ctrl+Tab");
  EXPECT_EQ(Names(), "small()*");
  EXPECT_FALSE(QTest::qWaitFor([this] { return Names() != "small()*"; }, 1000));
  Press("Ctrl+Tab");
  Press("Ctrl+R");
  EXPECT_TRUE(WaitsForAll());
  EXPECT_EQ(Functions().child(1)->text(0), FunctionName(1));

  Parts().files.Open(m_folder.Path("b.vsl"));
  Press("Ctrl+Tab");
  Quit();
}

}  // namespace
}  // namespace quill
