// What a change of the layout, or leaving the text, does to windows, tips and the caret line.
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QScrollBar>
#include <QTabBar>
#include <QTest>
#include <QTreeWidget>
#include <functional>

#include "res/ui/UiText.h"
#include "shell/ui/QuillView.h"
#include "ui/ScreenFixture.h"

namespace quill {
namespace {

using LayoutChanges = ScreenFixture;

TEST_F(LayoutChanges, WindowsThatAreNoTabsGetMostOfTheArea) {
  Start();
  Frame().resize(1200, 800);
  for (const char* name : {"a.vsl", "b.vsl", "c.vsl"}) Open(name, name);
  EXPECT_TRUE(Choose("Window > Tabbed"));
  Open("d.vsl", "");
  const QMdiArea& area = *Frame().findChild<QMdiArea*>();
  const QRect room = area.viewport()->rect();
  for (const QMdiSubWindow* window : area.subWindowList()) {
    EXPECT_NEAR(window->width(), room.width() * 7 / 10, 2) << ToBytes(window->windowTitle());
    EXPECT_NEAR(window->height(), room.height() * 7 / 10, 2) << ToBytes(window->windowTitle());
    EXPECT_TRUE(room.contains(window->geometry())) << ToBytes(window->windowTitle());
  }
  EXPECT_EQ(ActiveText(), "");
}

TEST_F(LayoutChanges, ATipNeverStaysBehind) {
  Start();
  std::string text;
  for (int i = 0; i < 200; ++i) text += "\r\n";
  Open("b.vsl", "");
  Open("a.vsl", text);
  const struct {
    const char* name;
    std::function<void()> leave;
  } ways[] = {
      {"focus", [this] { Outline().setFocus(); }},
      {"scroll bar", [this] { View().verticalScrollBar()->setValue(20); }},
      {"wheel", [this] { Wheel(); }},
      {"tab", [this] { QTest::mouseClick(&TabBar(), Qt::LeftButton, {}, TabBar().tabRect(0).center()); }},
      {"window", [this] { QApplication::setActiveWindow(nullptr); }},
      {"hidden", [this] { Frame().hide(); }},
  };
  for (const bool onCommand : {false, true}) {
    for (const auto& way : ways) {
      Frame().show();
      QApplication::setActiveWindow(&Frame());
      QTest::mouseClick(&TabBar(), Qt::LeftButton, {}, TabBar().tabRect(1).center());
      Pump();
      View().setFocus();
      View().SetCaretPos({0, 0});
      Pump();
      for (const char* key : {"Ctrl+Home", "Shift+End", "Del"}) Press(key);
      Type("wait(1");
      if (onCommand) Press("Escape");
      if (onCommand) Press("Ctrl+Shift+Space");
      EXPECT_NE(Tip(), "") << way.name;
      way.leave();
      Pump();
      EXPECT_EQ(Tip(), "") << way.name << (onCommand ? ", on command" : "");
    }
  }
}

TEST_F(LayoutChanges, TheCaretLineIsSeenWholeAfterTheLayoutChanged) {
  Start();
  Frame().resize(1000, 700);
  std::string text;
  for (int i = 0; i < 300; ++i) text += std::to_string(i) + "\r\n";
  Open("a.vsl", text);
  const auto isWhole = [this] {
    const QRect caret = View().CaretRect();
    return caret.top() >= 0 && caret.bottom() < View().viewport()->height();
  };
  const int line = View().LineHeight();
  for (int less = 1; less < 3 * line; less += 3) {
    Frame().resize(1000, 700);
    Pump();
    View().ScrollToLine(100);
    const int rows = View().viewport()->height() / line;
    View().SetCaretPos({100 + rows - 1, 0});
    EXPECT_TRUE(isWhole());
    Frame().resize(1000, 700 - less);
    Pump();
    EXPECT_TRUE(isWhole()) << less;
  }
  View().ScrollToLine(0);
  View().SetCaretPos({View().viewport()->height() / line - 1, 0});
  for (int i = 0; i < 6; ++i) {
    Press("Ctrl++");
    EXPECT_TRUE(isWhole()) << "zoomed " << i;
  }
  View().ScrollToLine(150);
  Frame().resize(1000, 400);
  Pump();
  EXPECT_EQ(View().TopLine(), 150) << "a caret that was out of sight moves nothing";
}

}  // namespace
}  // namespace quill
