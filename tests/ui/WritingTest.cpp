#include <QListView>
#include <QMouseEvent>
#include <QScrollBar>
#include <QTest>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextDocument>

#include "intel/ui/CodeCompletion.h"
#include "intel/ui/HintTipWindow.h"
#include "res/ui/UiText.h"
#include "shell/ui/QuillDoc.h"
#include "shell/ui/QuillView.h"
#include "shell/ui/StatusPanes.h"
#include "ui/ShellFixture.h"

namespace quill {
namespace {

constexpr char kScript[] =
    "panel* gauge;\r\nvar gauge_width = 5;\r\nfunction gauge_hide(now)\r\n{\r\n}\r\n\r\n";

class Writing : public ShellFixture {
 protected:
  void OpenScript() {
    Start();
    Open("a.vsl", kScript);
    View().SetCaretPos({5, 0});
  }
  std::string CaretLine() { return std::string(View().Buffer()->Line(View().CaretPos().line)); }

  CCodeCompletion* List() {
    auto* list = Frame().findChild<CCodeCompletion*>();
    return list != nullptr && list->isVisible() ? list : nullptr;
  }
  /// The rows, the selected one in brackets; "closed" without a list.
  std::string Rows() {
    if (List() == nullptr) return "closed";
    const auto* view = List()->findChild<QListView*>();
    std::string rows;
    for (int i = 0; i < view->model()->rowCount(); ++i) {
      const std::string name = ToBytes(view->model()->index(i, 0).data().toString());
      rows += (rows.empty() ? "" : " ") + (i == view->currentIndex().row() ? "[" + name + "]" : name);
    }
    return rows;
  }

