#pragma once
#include <QRect>
#include <QStyle>

class QPainter;
class QStyleOptionSlider;

namespace quill {

/// A flat scroll bar without arrow buttons. Drawn with opaque fills only: the toolkit hands translucent
/// ones of this height to other threads, and waiting for these takes longer than all else of a key.
namespace chrome_scroll_bar {

QRect SubControlRect(const QStyleOptionSlider& option, QStyle::SubControl part);
void Draw(const QStyleOptionSlider& option, QPainter& painter);

}  // namespace chrome_scroll_bar
}  // namespace quill
