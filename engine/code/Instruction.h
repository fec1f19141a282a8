// The instructions of the register machine.
#pragma once

#include <cstdint>

namespace korvel {

// R: registers of the running function. K: constants of the program. "wide" is the 32-bit number of b and c.
// Each comparison that jumps has four forms: two registers or register and constant, and each of these
// checked (its operands may be objects) or not. A jump back in a loop is a form of its own: it looks whether
// somebody wants the machine's attention.
#define KORVEL_COMPARE_JUMPS(X, name) \
  X(name)                             \
  X(name##K) X(name##Any) X(name##KAny) X(name##Loop) X(name##KLoop) X(name##AnyLoop) X(name##KAnyLoop)

// The formatter never comes to rest on the comments of these lists.
// clang-format off
#define KORVEL_OPERATIONS(X)                                                                       \
  X(Trap)           /* the debugger looks first, then the instruction that stood here */           \
  X(Move)           /* R[a] = R[b] */                                                              \
  X(Int)            /* R[a] = wide */                                                              \
  X(Constant)       /* R[a] = K[wide] */                                                           \
  X(LoadCell)       /* R[a] = cells[wide] */                                                       \
  X(StoreCell)      /* cells[wide] = R[a] */                                                       \
  X(StoreSkill)     /* the same, cut to the limits in the next two cells */                        \
  X(LoadPointer)    /* R[a] = target of the pointer at cells[wide] */                              \
  X(StorePointer)   /* target of the pointer at cells[wide] = R[a] */                              \
  X(LoadMe) X(LoadYou) X(StoreYou)                                                                 \
  X(InitArray)      /* R[a] = an array in the slot wide of the frame; its size is the next one's wide */ \
  X(Add) X(Sub) X(Mul) X(Div) X(Mod) X(And) X(Or) /* R[a] = R[b] op R[c] */                        \
  X(AddAny) X(SubAny) /* the same, of operands that may be objects */                              \
  X(AddK)           /* R[a] = R[b] + K[c] */                                                       \
  X(MulInt)         /* R[a] = R[b] * c, a whole number */                                          \
  X(ModK)           /* R[a] = R[b] % K[c]; K[c + 1] is 2^64 / K[c] */                              \
  X(Neg) X(Not) X(Truth) /* R[a] = op R[b] */                                                      \
  X(Less) X(LessEqual) X(Equal) X(Unequal) /* R[a] = R[b] op R[c] */                               \
  X(Jump) X(JumpLoop) /* by wide */                                                                \
  X(JumpTrue) X(JumpFalse) X(JumpTrueLoop) X(JumpFalseLoop) /* by wide when R[a] holds */          \
  KORVEL_COMPARE_JUMPS(X, JumpLess) KORVEL_COMPARE_JUMPS(X, JumpLessEqual)                         \
  KORVEL_COMPARE_JUMPS(X, JumpGreater) KORVEL_COMPARE_JUMPS(X, JumpGreaterEqual)                   \
  KORVEL_COMPARE_JUMPS(X, JumpEqual)                                                               \
  KORVEL_COMPARE_JUMPS(X, JumpUnequal) /* by c when R[a] op R[b] or K[b] */                        \
  X(LoadElementK) X(StoreElementK) /* R[a] and array K[b], element R[c] */                         \
  X(LoadElement) X(StoreElement)   /* R[a] and array R[b], element R[c] */                         \
  X(LoadField) X(StoreField)       /* R[a] and the number at byte c of object R[b] */              \
  X(LoadMember) X(StoreMember)     /* R[a] and member c of object R[b] */                          \
  X(LoadMemberAny) X(StoreMemberAny) /* the same, c is the number of the member's name */          \
  X(MemberVector) X(MemberVectorAny) /* R[a] = address of the three numbers from member c of R[b] on */ \
  X(CutVector)      /* cuts the three numbers from member c of R[a] on to their ranges */          \
  X(ArrayVector)    /* R[a] = address of the first three numbers of the array R[b] */              \
  X(TextLine)       /* R[a] = string number R[c] of the text R[b] */                               \
  X(Number)         /* R[a] = R[b], which must be a number */                                      \
  X(CheckKind)      /* R[a] must be null or of kind b, else it becomes null */                     \
  X(Call)           /* function number wide; its frame begins at R[a], where its value is put, too */ \
  X(Return) X(ReturnZero)                                                                          \
  X(Command)        /* command b with the arguments from R[a] on; R[a] = its value */              \
  X(CommandChecked) /* the same, but the arguments have to be looked at first */                   \
  X(CommandSwitch)  /* the same, and another function may have to run now; looked at first unless c is 0 */ \
  X(Wait)           /* the same, of a command that waits for frames, whose number is known to be one */ \
  X(Poll)           /* looks whether debug_mode has changed */

// Instructions that do the work of two or three that follow one another often. One stands in the place of the
// first, takes the operands of all from where they are, and steps over the others, which stay as they are: a
// jump to them, a breakpoint on them and a step through them see no difference.
#define KORVEL_STEPS(X, name) X(name) X(name##K) X(name##Any) X(name##KAny)
#define KORVEL_JOINED(X)                                                                           \
  X(MulIntAdd)      /* MulInt, Add of its product as the right operand */                          \
  X(AddKCell)       /* LoadCell, AddK of it, StoreCell of the sum in the same cell */              \
  X(LoadCells)      /* LoadCell, LoadCell */                                                       \
  X(AddToElementK)  /* LoadElementK, Add of it, StoreElementK of the sum in the same element */    \
  X(LoadFieldOfMe)  /* LoadMe, LoadField of it */                                                  \
  KORVEL_STEPS(X, StepLess)         /* AddK, and a comparison of the sum that jumps back */        \
  KORVEL_STEPS(X, StepLessEqual)                                                                   \
  KORVEL_STEPS(X, StepGreater)                                                                     \
  KORVEL_STEPS(X, StepGreaterEqual)
// clang-format on

enum class Op : uint16_t {
#define KORVEL_ONE(name) k##name,
  KORVEL_OPERATIONS(KORVEL_ONE) KORVEL_JOINED(KORVEL_ONE)
#undef KORVEL_ONE
};

struct Instruction {
  Op op;
  uint16_t a;
  uint16_t b;
  uint16_t c;

  int32_t wide() const { return static_cast<int32_t>(static_cast<uint32_t>(c) << 16 | b); }
  void SetWide(int32_t value) {
    b = static_cast<uint16_t>(value);
    c = static_cast<uint16_t>(static_cast<uint32_t>(value) >> 16);
  }
};
static_assert(sizeof(Instruction) == 8);

/// Forms of a comparison that jumps, to be added to its first one.
enum : uint16_t { kWithConstant = 1, kWithAny = 2, kAsLoop = 4 };

/// What is noted of each instruction beside its line.
enum : uint32_t {
  kBeginsLine = 1,    ///< the first one of a statement that is the first of its line
  kGivesResult = 2,   ///< what R[a] holds afterwards was assigned or tested
  kStoresResult = 4,  ///< what R[a] holds before is assigned or tested
  kJumpsUnless = 8,   ///< a comparison that jumps when what the script wrote does not hold
  kLineShift = 4,
};

constexpr bool IsCompareJump(Op op) {
  return op >= Op::kJumpLess && op <= Op::kJumpUnequalKAnyLoop;
}
constexpr bool IsJoined(Op op) {
  return op >= Op::kMulIntAdd;
}

/// The most instructions that a joined one does the work of.
inline constexpr uint32_t kMostJoined = 3;

/// The joined instruction that does the work of the plain one here and of those behind it, or the plain one
/// itself. `length` gets how many it takes. `at` lies in code that ends at `end`.
Op JoinedAt(const Instruction* at, const Instruction* end, uint32_t* length);

}  // namespace korvel
