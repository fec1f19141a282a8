// Texts on the screen.
#include "engine/commands/Arguments.h"
#include "engine/commands/Tables.h"

namespace korvel {

namespace {

// A string with line ends takes several lines of the screen.
uint32_t WidestLine(std::string_view text) {
  size_t widest = 0;
  for (;;) {
    const size_t end = text.find('\n');
    widest = std::max(widest, std::min(end, text.size()));
    if (end == std::string_view::npos) return static_cast<uint32_t>(widest);
    text.remove_prefix(end + 1);
  }
}

Value TxtCreate(Session& s, const Value* a) {
  const auto lines = static_cast<uint32_t>(std::clamp(Whole(a[0]), 1, 200));
  auto* text = s.world.Make<Text>(kKorvelText);
  if (text == nullptr || !s.world.MakeLines(*text, lines)) {
    s.Fault("There is no more memory for another text.");
    return kNull;
  }
  WriteCell(&text->lines, FromInt(lines));
  WriteCell(&text->layer, Number(a[1]));
  return ToValue(text);
}

Value TxtRemove(Session& s, const Value* a) {
  s.world.Remove(&As<Text>(a[0]).head);
  return 0;
}

Value TxtShow(Session&, const Value* a) {
  auto& head = As<Text>(a[0]).head;
  head.flags = static_cast<uint8_t>(Flag(a[1]) ? head.flags | kShown : head.flags & ~kShown);
  return 0;
}

Value TxtVisible(Session&, const Value* a) {
  return GiveBool(IsShown(As<Text>(a[0]).head));
}

Value TxtMove(Session&, const Value* a) {
  auto& text = As<Text>(a[0]);
  WriteCell(&text.pos_x, Number(a[1]));
  WriteCell(&text.pos_y, Number(a[2]));
  return 0;
}

Value TxtSetLine(Session& s, const Value* a) {
  auto& text = As<Text>(a[0]);
  const int32_t line = Whole(a[1]);
  if (line < 0 || line >= Floor(text.lines) || static_cast<uint32_t>(line) >= text.line_capacity) return 0;
  s.world.Assign(*static_cast<StringObject*>(text.strings[line]), TextOf(a[2]));
  return kOne;
}

Value TxtClear(Session& s, const Value* a) {
  auto& text = As<Text>(a[0]);
  for (uint32_t i = 0; i < text.line_capacity; ++i)
    s.world.Assign(*static_cast<StringObject*>(text.strings[i]), {});
  return 0;
}

Value TxtColor(Session&, const Value* a) {
  auto& text = As<Text>(a[0]);
  Fixed* const parts[] = {&text.red, &text.green, &text.blue};
  for (int i = 0; i < 3; ++i) WriteCell(parts[i], std::clamp(Number(a[i + 1]), 0, 255 * kOne));
  return 0;
}

Value TxtFont(Session&, const Value* a) {
  As<Text>(a[0]).face = ToObject<Font>(a[1]);
  return 0;
}

Value TxtWidth(Session&, const Value* a) {
  const auto& text = As<Text>(a[0]);
  uint32_t longest = 0;
  const auto lines = static_cast<uint32_t>(Floor(text.lines));
  for (uint32_t i = 0; i < lines && i < text.line_capacity; ++i)
    longest = std::max(longest, WidestLine(static_cast<StringObject*>(text.strings[i])->view()));
  const double width = text.face != nullptr ? text.face->width : kUsualFontWidth;
  return GiveReal(longest * width * ToDouble(text.scale_x));
}

constexpr Command kRows[] = {
    {"txt_create", "t:nn", TxtCreate}, {"txt_remove", "-:t", TxtRemove},
    {"txt_show", "-:tn", TxtShow},     {"txt_visible", "n:t", TxtVisible},
    {"txt_move", "-:tnn", TxtMove},    {"txt_set_line", "n:tns", TxtSetLine},
    {"txt_clear", "-:t", TxtClear},    {"txt_color", "-:tnnn", TxtColor},
    {"txt_font", "-:tF", TxtFont},     {"txt_width", "n:t", TxtWidth},
};

}  // namespace

const CommandTable kTextCommands = TableOf(kRows);

}  // namespace korvel
