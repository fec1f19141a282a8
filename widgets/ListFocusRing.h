#pragma once
#include <QPointer>
#include <QWidget>

namespace quill {

/// A frame within whichever list, tree or table has the focus, which else could not be seen where no row is
/// the current one. One serves the whole program; it goes with `owner`.
class ListFocusRing : public QObject {
  Q_OBJECT

 public:
  explicit ListFocusRing(QObject* owner);

 private:
  void Follow(QWidget* focus);

  QPointer<QWidget> m_ring;
};

}  // namespace quill
