// Keys and mouse as the script asks for them.
#pragma once

#include "engine/code/Program.h"
#include "engine/objects/Objects.h"
#include "engine/run/Task.h"
#include "engine/scene/Host.h"

namespace korvel {

class World;

class Input {
 public:
  static constexpr int kKeys = 256;
  static constexpr int kButtons = 4;
  static constexpr int kJoysticks = 4;
  static constexpr int kJoyAxes = 16;
  static constexpr int kJoyButtons = 64;

  /// Forgets what went down in the last frame.
  void BeginFrame();
  /// Takes what the player did. False for a close of the window.
  bool Take(const InputEvent& event, World& world);

  bool key_down(int code) const { return code >= 0 && code < kKeys && down_[code]; }
  bool key_pressed(int code) const { return code >= 0 && code < kKeys && pressed_[code]; }
  bool button_down(int button) const { return button >= 0 && button < kButtons && buttons_[button]; }
  bool button_pressed(int button) const { return button >= 0 && button < kButtons && clicked_[button]; }
  int x() const { return x_; }
  int y() const { return y_; }
  int wheel() const { return wheel_; }
  int joysticks() const { return joysticks_; }
  int joy_axis(int device, int axis) const {
    return device >= 0 && device < joysticks_ && axis >= 0 && axis < kJoyAxes ? axes_[device][axis] : 0;
  }
  bool joy_down(int device, int button) const {
    return HasButton(device, button) && joy_down_[device][button];
  }
  bool joy_pressed(int device, int button) const {
    return HasButton(device, button) && joy_pressed_[device][button];
  }
  void Clear();

  /// Keys that went down in this frame, in their order.
  int pressed_count() const { return queued_; }
  int pressed(int i) const { return queue_[i]; }

  void Bind(int code, Function* function) {
    if (code >= 0 && code < kKeys) bound_[code] = function;
  }
  void UnbindAll();
  Function* bound(int code) const { return code >= 0 && code < kKeys ? bound_[code] : nullptr; }

  /// Typing into a string: begins it, and false when somebody types already.
  bool BeginText(StringObject& target, uint32_t limit, World& world);
  bool typing() const { return target_ != nullptr; }
  /// 1 after Enter, 0 after Esc, -1 while it goes on; the task is to be woken once.
  int TakeTextResult();
  void EndText() { target_ = nullptr; }
  const StringObject* target() const { return target_; }

 private:
  bool HasButton(int device, int button) const {
    return device >= 0 && device < joysticks_ && button >= 0 && button < kJoyButtons;
  }
  void Type(const InputEvent& event, World& world);
  void TakeJoystick(const InputEvent& event);

  bool down_[kKeys] = {};
  bool pressed_[kKeys] = {};
  bool buttons_[kButtons] = {};
  bool clicked_[kButtons] = {};
  Function* bound_[kKeys] = {};
  int joysticks_ = 0;
  int axes_[kJoysticks][kJoyAxes] = {};
  bool joy_down_[kJoysticks][kJoyButtons] = {};
  bool joy_pressed_[kJoysticks][kJoyButtons] = {};
  int queue_[64] = {};
  int queued_ = 0;
  int x_ = 0, y_ = 0, wheel_ = 0;
  StringObject* target_ = nullptr;
  uint32_t limit_ = 0;
  int text_result_ = -1;
  uint32_t before_length_ = 0;
  char before_[4001] = {};
};

}  // namespace korvel
