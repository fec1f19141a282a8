#pragma once
#include <QColor>

class QPainter;
class QStyleOptionViewItem;

namespace quill {

/// Paints the background of a row that is drawn by hand, and returns the colour for its text.
QColor PaintItemPanel(QPainter& painter, const QStyleOptionViewItem& option);

}  // namespace quill
