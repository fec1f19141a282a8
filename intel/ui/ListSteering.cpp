#include "intel/ui/ListSteering.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>

namespace quill {

ListSteering::ListSteering(QLineEdit& field, QAbstractItemView& list) : QObject(&field), m_list(list) {
  field.installEventFilter(this);
}

bool ListSteering::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress) {
    switch (static_cast<QKeyEvent*>(event)->key()) {
      case Qt::Key_Up:
      case Qt::Key_Down:
      case Qt::Key_PageUp:
      case Qt::Key_PageDown:
        QApplication::sendEvent(&m_list, event);
        return true;
      default:
        break;
    }
  }
  return QObject::eventFilter(watched, event);
}

}  // namespace quill
