// Entities: making, moving, finding.
#include "engine/commands/Arguments.h"
#include "engine/commands/Tables.h"
#include "engine/scene/Boxes.h"

namespace korvel {
namespace {

Triple PlaceOf(const Entity& e) {
  return {ToDouble(e.x), ToDouble(e.y), ToDouble(e.z)};
}
Triple AnglesOfEntity(const Entity& e) {
  return {ToDouble(e.pan), ToDouble(e.tilt), ToDouble(e.roll)};
}

void SetPlace(Entity& e, const Triple& at) {
  WriteCell(&e.x, FromDouble(at.x));
  WriteCell(&e.y, FromDouble(at.y));
  WriteCell(&e.z, FromDouble(at.z));
}

Value LevelLoad(Session& s, const Value* a) {
  char path[kLongestPath] = "";
  if (!IsNull(a[0]) && !s.folder.FindMedia(TextOf(a[0]), "", path)) return 0;
  std::memcpy(s.next_level, path, sizeof path);
  s.level_wanted = true;
  return kOne;
}

Value EntCreate(Session& s, const Value* a) {
  const Triple at = ReadVector(a[1]);
  Entity* entity = s.world.MakeEntity(TextOf(a[0]), nullptr);
  if (entity == nullptr) {
    s.Fault("The file of this entity was not found.");
    return kNull;
  }
  SetPlace(*entity, at);
  if (!IsNull(a[2])) s.StartFunction(As<Function>(a[2]), &entity->head, s.machine.task->me);
  return ToValue(entity);
}

Value EntAction(Session& s, const Value* a) {
  return GiveBool(s.StartFunction(As<Function>(a[1]), &As<Entity>(a[0]).head, s.machine.task->me));
}

Value EntRemove(Session& s, const Value* a) {
  s.world.Remove(&As<Entity>(a[0]).head);
  return 0;
}

Value EntCount(Session& s, const Value*) {
  return GiveWhole(s.world.entity_count());
}

Entity* After(Session& s, Value previous) {
  if (IsNull(previous)) return s.world.first_entity();
  const Entity& entity = As<Entity>(previous);
  return entity.head.kind == kKorvelEntity ? entity.next : nullptr;
}

Value EntNext(Session& s, const Value* a) {
  return ToValue(After(s, a[0]));
}

Value EntNear(Session& s, const Value* a) {
  const Triple point = ReadVector(a[1]);
  for (Entity* e = After(s, a[0]); e != nullptr; e = e->next) {
    const Triple at = PlaceOf(*e);
    if (Length({at.x - point.x, at.y - point.y, at.z - point.z}) <= Real(a[2])) return ToValue(e);
  }
  return kNull;
}

Value EntShow(Session&, const Value* a) {
  auto& head = As<Entity>(a[0]).head;
  head.flags = static_cast<uint8_t>(Flag(a[1]) ? head.flags | kShown : head.flags & ~kShown);
  return 0;
}

Value EntVisible(Session&, const Value* a) {
  return GiveBool(IsShown(As<Entity>(a[0]).head));
}

Value EntSolid(Session&, const Value* a) {
  As<Entity>(a[0]).solid = Flag(a[1]);
  return 0;
}

Value EntPlace(Session&, const Value* a) {
  auto& e = As<Entity>(a[0]);
  WriteCell(&e.x, Number(a[1]));
  WriteCell(&e.y, Number(a[2]));
  WriteCell(&e.z, Number(a[3]));
  return 0;
}

// Sets the running function's you and the point that trace_point gives.
void NoteMeeting(Session& s, const Meeting& meeting, const Triple& from, const Triple& way) {
  s.machine.task->you = meeting.entity != nullptr ? &meeting.entity->head : nullptr;
  s.SetMe(s.machine.task->me, s.machine.task->you);
  if (meeting.entity == nullptr) return;
  s.met[0] = FromDouble(from.x + way.x * meeting.share);
  s.met[1] = FromDouble(from.y + way.y * meeting.share);
  s.met[2] = FromDouble(from.z + way.z * meeting.share);
}

Value Move(Session& s, Entity& e, const Triple& step) {
  const Meeting meeting = FirstMeeting(s.world, &e, BoxOf(e), step);
  const Triple from = PlaceOf(e);
  SetPlace(
      e, {from.x + step.x * meeting.share, from.y + step.y * meeting.share, from.z + step.z * meeting.share});
  NoteMeeting(s, meeting, from, step);
  return GiveReal(Length(step) * meeting.share);
}

Value EntMove(Session& s, const Value* a) {
  return Move(s, As<Entity>(a[0]), ReadVector(a[1]));
}

Value EntMoveLocal(Session& s, const Value* a) {
  auto& e = As<Entity>(a[0]);
  return Move(s, e, Rotate(ReadVector(a[1]), AnglesOfEntity(e)));
}

Value EntTurn(Session&, const Value* a) {
  auto& e = As<Entity>(a[0]);
  Fixed* const angles[] = {&e.pan, &e.tilt, &e.roll};
  for (int i = 0; i < 3; ++i)
    WriteCell(angles[i], FromDouble(NormalAngle(ToDouble(*angles[i]) + Real(a[i + 1]))));
  return 0;
}

Value EntFace(Session&, const Value* a) {
  auto& e = As<Entity>(a[0]);
  const Triple point = ReadVector(a[1]);
  const Triple at = PlaceOf(e);
  const Triple angles = AnglesOf({point.x - at.x, point.y - at.y, point.z - at.z});
  WriteCell(&e.pan, FromDouble(angles.x));
  WriteCell(&e.tilt, FromDouble(angles.y));
  return 0;
}

Value EntScale(Session&, const Value* a) {
  auto& e = As<Entity>(a[0]);
  Fixed* const scales[] = {&e.scale_x, &e.scale_y, &e.scale_z};
  for (Fixed* scale : scales) WriteCell(scale, std::clamp(Number(a[1]), 0, 1000 * kOne));
  return 0;
}

Value EntColor(Session&, const Value* a) {
  auto& e = As<Entity>(a[0]);
  Fixed* const parts[] = {&e.red, &e.green, &e.blue};
  for (int i = 0; i < 3; ++i) WriteCell(parts[i], std::clamp(Number(a[i + 1]), 0, 255 * kOne));
  return 0;
}

Value EntAlpha(Session&, const Value* a) {
  WriteCell(&As<Entity>(a[0]).alpha, std::clamp(Number(a[1]), 0, 100 * kOne));
  return 0;
}

Value EntMaterial(Session&, const Value* a) {
  As<Entity>(a[0]).surface = ToObject<Material>(a[1]);
  return 0;
}

Value EntMorph(Session& s, const Value* a) {
  auto& e = As<Entity>(a[0]);
  return GiveBool(s.world.FindModel(TextOf(a[1]), &e.picture, &e.file));
}

// A box has no scenes, and a picture stays as it is.
Value EntAnimate(Session&, const Value*) {
  return 0;
}

Value EntPicture(Session&, const Value* a) {
  As<Entity>(a[0]).picture = ToObject<Bitmap>(a[1]);
  return 0;
}

Value EntDistance(Session&, const Value* a) {
  if (IsNull(a[0]) || IsNull(a[1])) return kLargest;
  const Triple p = PlaceOf(As<Entity>(a[0]));
  const Triple q = PlaceOf(As<Entity>(a[1]));
  return GiveReal(Length({p.x - q.x, p.y - q.y, p.z - q.z}));
}

Value EntTouch(Session&, const Value* a) {
  if (IsNull(a[0]) || IsNull(a[1])) return 0;
  const auto& first = As<Entity>(a[0]);
  const auto& second = As<Entity>(a[1]);
  return GiveBool(IsShown(first.head) && IsShown(second.head) && Overlap(BoxOf(first), BoxOf(second)));
}

Value EntSize(Session&, const Value* a) {
  WriteVector(a[0], SizeOf(As<Entity>(a[1])));
  return 0;
}

Value EntName(Session& s, const Value* a) {
  const char* name = As<Entity>(a[1]).name;
  const std::string_view text = name != nullptr ? name : "";
  s.world.Assign(As<StringObject>(a[0]), text);
  return GiveWhole(static_cast<int64_t>(text.size()));
}

Value EntFind(Session& s, const Value* a) {
  for (Entity* e = s.world.first_entity(); e != nullptr; e = e->next) {
    if (e->name != nullptr && TextOf(a[0]) == e->name) return ToValue(e);
  }
  return kNull;
}

Value TraceLine(Session& s, const Value* a) {
  const Triple from = ReadVector(a[0]);
  const Triple to = ReadVector(a[1]);
  const Triple way{to.x - from.x, to.y - from.y, to.z - from.z};
  // A line is a box without extent; one that begins inside of a box is let out of it.
  const Meeting meeting =
      FirstMeeting(s.world, reinterpret_cast<Entity*>(s.machine.task->me), {from, from}, way);
  NoteMeeting(s, meeting, from, way);
  if (meeting.entity == nullptr) return 0;
  return std::max(Value{1}, GiveReal(Length(way) * meeting.share));
}

Value TracePoint(Session& s, const Value* a) {
  for (int i = 0; i < 3; ++i) WriteCell(reinterpret_cast<Fixed*>(a[0]) + i, s.met[i]);
  return 0;
}

constexpr Command kRows[] = {
    {"level_load", "n:s?", LevelLoad},
    {"ent_create", "*e:svf?", EntCreate},
    {"ent_action", "*n:ef", EntAction},
    {"ent_remove", "-:e", EntRemove},
    {"ent_count", "n:", EntCount},
    {"ent_next", "e:e?", EntNext},
    {"ent_near", "e:e?vn", EntNear},
    {"ent_show", "-:en", EntShow},
    {"ent_visible", "n:e", EntVisible},
    {"ent_solid", "-:en", EntSolid},
    {"ent_place", "-:ennn", EntPlace},
    {"ent_move", "n:ev", EntMove},
    {"ent_move_local", "n:ev", EntMoveLocal},
    {"ent_turn", "-:ennn", EntTurn},
    {"ent_face", "-:ev", EntFace},
    {"ent_scale", "-:en", EntScale},
    {"ent_color", "-:ennn", EntColor},
    {"ent_alpha", "-:en", EntAlpha},
    {"ent_material", "-:em?", EntMaterial},
    {"ent_morph", "n:es", EntMorph},
    {"ent_picture", "-:eb", EntPicture},
    {"ent_animate", "-:esn", EntAnimate},
    {"ent_distance", "n:e?e?", EntDistance},
    {"ent_touch", "n:e?e?", EntTouch},
    {"ent_size", "-:Ve", EntSize},
    {"ent_name", "n:Se", EntName},
    {"ent_find", "e:s", EntFind},
    {"trace_line", "n:vv", TraceLine},
    {"trace_point", "-:V", TracePoint},
};

}  // namespace

const CommandTable kEntityCommands = TableOf(kRows);

}  // namespace korvel
