#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QScreen>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>
#include <QWindow>
#include <random>

#include "intel/vocabulary/CommandDatabase.h"
#include "intel/vocabulary/KeywordDatabase.h"
#include "shell/ui/QuillView.h"
#include "text/ui/BookmarkCommands.h"
#include "text/ui/FoldCommands.h"

namespace quill {
namespace {

class ScriptView : public testing::Test {
 protected:
  ScriptView() {
    m_buffer.NewBuffer();
    m_view.resize(500, 300);
    ViewSettings settings;
    settings.fontSize = 10;
    m_view.ApplySettings(settings);
    m_view.SetBuffer(&m_buffer);
    m_view.show();
    m_view.setFocus();
    QApplication::processEvents();
  }

  void SetText(std::string_view text) {
    m_buffer.NewBuffer();
    TextPosition end;
    m_buffer.InsertTextAt(nullptr, {0, 0}, text, end);
    m_view.SetCaretPos({0, 0});
    QApplication::processEvents();
  }
  void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(&m_view, key, modifiers);
  }
  void Type(const char* text) { QTest::keyClicks(&m_view, QString::fromLatin1(text)); }
  /// In the middle of a character.
  QPoint At(int32_t line, int32_t column) const {
    const QPoint left = m_view.PointOf({line, column});
    return left + QPoint(2, m_view.LineHeight() / 2);
  }
  void Click(QPoint point, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::mouseClick(m_view.viewport(), Qt::LeftButton, modifiers, point);
  }
  /// The text with "|" at the caret and "[" at the anchor of a selection.
  std::string Shown() const {
    std::string text;
    m_buffer.CopyRange({{0, 0}, m_buffer.EndOfText()}, text, "\n");
    const auto offset = [&](TextPosition p) {
      size_t at = static_cast<size_t>(p.character);
      for (int32_t line = 0; line < p.line; ++line) at += static_cast<size_t>(m_buffer.LineLength(line)) + 1;
      return at;
    };
    const TextPosition anchor = m_view.Model().Anchor();
    const TextPosition caret = m_view.CaretPos();
    const size_t anchorAt = offset(anchor);
    text.insert(offset(caret), "|");
    if (anchor != caret) text.insert(anchorAt + (anchor < caret ? 0 : 1), "[");
    return text;
  }

