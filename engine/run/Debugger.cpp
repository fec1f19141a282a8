#include "engine/run/Debugger.h"

namespace korvel {
namespace {

void SetOp(Instruction& instruction, Op op) {
  __atomic_store_n(reinterpret_cast<uint16_t*>(&instruction), static_cast<uint16_t>(op), __ATOMIC_RELAXED);
}

bool Compares(Op op, const Value* frame, const Program& program, const Instruction& at, Value* result) {
  if (!IsCompareJump(op)) return false;
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
  const Instruction* code = program_.code.data();
  plain_ = static_cast<Op*>(arena_.Allocate(sizeof(Op) * (count + 1)));
  joined_ = static_cast<Op*>(arena_.Allocate(sizeof(Op) * (count + 1)));
  lengths_ = static_cast<uint8_t*>(arena_.Allocate(count + 1));
  marks_ = static_cast<uint8_t*>(arena_.Allocate(count + 1));
  returns_ = static_cast<uint8_t*>(arena_.Allocate(program_.functions.size() + 1));
  for (uint32_t i = 0; i < count; ++i) {
    uint32_t length = 1;
    plain_[i] = code[i].op;
    joined_[i] = JoinedAt(code + i, code + count, &length);
    lengths_[i] = static_cast<uint8_t>(length);
  }
  for (uint32_t i = 0; i < count; ++i) {
    if (TargetOf(i) >= 0) marks_[TargetOf(i)] |= kTarget;
  }
  mode_ = program_.cells + program_.debug_mode->cell;
  Patch();
}

bool Debugger::Traps(uint32_t pc) const {
  return stepping_ || (seen_ != kIgnore && (MarksAt(pc) & kTraps) != 0);
}

// A joined instruction would step over the traps on those that it stands for. What another thread changes
// meanwhile is seen at the end, or patched by it afterwards.
void Debugger::Patch() {
  do {
    for (uint32_t i = 0; i < program_.code.size(); ++i) {
      Op op = joined_[i];
      for (uint32_t k = 1; k < lengths_[i]; ++k) {
        if (Traps(i + k)) op = plain_[i];
      }
      SetOp(program_.code[i], Traps(i) ? Op::kTrap : op);
    }
  } while (__atomic_exchange_n(&changed_, false, __ATOMIC_ACQ_REL));
}

// Sets the traps of marks, on any thread.
void Debugger::PatchTraps() {
  for (uint32_t i = 0; i < program_.code.size(); ++i) {
    if ((MarksAt(i) & kTraps) == 0) continue;
    SetOp(program_.code[i], Op::kTrap);
    for (uint32_t k = 1; k < kMostJoined && k <= i; ++k) {
      if (lengths_[i - k] > k && (MarksAt(i - k) & kTraps) == 0) SetOp(program_.code[i - k], plain_[i - k]);
    }
  }
}

bool Debugger::SetBreakpoint(std::string_view file, uint32_t line, bool set) {
  uint32_t best_line = UINT32_MAX;
  const auto each_begin = [&](auto&& act) {
    for (const Function* function : program_.functions) {
      if (!SameWord(function->place.file->name, file)) continue;
      for (uint32_t pc = function->entry; pc < function->end; ++pc) {
        if ((program_.notes[pc] & kBeginsLine) != 0) act(pc, program_.LineOf(pc));
      }
    }
  };
  each_begin([&](uint32_t, uint32_t at) {
    if (at >= line && at < best_line) best_line = at;
  });
  if (best_line == UINT32_MAX) return false;
  each_begin([&](uint32_t pc, uint32_t at) {
    if (at != best_line) return;
    if (set) {
      Mark(pc, kBreaks);
    } else {
      __atomic_fetch_and(&marks_[pc], static_cast<uint8_t>(~kBreaks), __ATOMIC_RELAXED);
    }
  });
  FindResults();
  __atomic_store_n(&changed_, true, __ATOMIC_RELEASE);
  // The game may be in a loop that no frame ends, so the engine thread is not waited for.
  if (set) PatchTraps();
  return true;
}

void Debugger::Refresh() {
  if (__atomic_load_n(&changed_, __ATOMIC_ACQUIRE)) Patch();
}

bool Debugger::Mark(uint32_t pc, uint8_t mark) {
  return (__atomic_fetch_or(&marks_[pc], mark, __ATOMIC_RELAXED) & mark) == 0;
}

// Finds what may give the last result before a breakpoint: only there is a result noted while the script runs
// freely, so that the rest of it costs nothing.
void Debugger::FindResults() {
  constexpr uint8_t kKept = kBreaks | kTarget;
  for (uint32_t pc = 0; pc < program_.code.size(); ++pc)
    __atomic_fetch_and(&marks_[pc], kKept, __ATOMIC_RELAXED);
  for (uint32_t i = 0; i < program_.functions.size(); ++i)
    __atomic_store_n(&returns_[i], uint8_t{0}, __ATOMIC_RELAXED);
  while (FindResultsOnce()) {
  }
}

// One way back through the code, from each instruction to those before it. True when there was something new.
bool Debugger::FindResultsOnce() {
  bool found = false;
  for (uint32_t pc = program_.code.size(); pc-- > 0;) {
    if ((MarksAt(pc) & kBreaks) != 0) found |= Mark(pc, kNeeds);
    if (!IsNeededBehind(pc)) continue;
    if (!GivesResult(pc)) {
      if (plain_[pc] != Op::kCall) {
        found |= Mark(pc, kNeeds);
        continue;
      }
      // What was called gives the result, unless there is a way through it without any.
      const Function& callee = *program_.functions[static_cast<uint32_t>(program_.code[pc].wide())];
      found |= __atomic_exchange_n(&returns_[callee.index], uint8_t{kNeeds}, __ATOMIC_RELAXED) == 0;
      continue;
    }
    const int64_t target = TargetOf(pc);
    if (target >= 0 && !IsNeeded(target) && (MarksAt(pc + 1) & kTarget) == 0) {
      // Nobody comes behind this test but by it: a loop in front of a breakpoint is left at full speed.
      found |= Mark(pc + 1, kFalls);
      continue;
    }
    found |= Mark(pc, kNotes);
    // A result that the instruction leaves in its register is taken in front of the next one.
    if ((program_.notes[pc] & kGivesResult) != 0) found |= Mark(pc + 1, kNotes);
  }
  for (uint32_t pc = 0; pc < program_.code.size(); ++pc) {
    if (plain_[pc] != Op::kCall) continue;
    const Function& callee = *program_.functions[static_cast<uint32_t>(program_.code[pc].wide())];
    if ((MarksAt(callee.entry) & kNeeds) != 0) found |= Mark(pc, kNeeds);
  }
  return found;
}

bool Debugger::IsNeeded(int64_t pc) const {
  return (MarksAt(static_cast<uint32_t>(pc)) & kNeeds) != 0;
}

// Where an instruction jumps to, -1 when it is no jump.
int64_t Debugger::TargetOf(uint32_t pc) const {
  const Instruction& at = program_.code[pc];
  const int64_t next = int64_t{pc} + 1;
  const Op op = plain_[pc];
  if (IsCompareJump(op)) return next + static_cast<int16_t>(at.c);
  return op >= Op::kJump && op <= Op::kJumpFalseLoop ? next + at.wide() : -1;
}

bool Debugger::IsNeededBehind(uint32_t pc) {
  const Op op = plain_[pc];
  if (op == Op::kReturn || op == Op::kReturnZero) {
    const Function* function = program_.FunctionAt(pc);
    return function != nullptr && __atomic_load_n(&returns_[function->index], __ATOMIC_RELAXED) != 0;
  }
  const int64_t target = TargetOf(pc);
  const bool always_jumps = op == Op::kJump || op == Op::kJumpLoop;
  return (target >= 0 && IsNeeded(target)) || (!always_jumps && IsNeeded(int64_t{pc} + 1));
}

bool Debugger::GivesResult(uint32_t pc) const {
  return (program_.notes[pc] & (kGivesResult | kStoresResult)) != 0 || IsCompareJump(plain_[pc]);
}

void Debugger::Attend(Task& task, const Instruction* jumped, const Value* frame) {
  TakeResult(task);
  seen_ = WantedMode();
  stepping_ = seen_ == kBreak || seen_ == kStep;
  if (seen_ == kStep) {
    step_task_ = &task;
    step_depth_ = task.depth;
  }
  result_task_ = nullptr;
  if (jumped != nullptr && stepping_) NoteResult(task, jumped, frame);
  Patch();
}

void Debugger::BreakNext(Task& task) {
  if (WantedMode() == kIgnore) return;
  __atomic_store_n(mode_, Fixed{kBreak}, __ATOMIC_RELAXED);
  Attend(task, nullptr, nullptr);
}

void Debugger::SetResult(Value value) {
  const Fixed number = IsNumber(value) ? static_cast<Fixed>(value) : IsNull(value) ? 0 : kOne;
  __atomic_store_n(program_.cells + program_.debug_result->cell, number, __ATOMIC_RELAXED);
}

void Debugger::TakeResult(const Task& task) {
  if (result_task_ == &task && result_ != nullptr) SetResult(*result_);
  result_ = nullptr;
}

// The test in front of an instruction that is come to by no other way.
void Debugger::TakeFall(const Instruction* pc, const Value* frame) {
  const auto at = static_cast<uint32_t>(pc - program_.code.data());
  if ((MarksAt(at) & kFalls) == 0) return;
  const uint32_t notes = program_.notes[at - 1];
  SetResult((notes & kStoresResult) != 0 ? frame[pc[-1].a] : (notes & kJumpsUnless) != 0 ? kOne : 0);
}

// The last value that was assigned or tested: of the instruction before when it gives one in its register, of
// this one when it takes one from there.
void Debugger::NoteResult(const Task& task, const Instruction* pc, const Value* frame) {
  TakeResult(task);
  TakeFall(pc, frame);
  const auto at = static_cast<uint32_t>(pc - program_.code.data());
  const uint32_t notes = program_.notes[at];
  result_task_ = &task;
  if ((notes & kGivesResult) != 0) result_ = &frame[pc->a];
  Value tested = 0;
  if ((notes & kStoresResult) != 0) {
    SetResult(frame[pc->a]);
  } else if (Compares(plain_[at], frame, program_, *pc, &tested)) {
    SetResult((notes & kJumpsUnless) != 0 ? kOne - tested : tested);
  }
}

bool Debugger::Decide(const Task& task, uint32_t pc) const {
  if ((program_.notes[pc] & kBeginsLine) == 0 || seen_ == kIgnore) return false;
  if (seen_ == kBreak) return true;
  if (seen_ == kStep && (step_task_ == nullptr || (step_task_ == &task && task.depth <= step_depth_)))
    return true;
  return (MarksAt(pc) & kBreaks) != 0;
}

bool Debugger::AtTrap(Task& task, const Instruction* pc, const Value* frame) {
  if (WantedMode() != seen_) Attend(task, nullptr, nullptr);
  const auto at = static_cast<uint32_t>(pc - program_.code.data());
  if (!Decide(task, at)) {
    NoteResult(task, pc, frame);
    return false;
  }
  TakeResult(task);
  TakeFall(pc, frame);
  const Function* function = program_.FunctionAt(at);
  __atomic_store_n(&file_, function->place.file, __ATOMIC_RELAXED);
  __atomic_store_n(&line_, program_.LineOf(at), __ATOMIC_RELAXED);
  seen_ = kBreak;
  __atomic_store_n(mode_, Fixed{kBreak}, __ATOMIC_RELAXED);
  __atomic_store_n(&stopped_task_, &task, __ATOMIC_RELAXED);
  __atomic_store_n(&stopped_, true, __ATOMIC_RELEASE);
  return true;
}

bool Debugger::MayGoOn() {
  const Fixed wanted = __atomic_load_n(mode_, __ATOMIC_ACQUIRE);
  if (wanted == kBreak) return false;
  seen_ = wanted;
  stepping_ = wanted == kStep;
  step_task_ = stopped_task_;
  step_depth_ = stopped_task_ != nullptr ? stopped_task_->depth : 0;
  result_task_ = nullptr;
  __atomic_store_n(&stopped_, false, __ATOMIC_RELEASE);
  __atomic_store_n(&stopped_task_, nullptr, __ATOMIC_RELAXED);
  Patch();
  return true;
}

Place Debugger::position() const {
  const Fixed mode = WantedMode();
  const uint32_t line = __atomic_load_n(&line_, __ATOMIC_RELAXED);
  if (line == 0 || mode == kRun || mode == kIgnore) return {};
  return {__atomic_load_n(&file_, __ATOMIC_RELAXED), line};
}

}  // namespace korvel
