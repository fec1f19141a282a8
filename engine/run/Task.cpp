#include "engine/run/Task.h"

namespace korvel {
namespace {

constexpr uint32_t kSpare = 16;
constexpr uint32_t kLaterSlots = 512;

}  // namespace

Segment* Scheduler::Grow(Task& task, uint32_t slots) {
  const size_t bytes =
      sizeof(Segment) + sizeof(Value) * (slots + (task.segment == nullptr ? kSpare : kLaterSlots));
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
  auto* task = static_cast<Task*>(arena_.TryAllocate(sizeof(Task)));
  if (task == nullptr) return nullptr;
  if (Grow(*task, function.registers) == nullptr) {
    arena_.Free(task, sizeof(Task));
    return nullptr;
  }
  task->root = &function;
  task->frame = task->segment->slots;
  task->frame[kSlotFunction] = reinterpret_cast<Value>(&function);
  task->me = me;
  task->you = you;
  task->depth = 1;
  task->previous = last_;
  (last_ != nullptr ? last_->next : first_) = task;
  last_ = task;
  ++count_;
  ++function.copies;
  return task;
}

void Scheduler::End(Task& task) {
  if (cursor_ == &task) cursor_ = task.next;
  (task.previous != nullptr ? task.previous->next : first_) = task.next;
  (task.next != nullptr ? task.next->previous : last_) = task.previous;
  --count_;
  --task.root->copies;
  while (task.segment != nullptr) Shrink(task);
  arena_.Free(&task, sizeof(Task));
}

uint32_t Scheduler::Stop(const Function& function) {
  uint32_t stopped = 0;
  for (Task* task = first_; task != nullptr;) {
    Task* next = task->next;
    if (task->root == &function && !task->ends_at_wait) {
      ++stopped;
      if (task->state == Task::kRunning) {
        task->ends_at_wait = true;
      } else {
        End(*task);
      }
    }
    task = next;
  }
  return stopped;
}

void Scheduler::StopAllOf(const KorvelHead* me) {
  for (Task* task = first_; task != nullptr;) {
    Task* next = task->next;
    if (task->me == me) End(*task);
    task = next;
  }
}

}  // namespace korvel
