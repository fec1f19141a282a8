#include "engine/window/Input.h"

#include "engine/scene/Host.h"

namespace korvel::window {
namespace {

constexpr size_t kMostJoysticks = 4;

struct Key {
  SDL_Keycode key;
  int code;
};

constexpr Key kKeys[] = {
    {SDLK_BACKSPACE, 8},     {SDLK_TAB, 9},         {SDLK_RETURN, 13},
    {SDLK_KP_ENTER, 13},     {SDLK_LSHIFT, 16},     {SDLK_RSHIFT, 16},
    {SDLK_LCTRL, 17},        {SDLK_RCTRL, 17},      {SDLK_LALT, 18},
    {SDLK_RALT, 18},         {SDLK_PAUSE, 19},      {SDLK_CAPSLOCK, 20},
    {SDLK_ESCAPE, 27},       {SDLK_SPACE, 32},      {SDLK_PAGEUP, 33},
    {SDLK_PAGEDOWN, 34},     {SDLK_END, 35},        {SDLK_HOME, 36},
    {SDLK_LEFT, 37},         {SDLK_UP, 38},         {SDLK_RIGHT, 39},
    {SDLK_DOWN, 40},         {SDLK_INSERT, 45},     {SDLK_DELETE, 46},
    {SDLK_KP_MULTIPLY, 106}, {SDLK_KP_PLUS, 107},   {SDLK_KP_MINUS, 109},
    {SDLK_KP_PERIOD, 110},   {SDLK_KP_DIVIDE, 111}, {SDLK_NUMLOCKCLEAR, 144},
    {SDLK_SCROLLLOCK, 145},  {SDLK_SEMICOLON, 186}, {SDLK_EQUALS, 187},
    {SDLK_PLUS, 187},        {SDLK_COMMA, 188},     {SDLK_MINUS, 189},
    {SDLK_PERIOD, 190},      {SDLK_SLASH, 191},     {SDLK_BACKQUOTE, 192},
    {SDLK_LEFTBRACKET, 219}, {SDLK_BACKSLASH, 220}, {SDLK_RIGHTBRACKET, 221},
    {SDLK_QUOTE, 222},
};

// What code page 1252 has at 0x80 to 0x9f.
constexpr uint32_t kUpper[32] = {0x20ac, 0,      0x201a, 0x0192, 0x201e, 0x2026, 0x2020, 0x2021,
                                 0x02c6, 0x2030, 0x0160, 0x2039, 0x0152, 0,      0x017d, 0,
                                 0,      0x2018, 0x2019, 0x201c, 0x201d, 0x2022, 0x2013, 0x2014,
                                 0x02dc, 0x2122, 0x0161, 0x203a, 0x0153, 0,      0x017e, 0x0178};

int ButtonOf(uint8_t button) {
  return button == SDL_BUTTON_LEFT ? 1 : button == SDL_BUTTON_RIGHT ? 2 : button == SDL_BUTTON_MIDDLE ? 3 : 0;
}

}  // namespace

int KeyCode(SDL_Keycode key) {
  const auto from = [key](SDL_Keycode first, SDL_Keycode last, int code) {
    return key >= first && key <= last ? key - first + code : 0;
  };
  if (const int code = from(SDLK_0, SDLK_9, '0')) return code;
  if (const int code = from(SDLK_a, SDLK_z, 'A')) return code;
  if (const int code = from(SDLK_F1, SDLK_F12, 112)) return code;
  if (const int code = from(SDLK_KP_1, SDLK_KP_9, 97)) return code;
  if (const int code = from(SDLK_KP_0, SDLK_KP_0, 96)) return code;
  for (const Key& known : kKeys) {
    if (known.key == key) return known.code;
  }
  return 0;
}

std::vector<int> Characters(const char* text) {
  std::vector<int> characters;
  for (const auto* at = reinterpret_cast<const uint8_t*>(text); *at != 0;) {
    const int more = *at < 0x80 ? 0 : *at < 0xc0 ? -1 : *at < 0xe0 ? 1 : *at < 0xf0 ? 2 : 3;
    uint32_t code = more <= 0 ? *at : *at & (0x3fu >> more);
    ++at;
    for (int i = 0; i < more && (*at & 0xc0) == 0x80; ++i) code = code << 6 | (*at++ & 0x3fu);
    if (more < 0) continue;
    if ((code >= 32 && code < 127) || (code >= 0xa0 && code < 0x100)) {
      characters.push_back(static_cast<int>(code));
      continue;
    }
    for (int i = 0; i < 32; ++i) {
      if (kUpper[i] == code && code != 0) characters.push_back(0x80 + i);
    }
  }
  return characters;
}

Input::Input(wire::Shared* shared, bool joysticks) : shared_(shared), joysticks_on_(joysticks) {
  if (joysticks_on_ && SDL_InitSubSystem(SDL_INIT_JOYSTICK) == 0) {
    OpenJoysticks();
  } else {
    joysticks_on_ = false;
  }
}

Input::~Input() {
  for (SDL_Joystick* joystick : joysticks_) SDL_JoystickClose(joystick);
}

void Input::Put(int kind, int code, int x, int y) {
  wire::PutEvent(shared_, {kind, code, x, y});
}

void Input::PutKey(const SDL_KeyboardEvent& key, bool down) {
  const int code = KeyCode(key.keysym.sym);
  if (code == 0) return;
  down_[code] = down;
  Put(down ? InputEvent::kKeyDown : InputEvent::kKeyUp, code);
}

// A window that loses the keyboard does not hear of keys that go up.
void Input::ReleaseAll() {
  for (int code = 0; code < 256; ++code) {
    if (down_[code]) Put(InputEvent::kKeyUp, code);
    down_[code] = false;
  }
  for (int button = 0; button < 4; ++button) {
    if (buttons_[button]) Put(InputEvent::kButtonUp, button, x_, y_);
    buttons_[button] = false;
  }
}

void Input::Take(const SDL_Event& event) {
  switch (event.type) {
    case SDL_QUIT:
      Put(InputEvent::kClose, 0);
      break;
    case SDL_WINDOWEVENT:
      if (event.window.event == SDL_WINDOWEVENT_FOCUS_LOST) ReleaseAll();
      break;
    case SDL_KEYDOWN:
    case SDL_KEYUP:
      PutKey(event.key, event.type == SDL_KEYDOWN);
      break;
    case SDL_TEXTINPUT:
      for (const int character : Characters(event.text.text)) Put(InputEvent::kCharacter, character);
      break;
    case SDL_MOUSEMOTION:
      Put(InputEvent::kMouseMove, 0, x_ = event.motion.x, y_ = event.motion.y);
      break;
    case SDL_MOUSEBUTTONDOWN:
    case SDL_MOUSEBUTTONUP:
      if (const int button = ButtonOf(event.button.button)) {
        buttons_[button] = event.type == SDL_MOUSEBUTTONDOWN;
        Put(buttons_[button] ? InputEvent::kButtonDown : InputEvent::kButtonUp, button, x_, y_);
      }
      break;
    case SDL_MOUSEWHEEL:
      Put(InputEvent::kWheel,
          event.wheel.direction == SDL_MOUSEWHEEL_FLIPPED ? -event.wheel.y : event.wheel.y);
      break;
    case SDL_JOYDEVICEADDED:
    case SDL_JOYDEVICEREMOVED:
      if (joysticks_on_) OpenJoysticks();
      break;
    case SDL_JOYAXISMOTION:
      Put(InputEvent::kJoyAxis, JoystickOf(event.jaxis.which), event.jaxis.axis,
          event.jaxis.value * 100 / 32767);
      break;
    case SDL_JOYBUTTONDOWN:
    case SDL_JOYBUTTONUP:
      Put(event.type == SDL_JOYBUTTONDOWN ? InputEvent::kJoyDown : InputEvent::kJoyUp,
          JoystickOf(event.jbutton.which), event.jbutton.button);
      break;
    default:
      break;
  }
}

void Input::OpenJoysticks() {
  for (SDL_Joystick* joystick : joysticks_) SDL_JoystickClose(joystick);
  joysticks_.clear();
  for (int i = 0; i < SDL_NumJoysticks() && joysticks_.size() < kMostJoysticks; ++i) {
    if (SDL_Joystick* joystick = SDL_JoystickOpen(i)) joysticks_.push_back(joystick);
  }
  Put(InputEvent::kJoyCount, static_cast<int>(joysticks_.size()));
}

int Input::JoystickOf(SDL_JoystickID id) const {
  for (size_t i = 0; i < joysticks_.size(); ++i) {
    if (SDL_JoystickInstanceID(joysticks_[i]) == id) return static_cast<int>(i);
  }
  return -1;
}

}  // namespace korvel::window
