#include "engine/compile/CodeBuilder.h"

namespace korvel {
namespace {

constexpr uint32_t kMostRegisters = 60000;

Op AsLoop(Op op) {
  const auto number = static_cast<uint16_t>(op);
  switch (op) {
    case Op::kJump:
      return Op::kJumpLoop;
    case Op::kJumpTrue:
      return Op::kJumpTrueLoop;
    case Op::kJumpFalse:
      return Op::kJumpFalseLoop;
    default:
      break;
  }
  if (!IsCompareJump(op)) return op;
  const uint16_t first = static_cast<uint16_t>(Op::kJumpLess);
  return static_cast<Op>(((number - first) | kAsLoop) + first);
}

}  // namespace

void CodeBuilder::Begin(uint32_t first) {
  free_ = most_ = first;
  marked_line_ = 0;
  mark_next_ = false;
  too_large_ = false;
  jumps_.Clear();
}

uint32_t CodeBuilder::Emit(Op op, uint32_t a, uint32_t b, uint32_t c) {
  program_.code.Add({op, static_cast<uint16_t>(a), static_cast<uint16_t>(b), static_cast<uint16_t>(c)});
  program_.notes.Add(line_ << kLineShift | (mark_next_ ? kBeginsLine : 0u));
  mark_next_ = false;
  return here() - 1;
}

uint32_t CodeBuilder::EmitWide(Op op, uint32_t a, int32_t wide) {
  const uint32_t pc = Emit(op, a, 0, 0);
  at(pc).SetWide(wide);
  return pc;
}

void CodeBuilder::BeginStatement(uint32_t line, bool again) {
  line_ = line;
  mark_next_ = again || line > marked_line_;
  if (line > marked_line_) marked_line_ = line;
}

uint32_t CodeBuilder::TakeRegister() {
  SetFree(free_ + 1);
  return free_ - 1;
}

void CodeBuilder::SetFree(uint32_t reg) {
  if (reg > kMostRegisters) {
    too_large_ = true;
    reg = kMostRegisters;
  }
  free_ = reg;
  if (free_ > most_) most_ = free_;
}

void CodeBuilder::AddJump(JumpList& list, uint32_t pc) {
  jumps_.Add({pc, list});
  list = static_cast<JumpList>(jumps_.size() - 1);
}

void CodeBuilder::Join(JumpList& list, JumpList other) {
  if (other == kNoJumps) return;
  if (list == kNoJumps) {
    list = other;
    return;
  }
  JumpList last = other;
  while (jumps_[static_cast<uint32_t>(last)].next != kNoJumps)
    last = jumps_[static_cast<uint32_t>(last)].next;
  jumps_[static_cast<uint32_t>(last)].next = list;
  list = other;
}

void CodeBuilder::Patch(JumpList& list, uint32_t target) {
  for (JumpList i = list; i != kNoJumps; i = jumps_[static_cast<uint32_t>(i)].next) {
    PatchOne(jumps_[static_cast<uint32_t>(i)].pc, target);
  }
  list = kNoJumps;
}

void CodeBuilder::PatchHere(JumpList& list) {
  Patch(list, here());
}

void CodeBuilder::PatchOne(uint32_t pc, uint32_t target) {
  const int32_t offset = static_cast<int32_t>(target) - static_cast<int32_t>(pc) - 1;
  Instruction& jump = at(pc);
  if (offset < 0) jump.op = AsLoop(jump.op);
  if (IsCompareJump(jump.op)) {
    if (offset > INT16_MAX || offset < INT16_MIN) too_large_ = true;
    jump.c = static_cast<uint16_t>(offset);
  } else {
    jump.SetWide(offset);
  }
}

uint32_t CodeBuilder::Constant(Value value) {
  if (constant_count_ * 2 > numbers_.size()) {
    const uint32_t size = numbers_.size() * 4;
    numbers_.Clear();
    numbers_.Resize(size);
    for (uint32_t& entry : numbers_) entry = 0;
    for (uint32_t i = 0; i < program_.constants.size(); ++i) {
      uint32_t at =
          static_cast<uint32_t>(static_cast<uint64_t>(program_.constants[i]) * 0x9E3779B97F4A7C15u >> 32);
      while (numbers_[at & (size - 1)] != 0) ++at;
      numbers_[at & (size - 1)] = i + 1;
    }
  }
  uint32_t at = static_cast<uint32_t>(static_cast<uint64_t>(value) * 0x9E3779B97F4A7C15u >> 32);
  for (;; ++at) {
    uint32_t& entry = numbers_[at & (numbers_.size() - 1)];
    if (entry == 0) {
      program_.constants.Add(value);
      ++constant_count_;
      entry = program_.constants.size();
      return entry - 1;
    }
    if (program_.constants[entry - 1] == value) return entry - 1;
  }
}

uint32_t CodeBuilder::Divisor(Fixed value) {
  const uint64_t size =
      value < 0 ? uint64_t{0} - static_cast<uint64_t>(static_cast<int64_t>(value)) : uint64_t(value);
  program_.constants.Add(static_cast<Value>(size));
  program_.constants.Add(static_cast<Value>(UINT64_MAX / size + 1));
  return program_.constants.size() - 2;
}

}  // namespace korvel
