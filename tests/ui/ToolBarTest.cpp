#include <QPalette>
#include <QScopeGuard>
#include <QTest>
#include <QToolBar>
#include <QToolButton>

#include "ui/ViewEvents.h"

namespace quill {
namespace {

class ToolBars : public ViewFixture {
 protected:
  QToolButton* Button(const QString& name) {
    for (QToolBar* bar : Frame().findChildren<QToolBar*>()) {
      for (QToolButton* button : bar->findChildren<QToolButton*>()) {
        if (button->toolTip().startsWith(name + " (") && button->isVisible()) return button;
      }
    }
    return nullptr;
  }
  /// Those that can be pressed.
  std::string Enabled() {
    std::string names;
    for (const char* name : {"Cut", "Copy", "Undo", "Redo"}) {
      const QToolButton* button = Button(name);
      if (button == nullptr) return std::string("no button ") + name;
      if (button->isEnabled()) names += (names.empty() ? "" : " ") + std::string(name);
    }
    return names;
  }
  /// Buttons may follow a moment later.
  std::string EnabledSoon(const std::string& wanted) {
    return QTest::qWaitFor([&] { return Enabled() == wanted; }, 2000) ? wanted : Enabled();
  }
};

TEST_F(ToolBars, FollowSelectionAndText) {
  Open("a.vsl", "one two");
  EXPECT_EQ(EnabledSoon(""), "");
  Press("Shift+Right");
  EXPECT_EQ(EnabledSoon("Cut Copy"), "Cut Copy");
  Press("Right");
  EXPECT_EQ(EnabledSoon(""), "");
  ViewMouse().Drag(At(0, 1), At(0, 3));
  EXPECT_EQ(EnabledSoon("Cut Copy"), "Cut Copy") << "by the mouse";
  QTest::mouseClick(Button("Cut"), Qt::LeftButton);
  EXPECT_EQ(ActiveText(), "o two");
  EXPECT_EQ(EnabledSoon("Undo"), "Undo");
  Press("Ctrl+Z");
  EXPECT_EQ(EnabledSoon("Redo"), "Redo");
  Open("b.vsl", "");
  EXPECT_EQ(EnabledSoon(""), "") << "those of another document";
}

TEST_F(ToolBars, IconsFadeWhenDisabledAndFitTheDesktop) {
  const auto picture = [this](QIcon::Mode mode) {
    return Button("Cut")->icon().pixmap(QSize(16, 16), 1, mode).toImage();
  };
  const auto opacity = [](const QImage& image) {
    int most = 0;
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < image.width(); ++x) most = std::max(most, qAlpha(image.pixel(x, y)));
    }
    return most;
  };
  ASSERT_NE(Button("Cut"), nullptr);
  const QImage light = picture(QIcon::Normal);
  EXPECT_GT(opacity(light), 200);
  EXPECT_LT(opacity(picture(QIcon::Disabled)), 150);

  const QPalette before = QApplication::palette();
  const auto restore = qScopeGuard([&before] { QApplication::setPalette(before); });
  QPalette dark = before;
  dark.setColor(QPalette::Window, Qt::black);
  QApplication::setPalette(dark);
  Pump();
  EXPECT_NE(picture(QIcon::Normal), light) << "its dark strokes would not be seen";
}

}  // namespace
}  // namespace quill
