#include "engine/scene/Camera.h"

namespace korvel {

Camera::Camera(const Triple& at, const Triple& angles, double fov, const Area& area, double offset_x,
               double offset_y)
    : at_(at),
      ahead_(Rotate({1, 0, 0}, angles)),
      left_(Rotate({0, 1, 0}, angles)),
      up_(Rotate({0, 0, 1}, angles)),
      area_(area),
      focal_(area.width / 2 / std::tan(fov / 2 * kDegree)),
      centre_x_(area.x + area.width / 2 + offset_x),
      centre_y_(area.y + area.height / 2 + offset_y) {}

Triple Camera::ToView(const Triple& point) const {
  const Triple way{point.x - at_.x, point.y - at_.y, point.z - at_.z};
  return {Dot(way, ahead_), Dot(way, left_), Dot(way, up_)};
}

Triple Camera::PointAt(const Spot& spot) const {
  const double left = focal_ > 0 ? (centre_x_ - spot.x) * spot.depth / focal_ : 0;
  const double up = focal_ > 0 ? (centre_y_ - spot.y) * spot.depth / focal_ : 0;
  return {at_.x + ahead_.x * spot.depth + left_.x * left + up_.x * up,
          at_.y + ahead_.y * spot.depth + left_.y * left + up_.y * up,
          at_.z + ahead_.z * spot.depth + left_.z * left + up_.z * up};
}

}  // namespace korvel
