// The loop of the machine. What an instruction does is written once, as a piece that joined instructions use,
// too; what it does only seldom is in MachineChecks.cpp.
#include "engine/run/Machine.h"

#include "engine/run/Cells.h"
#include "engine/run/Session.h"

namespace korvel {
namespace {

constexpr uint32_t kDeepestCall = 200;

/// No value of debug_mode: the machine looks each time, which counts what a budget leaves.
constexpr Value kAlwaysLook = Value{1} << 40;

// Only the operation is exchanged by a debugger on another thread.
inline uint16_t FetchOp(const Instruction* at) {
  return __atomic_load_n(reinterpret_cast<const uint16_t*>(at), __ATOMIC_RELAXED);
}

inline Value ModuloConstant(Value value, const Value* divisor) {
  const auto rest_of = [divisor](uint64_t size) {
    const auto product = static_cast<unsigned __int128>(size) * static_cast<uint64_t>(divisor[1]);
    const auto quotient = static_cast<uint64_t>(product >> 64);
    return static_cast<Value>(size - quotient * static_cast<uint64_t>(divisor[0]));
  };
  if (__builtin_expect(value >= 0, 1)) return rest_of(static_cast<uint64_t>(value));
  return -rest_of(static_cast<uint64_t>(-value));
}

}  // namespace

Machine::Outcome Machine::Run(Task& first) {
#define KORVEL_ONE(name) &&label_##name,
  static const void* const kLabels[] = {KORVEL_OPERATIONS(KORVEL_ONE) KORVEL_JOINED(KORVEL_ONE)};
#undef KORVEL_ONE

  Session& session = session_;
  Program& program = session.program;
  Debugger& debugger = session.debugger;
  Scheduler& scheduler = session.scheduler;
  Fixed* const cells = program.cells;
  const Value* const K = program.constants.data();
  const Fixed* const mode = cells + program.debug_mode->cell;
  const bool limited = budget != INT64_MAX;
  Value seen = limited ? kAlwaysLook : debugger.seen();
  Task* now = &first;
  const Instruction* at = nullptr;
  const Instruction* jumped = nullptr;
  Value* R = nullptr;

// Dispatch: each instruction ends with a jump of its own to the next one. `at` is behind the one that runs.
#define GO(op)                \
  do {                        \
    const uint16_t next = op; \
    ++at;                     \
    goto* kLabels[next];      \
  } while (0)
#define NEXT GO(FetchOp(at))
#define SAVE (pc = at, task = now)
// `from`: the jump that came here, or null.
#define LOOK(from)                                     \
  do {                                                 \
    if (__builtin_expect(LoadCell(mode) != seen, 0)) { \
      jumped = from;                                   \
      goto attention;                                  \
    }                                                  \
  } while (0)
#define LIKELY(condition) __builtin_expect(!!(condition), 1)
#define A R[at[-1].a]
#define B R[at[-1].b]
#define C R[at[-1].c]
#define SHORT static_cast<int16_t>(at[-1].c)
#define WIDE at[-1].wide()
// Puts what an operator gives: what is no number is too large, or has an operand that is none.
#define GIVE(to, result, left, right)      \
  do {                                     \
    const Value given = result;            \
    if (LIKELY(IsNumber(given))) {         \
      to = given;                          \
    } else {                               \
      SAVE;                                \
      to = NotANumber(left, right, given); \
    }                                      \
  } while (0)

enter:
  task = now;
  now->state = Task::kRunning;
  at = now->pc;
  R = now->frame;
  if (at == nullptr) at = program.code.data() + now->root->entry;
  session.SetMe(now->me, now->you);
  if (__builtin_expect(resume_at != nullptr, 0)) {
    const bool resumes = resume_at == at;
    resume_at = nullptr;
    if (resumes) {
      debugger.NoteResult(*now, at, R);
      GO(static_cast<uint16_t>(debugger.OriginalAt(at)));
    }
  }
  LOOK(nullptr);
  NEXT;

attention:
  SAVE;
  if (limited && --budget < 0) {
    now->pc = at;
    now->frame = R;
    return Outcome::kSpent;
  }
  if (LoadCell(mode) != debugger.seen()) debugger.Attend(*now, jumped, R);
  if (!limited) seen = debugger.seen();
  NEXT;

label_Trap:
  --at;
  SAVE;
  now->pc = at;
  now->frame = R;
  if (debugger.AtTrap(*now, at, R)) {
    stopped = now;
    resume_at = at;
    return Outcome::kStopped;
  }
  if (!limited) seen = debugger.seen();
  GO(static_cast<uint16_t>(debugger.OriginalAt(at)));

label_Move:
  A = B;
  NEXT;
label_Int:
  A = WIDE;
  NEXT;
label_Constant:
  A = K[WIDE];
  NEXT;
label_LoadCell:
  A = LoadCell(cells + WIDE);
  NEXT;
label_StoreCell:
  StoreCell(cells + WIDE, A);
  NEXT;
label_StoreSkill : {
  Fixed* skill = cells + WIDE;
  const Value low = LoadCell(skill + 1);
  const Value high = LoadCell(skill + 2);
  Value value = A;
  if (value > high) value = high;
  if (value < low) value = low;
  StoreCell(skill, value);
  NEXT;
}
label_LoadPointer:
  A = ToValue(reinterpret_cast<PointerCell*>(cells + WIDE)->target);
  NEXT;
label_StorePointer:
  __atomic_store_n(&reinterpret_cast<PointerCell*>(cells + WIDE)->target, ToObject<KorvelHead>(A),
                   __ATOMIC_RELEASE);
  NEXT;
label_LoadMe:
  A = ToValue(now->me);
  NEXT;
label_LoadYou:
  A = ToValue(now->you);
  NEXT;
label_StoreYou:
  now->you = ToObject<KorvelHead>(A);
  session.SetMe(now->me, now->you);
  NEXT;
label_InitArray : {
  auto* array = reinterpret_cast<Array*>(R + WIDE);
  A = ToValue(array);
  const auto count = static_cast<uint32_t>(at->wide());
  ++at;
  std::memset(static_cast<void*>(array), 0, sizeof(KorvelHead) + 4 + (count < 3 ? 3 : count) * sizeof(Fixed));
  array->head.kind = kTypeArray;
  array->count = count;
  NEXT;
}

label_Add:
  GIVE(A, B + C, B, C);
  NEXT;
label_Sub:
  GIVE(A, B - C, B, C);
  NEXT;
label_AddAny:
  GIVE(A, IsNumber(B) && IsNumber(C) ? B + C : kNull, B, C);
  NEXT;
label_SubAny:
  GIVE(A, IsNumber(B) && IsNumber(C) ? B - C : kNull, B, C);
  NEXT;
label_AddK:
  GIVE(A, B + K[at[-1].c], B, 0);
  NEXT;
label_MulInt:
  GIVE(A, B * SHORT, 0, 0);
  NEXT;
label_Mul:
  GIVE(A, MultiplySteps(B, C), 0, 0);
  NEXT;
label_Div:
  if (__builtin_expect(C == 0, 0)) {
    SAVE;
    A = DividedByZero();
  } else {
    GIVE(A, DivideSteps(B, C), 0, 0);
  }
  NEXT;
label_Mod:
  if (__builtin_expect(C == 0, 0)) {
    SAVE;
    A = DividedByZero();
  } else {
    A = B % C;
  }
  NEXT;
label_ModK:
  A = ModuloConstant(B, K + at[-1].c);
  NEXT;
label_And:
  A = B & C;
  NEXT;
label_Or:
  A = B | C;
  NEXT;
label_Neg:
  GIVE(A, -B, 0, 0);
  NEXT;
label_Not:
  A = IsTrue(B) ? 0 : kOne;
  NEXT;
label_Truth:
  A = IsTrue(B) ? kOne : 0;
  NEXT;

// What cannot be compared: a number with an object, and objects in an order.
#define CANNOT_COMPARE(one, other, equality) \
  __builtin_expect(IsNumber(one) != IsNumber(other) || (!(equality) && !IsNumber(one)), 0)
#define COMPARE(name, op, equality)              \
  label_##name : {                               \
    const Value left = B;                        \
    const Value right = C;                       \
    if (CANNOT_COMPARE(left, right, equality)) { \
      SAVE;                                      \
      A = NotANumber(left, right, 0);            \
    } else {                                     \
      A = left op right ? kOne : 0;              \
    }                                            \
    NEXT;                                        \
  }
  COMPARE(Less, <, false)
  COMPARE(LessEqual, <=, false)
  COMPARE(Equal, ==, true)
  COMPARE(Unequal, !=, true)

label_Jump:
  at += WIDE;
  NEXT;
label_JumpLoop : {
  const Instruction* from = at - 1;
  at += WIDE;
  LOOK(from);
  NEXT;
}
#define JUMP_BY_TRUTH(name, condition, loop) \
  label_##name : {                           \
    if (condition) {                         \
      const Instruction* from = at - 1;      \
      at += WIDE;                            \
      if (loop) LOOK(from);                  \
    }                                        \
    NEXT;                                    \
  }
  JUMP_BY_TRUTH(JumpTrue, IsTrue(A), false)
  JUMP_BY_TRUTH(JumpFalse, !IsTrue(A), false)
  JUMP_BY_TRUTH(JumpTrueLoop, IsTrue(A), true)
  JUMP_BY_TRUTH(JumpFalseLoop, !IsTrue(A), true)

