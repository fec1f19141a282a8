// What is drawn for one frame, and the points and boxes of the debug commands.
#include "engine/commands/Arguments.h"
#include "engine/commands/Tables.h"
#include "engine/scene/Boxes.h"

namespace korvel {
namespace {

Mark* AddMark(Session& s, Mark::Kind kind, const Value* place) {
  Mark* mark = s.scene.marks.Add(kind);
  if (mark == nullptr) {
    s.Fault("A frame has no room for more draw commands.");
    return nullptr;
  }
  mark->x = Whole(place[0]);
  mark->y = Whole(place[1]);
  return mark;
}

Value DrawColor(Session& s, const Value* a) {
  uint8_t parts[3];
  for (int i = 0; i < 3; ++i) parts[i] = static_cast<uint8_t>(std::clamp(Whole(a[i]), 0, 255));
  s.scene.marks.color = {parts[0], parts[1], parts[2]};
  return 0;
}

Value Draw(Session& s, Mark::Kind kind, const Value* a) {
  if (kind != Mark::kLine && (Number(a[2]) <= 0 || Number(a[3]) <= 0)) return 0;
  if (Mark* mark = AddMark(s, kind, a)) {
    mark->width = Whole(a[2]);
    mark->height = Whole(a[3]);
  }
  return 0;
}

Value DrawLine(Session& s, const Value* a) {
  return Draw(s, Mark::kLine, a);
}
Value DrawBox(Session& s, const Value* a) {
  return Draw(s, Mark::kFill, a);
}
Value DrawFrame(Session& s, const Value* a) {
  return Draw(s, Mark::kFrame, a);
}

Value DrawText(Session& s, const Value* a) {
  Mark* mark = AddMark(s, Mark::kText, a);
  if (mark == nullptr) return 0;
  const auto& font = As<Font>(a[2]);
  mark->face = font.face;
  mark->font_width = font.width;
  mark->font_height = font.height;
  if (!s.scene.marks.AddText(*mark, TextOf(a[3]))) s.Fault("A frame has no room for more draw commands.");
  return 0;
}

Value DrawPicture(Session& s, const Value* a) {
  if (Mark* mark = AddMark(s, Mark::kPicture, a)) mark->picture = &As<Bitmap>(a[2]);
  return 0;
}

Value DebugShow(Session& s, const Value* a) {
  s.scene.debug_text = Flag(a[0]);
  return 0;
}

Value DebugBox(Session& s, const Value* a) {
  const Value nowhere[2] = {};
  if (Mark* mark = AddMark(s, Mark::kDebugBox, nowhere)) {
    const Box box = BoxOf(As<Entity>(a[0]));
    mark->low = box.low;
    mark->high = box.high;
  }
  return 0;
}

Value DebugPoint(Session& s, const Value* a) {
  const Value nowhere[2] = {};
  if (Mark* mark = AddMark(s, Mark::kDebugPoint, nowhere)) mark->low = ReadVector(a[0]);
  return 0;
}

constexpr Command kRows[] = {
    {"draw_color", "-:nnn", DrawColor}, {"draw_line", "-:nnnn", DrawLine},
    {"draw_box", "-:nnnn", DrawBox},    {"draw_frame", "-:nnnn", DrawFrame},
    {"draw_text", "-:nnFs", DrawText},  {"draw_picture", "-:nnb", DrawPicture},
    {"debug_show", "-:n", DebugShow},   {"debug_box", "-:e", DebugBox},
    {"debug_point", "-:v", DebugPoint},
};

}  // namespace

const CommandTable kDrawCommands = TableOf(kRows);

}  // namespace korvel
