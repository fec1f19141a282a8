#pragma once
#include <QObject>

class QAbstractItemView;
class QLineEdit;

namespace quill {

/// Lets the keys that move through a list (Up, Down, Page Up, Page Down) work in the field above it.
class ListSteering : public QObject {
 public:
  /// Owned by the field; the list lives as long.
  ListSteering(QLineEdit& field, QAbstractItemView& list);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QAbstractItemView& m_list;
};

}  // namespace quill
