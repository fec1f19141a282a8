#include "engine/run/Debugger.h"

namespace korvel {
namespace {

void SetOp(Instruction& instruction, Op op) {
  __atomic_store_n(reinterpret_cast<uint16_t*>(&instruction), static_cast<uint16_t>(op), __ATOMIC_RELAXED);
}

bool Compares(Op op, const Value* frame, const Program& program, const Instruction& at, Value* result) {
  if (op < Op::kJumpLess || op > Op::kJumpUnequalKAnyLoop) return false;
  const auto number = static_cast<uint16_t>(static_cast<uint16_t>(op) - static_cast<uint16_t>(Op::kJumpLess));
  const Value a = frame[at.a];
  const Value b = (number & kWithConstant) != 0 ? program.constants[at.b] : frame[at.b];
  const bool holds[] = {a<b, a <= b, a> b, a >= b, a == b, a != b};
  *result = holds[number / 8] ? kOne : 0;
  return true;
}

}  // namespace

void Debugger::Begin() {
  const uint32_t count = program_.code.size();
  clean_ = static_cast<Op*>(arena_.Allocate(sizeof(Op) * (count + 1)));
  breaks_ = static_cast<uint8_t*>(arena_.Allocate(count + 1));
  for (uint32_t i = 0; i < count; ++i) clean_[i] = program_.code[i].op;
  mode_ = program_.cells + program_.debug_mode->cell;
}

void Debugger::Patch() {
  for (uint32_t i = 0; i < program_.code.size(); ++i) {
    const bool trap = stepping_ || (seen_ != kIgnore && __atomic_load_n(&breaks_[i], __ATOMIC_RELAXED) != 0);
    SetOp(program_.code[i], trap ? Op::kTrap : clean_[i]);
  }
}

bool Debugger::SetBreakpoint(std::string_view file, uint32_t line, bool set) {
  uint32_t best_line = UINT32_MAX;
  for (const Function* function : program_.functions) {
    if (!SameWord(function->place.file->name, file)) continue;
    for (uint32_t pc = function->entry; pc < function->end; ++pc) {
      const uint32_t at = program_.LineOf(pc);
      if ((program_.notes[pc] & kBeginsLine) != 0 && at >= line && at < best_line) best_line = at;
    }
  }
  if (best_line == UINT32_MAX) return false;
  for (const Function* function : program_.functions) {
    if (!SameWord(function->place.file->name, file)) continue;
    for (uint32_t pc = function->entry; pc < function->end; ++pc) {
      if ((program_.notes[pc] & kBeginsLine) == 0 || program_.LineOf(pc) != best_line) continue;
      __atomic_store_n(&breaks_[pc], set ? 1 : 0, __ATOMIC_RELAXED);
    }
  }
  __atomic_store_n(&changed_, true, __ATOMIC_RELEASE);
  if (set) {
    // The game may be in a loop that no frame ends, so the engine thread is not waited for.
    for (uint32_t pc = 0; pc < program_.code.size(); ++pc) {
      if (__atomic_load_n(&breaks_[pc], __ATOMIC_RELAXED) != 0) SetOp(program_.code[pc], Op::kTrap);
    }
  }
  return true;
}

void Debugger::Refresh() {
  if (__atomic_exchange_n(&changed_, false, __ATOMIC_ACQUIRE)) Patch();
}

void Debugger::Attend(Task& task) {
  seen_ = WantedMode();
  const bool stepping = seen_ == kBreak || seen_ == kStep;
  if (seen_ == kStep) {
    step_task_ = &task;
    step_depth_ = task.depth;
  }
  stepping_ = stepping;
  result_task_ = nullptr;
  Patch();
}

void Debugger::BreakNext(Task& task) {
  if (WantedMode() == kIgnore) return;
  __atomic_store_n(mode_, Fixed{kBreak}, __ATOMIC_RELAXED);
  Attend(task);
}

void Debugger::SetResult(Value value) {
  const Fixed number = IsNumber(value) ? static_cast<Fixed>(value) : IsNull(value) ? 0 : kOne;
  __atomic_store_n(program_.cells + program_.debug_result->cell, number, __ATOMIC_RELAXED);
}

// The last value that was assigned or tested: of the instruction before when it gives one in its register, of
// this one when it takes one from there.
void Debugger::NoteResult(const Task& task, const Instruction* pc, const Value* frame) {
  if (result_task_ == &task && result_ != nullptr) SetResult(*result_);
  const auto at = static_cast<uint32_t>(pc - program_.code.data());
  const uint32_t notes = program_.notes[at];
  result_task_ = &task;
  result_ = (notes & kGivesResult) != 0 ? &frame[pc->a] : nullptr;
  Value tested = 0;
  if ((notes & kStoresResult) != 0) {
    SetResult(frame[pc->a]);
  } else if (Compares(clean_[at], frame, program_, *pc, &tested)) {
    SetResult((notes & kJumpsUnless) != 0 ? kOne - tested : tested);
  }
}

bool Debugger::Decide(const Task& task, uint32_t pc) const {
  if ((program_.notes[pc] & kBeginsLine) == 0 || seen_ == kIgnore) return false;
  if (seen_ == kBreak) return true;
  if (seen_ == kStep && (step_task_ == nullptr || (step_task_ == &task && task.depth <= step_depth_)))
    return true;
  return __atomic_load_n(&breaks_[pc], __ATOMIC_RELAXED) != 0;
}

bool Debugger::AtTrap(Task& task, const Instruction* pc, const Value* frame) {
  if (WantedMode() != seen_) Attend(task);
  const auto at = static_cast<uint32_t>(pc - program_.code.data());
  const bool stops = Decide(task, at);
  if (stepping_ && !stops) {
    NoteResult(task, pc, frame);
  }
  if (!stops) return false;
  if (result_task_ == &task && result_ != nullptr) SetResult(*result_);
  result_ = nullptr;
  const Function* function = program_.FunctionAt(at);
  file_ = function->place.file;
  __atomic_store_n(&line_, program_.LineOf(at), __ATOMIC_RELAXED);
  seen_ = kBreak;
  __atomic_store_n(mode_, Fixed{kBreak}, __ATOMIC_RELAXED);
  stopped_task_ = &task;
  __atomic_store_n(&stopped_, true, __ATOMIC_RELEASE);
  return true;
}

bool Debugger::MayGoOn() {
  const Fixed wanted = WantedMode();
  if (wanted == kBreak) return false;
  seen_ = wanted;
  stepping_ = wanted == kStep;
  step_task_ = stopped_task_;
  step_depth_ = stopped_task_ != nullptr ? stopped_task_->depth : 0;
  result_task_ = nullptr;
  __atomic_store_n(&stopped_, false, __ATOMIC_RELEASE);
  stopped_task_ = nullptr;
  Patch();
  return true;
}

Place Debugger::position() const {
  const Fixed mode = WantedMode();
  const uint32_t line = __atomic_load_n(&line_, __ATOMIC_RELAXED);
  if (line == 0 || mode == kRun || mode == kIgnore) return {};
  return {file_, line};
}

}  // namespace korvel
