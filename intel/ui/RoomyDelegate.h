#pragma once
#include <QStyledItemDelegate>

namespace quill {

/// Rows of plain text with some air between them.
class RoomyDelegate : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    constexpr int kAir = 6;  ///< pixels
    return QStyledItemDelegate::sizeHint(option, index) + QSize(0, kAir);
  }
};

}  // namespace quill
