#include "engine/run/Input.h"

#include "engine/objects/World.h"

namespace korvel {
namespace {

constexpr int kBackspace = 8;
constexpr int kEnter = 13;
constexpr int kEscape = 27;

}  // namespace

void Input::BeginFrame() {
  std::memset(pressed_, 0, sizeof pressed_);
  std::memset(clicked_, 0, sizeof clicked_);
  std::memset(joy_pressed_, 0, sizeof joy_pressed_);
  queued_ = 0;
  wheel_ = 0;
}

void Input::Clear() {
  std::memset(pressed_, 0, sizeof pressed_);
  std::memset(clicked_, 0, sizeof clicked_);
}

void Input::UnbindAll() {
  for (Function*& function : bound_) function = nullptr;
}

bool Input::Take(const InputEvent& event, World& world) {
  const bool is_key = event.code > 0 && event.code < kKeys;
  switch (event.kind) {
    case InputEvent::kClose:
      return false;
    case InputEvent::kKeyDown:
      if (!is_key || down_[event.code]) {
        if (typing()) Type(event, world);
        break;
      }
      down_[event.code] = true;
      if (typing()) {
        Type(event, world);
      } else {
        pressed_[event.code] = true;
        if (queued_ < 64) queue_[queued_++] = event.code;
      }
      break;
    case InputEvent::kKeyUp:
      if (is_key) down_[event.code] = false;
      break;
    case InputEvent::kCharacter:
      if (typing()) Type(event, world);
      break;
    case InputEvent::kMouseMove:
      x_ = event.x;
      y_ = event.y;
      break;
    case InputEvent::kButtonDown:
    case InputEvent::kButtonUp:
      if (event.code < 0 || event.code >= kButtons) break;
      buttons_[event.code] = event.kind == InputEvent::kButtonDown;
      if (buttons_[event.code]) clicked_[event.code] = true;
      break;
    case InputEvent::kWheel:
      wheel_ += event.code;
      break;
    case InputEvent::kJoyCount:
    case InputEvent::kJoyAxis:
    case InputEvent::kJoyDown:
    case InputEvent::kJoyUp:
      TakeJoystick(event);
      break;
  }
  return true;
}

void Input::TakeJoystick(const InputEvent& event) {
  if (event.kind == InputEvent::kJoyCount) {
    joysticks_ = event.code < 0 ? 0 : event.code > kJoysticks ? kJoysticks : event.code;
    std::memset(axes_, 0, sizeof axes_);
    std::memset(joy_down_, 0, sizeof joy_down_);
    return;
  }
  if (event.code < 0 || event.code >= kJoysticks || event.x < 0) return;
  if (event.kind == InputEvent::kJoyAxis) {
    if (event.x < kJoyAxes)
      axes_[event.code][event.x] = event.y < -100 ? -100 : event.y > 100 ? 100 : event.y;
  } else if (event.x < kJoyButtons) {
    const bool down = event.kind == InputEvent::kJoyDown;
    if (down && !joy_down_[event.code][event.x]) joy_pressed_[event.code][event.x] = true;
    joy_down_[event.code][event.x] = down;
  }
}

bool Input::BeginText(StringObject& target, uint32_t limit, World& world) {
  if (typing()) return false;
  std::memcpy(before_, target.text, target.length);
  before_length_ = target.length;
  target_ = &target;
  limit_ = limit;
  text_result_ = -1;
  if (target.length > limit) world.Assign(target, target.view().substr(0, limit));
  return true;
}

void Input::Type(const InputEvent& event, World& world) {
  if (text_result_ >= 0) return;
  if (event.kind == InputEvent::kCharacter) {
    const char character = static_cast<char>(event.code);
    if (event.code >= 32 && event.code < 256 && event.code != 127 && target_->length < limit_) {
      world.Append(*target_, {&character, 1});
    }
    return;
  }
  if (event.code == kBackspace && target_->length > 0) {
    world.Assign(*target_, target_->view().substr(0, target_->length - 1));
  } else if (event.code == kEnter) {
    text_result_ = 1;
  } else if (event.code == kEscape) {
    world.Assign(*target_, {before_, before_length_});
    text_result_ = 0;
  }
}

int Input::TakeTextResult() {
  const int result = text_result_;
  if (result >= 0) {
    target_ = nullptr;
    text_result_ = -1;
  }
  return result;
}

}  // namespace korvel
