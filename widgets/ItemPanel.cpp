#include "widgets/ItemPanel.h"

#include <QApplication>
#include <QStyleOptionViewItem>

namespace quill {

QColor PaintItemPanel(QPainter& painter, const QStyleOptionViewItem& option) {
  QStyleOptionViewItem row = option;
  row.showDecorationSelected = true;
  const QWidget* view = option.widget;
  (view == nullptr ? QApplication::style() : view->style())
      ->drawPrimitive(QStyle::PE_PanelItemViewItem, &row, &painter, view);
  const bool selected = (option.state & QStyle::State_Selected) != 0;
  const QPalette::ColorGroup group =
      (option.state & QStyle::State_Active) != 0 ? QPalette::Active : QPalette::Inactive;
  return option.palette.color(group, selected ? QPalette::HighlightedText : QPalette::Text);
}

}  // namespace quill
