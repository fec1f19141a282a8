#include "ui/ScreenFixture.h"

#include <QApplication>
#include <QListView>
#include <QMdiArea>
#include <QStatusBar>
#include <QTabBar>
#include <QTest>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTreeWidget>
#include <QWheelEvent>

#include "res/ui/UiText.h"
#include "shell/ui/QuillView.h"
#include "shell/ui/StatusPanes.h"

namespace quill {
namespace {

/// The visible windows that hover over the text.
std::vector<QWidget*> Popups() {
  std::vector<QWidget*> popups;
  for (QWidget* widget : QApplication::topLevelWidgets()) {
    if (widget->windowType() == Qt::ToolTip && widget->isVisible()) popups.push_back(widget);
  }
  return popups;
}

}  // namespace

QTabBar& ScreenFixture::TabBar() {
  return *Frame().findChild<QMdiArea*>()->findChild<QTabBar*>();
}

std::string ScreenFixture::Tabs() {
  std::string texts;
  for (int i = 0; i < TabBar().count(); ++i) {
    const std::string title = ToBytes(TabBar().tabText(i));
    texts += (texts.empty() ? "" : " ") + (i == TabBar().currentIndex() ? "[" + title + "]" : title);
  }
  return texts;
}

std::string ScreenFixture::Panes() {
  std::string texts;
  for (const QWidget* widget : Frame().statusBar()->findChildren<QWidget*>()) {
    const auto* pane = dynamic_cast<const StatusPane*>(widget);
    if (pane == nullptr || !pane->isVisible() || pane->Text().isEmpty()) continue;
    texts += (texts.empty() ? "" : "|") + ToBytes(pane->Text());
  }
  return texts;
}

std::string ScreenFixture::Message() {
  return ToBytes(Frame().statusBar()->currentMessage());
}

QListView* ScreenFixture::List() {
  for (QWidget* popup : Popups()) {
    if (auto* list = popup->findChild<QListView*>()) return list;
  }
  return nullptr;
}

std::string ScreenFixture::Selected() {
  return List() == nullptr ? "closed" : ToBytes(List()->currentIndex().data().toString());
}

std::string ScreenFixture::Tip() {
  for (const QWidget* popup : Popups()) {
    if (popup->findChild<QListView*>() == nullptr) return ToBytes(popup->accessibleName());
  }
  return {};
}

QTextBrowser& ScreenFixture::HelpPane() {
  return *Frame().findChild<QTextBrowser*>();
}

std::string ScreenFixture::Help() {
  return ToBytes(HelpPane().document()->firstBlock().text());
}

QTreeWidget& ScreenFixture::Outline() {
  return *Frame().findChild<QTreeWidget*>();
}

std::string ScreenFixture::Names() {
  std::string names;
  for (int i = 0; i < Outline().topLevelItemCount(); ++i) {
    const QTreeWidgetItem* kind = Outline().topLevelItem(i);
    for (int n = 0; n < kind->childCount(); ++n) {
      names += (names.empty() ? "" : " ") + ToBytes(kind->child(n)->text(0)) +
               (kind->child(n)->font(0).bold() ? "*" : "");
    }
  }
  return names;
}

std::string ScreenFixture::LineAt(int32_t line) {
  return std::string(View().Buffer()->Line(line));
}

int32_t ScreenFixture::CaretLine() {
  return View().CaretPos().line;
}

std::string ScreenFixture::Caret() {
  return std::to_string(CaretLine() + 1) + ":" + std::to_string(View().CaretPos().character + 1);
}

QPoint ScreenFixture::At(int32_t line, int32_t column) {
  return View().PointOf({line, column}) + QPoint(2, View().LineHeight() / 2);
}

void ScreenFixture::Click(int32_t line, int32_t column, Qt::KeyboardModifiers modifiers) {
  QTest::mouseClick(View().viewport(), Qt::LeftButton, modifiers, At(line, column));
  Pump();
}

void ScreenFixture::Wheel() {
  QWheelEvent event(QPointF(50, 50), View().viewport()->mapToGlobal(QPointF(50, 50)), {}, {0, -120},
                    Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
  QApplication::sendEvent(View().viewport(), &event);
}

void ScreenFixture::PressAll(std::initializer_list<const char*> keys) {
  for (const char* key : keys) Press(key);
}

}  // namespace quill
