#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QKeyEvent>
#include <QRadioButton>
#include <QTest>

#include "shell/ui/QuillDoc.h"
#include "shell/ui/QuillView.h"
#include "shell/ui/StatusPanes.h"
#include "ui/ShellFixture.h"

namespace quill {
namespace {

/// Everything is done by keys, as a user without a mouse does it.
class FindDialogs : public ShellFixture {
 protected:
  void Begin(const std::string& text) {
    Start();
    Open("a.vsl", text);
  }
  /// "2:4-2:8", lines and columns from 1; one place without a selection.
  std::string Selected() {
    const auto place = [](TextPosition p) {
      return std::to_string(p.line + 1) + ":" + std::to_string(p.character + 1);
    };
    const TextRange range = View().Selection();
    return range.IsEmpty() ? place(range.start) : place(range.start) + "-" + place(range.end);
  }
  std::string Matches() { return Parts().statusBar.Matches().toStdString(); }
  static std::string ActiveTitle() {
    const QWidget* window = QApplication::activeWindow();
    return window == nullptr ? "" : window->windowTitle().toStdString();
  }
  QDialog& Dialog() { return *qobject_cast<QDialog*>(QApplication::activeWindow()); }
  QAbstractButton* Button(const QString& text) {
    for (auto* button : Dialog().findChildren<QAbstractButton*>()) {
      if (button->text() == text) return button;
    }
    return nullptr;
  }
  /// A button that is pressed by its Alt key clicks when it comes up again.
  void Press(const std::string& key) {
    ShellFixture::Press(key);
    const auto noneIsDown = [] {
      for (const QWidget* widget : QApplication::allWidgets()) {
        const auto* button = qobject_cast<const QAbstractButton*>(widget);
        if (button != nullptr && button->isDown()) return false;
      }
      return true;
    };
    EXPECT_TRUE(QTest::qWaitFor(noneIsDown));
    Pump();
  }
  void PressAll(std::initializer_list<const char*> keys) {
    for (const char* key : keys) Press(key);
  }
  void BackToText() {
    Frame().activateWindow();
    View().setFocus();
    Pump();
  }
  static void BackTo(QDialog& dialog) {
    dialog.activateWindow();
    Pump();
  }
  /// The scope that is chosen.
  std::string Checked() {
    for (const auto* button : Dialog().findChildren<QRadioButton*>()) {
      if (button->isChecked()) return button->text().remove('&').toStdString();
    }
    return {};
  }
  /// Opens a dialog by its key and fills its first field.
  void OpenAndType(const char* key, const std::string& text) {
    Press(key);
    Type(text);
  }
};

TEST_F(FindDialogs, EnterFindsOneMatchAfterTheOtherAndGoesOnAtTheTop) {
  Begin("alpha beta\r\nBeta\r\ngamma beta");
  OpenAndType("Ctrl+F", "beta");
  EXPECT_EQ(ActiveTitle(), "Find");
  std::string seen;
  for (int i = 0; i < 4; ++i) {
    Press("Return");
    seen += Selected() + " (" + Matches() + ") ";
  }
  EXPECT_EQ(seen, "1:7-1:11 (1 of 3) 2:1-2:5 (2 of 3) 3:7-3:11 (3 of 3) 1:7-1:11 (1 of 3) ");
  Press("Escape");
  EXPECT_EQ(QApplication::focusWidget(), &View());
  Press("F3");
  EXPECT_EQ(Selected(), "2:1-2:5");
  Press("Shift+F3");
  EXPECT_EQ(Selected(), "1:7-1:11");
  EXPECT_EQ(Matches(), "1 of 3");
  Type("x");
  EXPECT_EQ(Matches(), "2") << "the text changed under the marks";
  Press("Escape");
  EXPECT_EQ(Matches(), "");
}

TEST_F(FindDialogs, ShiftF3GoesFromMatchToMatchTowardsTheTop) {
  Begin("cat x cat cat\r\nconcat Cat catcat\r\n");
  OpenAndType("Ctrl+F", "cat");
  PressAll({"Return", "Escape", "Ctrl+End"});
  std::string seen;
  for (int i = 0; i < 9; ++i) {
    Press("Shift+F3");
    seen += Selected() + " ";
  }
  EXPECT_EQ(seen, "2:15-2:18 2:12-2:15 2:8-2:11 2:4-2:7 1:11-1:14 1:7-1:10 1:1-1:4 2:15-2:18 2:12-2:15 ");
  EXPECT_EQ(Matches(), "6 of 7");
  Press("F3");
  EXPECT_EQ(Selected(), "2:15-2:18") << "and back";
  View().SetCaretPos({0, 8});
  Press("Shift+F3");
  EXPECT_EQ(Selected(), "1:1-1:4") << "from within a match to the one before it";

  View().SetCaretPos({1, 5});
  PressAll({"Ctrl+F", "Alt+W", "Return", "Escape"});
  EXPECT_EQ(Selected(), "2:8-2:11");
  Press("Shift+F3");
  EXPECT_EQ(Selected(), "1:11-1:14") << "whole words";
  PressAll({"Ctrl+F", "Alt+U", "Return", "Escape"});
  View().SetCaretPos({0, 8});
  Press("Shift+F3");
  EXPECT_EQ(Selected(), "1:1-1:4") << "whatever direction the dialog has";
}

TEST_F(FindDialogs, TheFindDialogBeginsWithWhatWasLookedForLast) {
  Begin("one two\r\nOne\r\none");
  OpenAndType("Ctrl+F", "one");
  PressAll({"Alt+C", "Alt+U", "Return", "Escape"});
  EXPECT_EQ(Selected(), "1:1-1:4") << "upwards: the caret's line first";
  const AppProfile profile(m_settings);
  EXPECT_EQ(profile.ReadText("Quill\\Find", "FindWhat"), "one");
  EXPECT_EQ(profile.ReadInteger("Quill\\Find", "MatchCase", -1), 1);
  EXPECT_EQ(profile.ReadInteger("Quill\\Find", "WholeWord", -1), 0);

  PressAll({"Ctrl+F", "Return"});
  EXPECT_EQ(Selected(), "3:1-3:4") << "text, case and direction are still there; nothing above: from the end";
  Press("Escape");
  Open("b.vsl", "ONE one two");
  PressAll({"Ctrl+F", "Return"});
  EXPECT_EQ(Selected(), "1:5-1:8") << "another view takes the stored search, downwards";
  Press("Escape");
  View().SetSelection({0, 8}, {0, 11});
  Press("Ctrl+F");
  EXPECT_EQ(Dialog().findChild<QComboBox*>()->currentText(), QString("two"));
  Press("Down");
  EXPECT_EQ(Dialog().findChild<QComboBox*>()->currentText(), QString("one")) << "a past entry";
}

TEST_F(FindDialogs, AnEmptyTextCannotBeSearchedAndAMissingOneIsTold) {
  Begin("aa\r\nzz top\r\naa");
  Press("Ctrl+F");
  EXPECT_FALSE(Button("&Find Next")->isEnabled());
  Press("Return");
  EXPECT_EQ(Selected(), "1:1");
  Type("zz");
  PressAll({"Return", "Return"});
  EXPECT_EQ(Selected(), "2:1-2:3");
  PressAll({"Alt+W", "Alt+N"});
  Type("to");
  m_prompts.Expect("Cannot find string\"to\"", Prompts::Answer::kOk);
  Press("Return");
  EXPECT_EQ(Matches(), "");
  EXPECT_EQ(Selected(), "2:1-2:3");
  EXPECT_EQ(ActiveTitle(), "Find");
  Type("aa");
  Press("Return");
  EXPECT_EQ(Selected(), "1:1-1:3") << "after a failure from the top again";
  PressAll({"Escape", "F3", "F3"});
  EXPECT_EQ(Selected(), "1:1-1:3");
}

TEST_F(FindDialogs, FindSelectedWordLooksForSelectedTextOrTheWordAtTheCaret) {
  Begin("set_me(x);\r\nreset_me; set\r\nset_me");
  Press("Ctrl+F3");
  EXPECT_EQ(Selected(), "2:3-2:9");
  EXPECT_EQ(Matches(), "2 of 3");
  View().SetSelection({0, 0}, {0, 3});
  Press("Ctrl+F3");
  EXPECT_EQ(Selected(), "2:3-2:6");
  Press("F3");
  EXPECT_EQ(Selected(), "2:11-2:14");
}

TEST_F(FindDialogs, ReplaceGoesStepByStepAndStoresWhenItCloses) {
  Begin("cat cat\r\ncat");
  OpenAndType("Ctrl+H", "cat");
  EXPECT_EQ(ActiveTitle(), "Replace");
  Press("Tab");
  Type("dog");
  Press("Alt+R");
  EXPECT_EQ(Selected(), "1:1-1:4") << "the first press only finds";
  Press("Alt+R");
  EXPECT_EQ(ActiveText(), "dog cat|cat");
  Press("Alt+F");
  m_prompts.Expect("Cannot find string\"cat\"", Prompts::Answer::kOk);
  Press("Alt+R");
  EXPECT_EQ(ActiveText(), "dog cat|dog");
  Press("Alt+F");
  EXPECT_EQ(Selected(), "1:5-1:8") << "after a failure from the top again";
  Press("Escape");
  const AppProfile profile(m_settings);
  EXPECT_EQ(profile.ReadText("Quill\\Replace", "FindWhat"), "cat");
  EXPECT_EQ(profile.ReadText("Quill\\Replace", "ReplaceWith"), "dog");
  EXPECT_EQ(profile.ReadInteger("Quill\\Replace", "WholeWord", -1), 0);
  Press("Ctrl+Home");
  Press("F3");
  EXPECT_EQ(Selected(), "1:5-1:8") << "what was replaced can be found again";
}

TEST_F(FindDialogs, ReplaceAllInASelectionIsOneUndoStepAndKeepsTheBlock) {
  Begin("a a\r\na a\r\na a\r\na");
  View().SetSelection({1, 0}, {2, 1});
  OpenAndType("Ctrl+H", "a");
  Press("Alt+P");
  Type("aa");
  Press("Alt+A");
  EXPECT_EQ(ActiveText(), "a a|aa aa|aa a|a");
  Press("Alt+A");
  EXPECT_EQ(ActiveText(), "a a|aaaa aaaa|aaaa a|a");
  PressAll({"Escape"});
  EXPECT_EQ(Selected(), "2:1-3:5") << "the block is selected again";
  PressAll({"Ctrl+Z", "Ctrl+Z"});
  EXPECT_EQ(ActiveText(), "a a|a a|a a|a");

  View().SetCaretPos({0, 0});
  PressAll({"Ctrl+H", "Alt+A", "Escape", "Ctrl+Z"});
  EXPECT_EQ(ActiveText(), "a a|a a|a a|a");
  EXPECT_FALSE(View().CanUndo());
}

TEST_F(FindDialogs, WhatIsSelectedWhileReplaceIsOpenIsItsBlock) {
  Begin("a a\r\na a\r\na a\r\na a\r\na a");
  View().SetSelection({0, 0}, {1, 3});
  OpenAndType("Ctrl+H", "a");
  PressAll({"Alt+P"});
  Type("x");
  QDialog& dialog = Dialog();
  BackToText();
  View().SetCaretPos({2, 0});
  PressAll({"Shift+Down", "Shift+Down"});
  BackTo(dialog);
  PressAll({"Alt+A"});
  EXPECT_EQ(ActiveText(), "a a|a a|x x|x x|a a");
  EXPECT_EQ(Checked(), "Selection");

  PressAll({"Alt+O", "Alt+F", "Alt+F", "Alt+S", "Alt+A"});
  EXPECT_EQ(ActiveText(), "a a|a a|x x|x x|a a") << "nothing is left in the block, whatever was found above";

  BackToText();
  View().SetCaretPos({0, 0});
  Press("Shift+Down");
  BackTo(dialog);
  Press("Alt+F");
  EXPECT_EQ(Selected(), "1:1-1:2");
  BackToText();
  Press("F3");
  EXPECT_EQ(Selected(), "1:3-1:4");
  BackTo(dialog);
  Press("Alt+R");
  EXPECT_EQ(ActiveText(), "a a|a a|x x|x x|a a")
      << "a place found elsewhere is where to go on, not the block";
  Press("Alt+A");
  EXPECT_EQ(ActiveText(), "a x|a a|x x|x x|a a");
  PressAll({"Escape"});
  EXPECT_EQ(Selected(), "1:1-2:1");
}

TEST_F(FindDialogs, ClosingReplaceLeavesTheUserWhereHeIs) {
  Begin("a\r\na\r\na\r\na\r\na");
  for (const bool moves : {false, true}) {
    View().SetSelection({1, 0}, {3, 0});
    OpenAndType("Ctrl+H", "a");
    Press("Return");
    QDialog& dialog = Dialog();
    if (moves) {
      BackToText();
      Press("Ctrl+End");
      BackTo(dialog);
    }
    Press("Escape");
    EXPECT_EQ(Selected(), moves ? "5:2" : "2:1-4:1");
  }
}

TEST_F(FindDialogs, ReplaceInTheWholeFileBeginsAtItsTop) {
  Begin("cat cat\r\ncat\r\ncat");
  View().SetSelection({1, 0}, {2, 3});
  OpenAndType("Ctrl+H", "cat");
  PressAll({"Alt+P"});
  Type("dog");
  PressAll({"Alt+O", "Alt+A"});
  EXPECT_EQ(ActiveText(), "dog dog|dog|dog");
  PressAll({"Escape", "Ctrl+Z", "Ctrl+End", "Ctrl+H", "Alt+F"});
  EXPECT_EQ(Selected(), "1:1-1:4");
  QDialog& dialog = Dialog();
  BackToText();
  View().SetCaretPos({1, 0});
  BackTo(dialog);
  Press("Alt+F");
  EXPECT_EQ(Selected(), "2:1-2:4") << "from where the user went";
}

TEST_F(FindDialogs, TheKeyOfADialogThatIsOpenKeepsWhatWasTyped) {
  Begin("cat dog\r\ncat");
  OpenAndType("Ctrl+H", "cat");
  PressAll({"Alt+P"});
  Type("mouse");
  PressAll({"Alt+C"});
  const auto shown = [&] {
    std::string texts;
    for (const auto* box : Dialog().findChildren<QComboBox*>())
      texts += box->currentText().toStdString() + " ";
    return texts + (Button("Match &case")->isChecked() ? "case" : "");
  };
  BackToText();
  Press("Ctrl+H");
  EXPECT_EQ(ActiveTitle(), "Replace");
  EXPECT_EQ(shown(), "cat mouse case");
  BackToText();
  View().SetSelection({0, 4}, {0, 7});
  Press("Ctrl+H");
  EXPECT_EQ(shown(), "dog mouse case") << "a selected text is what to look for";
  PressAll({"Alt+A", "Escape"});
  EXPECT_EQ(ActiveText(), "cat mouse|cat");
}

TEST_F(FindDialogs, AnotherWindowKeepsNothingOfTheBlock) {
  Begin("a\r\na\r\na");
  CQuillView& first = View();
  first.SetSelection({1, 0}, {2, 1});
  OpenAndType("Ctrl+H", "a");
  PressAll({"Alt+P"});
  Type("x");
  QDialog& dialog = Dialog();
  BackToText();
  Open("b.vsl", "a\r\na");
  BackTo(dialog);
  EXPECT_EQ(Checked(), "Whole file");
  BackToText();
  Press("Ctrl+Tab");
  ASSERT_EQ(&View(), &first);
  BackTo(dialog);
  EXPECT_EQ(Checked(), "Selection") << "back in the first";
  Press("Alt+A");
  EXPECT_EQ(ActiveText(), "a|x|x");
}

TEST_F(FindDialogs, MarksAndNumbersSayWhatIsSelected) {
  Begin("cat dog cat\r\ncat dog\r\ncat");
  OpenAndType("Ctrl+F", "cat");
  PressAll({"Return", "Return"});
  EXPECT_EQ(Matches(), "2 of 4");
  PressAll({"Escape", "Ctrl+H"});
  EXPECT_EQ(Matches(), "2 of 4") << "the other dialog goes on with the same search";
  PressAll({"Return"});
  EXPECT_EQ(Matches() + " at " + Selected(), "3 of 4 at 2:1-2:4") << "on from what is selected";
  PressAll({"Escape"});
  View().SetSelection({0, 4}, {0, 7});
  EXPECT_EQ(Matches(), "4") << "no match, although one follows";
  View().SetSelection({0, 8}, {0, 10});
  EXPECT_EQ(Matches(), "4");
  View().SetSelection({1, 0}, {1, 3});
  EXPECT_EQ(Matches(), "3 of 4");
  View().SetSelection({0, 4}, {0, 7});
  PressAll({"Ctrl+H", "Return"});
  EXPECT_EQ(Matches() + " at " + Selected(), "2 of 2 at 2:5-2:8");
  PressAll({"Escape", "Ctrl+F"});
  EXPECT_EQ(Matches(), "2 of 2");
}

TEST_F(FindDialogs, AReadOnlyTextCanBeSearchedButNotReplaced) {
  Begin("cat");
  Document().Buffer().SetReadOnly(true);
  OpenAndType("Ctrl+H", "cat");
  EXPECT_TRUE(Button("&Find Next")->isEnabled());
  EXPECT_FALSE(Button("&Replace")->isEnabled());
  EXPECT_FALSE(Button("Replace &All")->isEnabled());
  Press("Return");
  EXPECT_EQ(Selected(), "1:1-1:4");
}

TEST_F(FindDialogs, TheDialogMovesAwayFromTheMatch) {
  std::string text;
  for (int i = 0; i < 40; ++i) text += "          line " + std::to_string(i) + " here\r\n";
  Begin(text);
  Frame().setGeometry(0, 0, 700, 500);
  OpenAndType("Ctrl+F", "here");
  for (int i = 0; i < 40; ++i) {
    Press("Return");
    const QPoint corner = View().viewport()->mapToGlobal(View().PointOf(View().Selection().start));
    ASSERT_FALSE(Dialog().frameGeometry().intersects(QRect(corner, QSize(20, View().LineHeight())))) << i;
  }
}

TEST_F(FindDialogs, TabGoesFromTopToBottomAndCharactersOutsideTheCodePageAreRefused) {
  Begin("x");
  Press("Ctrl+H");
  Type("x");
  std::string order;
  for (int i = 0; i < 8; ++i) {
    Press("Tab");
    const auto* button = qobject_cast<QAbstractButton*>(QApplication::focusWidget());
    order += (button == nullptr ? "field" : button->text().remove('&').toStdString()) + ", ";
  }
  EXPECT_EQ(order,
            "field, Match whole word only, Match case, Whole file, Find Next, Replace, Replace All, Close, ");
  Press("Alt+N");
  for (const char16_t c : {u'\x3B1', u'\x20AC'}) {
    QKeyEvent event(QEvent::KeyPress, 0, Qt::NoModifier, QString(QChar(c)));
    QApplication::sendEvent(QApplication::focusWidget(), &event);
  }
  EXPECT_EQ(Dialog().findChild<QComboBox*>()->currentText(), QString::fromUtf8("\xE2\x82\xAC"));
}

TEST_F(FindDialogs, TheDialogFollowsTheActiveWindowAndOutlivesItsText) {
  Begin("cat");
  OpenAndType("Ctrl+H", "cat");
  PressAll({"Return"});
  QDialog& dialog = Dialog();
  Open("b.vsl", "dog cat");
  dialog.activateWindow();
  Pump();
  ASSERT_EQ(ActiveTitle(), "Replace");
  ASSERT_TRUE(Button("&Find Next")->isEnabled());
  ASSERT_EQ(QApplication::focusWidget(), dialog.focusWidget());
  Press("Alt+F");
  EXPECT_EQ(Selected(), "1:5-1:8");
  Frame().activateWindow();
  Pump();
  EXPECT_TRUE(Choose("File > Close"));
  EXPECT_TRUE(Choose("File > Close"));
  EXPECT_FALSE(dialog.findChildren<QAbstractButton*>().isEmpty());
  dialog.activateWindow();
  Pump();
  Press("Alt+F");
  Press("Escape");
}

}  // namespace
}  // namespace quill
