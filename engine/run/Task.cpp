#include "engine/run/Task.h"

#include <bit>

namespace korvel {
namespace {

// Slots for the frames of functions that a copy calls: at least these in its first piece.
constexpr uint32_t kSpare = 12;
constexpr uint32_t kLaterSlots = 512;

}  // namespace

Segment* Scheduler::Grow(Task& task, uint32_t slots) {
  const size_t bytes = sizeof(Segment) + sizeof(Value) * (slots + kLaterSlots);
  auto* segment = static_cast<Segment*>(arena_.TryAllocate(bytes));
  if (segment == nullptr) return nullptr;
  segment->previous = task.segment;
  segment->bytes = bytes;
  segment->end = reinterpret_cast<Value*>(reinterpret_cast<char*>(segment) + bytes);
  task.segment = segment;
  return segment;
}

void Scheduler::Shrink(Task& task) {
  Segment* segment = task.segment;
  task.segment = segment->previous;
  arena_.Free(segment, segment->bytes);
}

Task* Scheduler::Begin(Function& function, KorvelHead* me, KorvelHead* you) {
  // The arena gives powers of two, so all of one is used.
  const size_t bytes = std::bit_ceil(sizeof(Task) + sizeof(Value) * (function.registers + kSpare));
  auto* task = static_cast<Task*>(arena_.TryAllocate(bytes));
  if (task == nullptr) return nullptr;
  task->segment = &task->first;
  task->first.bytes = bytes;
  task->first.end = reinterpret_cast<Value*>(reinterpret_cast<char*>(task) + bytes);
  task->root = &function;
  task->frame = task->first.slots;
  task->frame[kSlotFunction] = reinterpret_cast<Value>(&function);
  task->me = me;
  task->you = you;
  task->depth = 1;
  task->slot = order_.size();
  order_.Add({WakeTime::Never(), task});
  ++count_;
  ++function.copies;
  return task;
}

void Scheduler::End(Task& task) {
  order_[task.slot] = {WakeTime::Never(), nullptr};
  --count_;
  --task.root->copies;
  while (task.segment != &task.first) Shrink(task);
  arena_.Free(&task, task.first.bytes);
}

uint32_t Scheduler::Stop(const Function& function) {
  uint32_t stopped = 0;
  ForEach([&](Task& task) {
    if (task.root != &function || task.ends_at_wait) return;
    ++stopped;
    if (task.state == Task::kRunning) {
      task.ends_at_wait = true;
    } else {
      End(task);
    }
  });
  return stopped;
}

void Scheduler::StopAllOf(const KorvelHead* me) {
  ForEach([&](Task& task) {
    if (task.me == me) End(task);
  });
}

void Scheduler::BeginWalk(int64_t frame, int64_t game_time) {
  // The places of those that have ended are filled once they are the larger part.
  if (order_.size() > 2 * count_ + 64) {
    uint32_t kept = 0;
    for (uint32_t i = 0; i < order_.size(); ++i) {
      if (order_[i].task == nullptr) continue;
      order_[kept] = order_[i];
      order_[kept].task->slot = kept;
      ++kept;
    }
    order_.Resize(kept);
  }
  cursor_ = 0;
  frame_ = frame;
  game_time_ = game_time;
}

}  // namespace korvel
