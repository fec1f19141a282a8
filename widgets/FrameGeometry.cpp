#include "widgets/FrameGeometry.h"

#include <QGuiApplication>
#include <QMargins>
#include <QScreen>
#include <QWidget>

#include "settings/WindowPlacement.h"

namespace quill::frame_geometry {
namespace {

/// As much of the window must be on a screen for it to be found and moved.
constexpr int kVisiblePart = 64;
/// Room for the frame that the window manager puts around a window, its title bar above all.
constexpr QMargins kFrameRoom{8, 40, 8, 8};

bool IsReachable(const QRect& rectangle) {
  for (const QScreen* screen : QGuiApplication::screens()) {
    const QRect shown = screen->availableGeometry().intersected(rectangle);
    if (shown.width() >= kVisiblePart && shown.height() >= kVisiblePart) return true;
  }
  return false;
}

void PlaceInTheMiddle(QWidget& window, QSize usualSize) {
  const QRect screen = window.screen()->availableGeometry().marginsRemoved(kFrameRoom);
  const QSize size = usualSize.boundedTo(screen.size());
  window.setGeometry(QRect(screen.center() - QPoint(size.width(), size.height()) / 2, size));
}

}  // namespace

std::string Save(const QWidget& window) {
  const bool special = window.isMaximized() || window.isMinimized() || window.isFullScreen();
  const QRect rectangle = special ? window.normalGeometry() : window.geometry();
  WindowPlacement placement;
  placement.showState = window.isMaximized() ? WindowPlacement::kMaximised : WindowPlacement::kNormal;
  placement.left = rectangle.left();
  placement.top = rectangle.top();
  placement.right = rectangle.left() + rectangle.width();
  placement.bottom = rectangle.top() + rectangle.height();
  return placement.ToBytes();
}

bool Restore(QWidget& window, const std::string& bytes, QSize usualSize) {
  const auto placement = WindowPlacement::FromBytes(bytes);
  if (!placement) {
    PlaceInTheMiddle(window, usualSize);
    return false;
  }
  const QRect rectangle(QPoint(placement->left, placement->top),
                        QPoint(placement->right - 1, placement->bottom - 1));
  if (IsReachable(rectangle)) {
    window.setGeometry(rectangle);
  } else {
    PlaceInTheMiddle(window, usualSize);
  }
  return placement->showState == WindowPlacement::kMaximised;
}

}  // namespace quill::frame_geometry
