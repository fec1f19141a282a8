#include "widgets/ListFocusRing.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QEvent>
#include <QPainter>

namespace quill {
namespace {

constexpr double kWidth = 1.5;  ///< pixels

/// Lies over the list and lets everything through.
class Ring : public QWidget {
 public:
  explicit Ring(QAbstractItemView& list) : QWidget(&list), m_list(list) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_NoSystemBackground);
    setFocusPolicy(Qt::NoFocus);
    setObjectName("ListFocusRing");
    list.installEventFilter(this);
    setGeometry(list.rect());
    show();
    raise();
  }

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::Resize) setGeometry(m_list.rect());
    return false;
  }
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(palette().color(QPalette::Active, QPalette::Highlight), kWidth));
    const double inset = kWidth / 2;
    painter.drawRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset));
  }

 private:
  QAbstractItemView& m_list;
};

/// The list that a widget is, or is the editor of; null for none. Those of menus and combo boxes have no
/// need of a ring.
QAbstractItemView* ListOf(QWidget* widget) {
  for (; widget != nullptr && !widget->isWindow(); widget = widget->parentWidget()) {
    auto* list = qobject_cast<QAbstractItemView*>(widget);
    if (list != nullptr) return list->window()->windowType() == Qt::Popup ? nullptr : list;
  }
  return nullptr;
}

}  // namespace

ListFocusRing::ListFocusRing(QObject* owner) : QObject(owner) {
  connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) { Follow(now); });
}

void ListFocusRing::Follow(QWidget* focus) {
  QAbstractItemView* list = ListOf(focus);
  if (m_ring != nullptr && m_ring->parentWidget() == list) return;
  delete m_ring;
  if (list != nullptr) m_ring = new Ring(*list);
}

}  // namespace quill
