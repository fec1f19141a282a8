#include "engine/scene/Space.h"

namespace korvel {

Triple Rotate(const Triple& v, const Triple& angles) {
  const double sr = std::sin(angles.z * kDegree), cr = std::cos(angles.z * kDegree);
  const double st = std::sin(angles.y * kDegree), ct = std::cos(angles.y * kDegree);
  const double sp = std::sin(angles.x * kDegree), cp = std::cos(angles.x * kDegree);
  // About x by -roll, about y by -tilt, about z by pan.
  const Triple rolled{v.x, cr * v.y + sr * v.z, cr * v.z - sr * v.y};
  const Triple tilted{ct * rolled.x - st * rolled.z, rolled.y, st * rolled.x + ct * rolled.z};
  return {cp * tilted.x - sp * tilted.y, sp * tilted.x + cp * tilted.y, tilted.z};
}

Triple AnglesOf(const Triple& d) {
  const double flat = std::sqrt(d.x * d.x + d.y * d.y);
  const double pan = flat == 0 ? 0 : std::atan2(d.y, d.x) / kDegree;
  const double tilt = flat == 0 && d.z == 0 ? 0 : std::atan2(d.z, flat) / kDegree;
  return {pan, tilt, 0};
}

}  // namespace korvel
