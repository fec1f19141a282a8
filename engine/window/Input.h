// What the player does, in the words of the engine.
#pragma once

#include <SDL.h>

#include <vector>

#include "engine/scene/Wire.h"

namespace korvel::window {

/// The code that scripts know a key by, 0 for keys that they do not know.
int KeyCode(SDL_Keycode key);

/// Characters of code page 1252 in a text of UTF-8; others are left out.
std::vector<int> Characters(const char* text);

class Input {
 public:
  Input(wire::Shared* shared, bool joysticks);
  ~Input();
  Input(const Input&) = delete;
  Input& operator=(const Input&) = delete;

  void Take(const SDL_Event& event);

 private:
  void Put(int kind, int code, int x = 0, int y = 0);
  void PutKey(const SDL_KeyboardEvent& key, bool down);
  void ReleaseAll();
  void OpenJoysticks();
  int JoystickOf(SDL_JoystickID id) const;

  wire::Shared* shared_;
  bool joysticks_on_;
  bool down_[256] = {};
  bool buttons_[4] = {};
  int x_ = 0, y_ = 0;
  std::vector<SDL_Joystick*> joysticks_;
};

}  // namespace korvel::window
