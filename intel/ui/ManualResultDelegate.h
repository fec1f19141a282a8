#pragma once
#include <QStyledItemDelegate>

namespace quill {

/// Paints a place that a search in the manual found: its heading, the page's title beside it, and two lines
/// of its text with the words that were found in bold.
class ManualResultDelegate : public QStyledItemDelegate {
 public:
  enum Role {
    kPage = Qt::UserRole,  ///< title; empty when it is the heading as well
    kExcerpt,
    kMatches,  ///< QList<int>: begin and end of each match, in characters of the excerpt
    kTarget,   ///< URL
  };
  using QStyledItemDelegate::QStyledItemDelegate;

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

}  // namespace quill
