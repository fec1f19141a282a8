// Plays the lander by its keys: reads the game as a watch does, and flies to a pad.
#pragma once

#include <algorithm>
#include <cmath>

#include "tests/engine/SampleGame.h"

namespace korvel {

class LanderGame : public SampleGame {
 public:
  enum State { kMenu, kReady, kFlying, kLanded, kCrashed, kGivenUp, kScores };

  LanderGame() : SampleGame("lander") {}

  State state() { return static_cast<State>(static_cast<int>(Number("game_state"))); }
  bool RunUntilState(State state) {
    return RunUntil([&] { return this->state() == state; });
  }
  /// The ship, or null when there is none.
  const KorvelEntityObject* Ship() {
    const auto* pointer = static_cast<const KorvelEntityPointerObject*>(session().FindObject("ship"));
    return pointer == nullptr ? nullptr : pointer->target;
  }

  /// The first entity of the level with this picture, or null.
  Entity* Thing(std::string_view picture) {
    Entity* entity = session().world.first_entity();
    while (entity != nullptr && !std::string_view(entity->file).ends_with(picture)) entity = entity->next;
    return entity;
  }
  bool IsShipShown() { return Ship() != nullptr && korvel::IsShown(Ship()->head); }

  /// Waits for the menu and chooses a line of it by keys.
  bool Choose(int line) {
    RunUntil([&] { return IsShown("menu_txt"); });
    for (int i = 0; i < 6; ++i) Press(kUp);
    for (int i = 0; i < line; ++i) Press(kDown);
    return Press(kEnter);
  }

  /// Flies until the round ends; the state in which it ended.
  State FlyTo(int pad) {
    RunUntilState(kFlying);
    for (int i = 0; i < 7200 && state() == kFlying; ++i) {
      SteerTo(pad);
      if (!Frame()) break;
    }
    ReleaseAll();
    return state();
  }

 private:
  /// Holds the keys that bring the ship to a pad.
  void SteerTo(int pad);
  double HighestBetween(double from, double to);
  double AwayFromRocks(double x, double z);
};

inline double LanderGame::HighestBetween(double from, double to) {
  double highest = 0;
  const Fixed* ground = &Find<Fixed>("ground");
  for (int i = 0; i < 65; ++i) {
    const double x = -800 + i * 25;
    if (x > std::min(from, to) - 40 && x < std::max(from, to) + 40) {
      highest = std::max(highest, ground[i] / 1024.0);
    }
  }
  return highest;
}

/// A speed to the side while a rock is on its way to the ship, else 0.
inline double LanderGame::AwayFromRocks(double x, double z) {
  for (const Entity* entity = session().world.first_entity(); entity != nullptr; entity = entity->next) {
    if (!std::string_view(entity->file).ends_with("rock.bmp") || !korvel::IsShown(entity->head)) continue;
    const double way_x = entity->x / 1024.0 - x, way_z = entity->z / 1024.0 - z;
    const double speed_x = entity->skills[0] / 1024.0 - Number("ship_speed", 0);
    const double speed_z = entity->skills[1] / 1024.0 - Number("ship_speed", 2);
    const double square = std::max(speed_x * speed_x + speed_z * speed_z, 1.0);
    const double nearest = std::clamp(-(way_x * speed_x + way_z * speed_z) / square, 0.0, 4.0);
    const double miss_x = way_x + speed_x * nearest;
    if (std::hypot(miss_x, way_z + speed_z * nearest) < 60) return miss_x > 0 ? -45 : 45;
  }
  return 0;
}

inline void LanderGame::SteerTo(int pad) {
  const KorvelEntityObject* ship = Ship();
  if (ship == nullptr) return;
  const double x = ship->x / 1024.0, z = ship->z / 1024.0, roll = ship->roll / 1024.0;
  const double middle = -800 + (Number("pad_at", pad) + Number("pad_steps", pad) / 2) * 25;
  const double way = middle - x;
  const double height = z - 14 - Number("ground", static_cast<int>(Number("pad_at", pad)));

  const double away = AwayFromRocks(x, z);
  const double wanted_x = away != 0 ? away : std::clamp(way * 0.3, -40.0, 40.0);
  const double above_hills = HighestBetween(x, middle) + 90 - z;
  const double wanted_z =
      std::abs(way) < 12 ? -std::clamp(height * 0.3, 9.0, 40.0) : std::clamp(above_hills * 0.6, -40.0, 20.0);
  const double push_x = (wanted_x - Number("ship_speed", 0)) * 1.2 - Number("wind");
  const double push_z = (wanted_z - Number("ship_speed", 2)) * 2.5 + Number("gravity");

  const double most = height < 25 ? 6 : 35;
  const double wanted_roll = std::clamp(std::atan2(-push_x, std::max(push_z, 12.0)) * 57.3, -most, most);
  Hold(kLeft, roll < wanted_roll - 1.5);
  Hold(kRight, roll > wanted_roll + 1.5);
  Hold(kUp, push_z > 0 && Number("thrust") < push_z / 34 * 100);
}

}  // namespace korvel
