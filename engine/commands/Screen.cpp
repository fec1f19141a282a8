// The game's window, skies and the sun.
#include "engine/run/Screen.h"

#include "engine/commands/Arguments.h"
#include "engine/commands/Tables.h"

namespace korvel {
namespace {

Value ScreenWidth(Session& s, const Value*) {
  FollowScreen(s);
  return GiveWhole(s.scene.screen.width);
}
Value ScreenHeight(Session& s, const Value*) {
  FollowScreen(s);
  return GiveWhole(s.scene.screen.height);
}

Value ScreenSize(Session& s, const Value* a) {
  FollowScreen(s);
  return GiveBool(SetScreenSize(s, Whole(a[0]), Whole(a[1])));
}

Value ScreenColor(Session& s, const Value* a) {
  Screen& screen = s.scene.screen;
  Fixed parts[3];
  for (int i = 0; i < 3; ++i) parts[i] = std::clamp(Number(a[i]), 0, 255 * kOne);
  if (screen.window != nullptr) {
    WriteCell(&screen.window->red, parts[0]);
    WriteCell(&screen.window->green, parts[1]);
    WriteCell(&screen.window->blue, parts[2]);
  }
  const auto byte = [&parts](int i) { return static_cast<uint8_t>(Floor(parts[i])); };
  screen.color = {byte(0), byte(1), byte(2)};
  return 0;
}

Value ScreenShot(Session& s, const Value* a) {
  const int32_t handle = s.folder.Open(TextOf(a[0]), GameFolder::Access::kWrite);
  if (handle == 0) return 0;
  if (s.scene.shot != 0) s.folder.Close(s.scene.shot);
  s.scene.shot = handle;
  return kOne;
}

Value WinTitle(Session& s, const Value* a) {
  Screen& screen = s.scene.screen;
  const std::string_view text = TextOf(a[0]).substr(0, sizeof screen.title - 1);
  std::copy(text.begin(), text.end(), screen.title);
  screen.title[text.size()] = 0;
  return 0;
}

Value WinShow(Session& s, const Value* a) {
  FollowScreen(s);
  ShowWindow(s, As<Window>(a[0]));
  return 0;
}

Value SkyShow(Session&, const Value* a) {
  auto& head = As<Sky>(a[0]).head;
  head.flags = static_cast<uint8_t>(Flag(a[1]) ? head.flags | kShown : head.flags & ~kShown);
  return 0;
}

Value SkyVisible(Session&, const Value* a) {
  return GiveBool(IsShown(As<Sky>(a[0]).head));
}

Value SkyTurn(Session&, const Value* a) {
  auto& sky = As<Sky>(a[0]);
  WriteCell(&sky.pan, Number(a[1]));
  WriteCell(&sky.tilt, Number(a[2]));
  return 0;
}

Value SunSet(Session& s, const Value* a) {
  const auto byte = [a](int i) { return static_cast<uint8_t>(std::clamp(Whole(a[i]), 0, 255)); };
  s.scene.sun = {Real(a[0]), Real(a[1]), {byte(2), byte(3), byte(4)}};
  return 0;
}

constexpr Command kRows[] = {
    {"screen_width", "n:", ScreenWidth}, {"screen_height", "n:", ScreenHeight},
    {"screen_size", "n:nn", ScreenSize}, {"screen_color", "-:nnn", ScreenColor},
    {"screen_shot", "n:s", ScreenShot},  {"win_title", "-:s", WinTitle},
    {"win_show", "-:w", WinShow},        {"sky_show", "-:kn", SkyShow},
    {"sky_visible", "n:k", SkyVisible},  {"sky_turn", "-:knn", SkyTurn},
    {"sun_set", "-:nnnnn", SunSet},
};

}  // namespace

const CommandTable kScreenCommands = TableOf(kRows);

}  // namespace korvel
