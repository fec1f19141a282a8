// What a game needs of the machine that it runs on: time, input, a place for its lines, and a screen. The
// engine calls it on its own thread only.
#pragma once

#include <cstdint>
#include <string_view>

namespace korvel {

class Session;

/// One thing that the player did.
struct InputEvent {
  enum Kind : uint8_t {
    kKeyDown,
    kKeyUp,
    kCharacter,
    kMouseMove,
    kButtonDown,
    kButtonUp,
    kWheel,
    kClose,
    kJoyCount,  ///< there are `code` game controllers now
    kJoyAxis,   ///< of controller `code`, axis `x` is at `y`, from -100 to 100
    kJoyDown,   ///< of controller `code`, button `x`
    kJoyUp,
  };
  Kind kind;
  int32_t code;  ///< key, character, button or steps of the wheel
  int32_t x, y;  ///< of the pointer, in pixels
};

/// The time of day.
struct ClockTime {
  int hour, minute, second;
};

struct ScreenSize {
  int width, height;
};

/// The pixels of a frame, 0xRRGGBB each, row by row from the top.
struct Picture {
  const uint32_t* pixels = nullptr;
  int width = 0, height = 0;
};

class Host {
 public:
  /// Microseconds of real time from any begin.
  virtual int64_t Now() = 0;
  /// Returns when that time has come.
  virtual void SleepUntil(int64_t time) = 0;
  virtual ClockTime Clock() = 0;

  /// What the player did since the last call, one by one; false when there is nothing more.
  virtual bool NextEvent(InputEvent* event) = 0;

  /// Takes a line of print and its like, without a line end; a zero byte stands behind it.
  virtual void Line(std::string_view line) = 0;

  /// Shows the frame. `stopped`: the debugger stands, nothing has changed.
  virtual void Present(Session& session, bool stopped) = 0;

  /// The largest window that the desktop can show.
  virtual ScreenSize Desktop() { return {INT32_MAX, INT32_MAX}; }

  /// What was presented last, or nothing when nobody draws it.
  virtual Picture TakePicture(Session&) { return {}; }

 protected:
  ~Host() = default;
};

/// The host of a machine without a display: real time, no input, lines to a callback or to standard output.
class HeadlessHost : public Host {
 public:
  int64_t Now() override;
  void SleepUntil(int64_t time) override;
  ClockTime Clock() override;
  bool NextEvent(InputEvent*) override { return false; }
  void Line(std::string_view line) override;
  void Present(Session&, bool) override {}

  void SetOutput(void (*take)(const char*)) { take_ = take; }

 private:
  void (*volatile take_)(const char*) = nullptr;
};

}  // namespace korvel
