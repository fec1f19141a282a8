// Commands where the user meets them: in toolbars, in the menu of the text, in the dialogs of a search.
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QMenu>
#include <QTest>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <QWindow>

#include "res/ui/UiText.h"
#include "shell/ui/QuillView.h"
#include "ui/ScreenFixture.h"

namespace quill {
namespace {

class CommandsFollow : public ScreenFixture {
 protected:
  QToolButton& Button(const QString& label) {
    for (auto* bar : Frame().findChildren<QToolBar*>()) {
      for (auto* button : bar->findChildren<QToolButton*>()) {
        const QAction* action = button->defaultAction();
        if (action != nullptr && action->text().remove(u'&').section(u'\t', 0, 0) == label) return *button;
      }
    }
    throw std::runtime_error("no button " + ToBytes(label));
  }
  /// The title of the dialogs that are open.
  std::string Dialogs() {
    std::string titles;
    for (const auto* dialog : Frame().findChildren<QDialog*>()) {
      if (dialog->isVisible()) titles += ToBytes(dialog->windowTitle()) + " ";
    }
    return titles;
  }
  /// Clicks with the right button and chooses an entry of the menu that opens.
  void ChooseAt(QPoint point, const QString& label) {
    bool chosen = false;
    QTimer::singleShot(0, [&] {
      auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
      if (menu == nullptr) return;
      for (QAction* action : menu->actions()) {
        if (!action->text().remove(u'&').startsWith(label)) continue;
        action->trigger();
        chosen = true;
      }
      menu->close();
    });
    QWindow* window = Frame().windowHandle();
    const QPoint place = View().viewport()->mapTo(&Frame(), point);
    QTest::mousePress(window, Qt::RightButton, {}, place);
    Pump();
    QTest::mouseRelease(window, Qt::RightButton, {}, place);
    Pump();
    EXPECT_TRUE(chosen) << ToBytes(label);
  }
};

TEST_F(CommandsFollow, ButtonsAreEnabledWhileTheyCanDoSomething) {
  Start();
  Open("a.vsl", "text");
  const auto waits = [this](const char* label, bool enabled) {
    return QTest::qWaitFor([&] { return Button(label).isEnabled() == enabled; });
  };
  EXPECT_TRUE(waits("Cut", false));
  Press("Shift+End");
  EXPECT_TRUE(waits("Cut", true));
  Press("Left");
  EXPECT_TRUE(waits("Cut", false));
  EXPECT_TRUE(waits("Save All", false));
  Type("x");
  EXPECT_TRUE(waits("Save All", true));
  Open("b.vsl", "");
  EXPECT_TRUE(waits("Save All", true)) << "the other one is not saved";
  EXPECT_TRUE(waits("Save", true)) << "always";
}

TEST_F(CommandsFollow, TheMenuOfTheTextIsForThePlaceThatWasClicked) {
  Start();
  Open("a.vsl", "one two\r\nthree");
  View().SetSelection({0, 4}, {0, 7});
  ChooseAt(At(0, 5), "Delete");
  EXPECT_EQ(ActiveText(), "one |three") << "within a selection it stays";
  ChooseAt(At(1, 1), "Comment");
  EXPECT_EQ(ActiveText(), "one |//three") << "elsewhere the caret goes there";
  Open("b.vsl", "var speed;\r\nspeed = 1;\r\nspeed = 2;");
  ChooseAt(At(1, 2), "Find Selected Word");
  EXPECT_EQ(Caret(), "3:6");
  ChooseAt(At(2, 2), "Go to Definition");
  EXPECT_EQ(CaretLine(), 0);
}

TEST_F(CommandsFollow, LinesAndCaseChangeBothWays) {
  const struct {
    const char* before;
    const char* menu;
    const char* after;
  } rows[] = {
      {"Word", "Upper Case", "WORD"}, {"WORD", "Lower Case", "word"}, {"\ta|\tb", "Unindent", "a|b"},
      {"a|b", "Indent", "\ta|\tb"},   {"a|b", "Delete Line", ""},
  };
  Start();
  int number = 0;
  for (const auto& row : rows) {
    std::string text = row.before;
    if (const size_t end = text.find('|'); end != std::string::npos) text.replace(end, 1, "\r\n");
    Open(std::to_string(++number) + ".vsl", text);
    Press("Ctrl+A");
    EXPECT_TRUE(Choose(std::string("Edit > Lines and Case > ") + row.menu)) << row.menu;
    EXPECT_EQ(ActiveText(), row.after) << row.menu;
  }
}

TEST_F(CommandsFollow, FindAndReplaceTakeEachOthersPlaceAndAnEmptyTextTakesTheMarks) {
  Start();
  Open("a.vsl", "ab abc\r\nAB ab");
  for (const char* key : {"Ctrl+F", "Ctrl+H"}) {
    QApplication::setActiveWindow(&Frame());
    View().setFocus();
    View().SetCaretPos({0, 0});
    Press(key);
    EXPECT_EQ(Dialogs(), std::string(key) == "Ctrl+F" ? "Find " : "Replace ");
    Type("ab");
    Press("Return");
    EXPECT_TRUE(QTest::qWaitFor([this] { return Panes().starts_with("1 of 4|"); })) << Panes();
    PressAll({"Ctrl+A", "Del"});
    EXPECT_TRUE(Panes().starts_with("Ln 1")) << key << ": " << Panes();
  }
  QApplication::setActiveWindow(&Frame());
  View().setFocus();
  Press("Ctrl+F");
  EXPECT_EQ(Dialogs(), "Find ");
}

TEST_F(CommandsFollow, ColoursFollowThePalette) {
  Start();
  Open("a.vsl", "");
  const auto background = [this] {
    const QImage image = View().viewport()->grab().toImage();
    return image.pixelColor(image.width() - 5, image.height() - 5).lightness();
  };
  const QPalette before = QApplication::palette();
  QPalette dark = before;
  dark.setColor(QPalette::Base, Qt::black);
  QApplication::setPalette(dark);
  Pump();
  EXPECT_LT(background(), 30);
  QPalette light = before;
  light.setColor(QPalette::Base, Qt::white);
  QApplication::setPalette(light);
  Pump();
  EXPECT_GT(background(), 225);
  QApplication::setPalette(before);
}

}  // namespace
}  // namespace quill