  KeywordDatabase m_keywords;
  CommandDatabase m_commands;
  CCrystalTextBuffer m_buffer;
  CQuillView m_view{m_keywords, m_commands};
};

TEST_F(ScriptView, TypingWritesIndentsAndClosesBrackets) {
  Type("function f");
  Key(Qt::Key_ParenLeft);
  Key(Qt::Key_ParenRight);
  EXPECT_EQ(Shown(), "function f()|");
  Key(Qt::Key_Return);
  Key(Qt::Key_BraceLeft);
  EXPECT_EQ(Shown(), "function f()\n{|\n}");
  Key(Qt::Key_Return);
  Type("x = 1;");
  EXPECT_EQ(Shown(), "function f()\n{\n\tx = 1;|\n}");
  m_view.Undo();
  EXPECT_EQ(Shown(), "function f()\n{\n\tx = 1|\n}") << "the sign after a word is a step of its own";
}

TEST_F(ScriptView, KeysOfAnEditorWork) {
  SetText("one two\r\nthree");
  Key(Qt::Key_Right, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(Shown(), "[one |two\nthree");
  Key(Qt::Key_Delete);
  EXPECT_EQ(Shown(), "|two\nthree");
  Key(Qt::Key_End);
  Key(Qt::Key_Delete);
  EXPECT_EQ(Shown(), "two|three");
  Key(Qt::Key_Backspace, Qt::ControlModifier);
  EXPECT_EQ(Shown(), "|three");
  Key(Qt::Key_Tab);
  EXPECT_EQ(Shown(), "\t|three");
  Key(Qt::Key_Backtab, Qt::ShiftModifier);
  EXPECT_EQ(Shown(), "|three");
  Key(Qt::Key_Insert);
  Type("TH");
  EXPECT_EQ(Shown(), "TH|ree") << "overwrite mode";
  Key(Qt::Key_Insert);
  m_view.SelectAll();
  m_view.Copy();
  EXPECT_EQ(QApplication::clipboard()->text(), QString("THree"));
  QApplication::clipboard()->setText(QString::fromUtf8("a\nb\r\xE2\x82\xAC"));
  m_view.Paste();
  EXPECT_EQ(Shown(), "a\nb\n\x80|") << "any line ends come in, the euro sign is in the code page";
}

TEST_F(ScriptView, ReadOnlyTextRefusesAndSaysWhy) {
  SetText("fixed");
  m_buffer.SetReadOnly(true);
  QSignalSpy hints(&m_view, &CCrystalEditView::Hint);
  Type("x");
  Key(Qt::Key_Backspace);
  EXPECT_EQ(Shown(), "|fixed");
  EXPECT_EQ(hints.count(), 2);
  m_buffer.SetReadOnly(false);
  QKeyEvent alpha(QEvent::KeyPress, 0, Qt::NoModifier, QString(QChar(0x3B1)));
  QApplication::sendEvent(&m_view, &alpha);
  EXPECT_EQ(Shown(), "|fixed") << "a letter outside the code page";
}

TEST_F(ScriptView, TheMouseSelectsCharactersWordsAndLines) {
  SetText("alpha beta\r\ngamma delta\r\nlast");
  Click(At(1, 3));
  EXPECT_EQ(Shown(), "alpha beta\ngam|ma delta\nlast");
  Click(At(0, 2), Qt::ShiftModifier);
  EXPECT_EQ(Shown(), "al|pha beta\ngam[ma delta\nlast");
  QTest::mouseDClick(m_view.viewport(), Qt::LeftButton, Qt::NoModifier, At(1, 8));
  EXPECT_EQ(Shown(), "alpha beta\ngamma [delta|\nlast");
  Click(At(1, 8));
  EXPECT_EQ(Shown(), "alpha beta\n[gamma delta\n|last") << "the third click of three takes the line";
  QTest::mousePress(m_view.viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(25, At(0, 0).y()));
  QTest::mouseMove(m_view.viewport(), QPoint(25, At(1, 0).y()));
  QTest::mouseRelease(m_view.viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(25, At(1, 0).y()));
  EXPECT_EQ(Shown(), "[alpha beta\ngamma delta\n|last") << "by the margin";
}

TEST_F(ScriptView, ColumnsAreSelectedWithAlt) {
  SetText("abcd\r\nx\r\nefgh");
  Click(At(0, 1));
  QTest::mousePress(m_view.viewport(), Qt::LeftButton, Qt::AltModifier, At(0, 1));
  QTest::mouseMove(m_view.viewport(), At(2, 3));
  QTest::mouseRelease(m_view.viewport(), Qt::LeftButton, Qt::AltModifier, At(2, 3));
  Type("-");
  std::string text;
  m_buffer.CopyRange({{0, 0}, m_buffer.EndOfText()}, text, "\n");
  EXPECT_EQ(text, "a-d\nx-\ne-h");
  m_view.Undo();
  m_buffer.CopyRange({{0, 0}, m_buffer.EndOfText()}, text, "\n");
  EXPECT_EQ(text, "abcd\nx\nefgh");
}

TEST_F(ScriptView, BlocksFoldByMarkAndByKeyAndOpenWhenTheCaretGoesIn) {
  SetText("function f()\r\n{\r\n\ta;\r\n\tb;\r\n}\r\nend");
  const int foldingX = m_view.PointOf({1, 0}).x() - MarginLayout::kTextGap - 7;
  Click(QPoint(foldingX, At(1, 0).y()));
  EXPECT_TRUE(m_view.Model().Folds().IsCollapsedHead(1));
  EXPECT_EQ(m_view.Model().RowCount(), 3);
  m_view.SelectFound({3, 1}, 1);
  EXPECT_EQ(m_view.Model().RowCount(), 6);
  fold_command::ToggleBlock(m_view);
  EXPECT_EQ(Shown(), "function f()\n|{\n\ta;\n\tb;\n}\nend");
  fold_command::ExpandAll(m_view);
  fold_command::CollapseAll(m_view);
  EXPECT_EQ(m_view.Model().RowCount(), 3);
}

TEST_F(ScriptView, TwoViewsOfATextKnowTheSameOfIt) {
  std::string text = "first();\r\n(\r\n";
  for (int i = 0; i < 200; ++i) text += "function f" + std::to_string(i) + "()\r\n{\r\n\tx;\r\n}\r\n";
  SetText(text);
  CQuillView second(m_keywords, m_commands);
  second.resize(300, 200);
  second.ApplySettings(m_view.Settings());
  second.SetBuffer(&m_buffer);
  second.show();
  const auto picture = [](CQuillView& view) {
    QApplication::processEvents();
    return view.viewport()->grab().toImage();
  };
  // One view parses the whole text in a comment, and undo is asked of the other one.
  m_view.SetCaretPos({0, 0});
  Type("/*");
  m_view.SetCaretPos(m_buffer.EndOfText());
  picture(m_view);
  second.Undo();
  picture(second);
  fold_command::CollapseAll(second);
  EXPECT_EQ(second.Model().RowCount(), 403);
  EXPECT_EQ(m_view.Model().RowCount(), 403);
  fold_command::ExpandAll(m_view);
  EXPECT_EQ(second.Model().RowCount(), 803);

  // What is typed in one view moves the brace that the other one marks.
  m_view.SetCaretPos({2, 0});
  const QImage before = picture(m_view);
  second.SetCaretPos({0, 5});
  QTest::keyClick(&second, Qt::Key_Return);
  const QImage moved = picture(m_view);
  EXPECT_NE(moved, before);
  m_view.ApplySettings(m_view.Settings());
  EXPECT_EQ(picture(m_view), moved) << "the mark stands where a new search finds it";
}

TEST_F(ScriptView, TheWheelZoomsWithControl) {
  SetText("x");
  const int before = m_view.LineHeight();
  QWheelEvent up(QPointF(100, 100), QPointF(100, 100), QPoint(), QPoint(0, 240), Qt::NoButton,
                 Qt::ControlModifier, Qt::NoScrollPhase, false);
  QApplication::sendEvent(m_view.viewport(), &up);
  EXPECT_EQ(m_view.Zoom(), 120);
  EXPECT_GT(m_view.LineHeight(), before);
}

TEST_F(ScriptView, BookmarksAreSetVisitedAndCleared) {
  SetText("a\r\nb\r\nc\r\nd");
  m_view.GotoLine(1);
  bookmark_command::Toggle(m_view);
  m_view.GotoLine(3);
  bookmark_command::Toggle(m_view);
  bookmark_command::SetNumbered(m_view, 4);
  m_view.GotoLine(0);
  bookmark_command::GoToNext(m_view);
  EXPECT_EQ(m_view.CaretPos().line, 1);
  bookmark_command::GoToNext(m_view);
  EXPECT_EQ(m_view.CaretPos().line, 3);
  bookmark_command::GoToPrevious(m_view);
  EXPECT_EQ(m_view.CaretPos().line, 1);
  bookmark_command::ClearAll(m_view);
  bookmark_command::GoToNumbered(m_view, 4);
  EXPECT_EQ(m_view.CaretPos().line, 3) << "a numbered bookmark is not cleared with the plain ones";
}

/// What is on the screen after partial repaints must be what a repaint of everything draws.
TEST_F(ScriptView, PartialRepaintsLeaveNothingStale) {
  std::mt19937 random(3);
  std::string text;
  for (int i = 0; i < 60; ++i) {
    text += i % 7 == 0 ? "function f()\r\n{\r\n" : i % 7 == 6 ? "}\r\n" : "\tif (x) { y = \"s\"; } // c\r\n";
  }
  SetText(text);
  const Qt::Key keys[] = {Qt::Key_Down, Qt::Key_Up,        Qt::Key_PageDown, Qt::Key_PageUp, Qt::Key_End,
                          Qt::Key_Home, Qt::Key_Backspace, Qt::Key_Return,   Qt::Key_Delete, Qt::Key_Tab};
  const char* const texts[] = {"/*", "*/", "\"", "{", "}", "abc", "#", "//"};
  for (int step = 0; step < 300; ++step) {
    std::string what;
    switch (random() % 6) {
      case 0:
        what = texts[random() % 8];
        Type(what.c_str());
        break;
      case 1:
        what = "fold";
        fold_command::ToggleBlock(m_view);
        break;
      case 2:
        what = "undo";
        m_view.Undo();
        break;
      case 3:
        what = "scroll";
        m_view.verticalScrollBar()->setValue(m_view.verticalScrollBar()->value() +
                                             static_cast<int>(random() % 9) - 4);
        break;
      default: {
        const Qt::Key key = keys[random() % 10];
        what = "key " + std::to_string(static_cast<int>(key));
        Key(key, random() % 3 == 0 ? Qt::ShiftModifier : Qt::NoModifier);
      }
    }
    QApplication::processEvents();
    // What a timer that ran among them has marked.
    QApplication::sendPostedEvents();
    // Of the text area: the scroll bars follow a moment later.
    const QRect area = m_view.viewport()->geometry();
    const QImage shown = m_view.screen()
                             ->grabWindow(m_view.winId())
                             .toImage()
                             .convertToFormat(QImage::Format_RGB32)
                             .copy(area);
    const QImage whole = m_view.grab().toImage().convertToFormat(QImage::Format_RGB32).copy(area);
    ASSERT_EQ(shown.size(), whole.size());
    if (shown != whole) {
      FAIL() << "stale pixels after step " << step << ": " << what;
    }
  }
}

}  // namespace
}  // namespace quill
