#include "engine/run/CallStack.h"

namespace korvel {

CallStack::CallStack(const Program& program, const Task& task, bool stopped)
    : program_(program), frame_(task.frame), at_(task.pc) {
  if (at_ == nullptr) {
    at_ = program.code.data() + task.root->entry;
  } else if (!stopped) {
    --at_;
  }
}

bool CallStack::Next(Call* call) {
  if (frame_ == nullptr) return false;
  const auto* function = reinterpret_cast<const Function*>(frame_[kSlotFunction]);
  const auto pc = static_cast<uint32_t>(at_ - program_.code.data());
  *call = {function, frame_, {function->place.file, program_.LineOf(pc)}};
  const auto* back = reinterpret_cast<const Instruction*>(frame_[kSlotReturn]);
  frame_ = back != nullptr ? reinterpret_cast<Value*>(frame_[kSlotFrame]) : nullptr;
  at_ = back != nullptr ? back - 1 : nullptr;
  return true;
}

bool HoldsNumber(Value value) {
  const auto upper = static_cast<int32_t>(value >> 32);
  return upper == 0 || upper == -1;
}

void* FindValue(const Call& call, const Local& local) {
  Value* value = call.frame + local.reg;
  if (HoldsNumber(*value)) return value;
  if (!IsObject(*value)) return nullptr;
  auto* object = reinterpret_cast<KorvelHead*>(*value);
  return object->kind == kTypeArray ? static_cast<void*>(reinterpret_cast<Array*>(object)->cells) : object;
}

}  // namespace korvel
