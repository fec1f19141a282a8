// Running copies of functions, and the order in which they go on.
#pragma once

#include "engine/code/Program.h"

namespace korvel {

/// A piece of a stack. Frames never move, so that what points into them stays true.
struct Segment {
  Segment* previous;
  Value* end;
  size_t bytes;
  Value slots[1];
};

/// A function that was begun by the engine, by another function, by a key or for an entity. What going on
/// needs stands first, and the first frame lies behind it in the same piece of memory.
struct Task {
  enum State : uint8_t { kRunning, kWaiting, kSleeping, kForKey, kForText };

  const Instruction* pc;  ///< where it goes on; null when it has not begun
  Value* frame;
  Segment* segment;
  Task* caller;  ///< runs on when this one waits or ends
  KorvelHead* me;
  KorvelHead* you;
  uint32_t slot;  ///< its place in the order
  uint16_t depth;
  uint16_t chain;  ///< how many copies wait for this one to wait or end
  State state;
  bool may_not_wait;
  bool ends_at_wait;
  Function* root;
  Value* result;  ///< register that gets what it waits for
  Segment first;
};

/// When a copy goes on: in a frame, or at a microsecond of game time.
class WakeTime {
 public:
  static constexpr WakeTime Never() { return WakeTime(INT64_MAX); }
  static constexpr WakeTime AtFrame(int64_t frame) { return WakeTime(frame); }
  static constexpr WakeTime AtTime(int64_t microsecond) { return WakeTime(microsecond + kTimes); }

  constexpr bool IsDue(int64_t frame, int64_t game_time) const {
    return value_ < kTimes ? value_ <= frame : value_ - kTimes <= game_time;
  }

 private:
  // Frames stay below this number, times begin with it.
  static constexpr int64_t kTimes = INT64_MAX / 2;
  explicit constexpr WakeTime(int64_t value) : value_(value) {}

  int64_t value_;
};

/// All copies in the order in which they were begun. When each goes on stands in that order itself, so that
/// those that only wait are not touched.
class Scheduler {
 public:
  explicit Scheduler(Arena& arena) : arena_(arena), order_(arena) {}

  /// A new copy of a function, ready to run; missing parameters are 0. Null without memory.
  Task* Begin(Function& function, KorvelHead* me, KorvelHead* you);

  /// Ends a copy that does not run.
  void End(Task& task);

  void SetWake(const Task& task, WakeTime wake) { order_[task.slot].wake = wake; }

  /// Lets a copy wait for a frame.
  void Wait(Task& task, int64_t frame) {
    task.state = Task::kWaiting;
    task.chain = 0;
    SetWake(task, WakeTime::AtFrame(frame));
  }

  /// Room for a frame behind the one of `from`; null without memory.
  Segment* Grow(Task& task, uint32_t slots);
  void Shrink(Task& task);

  /// Ends all copies of a function; those that run end at their next wait. Returns how many.
  uint32_t Stop(const Function& function);
  /// Ends all copies that have this entity as me.
  void StopAllOf(const KorvelHead* me);

  uint32_t count() const { return count_; }

  /// Calls with each copy, in the order in which they were begun. The call may end copies.
  template <class Do>
  void ForEach(Do&& act) {
    for (uint32_t i = 0; i < order_.size(); ++i) {
      if (order_[i].task != nullptr) act(*order_[i].task);
    }
  }

  /// Walks over the copies that are due. One that ends meanwhile is stepped over.
  void BeginWalk(int64_t frame, int64_t game_time);
  /// The next one that is due; null at the end, and when nobody walks.
  Task* NextInWalk() {
    while (cursor_ < order_.size()) {
      const Slot& slot = order_[cursor_++];
      if (!slot.wake.IsDue(frame_, game_time_) || slot.task == nullptr) continue;
      if (cursor_ + kAhead < order_.size()) Prefetch(order_[cursor_ + kAhead].task);
      return slot.task;
    }
    cursor_ = UINT32_MAX;
    return nullptr;
  }

 private:
  struct Slot {
    WakeTime wake;
    Task* task;  ///< null when it has ended
  };
  static constexpr uint32_t kAhead = 6;

  // One that has ended is no address, which fetching ahead does not mind.
  static void Prefetch(const Task* task) {
    const auto address = reinterpret_cast<uintptr_t>(task);
    for (uintptr_t line = 0; line < 3; ++line)
      __builtin_prefetch(reinterpret_cast<const void*>(address + line * 64));
  }

  Arena& arena_;
  List<Slot> order_;
  uint32_t cursor_ = UINT32_MAX;
  uint32_t count_ = 0;
  int64_t frame_ = 0;
  int64_t game_time_ = 0;
};

}  // namespace korvel
