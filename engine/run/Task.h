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

/// A function that was begun by the engine, by another function, by a key or for an entity.
struct Task {
  enum State : uint8_t { kRunning, kWaiting, kSleeping, kForKey, kForText };

  Task* next;  ///< in the order in which they were begun
  Task* previous;
  Task* caller;  ///< runs on when this one waits or ends
  Function* root;
  const Instruction* pc;
  Value* frame;
  Segment* segment;
  Value* result;  ///< register that gets what it waits for
  int64_t wake;   ///< frame, or microsecond of game time
  KorvelHead* me;
  KorvelHead* you;
  uint32_t depth;
  State state;
  bool may_not_wait;
  bool ends_at_wait;
};

class Scheduler {
 public:
  explicit Scheduler(Arena& arena) : arena_(arena) {}

  /// A new copy of a function, ready to run; missing parameters are 0. Null without memory.
  Task* Begin(Function& function, KorvelHead* me, KorvelHead* you);

  /// Ends a copy that does not run.
  void End(Task& task);

  /// Room for a frame behind the one of `from`; null without memory.
  Segment* Grow(Task& task, uint32_t slots);
  void Shrink(Task& task);

  /// Ends all copies of a function; those that run end at their next wait. Returns how many.
  uint32_t Stop(const Function& function);
  /// Ends all copies that have this entity as me.
  void StopAllOf(const KorvelHead* me);

  Task* first() const { return first_; }
  uint32_t count() const { return count_; }

  /// Walks over the copies; one that ends meanwhile is stepped over.
  void BeginWalk() { cursor_ = first_; }
  Task* NextInWalk() {
    Task* task = cursor_;
    if (task != nullptr) cursor_ = task->next;
    return task;
  }

 private:
  Arena& arena_;
  Task* first_ = nullptr;
  Task* last_ = nullptr;
  Task* cursor_ = nullptr;
  uint32_t count_ = 0;
};

}  // namespace korvel
