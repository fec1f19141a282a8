// From descriptions of values to registers and jumps.
#include <utility>

#include "engine/compile/Compiler.h"

namespace korvel {
namespace {

constexpr uint16_t kForms = 8;

// Comparisons in the order of their instructions, and the ones that hold when these do not.
constexpr Op kOpposite[] = {Op::kJumpGreaterEqual, Op::kJumpGreater, Op::kJumpLessEqual,
                            Op::kJumpLess,         Op::kJumpUnequal, Op::kJumpEqual};
// With the sides exchanged.
constexpr Op kMirrored[] = {Op::kJumpGreater,   Op::kJumpGreaterEqual, Op::kJumpLess,
                            Op::kJumpLessEqual, Op::kJumpEqual,        Op::kJumpUnequal};

size_t NumberOf(Op op) {
  return (static_cast<size_t>(op) - static_cast<size_t>(Op::kJumpLess)) / kForms;
}

Op CompareOf(uint16_t sign) {
  switch (sign) {
    case '<':
      return Op::kJumpLess;
    case '>':
      return Op::kJumpGreater;
    case Pair('<', '='):
      return Op::kJumpLessEqual;
    case Pair('>', '='):
      return Op::kJumpGreaterEqual;
    case Pair('=', '='):
      return Op::kJumpEqual;
    default:
      return Op::kJumpUnequal;
  }
}

bool IsLogic(const Token& sign) {
  return sign.Is(Pair('&', '&')) || sign.Is(Pair('|', '|'));
}

bool IsConstant(const Expression& e) {
  return !e.logic && (e.where == Expression::kNumberConstant || e.where == Expression::kObjectConstant);
}

bool Holds(const Expression& e) {
  return e.where == Expression::kNumberConstant ? e.number != 0 : !IsNull(e.object);
}

// A number that lies in its object as it is; those that are only read may be computed.
bool IsField(const KorvelMember& member) {
  return member.encoding == kKorvelFixed && member.access == kKorvelWritable;
}

}  // namespace

void Compiler::SetNumber(Expression& e, Fixed number) {
  e = Expression();
  e.number = number;
}

void Compiler::SetRegister(Expression& e, uint32_t reg, int type) {
  e = Expression();
  e.where = Expression::kRegister;
  e.type = static_cast<int8_t>(type);
  e.b = reg;
}

void Compiler::SetResult(Expression& e, uint32_t pc, int type) {
  e = Expression();
  e.where = Expression::kResult;
  e.type = static_cast<int8_t>(type);
  e.index = pc;
}

uint32_t Compiler::ToAnyRegister(Expression& e) {
  if (e.where == Expression::kRegister && !e.logic) return e.b;
  const uint32_t reg = code_.TakeRegister();
  ToRegister(e, reg);
  return reg;
}

void Compiler::ToRegister(Expression& e, uint32_t reg) {
  if (e.logic) {
    JumpUnless(e);
    code_.EmitWide(Op::kInt, reg, kOne);
    const uint32_t over = code_.EmitWide(Op::kJump, 0, 0);
    code_.PatchHere(e.when_false);
    code_.EmitWide(Op::kInt, reg, 0);
    code_.PatchOne(over, code_.here());
    return SetRegister(e, reg, kTypeNumber);
  }
  const auto wide = static_cast<int32_t>(e.index);
  switch (e.where) {
    case Expression::kNumberConstant:
      code_.EmitWide(Op::kInt, reg, e.number);
      break;
    case Expression::kObjectConstant:
      code_.EmitWide(Op::kConstant, reg, static_cast<int32_t>(code_.Constant(e.object)));
      break;
    case Expression::kRegister:
      if (e.b != reg) code_.Emit(Op::kMove, reg, e.b, 0);
      break;
    case Expression::kCell:
    case Expression::kSkill:
      code_.EmitWide(Op::kLoadCell, reg, wide);
      break;
    case Expression::kPointer:
      code_.EmitWide(Op::kLoadPointer, reg, wide);
      break;
    case Expression::kMe:
      code_.Emit(Op::kLoadMe, reg, 0, 0);
      break;
    case Expression::kYou:
      code_.Emit(Op::kLoadYou, reg, 0, 0);
      break;
    case Expression::kElementK:
      code_.Emit(Op::kLoadElementK, reg, e.b, e.c);
      break;
    case Expression::kElement:
      code_.Emit(Op::kLoadElement, reg, e.b, e.c);
      break;
    case Expression::kMember:
      if (IsField(members_.row(static_cast<int>(e.c)))) {
        code_.Emit(Op::kLoadField, reg, e.b, members_.row(static_cast<int>(e.c)).offset);
      } else {
        code_.Emit(Op::kLoadMember, reg, e.b, e.c);
      }
      break;
    case Expression::kMemberAny:
      code_.Emit(Op::kLoadMemberAny, reg, e.b, e.c);
      break;
    case Expression::kTextLine:
      code_.Emit(Op::kTextLine, reg, e.b, e.c);
      break;
    case Expression::kResult:
      code_.at(e.index).a = static_cast<uint16_t>(reg);
      break;
    case Expression::kCompare: {
      uint32_t right = e.c;
      if (e.with_constant) {
        // The left side's register may be free again, but it is still to be read.
        const uint32_t free = code_.free_register();
        code_.SetFree(free > e.b + 1 ? free : e.b + 1);
        right = code_.TakeRegister();
        code_.EmitWide(Op::kConstant, right, static_cast<int32_t>(e.c));
        code_.SetFree(free);
      }
      const size_t number = NumberOf(e.op);
      const bool mirrored = number == 2 || number == 3;
      constexpr Op kOps[] = {Op::kLess, Op::kLessEqual, Op::kLess, Op::kLessEqual, Op::kEqual, Op::kUnequal};
      code_.Emit(kOps[number], reg, mirrored ? right : e.b, mirrored ? e.b : right);
      break;
    }
    case Expression::kNothing:
      code_.EmitWide(Op::kInt, reg, 0);
      break;
  }
  SetRegister(e, reg, e.type);
}

void Compiler::EmitTest(Expression& e, bool jump_when) {
  JumpList& list = jump_when ? e.when_true : e.when_false;
  if (e.where == Expression::kNumberConstant || e.where == Expression::kObjectConstant) {
    if (Holds(e) == jump_when) code_.AddJump(list, code_.EmitWide(Op::kJump, 0, 0));
    return;
  }
  if (e.where == Expression::kCompare) {
    const Op op = jump_when ? e.op : kOpposite[NumberOf(e.op)];
    const auto form =
        static_cast<uint16_t>((e.with_constant ? kWithConstant : 0) | (e.checked ? kWithAny : 0));
    code_.AddJump(list, code_.Emit(static_cast<Op>(static_cast<uint16_t>(op) + form), e.b, e.c, 0));
    if (!jump_when) code_.MarkResult(kJumpsUnless);
    return;
  }
  // A value of && or || within has its own lists; what is tested here is the last operand.
  const JumpList when_true = e.when_true;
  const JumpList when_false = e.when_false;
  e.logic = false;
  const uint32_t reg = ToAnyRegister(e);
  e.when_true = when_true;
  e.when_false = when_false;
  code_.AddJump(jump_when ? e.when_true : e.when_false,
                code_.EmitWide(jump_when ? Op::kJumpTrue : Op::kJumpFalse, reg, 0));
  code_.MarkResult(kStoresResult);
}

void Compiler::JumpUnless(Expression& e) {
  EmitTest(e, false);
  code_.PatchHere(e.when_true);
}

void Compiler::JumpWhen(Expression& e) {
  EmitTest(e, true);
  code_.PatchHere(e.when_false);
}

void Compiler::MustBeNumber(Expression& e, const Token& at, const char* what) {
  if (e.where == Expression::kNothing) {
    Complain(at, "This command gives no value.");
  } else if (e.type == kTypeAny && !e.logic) {
    const uint32_t reg = ToAnyRegister(e);
    const uint32_t to = e.assignable ? code_.TakeRegister() : reg;
    code_.Emit(Op::kNumber, to, reg, 0);
    SetRegister(e, to, kTypeNumber);
  } else if (e.type != kTypeNumber) {
    Complain(at, "%s needs a number; here is %s.", what, e.literal ? "a text in quotes" : TypeName(e.type));
  }
}

void Compiler::Operate(const Token& sign, Expression& left, Expression& right, uint32_t mark) {
  if (left.where == Expression::kNothing || right.where == Expression::kNothing) {
    Complain(sign, "This command gives no value.");
    return;
  }
  if (IsLogic(sign)) {
    const bool is_and = sign.Is(Pair('&', '&'));
    if (constants_only_) {
      return SetNumber(left, (is_and ? Holds(left) && Holds(right) : Holds(left) || Holds(right)) ? kOne : 0);
    }
    code_.Join(right.when_true, left.when_true);
    code_.Join(right.when_false, left.when_false);
    left = right;
    left.type = kTypeNumber;
    left.logic = true;
    left.literal = left.assignable = left.call = false;
    return;
  }
  if (!constants_only_ && right.logic) ToAnyRegister(right);
  switch (sign.type) {
    case '<':
    case '>':
    case Pair('<', '='):
    case Pair('>', '='):
    case Pair('=', '='):
    case Pair('!', '='):
      return Compare(sign, left, right, mark);
    default:
      return Arithmetic(sign, left, right, mark);
  }
}

bool Compiler::Fold(const Token& sign, const Expression& left, const Expression& right, Expression& result) {
  if (!IsConstant(left) || !IsConstant(right) || left.type != kTypeNumber || right.type != kTypeNumber)
    return false;
  const int64_t a = left.number;
  const int64_t b = right.number;
  int64_t value = 0;
  switch (sign.type) {
    case '+':
      value = a + b;
      break;
    case '-':
      value = a - b;
      break;
    case '*':
      value = MultiplySteps(a, b);
      break;
    case '/':
    case '%':
      if (b == 0) {
        if (constants_only_) Complain(sign, "A division by zero.");
        return false;
      }
      value = sign.Is('/') ? DivideSteps(a, b) : a % b;
      break;
    case '&':
      value = left.number & right.number;
      break;
    case '|':
      value = left.number | right.number;
      break;
    case '<':
      value = a < b ? kOne : 0;
      break;
    case '>':
      value = a > b ? kOne : 0;
      break;
    case Pair('<', '='):
      value = a <= b ? kOne : 0;
      break;
    case Pair('>', '='):
      value = a >= b ? kOne : 0;
      break;
    case Pair('=', '='):
      value = a == b ? kOne : 0;
      break;
    default:
      value = a != b ? kOne : 0;
      break;
  }
  if (value != Cut(value)) {
    if (constants_only_) Complain(sign, "This number is too large; numbers go from -2097152 to 2097151.");
    return false;
  }
  SetNumber(result, static_cast<Fixed>(value));
  return true;
}

void Compiler::Compare(const Token& sign, Expression& left, Expression& right, uint32_t mark) {
  const bool equality = sign.Is(Pair('=', '=')) || sign.Is(Pair('!', '='));
  if (equality && (left.type == kKorvelString && right.type == kKorvelString) &&
      (left.literal || right.literal)) {
    Complain(sign, "Texts are compared with str_compare(a, b), not with %s.", TextOf(sign));
    return;
  }
  const bool objects = left.type != kTypeNumber && right.type != kTypeNumber;
  const bool numbers_known = left.type == kTypeNumber && right.type == kTypeNumber;
  const bool any = left.type == kTypeAny || right.type == kTypeAny;
  if (!numbers_known && !any && !(equality && objects)) {
    const Expression& wrong = left.type != kTypeNumber ? left : right;
    Complain(sign,
             equality ? "A number cannot be compared with %s." : "Only numbers have an order; here is %s.",
             wrong.literal ? "a text in quotes" : TypeName(wrong.type));
    return;
  }
  if (!equality && ((left.type != kTypeNumber && left.type != kTypeAny) ||
                    (right.type != kTypeNumber && right.type != kTypeAny))) {
    Complain(sign, "Only numbers have an order; here is %s.",
             TypeName(left.type != kTypeNumber && left.type != kTypeAny ? left.type : right.type));
    return;
  }
  if (Fold(sign, left, right, left)) return;
  if (constants_only_) {
    Complain(sign, "Only numbers can be compared before the game begins.");
    return;
  }
  Op op = CompareOf(sign.type);
  if (IsConstant(left)) {
    std::swap(left, right);
    op = kMirrored[NumberOf(op)];
  }
  const uint32_t a = ToAnyRegister(left);
  uint32_t constant = 0;
  bool with_constant = IsConstant(right);
  if (with_constant) {
    constant =
        code_.Constant(right.where == Expression::kNumberConstant ? Value{right.number} : right.object);
    if (constant > UINT16_MAX) with_constant = false;
  }
  const uint32_t b = with_constant ? constant : ToAnyRegister(right);
  code_.SetFree(mark);
  left = Expression();
  left.where = Expression::kCompare;
  left.op = op;
  left.b = a;
  left.c = b;
  left.with_constant = with_constant;
  left.checked = any;
}

void Compiler::Arithmetic(const Token& sign, Expression& left, Expression& right, uint32_t mark) {
  if (Fold(sign, left, right, left) || complained_) return;
  const bool add = sign.Is('+');
  const bool sub = sign.Is('-');
  // A sum of a number and an object is found out by its size; of two unknown values it might not be, so that
  // both are looked at.
  const bool tells_itself = (add || sub) && (left.type == kTypeNumber || right.type == kTypeNumber);
  char text[3] = {static_cast<char>(sign.type), 0, 0};
  const bool both_open = (add || sub) && left.type == kTypeAny && right.type == kTypeAny;
  if (!both_open && !(tells_itself && left.type == kTypeAny)) MustBeNumber(left, sign, text);
  if (!both_open && !(tells_itself && right.type == kTypeAny)) MustBeNumber(right, sign, text);
  if (complained_ || constants_only_) return;
  uint32_t pc = 0;
  if (add && IsConstant(left)) std::swap(left, right);
  if ((add || sub) && IsConstant(right) && !IsConstant(left)) {
    const uint32_t constant = code_.Constant(sub ? -Value{right.number} : Value{right.number});
    if (constant <= UINT16_MAX) {
      const uint32_t a = ToAnyRegister(left);
      code_.SetFree(mark);
      return SetResult(left, code_.Emit(Op::kAddK, 0, a, constant), kTypeNumber);
    }
  }
  if (sign.Is('*')) {
    if (IsConstant(left)) std::swap(left, right);
    if (IsConstant(right) && right.number % kOne == 0 &&
        right.number / kOne == static_cast<int16_t>(right.number / kOne)) {
      const uint32_t a = ToAnyRegister(left);
      code_.SetFree(mark);
      pc = code_.Emit(Op::kMulInt, 0, a, static_cast<uint16_t>(right.number / kOne));
      return SetResult(left, pc, kTypeNumber);
    }
  }
  if (sign.Is('%') && IsConstant(right) && right.number != 0) {
    const uint32_t divisor = code_.Divisor(right.number);
    if (divisor <= UINT16_MAX) {
      const uint32_t a = ToAnyRegister(left);
      code_.SetFree(mark);
      return SetResult(left, code_.Emit(Op::kModK, 0, a, divisor), kTypeNumber);
    }
  }
  const uint32_t a = ToAnyRegister(left);
  const uint32_t b = ToAnyRegister(right);
  code_.SetFree(mark);
  Op op = Op::kAdd;
  switch (sign.type) {
    case '+':
      op = both_open ? Op::kAddAny : Op::kAdd;
      break;
    case '-':
      op = both_open ? Op::kSubAny : Op::kSub;
      break;
    case '*':
      op = Op::kMul;
      break;
    case '/':
      op = Op::kDiv;
      break;
    case '%':
      op = Op::kMod;
      break;
    case '&':
      op = Op::kAnd;
      break;
    default:
      op = Op::kOr;
      break;
  }
  SetResult(left, code_.Emit(op, 0, a, b), kTypeNumber);
}

// Puts what a register holds into a variable or member.
void Compiler::Store(const Expression& target, uint32_t reg) {
  const auto wide = static_cast<int32_t>(target.index);
  switch (target.where) {
    case Expression::kCell:
      code_.EmitWide(Op::kStoreCell, reg, wide);
      break;
    case Expression::kSkill:
      code_.EmitWide(Op::kStoreSkill, reg, wide);
      break;
    case Expression::kPointer:
      code_.EmitWide(Op::kStorePointer, reg, wide);
      break;
    case Expression::kYou:
      code_.Emit(Op::kStoreYou, reg, 0, 0);
      break;
    case Expression::kElementK:
      code_.Emit(Op::kStoreElementK, reg, target.b, target.c);
      break;
    case Expression::kElement:
      code_.Emit(Op::kStoreElement, reg, target.b, target.c);
      break;
    case Expression::kMember: {
      const KorvelMember& member = members_.row(static_cast<int>(target.c));
      if (IsField(member) && member.low == member.high) {
        code_.Emit(Op::kStoreField, reg, target.b, member.offset);
      } else {
        code_.Emit(Op::kStoreMember, reg, target.b, target.c);
      }
      break;
    }
    default:
      code_.Emit(Op::kStoreMemberAny, reg, target.b, target.c);
      break;
  }
  code_.MarkResult(kStoresResult);
  if (target.where == Expression::kCell && target.symbol == program_.debug_mode)
    code_.Emit(Op::kPoll, 0, 0, 0);
}

}  // namespace korvel
