#include "widgets/FrameGeometry.h"

#include <QGuiApplication>
#include <QMargins>
#include <QScreen>
#include <QWidget>

#include "settings/ProfileTable.h"
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

/// A window's normal rectangle, and whether it fills the room that it has.
struct Place {
  QRect rectangle;
  bool maximised = false;
};

std::optional<Place> PlaceFrom(const std::string& bytes) {
  const auto placement = WindowPlacement::FromBytes(bytes);
  if (!placement) return std::nullopt;
  return Place{
      QRect(QPoint(placement->left, placement->top), QPoint(placement->right - 1, placement->bottom - 1)),
      placement->showState == WindowPlacement::kMaximised};
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
  const auto place = PlaceFrom(bytes);
  if (place && IsReachable(place->rectangle)) {
    window.setGeometry(place->rectangle);
  } else {
    PlaceInTheMiddle(window, usualSize);
  }
  return place && place->maximised;
}

bool RestoreWithin(QWidget& window, const std::string& bytes) {
  const auto place = PlaceFrom(bytes);
  if (!place || place->rectangle.isEmpty()) return false;
  window.setGeometry(place->rectangle);
  return place->maximised;
}

void Keep(AppProfile profile, std::string_view section, const QWidget& window) {
  profile.WriteBinary(section, profile::kChildPlacementName, Save(window));
}

std::optional<std::string> Kept(const AppProfile& profile, std::string_view section) {
  return profile.ReadBinary(section, profile::kChildPlacementName);
}

}  // namespace quill::frame_geometry
