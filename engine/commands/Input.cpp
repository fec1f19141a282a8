// Keys, mouse and game controllers.
#include "engine/run/Input.h"

#include <cstdio>

#include "engine/commands/Arguments.h"
#include "engine/commands/Tables.h"

namespace korvel {
namespace {

Value KeyDown(Session& s, const Value* a) {
  return GiveBool(s.input.key_down(Whole(a[0])));
}
Value KeyPressed(Session& s, const Value* a) {
  return GiveBool(s.input.key_pressed(Whole(a[0])));
}

Value KeyBind(Session& s, const Value* a) {
  s.input.Bind(Whole(a[0]), &As<Function>(a[1]));
  return 0;
}

Value KeyUnbind(Session& s, const Value* a) {
  if (Whole(a[0]) == 0) {
    s.input.UnbindAll();
  } else {
    s.input.Bind(Whole(a[0]), nullptr);
  }
  return 0;
}

Value KeyWait(Session& s, const Value*) {
  s.Suspend(Task::kForKey, 0);
  return 0;
}

struct KeyName {
  int code;
  const char* name;
};

constexpr KeyName kNames[] = {
    {8, "Backspace"}, {9, "Tab"},        {13, "Enter"},     {16, "Shift"},  {17, "Ctrl"},
    {18, "Alt"},      {19, "Pause"},     {20, "Caps Lock"}, {27, "Esc"},    {32, "Space"},
    {33, "Page Up"},  {34, "Page Down"}, {35, "End"},       {36, "Home"},   {37, "Left"},
    {38, "Up"},       {39, "Right"},     {40, "Down"},      {45, "Insert"}, {46, "Delete"},
};

Value KeyNameOf(Session& s, const Value* a) {
  const int code = Whole(a[1]);
  char text[20] = "";
  if ((code >= '0' && code <= '9') || (code >= 'A' && code <= 'Z')) {
    text[0] = static_cast<char>(code);
  } else if (code >= 112 && code <= 123) {
    std::snprintf(text, sizeof text, "F%d", code - 111);
  } else {
    for (const KeyName& key : kNames) {
      if (key.code == code) std::snprintf(text, sizeof text, "%s", key.name);
    }
  }
  s.world.Assign(As<StringObject>(a[0]), text);
  return GiveBool(text[0] != 0);
}

Value InputText(Session& s, const Value* a) {
  if (s.machine.task->may_not_wait) {
    s.Suspend(Task::kForText, 0);
    return 0;
  }
  const auto limit = static_cast<uint32_t>(std::clamp(Whole(a[1]), 0, 4000));
  if (!s.input.BeginText(As<StringObject>(a[0]), limit, s.world)) return 0;
  s.Suspend(Task::kForText, 0);
  return 0;
}

Value InputClear(Session& s, const Value*) {
  s.input.Clear();
  return 0;
}

Value MouseX(Session& s, const Value*) {
  return GiveWhole(s.input.x());
}
Value MouseY(Session& s, const Value*) {
  return GiveWhole(s.input.y());
}
Value MouseButton(Session& s, const Value* a) {
  return GiveBool(s.input.button_down(Whole(a[0])));
}
Value MouseClicked(Session& s, const Value* a) {
  return GiveBool(s.input.button_pressed(Whole(a[0])));
}
Value MouseWheel(Session& s, const Value*) {
  return GiveWhole(s.input.wheel());
}

Value MouseShow(Session& s, const Value* a) {
  s.scene.screen.pointer = Flag(a[0]);
  return 0;
}

Value JoyCount(Session& s, const Value*) {
  return GiveWhole(s.input.joysticks());
}
Value JoyAxis(Session& s, const Value* a) {
  return GiveWhole(s.input.joy_axis(Whole(a[0]), Whole(a[1])));
}
Value JoyButton(Session& s, const Value* a) {
  return GiveBool(s.input.joy_down(Whole(a[0]), Whole(a[1])));
}
Value JoyPressed(Session& s, const Value* a) {
  return GiveBool(s.input.joy_pressed(Whole(a[0]), Whole(a[1])));
}

constexpr Command kRows[] = {
    {"key_down", "n:n", KeyDown},
    {"key_pressed", "n:n", KeyPressed},
    {"key_bind", "-:nf", KeyBind},
    {"key_unbind", "-:n", KeyUnbind},
    {"key_wait", "*n:", KeyWait},
    {"key_name", "n:Sn", KeyNameOf},
    {"input_text", "*n:Sn", InputText},
    {"input_clear", "-:", InputClear},
    {"mouse_x", "n:", MouseX},
    {"mouse_y", "n:", MouseY},
    {"mouse_button", "n:n", MouseButton},
    {"mouse_clicked", "n:n", MouseClicked},
    {"mouse_wheel", "n:", MouseWheel},
    {"mouse_show", "-:n", MouseShow},
    {"joy_count", "n:", JoyCount},
    {"joy_axis", "n:nn", JoyAxis},
    {"joy_button", "n:nn", JoyButton},
    {"joy_pressed", "n:nn", JoyPressed},
};

}  // namespace

const CommandTable kInputCommands = TableOf(kRows);

}  // namespace korvel
