// What the mouse rests on, and what the help pane says of the argument at the caret.
#include <QApplication>
#include <QHelpEvent>
#include <QTest>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextDocument>
#include <QToolTip>

#include "shell/ui/QuillDoc.h"
#include "shell/ui/QuillView.h"
#include "ui/ScreenFixture.h"

namespace quill {
namespace {

class HoverTips : public ScreenFixture {
 protected:
  /// The tip as plain text, "|" between its lines, when the mouse rests on a character.
  std::string RestOn(int32_t line, int32_t column) { return RestAt(At(line, column)); }
  std::string RestAt(QPoint point) {
    for (QWidget* widget : QApplication::topLevelWidgets()) {
      if (widget->inherits("QTipLabel")) widget->hide();
    }
    QHelpEvent event(QEvent::ToolTip, point, View().viewport()->mapToGlobal(point));
    QApplication::sendEvent(View().viewport(), &event);
    if (!QToolTip::isVisible()) return {};
    QTextDocument document;
    document.setHtml(QToolTip::text());
    return document.toPlainText().replace(QChar(QChar::LineSeparator), '|').replace('\n', '|').toStdString();
  }
  /// The help's heading, its bold part in stars.
  std::string Heading() {
    std::string text;
    const QTextBlock block = HelpPane().document()->firstBlock();
    for (auto part = block.begin(); !part.atEnd(); ++part) {
      const char* star = part.fragment().charFormat().fontWeight() == QFont::Bold ? "*" : "";
      text += star + part.fragment().text().toStdString() + star;
    }
    return text;
  }
};

TEST_F(HoverTips, TellWhatTheNameUnderTheMouseIs) {
  m_folder.Write("part.vsl", "//\r\n\tvar far = 3; // <b>\r\n");
  Start();
  Open("a.vsl",
       "include <part.vsl>;\r\nvar speed = 5; // how fast\r\nfunction f(x)\r\n{\r\n\tvar speed;\r\n"
       "\tspeed = wait(1) + far;\r\n\tunknown = me.pan; // speed\r\n\tspeed = \"wait\"; while\r\n}\r\nspeed "
       "+= f(1);\r\n");
  const std::string wait =
      "wait(number frames)|Pauses the running function for the given number of frames and lets all others go "
      "on.";
  const struct {
    TextPosition at;
    const std::string tip;
  } rows[] = {
      {{5, 10}, wait},
      {{5, 2}, "var speed;|Line 5"},
      {{9, 2}, "var speed = 5; // how fast|Line 2"},
      {{9, 9}, "function f(x)|Line 3"},
      {{5, 20}, "var far = 3; // <b>|part.vsl, line 2"},
      {{6, 15}, "entity.pan|direction, in degrees"},
      {{6, 3}, ""},
      {{6, 23}, ""},  // in a comment
      {{7, 11}, ""},  // in a text
      {{7, 19}, ""},  // a keyword
      {{5, 8}, ""},   // "="
      {{9, 3}, "var speed = 5; // how fast|Line 2"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(RestOn(row.at.line, row.at.character), row.tip) << row.at.line << ":" << row.at.character;
  }
  EXPECT_EQ(RestAt(At(9, 13) + QPoint(40, 0)), "") << "behind the line's end";
  EXPECT_EQ(RestAt(At(10, 0) + QPoint(0, 60)), "") << "below the text";
  EXPECT_EQ(RestAt(QPoint(2, At(9, 0).y())), "") << "in the margin";

  View().SetCaretPos({0, 0});
  Type("var later; ");
  Press("Return");
  EXPECT_EQ(RestOn(0, 5), "var later;|Line 1") << "just written";
  EXPECT_EQ(RestOn(6, 2), "var speed;|Line 6") << "moved down";

  Document().Buffer().NewBuffer();
  EXPECT_EQ(RestAt(QPoint(80, 5)), "");
}

TEST_F(HoverTips, TheHelpPaneMarksTheArgumentAtTheCaret) {
  Start();
  Open("a.vsl", "\tent_turn(me, wait(1), 2);\r\n\tent_turn(me, 1\r\n");
  const struct {
    int32_t column;
    const char* heading;
  } rows[] = {
      {3, "ent_turn(entity target, number pan, number tilt, number roll)"},
      {12, "ent_turn(*entity target*, number pan, number tilt, number roll)"},
      {13, "ent_turn(entity target, *number pan*, number tilt, number roll)"},
      {16, "wait(number frames)"},
      {19, "wait(*number frames*)"},
      {23, "ent_turn(entity target, number pan, *number tilt*, number roll)"},
      {26, "ent_turn(entity target, number pan, *number tilt*, number roll)"},  // the last one stays
  };
  for (const auto& row : rows) {
    View().SetCaretPos({0, row.column});
    if (row.column == 26) continue;
    EXPECT_EQ(Heading(), row.heading) << row.column;
  }
  View().SetCaretPos({1, 10});
  EXPECT_EQ(Heading(), "ent_turn(*entity target*, number pan, number tilt, number roll)");
  View().SetCaretPos({1, 15});
  EXPECT_EQ(Heading(), "ent_turn(entity target, *number pan*, number tilt, number roll)");
  View().SetCaretPos({0, 19});
  EXPECT_EQ(Heading(), "wait(*number frames*)");
}

}  // namespace
}  // namespace quill