// A comparison of what cannot be compared does not hold, whichever way it was turned round.
#define COMPARE_AND_JUMP(one, other, op, equality, checked, loop)                                     \
  do {                                                                                                \
    bool jumps = one op other;                                                                        \
    if (checked && CANNOT_COMPARE(one, other, equality)) {                                            \
      SAVE;                                                                                           \
      NotANumber(one, other, 0);                                                                      \
      jumps = (program.notes[static_cast<size_t>(at - 1 - program.code.data())] & kJumpsUnless) != 0; \
    }                                                                                                 \
    if (jumps) {                                                                                      \
      const Instruction* from = at - 1;                                                               \
      at += SHORT;                                                                                    \
      if (loop) LOOK(from);                                                                           \
    }                                                                                                 \
    NEXT;                                                                                             \
  } while (0)
#define JUMP(label, right, op, equality, checked, loop)        \
  label : {                                                    \
    const Value one = A;                                       \
    const Value other = right;                                 \
    COMPARE_AND_JUMP(one, other, op, equality, checked, loop); \
  }
#define JUMPS(name, op, equality)                                   \
  JUMP(label_##name, B, op, equality, false, false)                 \
  JUMP(label_##name##K, K[at[-1].b], op, equality, false, false)    \
  JUMP(label_##name##Any, B, op, equality, true, false)             \
  JUMP(label_##name##KAny, K[at[-1].b], op, equality, true, false)  \
  JUMP(label_##name##Loop, B, op, equality, false, true)            \
  JUMP(label_##name##KLoop, K[at[-1].b], op, equality, false, true) \
  JUMP(label_##name##AnyLoop, B, op, equality, true, true)          \
  JUMP(label_##name##KAnyLoop, K[at[-1].b], op, equality, true, true)
  JUMPS(JumpLess, <, false)
  JUMPS(JumpLessEqual, <=, false)
  JUMPS(JumpGreater, >, false)
  JUMPS(JumpGreaterEqual, >=, false)
  JUMPS(JumpEqual, ==, true)
  JUMPS(JumpUnequal, !=, true)

#define ELEMENT_K reinterpret_cast<Array*>(K[at[-1].b])
#define INDEX static_cast<uint64_t>(C >> kFractionBits)
label_LoadElementK : {
  const Array* array = ELEMENT_K;
  const uint64_t index = INDEX;
  if (LIKELY(index < array->count)) {
    A = LoadCell(array->cells + index);
    NEXT;
  }
  SAVE;
  FindElement(K[at[-1].b], C);
  A = 0;
  NEXT;
}
label_StoreElementK : {
  Array* array = ELEMENT_K;
  const uint64_t index = INDEX;
  if (LIKELY(index < array->count)) {
    StoreCell(array->cells + index, A);
    NEXT;
  }
  SAVE;
  FindElement(K[at[-1].b], C);
  NEXT;
}
label_LoadElement : {
  SAVE;
  const Fixed* cell = FindElement(B, C);
  A = cell != nullptr ? LoadCell(cell) : 0;
  NEXT;
}
label_StoreElement : {
  SAVE;
  Fixed* cell = FindElement(B, C);
  if (cell != nullptr) StoreCell(cell, A);
  NEXT;
}

#define FIELD(object) reinterpret_cast<Fixed*>(object + at[-1].c)
label_LoadField : {
  const Value object = B;
  if (LIKELY(!IsNull(object))) {
    A = LoadCell(FIELD(object));
    NEXT;
  }
  SAVE;
  Fault("null has no members.");
  A = 0;
  NEXT;
}
label_StoreField : {
  const Value object = B;
  if (LIKELY(!IsNull(object))) {
    StoreCell(FIELD(object), A);
    NEXT;
  }
  SAVE;
  Fault("null has no members.");
  NEXT;
}
label_LoadMember:
  SAVE;
  A = LoadMember(B, session.members.row(at[-1].c));
  NEXT;
label_StoreMember:
  SAVE;
  StoreMember(B, session.members.row(at[-1].c), A);
  NEXT;
label_LoadMemberAny : {
  SAVE;
  const KorvelMember* member = FindMember(B, at[-1].c);
  A = member != nullptr ? LoadMember(B, *member) : 0;
  NEXT;
}
label_StoreMemberAny : {
  SAVE;
  if (const KorvelMember* member = FindMember(B, at[-1].c)) StoreMember(B, *member, A);
  NEXT;
}
label_MemberVector : {
  const Value object = B;
  if (__builtin_expect(IsNull(object), 0)) {
    SAVE;
    Fault("null has no members.");
    A = kNothing;
    NEXT;
  }
  A = object + session.members.row(at[-1].c).offset;
  NEXT;
}
label_MemberVectorAny:
  SAVE;
  A = FindMemberVector(B, at[-1].c);
  NEXT;
label_CutVector:
  if (!IsNull(A)) Cut(reinterpret_cast<int32_t*>(A), at[-1].c);
  NEXT;
label_ArrayVector:
  SAVE;
  A = FindVector(B);
  NEXT;
label_TextLine:
  SAVE;
  A = FindLine(B, C);
  NEXT;
label_Number:
  GIVE(A, B, B, B);
  NEXT;
label_CheckKind:
  SAVE;
  A = CheckKind(A, at[-1].b);
  NEXT;

label_Call : {
  Function* callee = program.functions[static_cast<size_t>(WIDE)];
  Value* frame = &A;
  if (__builtin_expect(++now->depth > kDeepestCall, 0)) {
    SAVE;
    Fault("Functions call one another more than 200 deep; this one ends here.");
    goto end_task;
  }
  if (__builtin_expect(frame + callee->registers > now->segment->end, 0)) {
    Segment* segment = scheduler.Grow(*now, callee->registers);
    if (segment == nullptr) {
      SAVE;
      Fault("There is no more memory; this function ends here.");
      goto end_task;
    }
    std::memcpy(segment->slots, frame, sizeof(Value) * (kFirstParameter + callee->parameters));
    frame = segment->slots;
  }
  frame[kSlotReturn] = reinterpret_cast<Value>(at);
  frame[kSlotFrame] = reinterpret_cast<Value>(R);
  frame[kSlotFunction] = reinterpret_cast<Value>(callee);
  R = frame;
  at = program.code.data() + callee->entry;
  LOOK(nullptr);
  NEXT;
}
#define RETURN(result)                                                       \
  do {                                                                       \
    const Value value = result;                                              \
    const auto* back = reinterpret_cast<const Instruction*>(R[kSlotReturn]); \
    if (__builtin_expect(back == nullptr, 0)) goto end_task;                 \
    if (__builtin_expect(R == now->segment->slots, 0)) {                     \
      R = reinterpret_cast<Value*>(R[kSlotFrame]);                           \
      scheduler.Shrink(*now);                                                \
    } else {                                                                 \
      R = reinterpret_cast<Value*>(R[kSlotFrame]);                           \
    }                                                                        \
    --now->depth;                                                            \
    at = back;                                                               \
    A = value;                                                               \
    NEXT;                                                                    \
  } while (0)
label_ReturnZero:
  RETURN(0);
label_Return:
  RETURN(A);

#define ARGUMENTS_FIT(command, signature)                                                         \
  if (__builtin_expect(!CheckArguments(command, signature, arguments), 0)) {                      \
    *arguments = signature.result == kTypeNumber || signature.result == kTypeNothing ? 0 : kNull; \
    NEXT;                                                                                         \
  }
label_Command : {
  SAVE;
  Value* arguments = &A;
  *arguments = session.command(at[-1].b).function(session, arguments);
  LOOK(nullptr);
  NEXT;
}
label_CommandChecked : {
  SAVE;
  Value* arguments = &A;
  const Command& command = session.command(at[-1].b);
  ARGUMENTS_FIT(command, session.signature(at[-1].b))
  *arguments = command.function(session, arguments);
  LOOK(nullptr);
  NEXT;
}
label_CommandSwitch : {
  SAVE;
  Value* arguments = &A;
  const Command& command = session.command(at[-1].b);
  if (at[-1].c != 0) ARGUMENTS_FIT(command, session.signature(at[-1].b))
  now->pc = at;
  now->frame = R;
  now->result = arguments;
  wanted = Switch::kNone;
  *arguments = command.function(session, arguments);
  if (!limited) seen = debugger.seen();
  if (wanted == Switch::kNone) {
    LOOK(nullptr);
    NEXT;
  }
  if (wanted == Switch::kStart) {
    started->caller = now;
    now = started;
    goto enter;
  }
  if (wanted == Switch::kEnd || now->ends_at_wait) goto end_task;
  Task* caller = now->caller;
  now->caller = nullptr;
  now = caller;
  goto next_task;
}
label_Wait : {
  if (__builtin_expect(now->may_not_wait || now->ends_at_wait, 0)) goto label_CommandSwitch;
  const Value frames = A >> kFractionBits;
  scheduler.Wait(*now, session.frame_count() + (frames > 1 ? frames : 1));
  A = 0;
  now->pc = at;
  now->frame = R;
  Task* caller = now->caller;
  now->caller = nullptr;
  now = caller;
  goto next_task;
}
label_Poll:
  LOOK(nullptr);
  NEXT;

// Joined instructions. One that meets a fault runs as the first of those that it stands for, and they follow.
label_MulIntAdd : {
  const Value product = B * SHORT;
  if (__builtin_expect(!IsNumber(product), 0)) goto label_MulInt;
  A = product;
  ++at;
  const Value left = B;
  GIVE(A, left + product, left, product);
  NEXT;
}
label_AddKCell : {
  Fixed* cell = cells + WIDE;
  const Value sum = LoadCell(cell) + K[at->c];
  if (__builtin_expect(!IsNumber(sum), 0)) goto label_LoadCell;
  A = sum;
  StoreCell(cell, sum);
  at += 2;
  NEXT;
}
label_LoadCells:
  A = LoadCell(cells + WIDE);
  ++at;
  A = LoadCell(cells + WIDE);
  NEXT;
label_AddToElementK : {
  Array* array = ELEMENT_K;
  const uint64_t index = INDEX;
  if (__builtin_expect(index >= array->count, 0)) goto label_LoadElementK;
  Fixed* cell = array->cells + index;
  const Value old = LoadCell(cell);
  const Value sum = old + R[at->c];
  if (__builtin_expect(!IsNumber(sum), 0)) goto label_LoadElementK;
  A = old;
  R[at->a] = sum;
  StoreCell(cell, sum);
  at += 2;
  NEXT;
}
label_LoadFieldOfMe : {
  const Value me = ToValue(now->me);
  if (__builtin_expect(IsNull(me), 0)) goto label_LoadMe;
  A = me;
  ++at;
  A = LoadCell(FIELD(me));
  NEXT;
}
#define STEP(label, right, op, checked)                       \
  label : {                                                   \
    const Value sum = B + K[at[-1].c];                        \
    if (__builtin_expect(!IsNumber(sum), 0)) goto label_AddK; \
    A = sum;                                                  \
    ++at;                                                     \
    const Value other = right;                                \
    COMPARE_AND_JUMP(sum, other, op, false, checked, true);   \
  }
#define STEPS(name, op)                         \
  STEP(label_##name, B, op, false)              \
  STEP(label_##name##K, K[at[-1].b], op, false) \
  STEP(label_##name##Any, B, op, true)          \
  STEP(label_##name##KAny, K[at[-1].b], op, true)
  STEPS(StepLess, <)
  STEPS(StepLessEqual, <=)
  STEPS(StepGreater, >)
  STEPS(StepGreaterEqual, >=)

end_task : {
  Task* caller = now->caller;
  debugger.TaskEnded(*now);
  scheduler.End(*now);
  now = caller;
}
next_task:
  if (now == nullptr) now = scheduler.NextInWalk();
  if (now != nullptr) goto enter;
  task = nullptr;
  return Outcome::kDone;
}

}  // namespace korvel
