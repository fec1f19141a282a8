// Points, directions and angles of the level: x ahead, y to the left, z up.
#pragma once

#include <cmath>

namespace korvel {

/// Three numbers as real ones: a point, a direction, or pan, tilt and roll in degrees.
struct Triple {
  double x, y, z;
};

inline constexpr double kDegree = 3.14159265358979323846 / 180;

inline double Length(const Triple& v) {
  return std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z);
}

inline double Dot(const Triple& a, const Triple& b) {
  return a.x * b.x + a.y * b.y + a.z * b.z;
}

/// Turns a vector by pan, tilt and roll: roll first, pan last.
Triple Rotate(const Triple& v, const Triple& angles);

/// Pan and tilt that look along a direction; the roll is 0.
Triple AnglesOf(const Triple& direction);

}  // namespace korvel