  HintTipWindow* Tip() {
    auto* tip = Frame().findChild<HintTipWindow*>();
    return tip != nullptr && tip->isVisible() ? tip : nullptr;
  }
  /// The tip's text, its bold part in stars; empty without a tip.
  std::string TipText() {
    std::string text;
    if (Tip() == nullptr) return text;
    const QTextBlock block = Tip()->findChild<QTextDocument*>()->firstBlock();
    for (auto part = block.begin(); !part.atEnd(); ++part) {
      const char* star = part.fragment().charFormat().fontWeight() == QFont::Bold ? "*" : "";
      text += star + ToBytes(part.fragment().text()) + star;
    }
    return text;
  }
  QRect CaretLineOnScreen() {
    return {View().viewport()->mapToGlobal(QPoint(0, View().CaretRect().top())),
            QSize(View().viewport()->width(), View().LineHeight())};
  }
};

// Completion

TEST_F(Writing, TheListOpensNarrowsAndWritesWhatIsTaken) {
  OpenScript();
  Type("ga");
  EXPECT_EQ(Rows(), "closed") << "asked for, behind an object's dot, or behind three letters";
  Type("u");
  EXPECT_EQ(Rows(), "[gauge] gauge_hide gauge_width game_pause game_paused");
  Press("Ctrl+Space");
  EXPECT_EQ(Rows(), "[gauge] gauge_hide gauge_width game_pause game_paused");
  Type("ge_");
  EXPECT_EQ(Rows(), "[gauge_hide] gauge_width");
  Press("Backspace");
  EXPECT_EQ(Rows(), "[gauge] gauge_hide gauge_width");
  Press("Down");
  EXPECT_EQ(Rows(), "[gauge] gauge_hide gauge_width") << "the outlined row is the first to choose";
  for (int i = 0; i < 3; ++i) Press("Down");
  Press("Up");
  EXPECT_EQ(Rows(), "gauge gauge_hide [gauge_width]") << "round the ends";
  Press("Return");
  EXPECT_EQ(CaretLine(), "gauge_width");
  EXPECT_EQ(Rows(), "closed");
  Press("Ctrl+Z");
  EXPECT_EQ(CaretLine(), "gauge") << "taking a name is one step";

  struct Case {
    const char* typed;
    std::vector<const char*> keys;
    const char* line;
    const char* rows;
  };
  const Case cases[] = {
      {"gauge_", {"Ctrl+Space", "Tab"}, "gauge_hide", "closed"},
      {"gauge_", {"Ctrl+Space", "Escape"}, "gauge_", "closed"},
      {"gauge_", {"Ctrl+Space", "Return"}, "gauge_hide", "closed"},
      {"gauge_", {"Ctrl+Space", "Down", "Return"}, "gauge_hide", "closed"},
      {"gauge_", {"Ctrl+Space", "Down", "Down", "Return"}, "gauge_width", "closed"},
      {"gauge_", {"Ctrl+Space", "Down", "Left"}, "gauge_", "closed"},
      {"gauge_", {"Ctrl+Space", "Down", ";"}, "gauge_;", "closed"},
      {"gauge_", {"Ctrl+Space", "Down", "w", "Return"}, "gauge_width", "closed"},
      {"gauge", {"Ctrl+Space", "Return"}, "", "closed"},  // written already: nothing to take
      {"gauge_hid", {"Ctrl+Space", "e"}, "gauge_hide", "closed"},
      {"gauge_", {"Ctrl+Space", "Shift+Down"}, "gauge_", "closed"},
      {"xq", {"Ctrl+Space"}, "xq", "closed"},
      {"gauge.po", {}, "gauge.po", "[pos_x] pos_y"},
      {"gauge.", {"p", "Tab"}, "gauge.picture", "closed"},
      {"gauge.", {"Backspace"}, "gauge", "closed"},
      {"gauge.", {"Return"}, "", "closed"},
      {"// gauge.", {}, "// gauge.", "closed"},
      {"nothing.", {}, "nothing.", "closed"},
      {"1.", {}, "1.", "closed"},
      {"var late;", {"Return", "l", "a", "t", "Ctrl+Space", "Tab"}, "late", "closed"},
  };
  for (const Case& c : cases) {
    View().SelectAll();
    View().ReplaceSelectedText(kScript);
    Type(c.typed);
    std::string label = c.typed;
    for (const char* key : c.keys) {
      label += std::string(" ") + key;
      Press(key);
    }
    EXPECT_EQ(CaretLine(), c.line) << label;
    EXPECT_EQ(Rows(), c.rows) << label;
    Press("Escape");
  }
}

TEST_F(Writing, TheListObeysTheMouseTheSettingAndTheWindow) {
  OpenScript();
  Type("gauge.");
  ASSERT_NE(List(), nullptr);
  auto* rows = List()->findChild<QListView*>();
  const auto middleOf = [rows](int row) { return rows->visualRect(rows->model()->index(row, 0)).center(); };
  QTest::mouseClick(rows->viewport(), Qt::LeftButton, {}, middleOf(3));
  EXPECT_EQ(List()->Selected()->name, "pos_x");
  Press("Return");
  EXPECT_EQ(CaretLine(), "gauge.pos_x") << "a click is a choice";
  Type("=gauge.");
  QTest::mouseClick(rows->viewport(), Qt::LeftButton, {}, middleOf(0));
  QTest::mouseDClick(rows->viewport(), Qt::LeftButton, {}, middleOf(0));
  EXPECT_EQ(CaretLine(), "gauge.pos_x=gauge.alpha");

  Press("Ctrl+Space");
  QTest::mouseClick(View().viewport(), Qt::LeftButton, {}, QPoint(200, 5));
  EXPECT_EQ(Rows(), "closed");
  Press("Ctrl+Space");
  Open("b.vsl", "");
  EXPECT_EQ(Rows(), "closed");
  Type("me.");
  EXPECT_NE(Rows(), "closed");
  Frame().resize(Frame().size() - QSize(10, 10));
  Pump();
  EXPECT_EQ(Rows(), "closed");
  WriteFlag(m_settings, settings::kDotComplete, false);
  Type("you.");
  EXPECT_EQ(Rows(), "closed");
  Type("zzz");
  Press("Ctrl+Space");
  EXPECT_EQ(ToBytes(Parts().statusBar.currentMessage()), "No name fits \"zzz\".");
  Document().Buffer().SetReadOnly(true);
  EXPECT_FALSE(Choose("Edit > Script > Complete Word"));
}

// Hints

TEST_F(Writing, TheTipFollowsTheArgumentsThatAreWritten) {
  OpenScript();
  struct Step {
    const char* keys;
    const char* tip;
  };
  const Step steps[] = {
      {"ent_turn", ""},
      {"(", "ent_turn(*entity target*, number pan, number tilt, number roll)"},
      {"me, ", "ent_turn(entity target, *number pan*, number tilt, number roll)"},
      {"abs(", "abs(*number value*)"},
      {"1), ", ""},  // the first ")" of a line ends its list
  };
  for (const Step& step : steps) {
    Type(step.keys);
    EXPECT_EQ(TipText(), step.tip) << step.keys;
    EXPECT_FALSE(Tip() != nullptr && Tip()->geometry().intersects(CaretLineOnScreen())) << step.keys;
  }
}

TEST_F(Writing, TheTipGoesWhenTheCaretLeaves) {
  OpenScript();
  const auto show = [this](const char* before = "") {
    View().SelectAll();
    Type(std::string(before) + "wait(");
    ASSERT_EQ(TipText(), "wait(*number frames*)") << before;
  };
  show();
  Press("Home");
  EXPECT_EQ(TipText(), "");
  show();
  const auto wheel = [this] {
    QWheelEvent event(QPointF(50, 50), View().viewport()->mapToGlobal(QPointF(50, 50)), {}, {0, -120},
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(View().viewport(), &event);
  };
  wheel();
  EXPECT_EQ(TipText(), "");
  show();
  View().clearFocus();
  EXPECT_EQ(TipText(), "");
  View().setFocus();
  show();
  Press("Escape");
  EXPECT_EQ(TipText(), "");
  Type("1");
  EXPECT_EQ(TipText(), "") << "sent away";
  Type(");abs(");
  EXPECT_EQ(TipText(), "") << "the first \")\" of the line ends the list";
  View().SelectAll();
  Press("Delete");
  Press("Return");
  Type("abs(");
  EXPECT_EQ(TipText(), "abs(*number value*)") << "another hint";

  show();
  QTest::mouseClick(View().viewport(), Qt::LeftButton, {}, View().PointOf({0, 2}) + QPoint(1, 5));
  EXPECT_EQ(TipText(), "");
  QTest::mouseClick(View().viewport(), Qt::LeftButton, {}, View().PointOf({0, 5}) + QPoint(1, 5));
  EXPECT_EQ(TipText(), "wait(*number frames*)");
  View().SetCaretPos(View().Buffer()->EndOfText());
  for (int i = 0; i < 200; ++i) Press("Return");
  View().SetCaretPos({0, 5});
  Press("Shift");
  EXPECT_EQ(TipText(), "wait(*number frames*)");
  View().verticalScrollBar()->setValue(20);
  EXPECT_EQ(TipText(), "");
}

TEST_F(Writing, HintsCanBeSwitchedOffAndAskedFor) {
  OpenScript();
  Type("wait(");
  ASSERT_NE(Tip(), nullptr);
  WriteFlag(m_settings, settings::kHintsWhileWriting, false);
  Press("Home");
  EXPECT_EQ(TipText(), "wait(*number frames*)") << "an existing tip stays as it is";
  View().SetCaretPos({5, 3});
  Press("Ctrl+Shift+Space");
  EXPECT_EQ(TipText(), "wait(number frames)");
  Press("Right");
  EXPECT_EQ(TipText(), "");
  Press("Right");
  Press("Right");
  EXPECT_EQ(TipText(), "") << "switched off";
  View().SetCaretPos({0, 0});
  Press("Ctrl+Shift+Space");
  EXPECT_EQ(TipText(), "");
  EXPECT_EQ(ToBytes(Parts().statusBar.currentMessage()), "There is no command at the caret.");
}

TEST_F(Writing, ListTipAndHelpShareTheSelectedCommand) {
  OpenScript();
  Type("wait(e");
  EXPECT_EQ(TipText(), "wait(*number frames*)");
  Type("nt_tu");
  EXPECT_EQ(List()->Selected()->name, "ent_turn");
  EXPECT_EQ(TipText(), "ent_turn(entity target, number pan, number tilt, number roll)");
  EXPECT_FALSE(Tip()->geometry().intersects(List()->geometry()));
  EXPECT_FALSE(Tip()->geometry().intersects(CaretLineOnScreen()));
  EXPECT_TRUE(Frame().findChild<QTextBrowser*>()->toPlainText().startsWith("ent_turn("));
  Press("Escape");
  EXPECT_NE(Tip(), nullptr) << "Esc was for the list";
}

}  // namespace
}  // namespace quill
