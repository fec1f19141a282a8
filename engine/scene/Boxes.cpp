#include "engine/scene/Boxes.h"

#include <algorithm>

namespace korvel {
namespace {

constexpr double kSide = 32;  ///< of what is no picture

// Where along the way two ranges begin and end to overlap; false when they never do.
bool Range(double low, double high, double way, double other_low, double other_high, double* enter,
           double* leave) {
  if (way == 0) return low < other_high && high > other_low;
  double in = (other_low - high) / way;
  double out = (other_high - low) / way;
  if (in > out) std::swap(in, out);
  *enter = std::max(*enter, in);
  *leave = std::min(*leave, out);
  return *enter < *leave;
}

}  // namespace

Triple SizeOf(const Entity& entity) {
  const double width = entity.picture != nullptr ? entity.picture->width : kSide;
  const double height = entity.picture != nullptr ? entity.picture->height : kSide;
  if (entity.picture != nullptr) {
    return {width * ToDouble(entity.scale_x), width * ToDouble(entity.scale_x),
            height * ToDouble(entity.scale_y)};
  }
  return {width * ToDouble(entity.scale_x), width * ToDouble(entity.scale_y),
          height * ToDouble(entity.scale_z)};
}

Box BoxOf(const Entity& entity) {
  const Triple size = SizeOf(entity);
  const Triple at{ToDouble(entity.x), ToDouble(entity.y), ToDouble(entity.z)};
  return {{at.x - size.x / 2, at.y - size.y / 2, at.z - size.z / 2},
          {at.x + size.x / 2, at.y + size.y / 2, at.z + size.z / 2}};
}

bool Overlap(const Box& a, const Box& b) {
  return a.low.x < b.high.x && b.low.x < a.high.x && a.low.y < b.high.y && b.low.y < a.high.y &&
         a.low.z < b.high.z && b.low.z < a.high.z;
}

Meeting FirstMeeting(const World& world, const Entity* mover, const Box& box, const Triple& way) {
  Meeting first;
  for (Entity* other = world.first_entity(); other != nullptr; other = other->next) {
    if (other == mover || !IsShown(other->head) || !other->solid) continue;
    const Box target = BoxOf(*other);
    if (Overlap(box, target)) continue;
    double enter = 0;
    double leave = first.share;
    if (Range(box.low.x, box.high.x, way.x, target.low.x, target.high.x, &enter, &leave) &&
        Range(box.low.y, box.high.y, way.y, target.low.y, target.high.y, &enter, &leave) &&
        Range(box.low.z, box.high.z, way.z, target.low.z, target.high.z, &enter, &leave)) {
      first = {other, enter};
    }
  }
  return first;
}

}  // namespace korvel
