#include "intel/ui/Popup.h"

#include <QPainter>
#include <QScreen>
#include <QWidget>

namespace quill {
namespace {

constexpr int kBorderWeight = 30;  ///< percent of the text's colour in the border

QColor Between(const QColor& from, const QColor& to, int percent) {
  const auto mix = [percent](int a, int b) { return (a * (100 - percent) + b * percent) / 100; };
  return {mix(from.red(), to.red()), mix(from.green(), to.green()), mix(from.blue(), to.blue())};
}

}  // namespace

void MakePopup(QWidget& widget) {
  widget.setWindowFlags(Qt::ToolTip | Qt::FramelessWindowHint);
  widget.setAttribute(Qt::WA_ShowWithoutActivating);
  widget.setFocusPolicy(Qt::NoFocus);
}

void PaintPopup(QPainter& painter, const QRect& rect, const QColor& base, const QColor& text) {
  painter.setPen(Between(base, text, kBorderWeight));
  painter.setBrush(base);
  painter.drawRect(rect.adjusted(0, 0, -1, -1));
}

QRect PopupRect(const QRect& anchor, QSize size, const QWidget& owner, PopupSide wanted) {
  const QRect screen = owner.screen()->availableGeometry();
  const PixelRect place =
      PlacePopup({anchor.x(), anchor.y(), anchor.width(), anchor.height()}, size.width(), size.height(),
                 {screen.x(), screen.y(), screen.width(), screen.height()}, wanted);
  return {place.x, place.y, place.width, place.height};
}

}  // namespace quill
