#pragma once
#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QTimer>
#include <functional>
#include <string>

#include "res/Commands.h"
#include "res/ui/UiText.h"

namespace quill {

/// Does what opens a menu and chooses an entry of it, "Set > 3" in one below it; returns the labels of all
/// its entries, those that are disabled in brackets. Nothing is chosen for an empty label.
inline std::string ChooseFromPopup(const std::function<void()>& open, const std::string& label = {}) {
  std::string labels;
  QTimer::singleShot(0, qApp, [&] {
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    if (menu == nullptr) return;
    QList<QAction*> actions = menu->actions();
    for (const QAction* action : actions) {
      if (action->isSeparator() || !action->isVisible()) continue;
      const std::string text = PlainLabel(ToBytes(action->text()));
      labels += (labels.empty() ? "" : "|") + (action->isEnabled() ? text : "(" + text + ")");
    }
    std::string wanted = label;
    if (const size_t below = wanted.find(" > "); below != std::string::npos) {
      for (const QAction* action : menu->actions()) {
        if (action->menu() != nullptr && PlainLabel(ToBytes(action->text())) == wanted.substr(0, below)) {
          actions = action->menu()->actions();
        }
      }
      wanted.erase(0, below + 3);
    }
    for (QAction* action : actions) {
      if (!wanted.empty() && PlainLabel(ToBytes(action->text())) == wanted) action->trigger();
    }
    menu->close();
  });
  QWidget* window = QApplication::activeWindow();
  open();
  // What a window manager does when a menu has gone.
  if (window != nullptr && QApplication::activeWindow() == nullptr) window->activateWindow();
  QApplication::processEvents();
  QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  QApplication::processEvents();
  return labels;
}

}  // namespace quill
