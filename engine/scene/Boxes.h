// The boxes around entities, and what meets them.
#pragma once

#include "engine/objects/World.h"
#include "engine/scene/Space.h"

namespace korvel {

/// A box that is not turned.
struct Box {
  Triple low, high;
};

/// Width, depth and height of an entity, scale included.
Triple SizeOf(const Entity& entity);
Box BoxOf(const Entity& entity);
bool Overlap(const Box& a, const Box& b);

/// What a movement or a line met.
struct Meeting {
  Entity* entity = nullptr;
  double share = 1;  ///< of the way, 0 to 1
};

/// Moves a box, of an entity or a point, along a way to the first obstacle: a shown, solid entity that is not
/// `mover` and that the box does not touch already.
Meeting FirstMeeting(const World& world, const Entity* mover, const Box& box, const Triple& way);

}  // namespace korvel
