#include "shell/ui/StartLink.h"

#include <QKeyEvent>
#include <QPainter>
#include <algorithm>

namespace quill {
namespace {

// Pixels.
constexpr int kIconSize = 16;
constexpr int kPadding = 8;
constexpr int kGap = 12;
constexpr int kCorner = 4;

}  // namespace

StartLink::StartLink(const QIcon& icon, const QString& text, const QString& remark, QWidget* parent)
    : QAbstractButton(parent), m_remark(remark) {
  setIcon(icon);
  setText(text);
  setShortcut({});  // "&" in a name is no mnemonic
  setAccessibleName(remark.isEmpty() ? text : text + ", " + remark);
  setFocusPolicy(Qt::StrongFocus);
  setCursor(Qt::PointingHandCursor);
  setAttribute(Qt::WA_Hover);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize StartLink::sizeHint() const {
  const QFontMetrics metrics = fontMetrics();
  const int remark = m_remark.isEmpty() ? 0 : kGap + metrics.horizontalAdvance(m_remark);
  return {2 * kPadding + kIconSize + kGap + metrics.horizontalAdvance(text()) + remark,
          std::max(kIconSize, metrics.height()) + 2 * kPadding - 4};
}

void StartLink::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  QColor behind = palette().color(QPalette::Highlight);
  behind.setAlphaF(isDown() ? 0.35F : 0.18F);
  const QRectF frame = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
  painter.setPen(hasFocus() ? QPen(palette().color(QPalette::Highlight), 1) : QPen(Qt::NoPen));
  painter.setBrush(underMouse() || isDown() ? QBrush(behind) : QBrush(Qt::NoBrush));
  painter.drawRoundedRect(frame, kCorner, kCorner);

  QRect room = rect().adjusted(kPadding, 0, -kPadding, 0);
  icon().paint(&painter, QRect(room.left(), (height() - kIconSize) / 2, kIconSize, kIconSize));
  room.setLeft(room.left() + kIconSize + kGap);
  painter.setPen(palette().color(QPalette::Text));
  painter.drawText(room, Qt::AlignVCenter | Qt::AlignLeft, text());
  room.setLeft(room.left() + fontMetrics().horizontalAdvance(text()) + kGap);
  QColor faint = palette().color(QPalette::Text);
  faint.setAlphaF(0.62F);
  painter.setPen(faint);
  painter.drawText(room, Qt::AlignVCenter | Qt::AlignRight,
                   fontMetrics().elidedText(m_remark, Qt::ElideMiddle, room.width()));
}

void StartLink::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      click();
      return;
    case Qt::Key_Up:
      focusNextPrevChild(false);
      return;
    case Qt::Key_Down:
      focusNextPrevChild(true);
      return;
    default:
      QAbstractButton::keyPressEvent(event);
  }
}

}  // namespace quill
