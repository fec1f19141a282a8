// What the engine and the process that shows its window share: one piece of memory. The engine writes frames
// into it, the window takes the newest whole one and writes what the player does. Neither ever waits for the
// other.
//
// A frame is a head and a row of items, each with its size in front, in the order in which they are drawn.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>

namespace korvel::wire {

inline constexpr uint32_t kMagic = 0x4b364557;
inline constexpr uint32_t kVersion = 1;

/// Pixels of a bitmap in the shared memory: red, green and blue, a byte each. They do not change while a
/// frame that names them may be drawn.
struct Pixels {
  uint64_t offset;  ///< from the begin of the memory, 0 for none
  int32_t width, height;
};

struct Rgb {
  uint8_t red, green, blue, reserved;
};

enum class Kind : uint32_t {
  kVoice,     ///< Voice and a path
  kMusic,     ///< Music and a path
  kView,      ///< View; what follows up to kEndView is seen in it
  kSky,       ///< Sky
  kBody,      ///< Body
  kLevelBox,  ///< Body: only the edges of its box, above all
  kLevelPoint,
  kEndView,
  kPicture,  ///< Picture
  kText,     ///< Text, its face, its characters
  kLine,     ///< Mark, as all below
  kFill,
  kFrame,
};

/// In front of each item. The next one begins `bytes` behind it, a multiple of 8.
struct Item {
  Kind kind;
  uint32_t bytes;  ///< with this head
};

/// A sound that is to be heard. Shares are from 0 to 1, the balance from -1 to 1.
struct Voice {
  int32_t handle;
  uint32_t looped;
  float volume, balance, pitch;
  uint32_t path_bytes;
};

struct Music {
  uint32_t number;  ///< another one begins anew
  float volume;
  uint32_t path_bytes;
  uint32_t reserved;
};

struct View {
  double at[3], angles[3], fov;
  double x, y, width, height, offset_x, offset_y;  ///< pixels
  double alpha, ambient;                           ///< 0 to 1
  double fog, fog_start, fog_end;  ///< the strength from 0 to 1; no fog unless its end is behind its start
  double sun[3];                   ///< the direction to it
  Rgb fog_color, sun_color;
};

struct Sky {
  double pan, tilt;
  Rgb color;
  uint32_t stars;
};

/// A picture that faces the view, or a box when it has no pixels.
struct Body {
  double at[3], angles[3], size[3];  ///< of a picture: width and height first
  double ambient, albedo, alpha;     ///< 0 to 1
  Pixels pixels;
  Rgb color;
  uint32_t reserved;
};

struct Picture {
  double x, y, scale_x, scale_y, alpha;
  Pixels pixels;
};

struct Text {
  double x, y, scale_x, scale_y, alpha;
  int32_t width, height;  ///< of one character, before its scale
  Rgb color;
  uint32_t face_bytes, text_bytes;
  uint32_t reserved;
};

struct Mark {
  int32_t x, y, width, height;  ///< of a line: the other end
  Rgb color;
  uint32_t reserved;
};

struct Frame {
  uint64_t sequence;  ///< from 1, growing
  uint32_t bytes;     ///< of its items
  int32_t width, height;
  Rgb color;
  uint32_t pointer;  ///< the mouse pointer is seen
  float master;      ///< volume of everything, 0 to 1
  char title[256];
};

/// What the player did; the kinds are those of InputEvent.
struct Event {
  int32_t kind, code, x, y;
};

enum State : uint32_t { kStarting, kOpen, kFailed };

inline constexpr uint32_t kFrames = 3;
inline constexpr uint32_t kFrameBytes = 4u << 20;
inline constexpr uint32_t kEvents = 1024;
inline constexpr uint32_t kIndex = 3;  ///< of a frame, in Shared::ready
inline constexpr uint32_t kFresh = 4;  ///< nobody has taken it
inline constexpr uint64_t kPixelBytes = uint64_t{512} << 20;
inline constexpr uint64_t kShotBytes = uint64_t{64} << 20;

/// The begin of the memory. Frames, pixels and the picture for screen_shot follow.
struct Shared {
  uint32_t magic, version;
  int32_t process, thread;  ///< of the engine
  uint64_t thread_begin;    ///< when that thread began, in the system's ticks
  uint64_t session;

  alignas(64) std::atomic<uint32_t> ready;  ///< the frame that is handed over; three take turns
  std::atomic<uint32_t> ended;              ///< the window is to close
  std::atomic<uint64_t> shot_wanted;        ///< a picture of this frame or a later one

  alignas(64) std::atomic<uint64_t> held;  ///< the frame that the window may be drawing
  std::atomic<uint32_t> state;
  std::atomic<int32_t> desktop_width, desktop_height;
  std::atomic<uint64_t> shot_done;
  int32_t shot_width, shot_height;

  alignas(64) std::atomic<uint32_t> events_written;
  alignas(64) std::atomic<uint32_t> events_read;
  Event events[kEvents];
};

inline constexpr uint64_t kFirstFrame = (sizeof(Shared) + 4095) / 4096 * 4096;
inline constexpr uint64_t kFirstPixel = kFirstFrame + uint64_t{kFrames} * kFrameBytes;
inline constexpr uint64_t kFirstShot = kFirstPixel + kPixelBytes;
inline constexpr uint64_t kAllBytes = kFirstShot + kShotBytes;

static_assert(std::atomic<uint64_t>::is_always_lock_free);

inline Frame* FrameAt(Shared* shared, uint32_t index) {
  return reinterpret_cast<Frame*>(reinterpret_cast<char*>(shared) + kFirstFrame +
                                  uint64_t{index} * kFrameBytes);
}

/// The engine's side of the three frames: fills the one that nobody sees, then hands it over.
class Writer {
 public:
  Frame* Begin(Shared* shared) { return FrameAt(shared, back_); }
  void Publish(Shared* shared) {
    back_ = shared->ready.exchange(back_ | kFresh, std::memory_order_acq_rel) & kIndex;
  }

 private:
  uint32_t back_ = 1;
};

/// The window's side: keeps one frame, which the engine does not touch, until it takes a newer one.
class Reader {
 public:
  /// Takes the newest frame. False when there is none that is newer.
  bool Take(Shared* shared) {
    if ((shared->ready.load(std::memory_order_acquire) & kFresh) == 0) return false;
    front_ = shared->ready.exchange(front_, std::memory_order_acq_rel) & kIndex;
    any_ = true;
    shared->held.store(FrameAt(shared, front_)->sequence, std::memory_order_release);
    return true;
  }
  /// The frame that it has, or null.
  const Frame* frame(Shared* shared) const { return any_ ? FrameAt(shared, front_) : nullptr; }

 private:
  uint32_t front_ = 2;
  bool any_ = false;
};

/// One writes, one reads; what does not fit is dropped.
inline bool PutEvent(Shared* shared, const Event& event) {
  const uint32_t at = shared->events_written.load(std::memory_order_relaxed);
  if (at - shared->events_read.load(std::memory_order_acquire) >= kEvents) return false;
  shared->events[at % kEvents] = event;
  shared->events_written.store(at + 1, std::memory_order_release);
  return true;
}

inline bool TakeEvent(Shared* shared, Event* event) {
  const uint32_t at = shared->events_read.load(std::memory_order_relaxed);
  if (at == shared->events_written.load(std::memory_order_acquire)) return false;
  *event = shared->events[at % kEvents];
  shared->events_read.store(at + 1, std::memory_order_release);
  return true;
}

}  // namespace korvel::wire
