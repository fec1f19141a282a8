#include "shell/ui/ChromeScrollBar.h"

#include <QPainter>
#include <QStyleOptionSlider>
#include <algorithm>
#include <cstdint>

namespace quill::chrome_scroll_bar {
namespace {

constexpr int kShortestSlider = 24;  ///< pixels
constexpr int kSliderGap = 3;        ///< between the slider and the bar's edges

struct Slider {
  int start;
  int length;
};

Slider SliderOf(const QStyleOptionSlider& option, int length) {
  const int64_t range = static_cast<int64_t>(option.maximum) - option.minimum;
  if (range <= 0) return {0, length};
  const int64_t share = static_cast<int64_t>(option.pageStep) * length / (range + option.pageStep);
  const int slider = static_cast<int>(std::clamp<int64_t>(share, std::min(kShortestSlider, length), length));
  const int start = QStyle::sliderPositionFromValue(option.minimum, option.maximum, option.sliderPosition,
                                                    length - slider, option.upsideDown);
  return {start, slider};
}

QColor Mixed(const QColor& a, const QColor& b, double share) {
  const auto mix = [share](int x, int y) { return static_cast<int>(x + (y - x) * share); };
  return QColor(mix(a.red(), b.red()), mix(a.green(), b.green()), mix(a.blue(), b.blue()));
}

}  // namespace

QRect SubControlRect(const QStyleOptionSlider& option, QStyle::SubControl part) {
  const bool horizontal = option.orientation == Qt::Horizontal;
  const QRect bar = option.rect;
  const int length = horizontal ? bar.width() : bar.height();
  const Slider slider = SliderOf(option, length);
  const auto stretch = [&](int from, int to) {
    const QRect rect = horizontal ? QRect(bar.left() + from, bar.top(), to - from, bar.height())
                                  : QRect(bar.left(), bar.top() + from, bar.width(), to - from);
    return QStyle::visualRect(option.direction, bar, rect);
  };
  switch (part) {
    case QStyle::SC_ScrollBarGroove:
      return stretch(0, length);
    case QStyle::SC_ScrollBarSlider:
      return stretch(slider.start, slider.start + slider.length);
    case QStyle::SC_ScrollBarSubPage:
      return stretch(0, slider.start);
    case QStyle::SC_ScrollBarAddPage:
      return stretch(slider.start + slider.length, length);
    default:
      return {};
  }
}

void Draw(const QStyleOptionSlider& option, QPainter& painter) {
  const QColor groove = option.palette.color(QPalette::Window);
  const QColor text = option.palette.color(QPalette::WindowText);
  painter.fillRect(option.rect, groove);
  if (option.maximum <= option.minimum) return;
  const bool pressed = option.state.testFlag(QStyle::State_Sunken) &&
                       option.activeSubControls.testFlag(QStyle::SC_ScrollBarSlider);
  const bool hovered = option.state.testFlag(QStyle::State_MouseOver) &&
                       option.activeSubControls.testFlag(QStyle::SC_ScrollBarSlider);
  const QRect slider = SubControlRect(option, QStyle::SC_ScrollBarSlider);
  const bool horizontal = option.orientation == Qt::Horizontal;
  const QRect body = horizontal ? slider.adjusted(1, kSliderGap, -1, -kSliderGap)
                                : slider.adjusted(kSliderGap, 1, -kSliderGap, -1);
  painter.fillRect(body, Mixed(groove, text, pressed ? 0.55 : hovered ? 0.42 : 0.28));
}

}  // namespace quill::chrome_scroll_bar
