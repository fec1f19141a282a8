#include "shell/ui/KeypadKeys.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

#include "shell/ui/CommandRouter.h"

namespace quill {

KeypadKeys::KeypadKeys(QWidget& window, CommandRouter& router, QObject* parent)
    : QObject(parent), m_window(window), m_router(router) {
  QApplication::instance()->installEventFilter(this);
}

bool KeypadKeys::IsOurs(const QObject* watched) const {
  if (!watched->isWidgetType()) return false;
  for (auto* widget = static_cast<const QWidget*>(watched); widget != nullptr;
       widget = widget->parentWidget()) {
    if (widget == &m_window) return true;
    if (widget->isWindow() && widget->windowType() != Qt::Tool) return false;
  }
  return false;
}

bool KeypadKeys::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::ShortcutOverride && event->type() != QEvent::KeyPress) return false;
  const auto& key = static_cast<const QKeyEvent&>(*event);
  if (!key.modifiers().testFlag(Qt::KeypadModifier)) return false;
  const CommandId id = m_router.CommandOfKey(key);
  if (id == CommandId::kNone || !IsOurs(watched)) return false;
  event->accept();
  if (event->type() == QEvent::KeyPress) m_router.Execute(id);
  return true;
}

}  // namespace quill
