#include "engine/code/Instruction.h"

namespace korvel {
namespace {

// The joined form of a comparison that jumps back, or the plain AddK when there is none.
Op StepOf(Op jump) {
  if (jump < Op::kJumpLess || jump > Op::kJumpGreaterEqualKAnyLoop) return Op::kAddK;
  const auto number =
      static_cast<uint16_t>(static_cast<uint16_t>(jump) - static_cast<uint16_t>(Op::kJumpLess));
  if ((number & kAsLoop) == 0) return Op::kAddK;
  constexpr uint16_t kForms = 8;
  constexpr uint16_t kSteps = 4;
  const auto step = static_cast<uint16_t>(number / kForms * kSteps + (number & (kWithConstant | kWithAny)));
  return static_cast<Op>(static_cast<uint16_t>(Op::kStepLess) + step);
}

}  // namespace

Op JoinedAt(const Instruction* at, const Instruction* end, uint32_t* length) {
  const Op op = at->op;
  *length = 1;
  const auto joined = [length](Op found, uint32_t count) {
    *length = count;
    return found;
  };
  if (end - at < 2) return op;
  const Instruction& first = at[0];
  const Instruction& second = at[1];
  const bool has_third = end - at > 2;
  switch (op) {
    case Op::kMulInt:
      if (second.op == Op::kAdd && second.c == first.a && second.b != first.a)
        return joined(Op::kMulIntAdd, 2);
      break;
    case Op::kLoadCell:
      if (has_third && second.op == Op::kAddK && second.a == first.a && second.b == first.a &&
          at[2].op == Op::kStoreCell && at[2].a == first.a && at[2].wide() == first.wide())
        return joined(Op::kAddKCell, 3);
      if (second.op == Op::kLoadCell) return joined(Op::kLoadCells, 2);
      break;
    case Op::kLoadElementK:
      if (has_third && second.op == Op::kAdd && second.b == first.a && second.c != first.a &&
          at[2].op == Op::kStoreElementK && at[2].a == second.a && at[2].b == first.b && at[2].c == first.c &&
          first.a != first.c && second.a != first.c)
        return joined(Op::kAddToElementK, 3);
      break;
    case Op::kLoadMe:
      if (second.op == Op::kLoadField && second.b == first.a) return joined(Op::kLoadFieldOfMe, 2);
      break;
    case Op::kAddK:
      if (IsCompareJump(second.op) && second.a == first.a && StepOf(second.op) != Op::kAddK)
        return joined(StepOf(second.op), 2);
      break;
    default:
      break;
  }
  return op;
}

}  // namespace korvel
