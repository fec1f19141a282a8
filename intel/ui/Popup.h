#pragma once
#include <QRect>
#include <QSize>

#include "intel/writing/PopupPlace.h"

class QColor;
class QPainter;
class QWidget;

namespace quill {

/// Makes a widget a small window over the text that never takes the focus from it.
void MakePopup(QWidget& widget);

/// Fills a popup and draws its border, which is quieter than its text.
void PaintPopup(QPainter& painter, const QRect& rect, const QColor& base, const QColor& text);

/// The size that a popup is given, and its place beside `anchor`; both on the screen.
QRect PopupRect(const QRect& anchor, QSize size, const QWidget& owner, PopupSide wanted);

}  // namespace quill
