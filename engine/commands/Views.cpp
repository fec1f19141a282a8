// Views, and how they show points of the level.
#include "engine/commands/Arguments.h"
#include "engine/commands/Tables.h"
#include "engine/run/Screen.h"
#include "engine/scene/Camera.h"

namespace korvel {
namespace {

Value ViewCreate(Session& s, const Value* a) {
  auto* view = s.world.Make<View>(kKorvelView);
  if (view == nullptr) {
    s.Fault("There is no more memory for another view.");
    return kNull;
  }
  WriteCell(&view->layer, Number(a[0]));
  return ToValue(view);
}

Value ViewRemove(Session& s, const Value* a) {
  s.world.Remove(&As<View>(a[0]).head);
  return 0;
}

Value ViewShow(Session&, const Value* a) {
  auto& head = As<View>(a[0]).head;
  head.flags = static_cast<uint8_t>(Flag(a[1]) ? head.flags | kShown : head.flags & ~kShown);
  return 0;
}

Value ViewVisible(Session&, const Value* a) {
  return GiveBool(IsShown(As<View>(a[0]).head));
}

Value ViewPlace(Session&, const Value* a) {
  auto& view = As<View>(a[0]);
  WriteCell(&view.x, Number(a[1]));
  WriteCell(&view.y, Number(a[2]));
  WriteCell(&view.z, Number(a[3]));
  return 0;
}

Value ViewTurn(Session&, const Value* a) {
  auto& view = As<View>(a[0]);
  WriteCell(&view.pan, Number(a[1]));
  WriteCell(&view.tilt, Number(a[2]));
  WriteCell(&view.roll, Number(a[3]));
  return 0;
}

Value ViewLookAt(Session&, const Value* a) {
  auto& view = As<View>(a[0]);
  const Triple point = ReadVector(a[1]);
  const Triple angles =
      AnglesOf({point.x - ToDouble(view.x), point.y - ToDouble(view.y), point.z - ToDouble(view.z)});
  WriteCell(&view.pan, FromDouble(angles.x));
  WriteCell(&view.tilt, FromDouble(angles.y));
  WriteCell(&view.roll, 0);
  return 0;
}

Value ViewFollow(Session&, const Value* a) {
  auto& view = As<View>(a[0]);
  view.guide = ToObject<Entity>(a[1]);
  view.distance = Number(a[2]);
  return 0;
}

Value ViewArea(Session&, const Value* a) {
  auto& view = As<View>(a[0]);
  WriteCell(&view.pos_x, Number(a[1]));
  WriteCell(&view.pos_y, Number(a[2]));
  WriteCell(&view.size_x, Number(a[3]));
  WriteCell(&view.size_y, Number(a[4]));
  return 0;
}

Value ViewFov(Session&, const Value* a) {
  WriteCell(&As<View>(a[0]).fov, std::clamp(Number(a[1]), 5 * kOne, 170 * kOne));
  return 0;
}

Value ViewFog(Session&, const Value* a) {
  auto& view = As<View>(a[0]);
  WriteCell(&view.fog_start, Number(a[1]));
  WriteCell(&view.fog_end, Number(a[2]));
  return 0;
}

Value ViewFogColor(Session&, const Value* a) {
  auto& view = As<View>(a[0]);
  int32_t* const parts[] = {&view.fog_red, &view.fog_green, &view.fog_blue};
  for (int i = 0; i < 3; ++i) *parts[i] = std::clamp(Whole(a[i + 1]), 0, 255);
  view.has_fog_color = true;
  return 0;
}

Value ViewShake(Session& s, const Value* a) {
  auto& view = As<View>(a[0]);
  view.shake_strength = Number(a[1]);
  view.shake_begin = s.game_time();
  view.shake_end = view.shake_begin + int64_t{Number(a[2])} * 1'000'000 / kOne;
  return 0;
}

Value ViewToScreen(Session& s, const Value* a) {
  FollowScreen(s);
  const Camera camera = CameraOf(As<View>(a[1]), s.scene.screen);
  const Triple point = camera.ToView(ReadVector(a[0]));
  if (point.x < kNear) return 0;
  const Spot spot = camera.PlaceOf(point);
  WriteVector(a[0], {WholePixel(spot.x), WholePixel(spot.y), spot.depth});
  return kOne;
}

Value ViewFromScreen(Session& s, const Value* a) {
  FollowScreen(s);
  const Triple spot = ReadVector(a[0]);
  WriteVector(a[0], CameraOf(As<View>(a[1]), s.scene.screen).PointAt({spot.x, spot.y, spot.z}));
  return 0;
}

constexpr Command kRows[] = {
    {"view_create", "c:n", ViewCreate},
    {"view_remove", "-:c", ViewRemove},
    {"view_show", "-:cn", ViewShow},
    {"view_visible", "n:c", ViewVisible},
    {"view_place", "-:cnnn", ViewPlace},
    {"view_turn", "-:cnnn", ViewTurn},
    {"view_look_at", "-:cv", ViewLookAt},
    {"view_follow", "-:ce?n", ViewFollow},
    {"view_area", "-:cnnnn", ViewArea},
    {"view_fov", "-:cn", ViewFov},
    {"view_fog", "-:cnn", ViewFog},
    {"view_fog_color", "-:cnnn", ViewFogColor},
    {"view_shake", "-:cnn", ViewShake},
    {"view_to_screen", "n:Vc", ViewToScreen},
    {"view_from_screen", "-:Vc", ViewFromScreen},
};

}  // namespace

const CommandTable kViewCommands = TableOf(kRows);

}  // namespace korvel
