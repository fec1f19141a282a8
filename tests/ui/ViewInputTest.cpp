#include <QClipboard>
#include <QCursor>
#include <QInputMethodEvent>
#include <QStatusBar>
#include <QTest>
#include <QWindow>
#include <functional>

#include "shell/ui/QuillDoc.h"
#include "ui/ViewEvents.h"

namespace quill {
namespace {

class ViewInput : public ViewFixture {
 protected:
  static std::string Lines(int count, const std::string& line = "word") {
    std::string text;
    for (int i = 0; i < count; ++i) text += line + "\r\n";
    return text;
  }
  int32_t LinesAbove() { return View().CaretPos().line - View().TopLine(); }
  int32_t LinesBelow() { return View().PageRows() - 1 - LinesAbove(); }
};

TEST_F(ViewInput, LeftAndRightLeaveASelectionAtTheirSide) {
  const struct {
    std::vector<const char*> keys;
    const char* shown;
  } rows[] = {
      {{"Right", "Shift+Right", "Shift+Right", "Left"}, "o|ne two\nthree\nfour"},
      {{"Right", "Shift+Right", "Shift+Right", "Right"}, "one| two\nthree\nfour"},
      {{"End", "Shift+Left", "Shift+Left", "Left"}, "one t|wo\nthree\nfour"},
      {{"End", "Shift+Left", "Shift+Left", "Right"}, "one two|\nthree\nfour"},
      {{"Shift+Down", "Shift+Down", "Left"}, "|one two\nthree\nfour"},
      {{"Shift+Down", "Shift+Down", "Right"}, "one two\nthree\n|four"},
      {{"Shift+End", "Left", "Down"}, "one two\n|three\nfour"},
      {{"Shift+Right", "Shift+Left", "Right"}, "o|ne two\nthree\nfour"},
  };
  Open("a.vsl", "one two\r\nthree\r\nfour");
  for (const auto& row : rows) {
    Press("Ctrl+Home");
    PressKeys(row.keys);
    EXPECT_EQ(Shown(), row.shown) << row.keys.size() << " keys, the last of them " << row.keys.back();
  }
}

TEST_F(ViewInput, UndoGoesBackByWhatWasDoneInOneGo) {
  Open("a.vsl", "");
  Type("word");
  Press("Ctrl+A");
  Type("x");
  Press("Ctrl+Z");
  EXPECT_EQ(ActiveText(), "word");
  Press("Ctrl+Z");
  EXPECT_EQ(ActiveText(), "");
  Type("ab cd");
  Press("Home");
  PressKeys({"Delete", "Delete", "Delete", "Delete", "Delete", "Ctrl+Z"});
  EXPECT_EQ(ActiveText(), "cd");
  Press("Ctrl+Z");
  EXPECT_EQ(ActiveText(), "ab cd");
  PressKeys({"End", "Backspace", "Backspace", "Backspace", "Ctrl+Z", "Ctrl+Z"});
  EXPECT_EQ(ActiveText(), "ab cd");
  Press("End");
  Type("e");
  Press("Ctrl+S");
  Type("f");
  Press("Ctrl+Z");
  EXPECT_EQ(ActiveText(), m_folder.Read("a.vsl"));
  EXPECT_FALSE(Document().Buffer().IsModified());
  PressKeys({"Ctrl+Home", "Ctrl+End"});
  Type("g");
  Press("Ctrl+Home");
  View().SetCaretPos({0, 7});
  Type("h");
  Press("Ctrl+Z");
  EXPECT_EQ(ActiveText(), "ab cdeg") << "the caret was elsewhere";
}

TEST_F(ViewInput, AnInputMethodWritesWhatItCommits) {
  Open("a.vsl", "one");
  const auto compose = [this](const QString& preedit, const QString& commit) {
    QInputMethodEvent event(preedit, {});
    event.setCommitString(commit);
    QApplication::sendEvent(QApplication::focusWidget(), &event);
    return Shown();
  };
  const auto ask = [this](Qt::InputMethodQuery what) {
    QInputMethodQueryEvent query(what);
    QApplication::sendEvent(&View(), &query);
    return query.value(what);
  };
  EXPECT_EQ(compose("a", {}), "|one");
  EXPECT_EQ(compose({}, QString::fromUtf8("\xC3\xA4\xE2\x82\xAC")), "\xE4\x80|one");
  EXPECT_EQ(compose("xyz", {}), "\xE4\x80|one");
  EXPECT_EQ(compose({}, {}), "\xE4\x80|one") << "given up";
  EXPECT_EQ(compose({}, QString::fromUtf8("\xE3\x81\x82")), "\xE4\x80|one") << "not in the code page";
  EXPECT_FALSE(Frame().statusBar()->currentMessage().isEmpty());
  Press("Shift+End");
  EXPECT_EQ(compose({}, "two"), "\xE4\x80two|");
  EXPECT_TRUE(ask(Qt::ImEnabled).toBool());
  EXPECT_EQ(ask(Qt::ImCursorRectangle).toRect().topLeft(),
            View().viewport()->mapTo(&View(), View().CaretRect().topLeft()));
  Document().Buffer().SetReadOnly(true);
  EXPECT_FALSE(ask(Qt::ImEnabled).toBool());
  EXPECT_EQ(compose({}, "x"), "\xE4\x80two|");
}

TEST_F(ViewInput, LongLinesScrollSoThatTheCaretStaysInSight) {
  std::string longLine;
  for (int i = 0; i < 100; ++i) longLine += "word ";
  Open("a.vsl", longLine + "\r\n\r\n" + Lines(100));
  const int left = At(0, 0).x() - 2;
  const auto check = [this, left](const char* what) {
    EXPECT_TRUE(Viewport().rect().contains(View().CaretRect())) << what;
    EXPECT_GE(View().CaretRect().left(), left) << what << ": not under the margin";
    EXPECT_EQ(Repainted().pixel(View().CaretRect().center()), qRgb(0, 0, 0)) << what;
  };
  Press("End");
  EXPECT_LT(View().PointOf({0, 0}).x(), left);
  check("End");
  for (int i = 0; i < 60; ++i) Press("Ctrl+Left");
  check("leftwards by words");
  Press("Home");
  check("Home");
  EXPECT_EQ(View().PointOf({0, 0}).x(), left);
  for (int i = 0; i < 60; ++i) Press("Ctrl+Right");
  check("rightwards by words");
  Press("Ctrl+Home");
  Press("Down");
  EXPECT_EQ(View().PointOf({0, 0}).x(), left);
  Type(std::string(300, 'm'));
  check("typed");
  Type(std::string(400, 'm'));
  check("typed beyond the widest line");
  QApplication::clipboard()->setText(QString(2000, u'm'));
  Press("Ctrl+V");
  check("pasted");
  Press("Return");
  check("Return");
  EXPECT_EQ(View().PointOf({0, 0}).x(), left);
}

TEST_F(ViewInput, JumpsShowLinesAroundTheirPlace) {
  Open("a.vsl", "far();\r\n" + Lines(150) + "function far()\r\n{\r\n}\r\nfar();\r\n" + Lines(150) + "far();");
  const auto expectAround = [this](const char* what, int32_t line) {
    EXPECT_EQ(View().CaretPos().line, line) << what;
    EXPECT_GE(LinesAbove(), 3) << what;
    EXPECT_GE(LinesBelow(), 3) << what;
  };
  ASSERT_GE(View().PageRows(), 12);
  Press("F12");
  expectAround("a definition further down", 151);
  EXPECT_GE(LinesBelow(), View().PageRows() / 2) << "what follows counts more";
  PressKeys({"Ctrl+End", "Home", "F12"});
  expectAround("a definition further up", 151);
  PressKeys({"Down", "Down", "Down", "Home", "Ctrl+Down", "Ctrl+Down"});
  const int32_t top = View().TopLine();
  Press("F12");
  EXPECT_EQ(View().CaretPos().line, 151);
  EXPECT_EQ(View().TopLine(), top) << "it is in sight";
  m_prompts.ExpectLine(250);
  Press("Ctrl+G");
  expectAround("a line further down", 249);
  m_prompts.ExpectLine(50);
  Press("Ctrl+G");
  expectAround("a line further up", 49);
  Press("Ctrl+Home");
  const int32_t page = View().PageRows();
  for (int i = 0; i < page; ++i) Press("Down");
  EXPECT_EQ(View().TopLine(), 1) << "a step is no jump";
  Open("b.vsl", "near();\r\n" + Lines(page) + "function near()\r\n{\r\n}\r\n" + Lines(150));
  Press("F12");
  expectAround("a definition right below the view", page + 1);
  EXPECT_GE(LinesBelow(), page / 2);
}

TEST_F(ViewInput, TheWheelScrollsLinesGoesSidewaysAndZooms) {
  Open("a.vsl", Lines(200, std::string(300, 'm')));
  const int left = View().PointOf({0, 0}).x();
  const int perNotch = QApplication::wheelScrollLines();
  Mouse mouse = ViewMouse();
  mouse.Wheel(-240);
  EXPECT_EQ(View().TopLine(), 2 * perNotch);
  mouse.Wheel(120);
  EXPECT_EQ(View().TopLine(), perNotch);
  EXPECT_EQ(View().PointOf({0, 0}).x(), left);

  mouse.Wheel(-120, Qt::ShiftModifier);
  EXPECT_EQ(View().TopLine(), perNotch);
  EXPECT_LT(View().PointOf({0, 0}).x(), left);
  mouse.Wheel(120, Qt::ShiftModifier);
  EXPECT_EQ(View().PointOf({0, 0}).x(), left);

  const auto zoomBy = [&](int turn) {
    mouse.Wheel(turn, Qt::ControlModifier);
    return std::to_string(View().Zoom()) + "% from line " + std::to_string(View().TopLine() + 1);
  };
  const int height = View().LineHeight();
  for (int i = 0; i < 4; ++i) mouse.Wheel(-120);
  const std::string from = "% from line " + std::to_string(5 * perNotch + 1);
  EXPECT_EQ(zoomBy(240), "120" + from);
  EXPECT_GT(View().LineHeight(), height);
  EXPECT_EQ(zoomBy(-360), "90" + from);
  EXPECT_LT(View().LineHeight(), height);
  EXPECT_EQ(zoomBy(40), "90" + from);
  EXPECT_EQ(zoomBy(40), "90" + from);
  EXPECT_EQ(zoomBy(40), "100" + from) << "a notch in small steps";
  EXPECT_EQ(zoomBy(40), "100" + from);
  EXPECT_EQ(zoomBy(-120 * 30), "30" + from);
}

TEST_F(ViewInput, KeysScrollWithoutTheCaretAndByPages) {
  Open("a.vsl", Lines(200));
  const int32_t page = View().PageRows();
  Press("Ctrl+Down");
  Press("Ctrl+Down");
  EXPECT_EQ(View().TopLine(), 2);
  EXPECT_EQ(View().CaretPos().line, 0);
  Press("Ctrl+Up");
  EXPECT_EQ(View().TopLine(), 1);
  Press("Ctrl+Home");
  Press("PgDown");
  Press("PgDown");
  EXPECT_EQ(View().CaretPos().line, 2 * (page - 1));
  EXPECT_EQ(View().TopLine(), 2 * (page - 1)) << "the caret keeps its row";
  Press("PgUp");
  EXPECT_EQ(View().CaretPos().line, page - 1);
  EXPECT_EQ(View().TopLine(), page - 1);
  Press("Ctrl+A");
  EXPECT_EQ(View().TopLine(), page - 1) << "the caret is at the end, but nobody went there";
}

TEST_F(ViewInput, WhatMovesTheCaretEndsATypingStep) {
  const auto typed = [this](const std::string& name, const std::function<void()>& between) {
    Open(name, "x\r\n");
    Type("abc");
    between();
    Type("def");
    EXPECT_EQ(ActiveText(), "abcdefx|") << name;
    Press("Ctrl+Z");
    return ActiveText();
  };
  EXPECT_EQ(typed("none.vsl", [] {}), "x|");
  EXPECT_EQ(typed("keys.vsl", [this] { PressKeys({"Left", "Right"}); }), "abcx|");
  EXPECT_EQ(typed("lines.vsl",
                  [this] {
                    PressKeys({"Right", "Down", "Up", "Home", "End", "Left"});
                  }),
            "abcx|");
  EXPECT_EQ(typed("mouse.vsl", [this] { ViewMouse().Click(At(0, 3)); }), "abcx|");
  EXPECT_EQ(typed("undo.vsl", [this] { PressKeys({"Ctrl+Z", "Ctrl+Y"}); }), "abcx|");
}

// Mouse

TEST_F(ViewInput, ADragSelectsAndShiftExtends) {
  Open("a.vsl", "alpha beta\r\ngamma delta\r\nlast one");
  Mouse mouse = ViewMouse();
  mouse.Drag(At(0, 6), At(2, 4));
  EXPECT_EQ(Shown(), "alpha [beta\ngamma delta\nlast| one");
  mouse.Move(At(1, 1));
  EXPECT_EQ(Shown(), "alpha [beta\ngamma delta\nlast| one") << "the button is up";
  mouse.Click(At(1, 2), Qt::ShiftModifier);
  EXPECT_EQ(Shown(), "alpha [beta\nga|mma delta\nlast one");
  mouse.Drag(At(0, 8), At(0, 1), Qt::ShiftModifier);
  EXPECT_EQ(Shown(), "a|lpha [beta\ngamma delta\nlast one") << "and on from where it began";
  mouse.Drag(At(2, 4), At(0, 6));
  EXPECT_EQ(Shown(), "alpha |beta\ngamma delta\nlast[ one") << "backwards";

  mouse.Click(At(1, 3));
  EXPECT_EQ(Shown(), "alpha beta\ngam|ma delta\nlast one") << "a click on the selection drops it";
  mouse.Drag(At(0, 0), At(2, 2));
  const QPoint behind(Viewport().width() - 5, At(1, 0).y());
  mouse.Drag(behind, At(1, 6));
  EXPECT_EQ(Shown(), "alpha beta\ngamma |delta[\nlast one") << "behind a selected line is no text to drag";
}

TEST_F(ViewInput, WordsAndLinesAreSelectedWhole) {
  Open("a.vsl", "alpha beta\r\ngamma delta\r\nlast one");
  Mouse mouse = ViewMouse();
  mouse.DoublePress(At(1, 7));
  EXPECT_EQ(Shown(), "alpha beta\ngamma [delta|\nlast one");
  mouse.Move(At(2, 2));
  EXPECT_EQ(Shown(), "alpha beta\ngamma [delta\nlast| one");
  mouse.Move(At(0, 7));
  EXPECT_EQ(Shown(), "alpha |beta\ngamma delta[\nlast one") << "the first word stays";
  mouse.Move(At(1, 7));
  mouse.Release(At(1, 7));
  EXPECT_EQ(Shown(), "alpha beta\ngamma [delta|\nlast one");
  mouse.Press(At(1, 7));
  EXPECT_EQ(Shown(), "alpha beta\n[gamma delta\n|last one") << "the third click";
  mouse.Move(At(0, 2));
  EXPECT_EQ(Shown(), "|alpha beta\ngamma delta\n[last one");
  mouse.Release(At(0, 2));

  mouse.Drag(BesideLine(0), BesideLine(1));
  EXPECT_EQ(Shown(), "[alpha beta\ngamma delta\n|last one");
  mouse.Click(BesideLine(1));
  EXPECT_EQ(Shown(), "alpha beta\n[gamma delta\n|last one");
  mouse.Click(BesideLine(2), Qt::ShiftModifier);
  EXPECT_EQ(Shown(), "alpha beta\n[gamma delta\nlast one|");
  mouse.Click(BesideLine(0), Qt::ShiftModifier);
  EXPECT_EQ(Shown(), "|alpha beta\n[gamma delta\nlast one");
}

TEST_F(ViewInput, AltDragsAColumnBlock) {
  Open("a.vsl", "abcd\r\nefgh\r\nijkl");
  Mouse mouse = ViewMouse();
  mouse.Drag(At(0, 1), At(2, 3), Qt::AltModifier);
  Type("-");
  EXPECT_EQ(ActiveText(), "a-d|e-h|i-l");
  Press("Ctrl+Z");
  mouse.Drag(At(2, 3), At(1, 2), Qt::AltModifier);
  Press("Ctrl+X");
  EXPECT_EQ(ActiveText(), "abcd|efh|ijl");
  mouse.Click(At(0, 0));
  Press("Ctrl+V");
  EXPECT_EQ(ActiveText(), "gabcd|kefh|ijl") << "as a block";
  Press("Ctrl+Z");
  Press("Ctrl+Z");
  mouse.Drag(At(0, 1), At(1, 2), Qt::AltModifier);
  Press("Ctrl+C");
  mouse.Click(At(1, 0));
  Press("Ctrl+V");
  EXPECT_EQ(ActiveText(), "abcd|befgh|fijkl");
}

TEST_F(ViewInput, AColumnBlockKeepsItsColumnsBehindShortLines) {
  Open("a.vsl", "abcdef\r\nab\r\n\r\nabcdef");
  Mouse mouse = ViewMouse();
  const auto at = [this](int32_t line, int32_t column) { return QPoint(At(0, column).x(), At(line, 0).y()); };
  const auto bars = [&](int32_t column) {
    std::string lines;
    for (int32_t line = 0; line < 4; ++line) {
      const QRect bar(View().PointOf({0, column}).x(), View().PointOf({line, 0}).y(), 2, View().LineHeight());
      if (Count(Repainted(), bar, qRgb(0, 0, 0)) == 2 * bar.height()) lines += std::to_string(line);
    }
    return lines;
  };
  mouse.Drag(at(1, 5), at(3, 5), Qt::AltModifier);
  EXPECT_EQ(bars(5), "123") << "a caret in every line";
  Type("x");
  EXPECT_EQ(ActiveText(), "abcdef|ab   x|     x|abcdexf");
  EXPECT_EQ(bars(6), "123");
  Type("y");
  Press("Backspace");
  Press("Backspace");
  Press("Delete");
  EXPECT_EQ(ActiveText(), "abcdef|ab   |     |abcde");
  while (View().CanUndo()) Press("Ctrl+Z");
  EXPECT_EQ(ActiveText(), "abcdef|ab||abcdef");

  mouse.Drag(at(2, 5), at(1, 3), Qt::AltModifier);
  Press("Ctrl+C");
  mouse.Click(at(1, 4), Qt::AltModifier);
  Type("z");
  EXPECT_EQ(ActiveText(), "abcdef|ab  z||abcdef") << "a click is enough";
  Press("Ctrl+Z");

  Press("Ctrl+Home");
  PressKeys({"Alt+Shift+Down", "Alt+Shift+Right", "Alt+Shift+Right", "Alt+Shift+Right", "Alt+Shift+Right",
             "Alt+Shift+Left", "Alt+Shift+Down", "Alt+Shift+Up"});
  Type("-");
  EXPECT_EQ(ActiveText(), "-def|-||abcdef") << "by keys";
  Press("Ctrl+Z");
  PressKeys({"Ctrl+Home", "Alt+Shift+Down", "Alt+Shift+Down", "Alt+Shift+Down", "Alt+Shift+End",
             "Alt+Shift+Right", "Alt+Shift+Up", "Alt+Shift+Home", "Alt+Shift+Right"});
  Type("-");
  EXPECT_EQ(ActiveText(), "-bcdef|-b|-|abcdef");
  EXPECT_EQ(bars(1), "012");
}

TEST_F(ViewInput, ASelectionEndsWithTheButtonWhereverItIsReleased) {
  Open("a.vsl", "one two\r\nthree four\r\nfive");
  Mouse mouse = ViewMouse();
  const std::pair<const char*, std::function<void()>> losses[] = {
      {"no button is held", [&] { mouse.ReleaseElsewhere(); }},
      {"the focus went", [&] { View().clearFocus(); }},
      {"the mouse was taken",
       [&] {
         QEvent ungrab(QEvent::UngrabMouse);
         QApplication::sendEvent(&Viewport(), &ungrab);
       }},
      {"the view was hidden",
       [&] {
         View().hide();
         View().show();
       }},
  };
  for (const auto& [name, lose] : losses) {
    for (const Qt::KeyboardModifiers modifiers :
         {Qt::KeyboardModifiers(), Qt::KeyboardModifiers(Qt::AltModifier)}) {
      mouse.Click(At(0, 0));
      mouse.Press(At(0, 1), modifiers);
      mouse.Move(At(0, 4));
      ASSERT_EQ(Shown(), "o[ne |two\nthree four\nfive") << name;
      lose();
      mouse.Move(At(1, 3));
      mouse.Move(At(2, 2));
      EXPECT_EQ(Shown(), "o[ne |two\nthree four\nfive") << name;
      mouse.Release(At(2, 2));
      View().setFocus();
    }
  }
  mouse.Press(At(0, 2));
  mouse.ReleaseElsewhere();
  mouse.Move(At(0, 3));
  mouse.Press(At(1, 0));
  mouse.Move(At(1, 2));
  EXPECT_EQ(Shown(), "one two\n[th|ree four\nfive") << "and the next one begins";
}

TEST_F(ViewInput, ADragBeyondTheEdgeScrolls) {
  Open("a.vsl", Lines(300));
  Mouse mouse = ViewMouse();
  const auto hold = [this](int y) { QCursor::setPos(Viewport().mapToGlobal(QPoint(100, y))); };
  mouse.Press(At(1, 2));
  hold(Viewport().height() + 10);
  EXPECT_TRUE(QTest::qWaitFor([this] { return View().TopLine() > 3; }));
  EXPECT_EQ(View().Selection().start, (TextPosition{1, 2}));
  EXPECT_GT(View().CaretPos().line, View().PageRows());
  hold(-10);
  EXPECT_TRUE(QTest::qWaitFor([this] { return View().TopLine() == 0; }));
  mouse.Release({100, -10});
  EXPECT_EQ(View().CaretPos().line, 0);

  mouse.Press(BesideLine(1));
  hold(Viewport().height() + 10);
  EXPECT_TRUE(QTest::qWaitFor([this] { return View().TopLine() > 3; })) << "lines by the margin";
  EXPECT_EQ(View().Selection().start, (TextPosition{1, 0}));
  hold(-10);
  EXPECT_TRUE(QTest::qWaitFor([this] { return View().TopLine() == 0; }));
  mouse.Release({100, -10});
}

TEST_F(ViewInput, NothingIsTypedWhileTheMouseSelects) {
  Open("a.vsl", "alpha beta");
  QWindow* window = Frame().windowHandle();
  const QPoint place = Viewport().mapTo(&Frame(), At(0, 3));
  QCursor::setPos(Frame().mapToGlobal(place));
  Pump();
  QTest::mousePress(window, Qt::LeftButton, {}, place);
  Type("x");
  PressKeys({"Backspace", "Return"});
  EXPECT_EQ(Shown(), "alp|ha beta");
  Press("Right");
  EXPECT_EQ(Shown(), "alph|a beta");
  QTest::mouseRelease(window, Qt::LeftButton, {}, place);
  Type("x");
  EXPECT_EQ(Shown(), "alphx|a beta");
}

// Keys

TEST_F(ViewInput, TheOlderClipboardKeysAndTheThirdKeyLevelWork) {
  Open("a.vsl", "one two");
  PressKeys({"Ctrl+Shift+Right", "Shift+Del"});
  EXPECT_EQ(Shown(), "|two");
  PressKeys({"End", "Shift+Ins"});
  EXPECT_EQ(Shown(), "twoone |");
  PressKeys({"Shift+Home", "Ctrl+Ins", "End", "Shift+Ins"});
  EXPECT_EQ(Shown(), "twoone twoone |");
  QKeyEvent at(QEvent::KeyPress, Qt::Key_At, Qt::ControlModifier | Qt::AltModifier, "@");
  QApplication::sendEvent(QApplication::focusWidget(), &at);
  QKeyEvent control(QEvent::KeyPress, Qt::Key_At, Qt::ControlModifier, "@");
  QApplication::sendEvent(QApplication::focusWidget(), &control);
  QKeyEvent alt(QEvent::KeyPress, Qt::Key_J, Qt::AltModifier, "j");
  QApplication::sendEvent(QApplication::focusWidget(), &alt);
  EXPECT_EQ(Shown(), "twoone twoone @|") << "keys of commands that are none write nothing";
}

TEST_F(ViewInput, CharactersOutsideTheCodePageAreCountedWhenPasted) {
  Open("a.vsl", "");
  QApplication::clipboard()->setText(
      QString::fromUtf8("a\xE3\x81\x82"
                        "b\xE3\x81\x84"));
  Press("Ctrl+V");
  EXPECT_EQ(ActiveText(), "a?b?");
  EXPECT_TRUE(Frame().statusBar()->currentMessage().contains("2")) << "how many";
}

}  // namespace
}  // namespace quill
