// How points of the level become pixels of the window, and back.
#pragma once

#include "engine/scene/Space.h"

namespace korvel {

/// The nearest and the farthest depth that is seen, in units along the view.
inline constexpr double kNear = 1;
inline constexpr double kFar = 100'000;

/// A rectangle of the window, in pixels from its upper left corner.
struct Area {
  double x, y, width, height;
};

/// A place of the window with its depth along the view.
struct Spot {
  double x, y, depth;
};

/// The pixel that a place lies in; a place that is a hair's breadth in front of it, too.
inline double WholePixel(double place) {
  return std::floor(std::round(place * 1024) / 1024);
}

/// Looks from a point in a direction, and shows what it sees in a rectangle of the window.
class Camera {
 public:
  /// `fov` is the angle from the left to the right edge, in degrees; the offset shifts the picture, in
  /// pixels.
  Camera(const Triple& at, const Triple& angles, double fov, const Area& area, double offset_x,
         double offset_y);

  /// A point as the view has it: x ahead, y to the left, z up.
  Triple ToView(const Triple& point) const;

  /// The place of a point in coordinates of the view; its depth must not be 0.
  Spot PlaceOf(const Triple& in_view) const {
    return {centre_x_ - focal_ * in_view.y / in_view.x, centre_y_ - focal_ * in_view.z / in_view.x,
            in_view.x};
  }

  /// The point of the level at a place with a depth.
  Triple PointAt(const Spot& spot) const;

  /// Pixels that a unit takes at the depth 1.
  double focal() const { return focal_; }
  const Area& area() const { return area_; }
  const Triple& at() const { return at_; }

 private:
  Triple at_, ahead_, left_, up_;
  Area area_;
  double focal_, centre_x_, centre_y_;
};

}  // namespace korvel
