#include "intel/ui/ListAnnouncer.h"

#include <QAccessible>
#include <QApplication>
#include <QListView>

namespace quill {

ListAnnouncer::ListAnnouncer(QListView& list) : m_list(list) {}

void ListAnnouncer::SetChosen(bool chosen) {
  chosen = chosen && m_list.currentIndex().isValid() && QAccessible::isActive();
  QWidget* focus = chosen ? &m_list : QApplication::focusWidget();
  if ((!chosen && !m_hasFocus) || focus == nullptr) return;
  m_hasFocus = chosen;
  QAccessibleEvent event(focus, QAccessible::Focus);
  if (chosen) event.setChild(m_list.currentIndex().row());
  QAccessible::updateAccessibility(&event);
}

}  // namespace quill
