#include "engine/run/Machine.h"

#include <cstdio>

#include "engine/run/Session.h"

namespace korvel {
namespace {

constexpr uint32_t kDeepestCall = 200;

// An instruction as one word, so that a debugger on another thread may exchange its operation meanwhile.
struct Word {
  uint64_t bits;
  uint32_t op() const { return bits & 0xFFFF; }
  uint32_t a() const { return bits >> 16 & 0xFFFF; }
  uint32_t b() const { return bits >> 32 & 0xFFFF; }
  uint32_t c() const { return static_cast<uint32_t>(bits >> 48); }
  int32_t short_c() const { return static_cast<int16_t>(bits >> 48); }
  int32_t wide() const { return static_cast<int32_t>(bits >> 32); }
};

inline Word Fetch(const Instruction* pc) {
  return {__atomic_load_n(reinterpret_cast<const uint64_t*>(pc), __ATOMIC_RELAXED)};
}

// The array that a register holds, or null.
inline Array* ArrayAt(Value value) {
  return IsObject(value) && KindOf(value) == kTypeArray ? reinterpret_cast<Array*>(value) : nullptr;
}

inline Value LoadCell(const Fixed* cell) {
  return __atomic_load_n(cell, __ATOMIC_RELAXED);
}
inline void StoreCell(Fixed* cell, Value value) {
  __atomic_store_n(cell, static_cast<Fixed>(value), __ATOMIC_RELAXED);
}

}  // namespace

void Machine::Fault(const char* sentence) {
  session_.Fault(sentence);
}

void Machine::NumberFault(Value left, Value right) {
  if (IsNumber(left) && IsNumber(right)) return Fault("The number is too large; it was cut.");
  Fault(IsNull(left) || IsNull(right) ? "A number is needed, but here is null."
                                      : "A number is needed, but here is an object.");
}

bool Machine::CheckArguments(const Command& command, const Signature& signature, const Value* arguments) {
  char sentence[200];
  for (uint32_t i = 0; i < signature.count; ++i) {
    const Parameter& parameter = signature.parameters[i];
    const Value value = arguments[i];
    if (parameter.letter == 'n') {
      if (IsNumber(value)) continue;
      std::snprintf(sentence, sizeof sentence, "Argument %u of %s must be a number.", i + 1, command.name);
      Fault(sentence);
      return false;
    }
    if (value == kNothing) return false;
    if (IsNull(value)) {
      if (parameter.takes_null) continue;
      std::snprintf(sentence, sizeof sentence, "Argument %u of %s is null.", i + 1, command.name);
      Fault(sentence);
      return false;
    }
    const int wanted = LetterType(parameter.letter);
    if (wanted == kTypeAny) continue;
    if (IsNumber(value) || !FitsKind(KindOf(value), wanted)) {
      std::snprintf(sentence, sizeof sentence, "Argument %u of %s must be %s.", i + 1, command.name,
                    TypeName(wanted));
      Fault(sentence);
      return false;
    }
    if (parameter.letter == 'S' && (reinterpret_cast<const KorvelHead*>(value)->flags & kLiteral) != 0) {
      Fault("A text in quotes cannot be changed.");
      return false;
    }
  }
  return true;
}

Value Machine::LoadMember(Value object, const KorvelMember& member) {
  // The strings of a text can be changed without it.
  if (KindOf(object) == kKorvelText && member.offset == offsetof(KorvelTextObject, length)) {
    World::CountCharacters(*reinterpret_cast<Text*>(object));
  }
  const auto* cell = reinterpret_cast<const Fixed*>(reinterpret_cast<const char*>(object) + member.offset);
  const Value value = LoadCell(cell);
  if (member.encoding == kKorvelFixed) return value;
  return member.encoding == kKorvelInteger ? FromInt(value) : kNull;
}

void Machine::StoreMember(Value object, const KorvelMember& member, Value value) {
  if (member.encoding != kKorvelFixed || member.access != kKorvelWritable)
    return Fault("This member is only read.");
  if (member.low != member.high)
    value = value < member.low ? member.low : value > member.high ? member.high : value;
  StoreCell(reinterpret_cast<Fixed*>(reinterpret_cast<char*>(object) + member.offset), value);
}

// The member of an object whose kind is known only now; null, with a fault, when there is none.
const KorvelMember* Machine::FindMember(Value object, int name) {
  if (IsNumber(object) || IsNull(object)) {
    Fault(IsNumber(object) ? "A number has no members." : "null has no members.");
    return nullptr;
  }
  const int index = session_.members.Find(KindOf(object), name);
  if (index < 0) {
    Fault("This object does not have this member.");
    return nullptr;
  }
  return &session_.members.row(index);
}

void Machine::Cut(int32_t* cells, int member) {
  for (int i = 0; i < 3; ++i) {
    const KorvelMember& row = session_.members.row(member + i);
    if (row.low == row.high) continue;
    const Value value = LoadCell(cells + i);
    StoreCell(cells + i, value < row.low ? row.low : value > row.high ? row.high : value);
  }
}

Machine::Outcome Machine::Run(Task& first) {
#define KORVEL_ONE(name) &&label_##name,
  static const void* const kLabels[] = {KORVEL_OPERATIONS(KORVEL_ONE)};
#undef KORVEL_ONE

  Session& session = session_;
  Program& program = session.program;
  Debugger& debugger = session.debugger;
  Scheduler& scheduler = session.scheduler;
  Fixed* const cells = program.cells;
  const Value* const K = program.constants.data();
  Function* const* const functions = program.functions.data();
  const Fixed* const mode = cells + program.debug_mode->cell;
  Fixed seen = debugger.seen();
  int64_t fuel = budget;
  Task* now = &first;
  const Instruction* at = nullptr;
  Value* R = nullptr;
  Word i{};

// Dispatch: each instruction ends with a jump of its own to the next one.
#define NEXT               \
  do {                     \
    i = Fetch(at++);       \
    goto* kLabels[i.op()]; \
  } while (0)
#define SAVE (pc = at, task = now)
#define LOOK                                                                    \
  do {                                                                          \
    if (__builtin_expect(__atomic_load_n(mode, __ATOMIC_RELAXED) != seen, 0) || \
        __builtin_expect(--fuel < 0, 0))                                        \
      goto attention;                                                           \
  } while (0)
#define FAULT(sentence) (SAVE, Fault(sentence))
#define A R[i.a()]
#define B R[i.b()]
#define C R[i.c()]

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
      if (debugger.stepping()) debugger.NoteResult(*now, at, R);
      i = Fetch(at++);
      i.bits = (i.bits & ~uint64_t{0xFFFF}) | static_cast<uint16_t>(debugger.OriginalAt(at - 1));
      goto* kLabels[i.op()];
    }
  }
  NEXT;

attention:
  SAVE;
  if (fuel < 0) {
    budget = fuel;
    now->pc = at;
    now->frame = R;
    return Outcome::kSpent;
  }
  debugger.Attend(*now);
  seen = debugger.seen();
  NEXT;

label_Trap:
  SAVE;
  now->pc = at - 1;
  now->frame = R;
  if (debugger.AtTrap(*now, at - 1, R)) {
    budget = fuel;
    stopped = now;
    resume_at = at - 1;
    return Outcome::kStopped;
  }
  seen = debugger.seen();
  goto* kLabels[static_cast<uint16_t>(debugger.OriginalAt(at - 1))];

label_Move:
  A = B;
  NEXT;
label_Int:
  A = i.wide();
  NEXT;
label_Constant:
  A = K[i.wide()];
  NEXT;
label_LoadCell:
  A = LoadCell(cells + i.wide());
  NEXT;
label_StoreCell:
  StoreCell(cells + i.wide(), A);
  NEXT;
label_StoreSkill : {
  Fixed* skill = cells + i.wide();
  const Value low = LoadCell(skill + 1);
  const Value high = LoadCell(skill + 2);
  Value value = A;
  if (value > high) value = high;
  if (value < low) value = low;
  StoreCell(skill, value);
  NEXT;
}
label_LoadPointer:
  A = ToValue(reinterpret_cast<PointerCell*>(cells + i.wide())->target);
  NEXT;
label_StorePointer:
  __atomic_store_n(&reinterpret_cast<PointerCell*>(cells + i.wide())->target, ToObject<KorvelHead>(A),
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
  auto* array = reinterpret_cast<Array*>(R + i.wide());
  const auto count = static_cast<uint32_t>(at->wide());
  ++at;
  std::memset(static_cast<void*>(array), 0, sizeof(KorvelHead) + 4 + (count < 3 ? 3 : count) * sizeof(Fixed));
  array->head.kind = kTypeArray;
  array->count = count;
  A = ToValue(array);
  NEXT;
}

label_Add : {
  const Value sum = B + C;
  if (__builtin_expect(!IsNumber(sum), 0)) {
    SAVE;
    NumberFault(B, C);
    A = IsNumber(B) && IsNumber(C) ? korvel::Cut(sum) : 0;
    NEXT;
  }
  A = sum;
  NEXT;
}
label_Sub : {
  const Value difference = B - C;
  if (__builtin_expect(!IsNumber(difference), 0)) {
    SAVE;
    NumberFault(B, C);
    A = IsNumber(B) && IsNumber(C) ? korvel::Cut(difference) : 0;
    NEXT;
  }
  A = difference;
  NEXT;
}
label_AddK : {
  const Value sum = B + K[i.c()];
  if (__builtin_expect(!IsNumber(sum), 0)) {
    SAVE;
    NumberFault(B, 0);
    A = IsNumber(B) ? korvel::Cut(sum) : 0;
    NEXT;
  }
  A = sum;
  NEXT;
}
label_MulInt : {
  const Value product = B * i.short_c();
  if (__builtin_expect(!IsNumber(product), 0)) {
    FAULT("The number is too large; it was cut.");
    A = korvel::Cut(product);
    NEXT;
  }
  A = product;
  NEXT;
}
label_Mul : {
  const Value product = MultiplySteps(B, C);
  if (__builtin_expect(!IsNumber(product), 0)) {
    FAULT("The number is too large; it was cut.");
    A = korvel::Cut(product);
    NEXT;
  }
  A = product;
  NEXT;
}
label_Div : {
  if (__builtin_expect(C == 0, 0)) {
    FAULT("A division by zero gives 0.");
    A = 0;
    NEXT;
  }
  const Value quotient = DivideSteps(B, C);
  if (__builtin_expect(!IsNumber(quotient), 0)) {
    FAULT("The number is too large; it was cut.");
    A = korvel::Cut(quotient);
    NEXT;
  }
  A = quotient;
  NEXT;
}
label_Mod : {
  if (__builtin_expect(C == 0, 0)) {
    FAULT("A division by zero gives 0.");
    A = 0;
    NEXT;
  }
  A = B % C;
  NEXT;
}
label_ModK : {
  const Value value = B;
  const auto size = static_cast<uint64_t>(value < 0 ? -value : value);
  const auto quotient =
      static_cast<uint64_t>(static_cast<unsigned __int128>(size) * static_cast<uint64_t>(K[i.c() + 1]) >> 64);
  const auto rest = static_cast<Value>(size - quotient * static_cast<uint64_t>(K[i.c()]));
  A = value < 0 ? -rest : rest;
  NEXT;
}
label_And:
  A = B & C;
  NEXT;
label_Or:
  A = B | C;
  NEXT;
label_Neg : {
  const Value value = -B;
  if (__builtin_expect(!IsNumber(value), 0)) {
    FAULT("The number is too large; it was cut.");
    A = kLargest;
    NEXT;
  }
  A = value;
  NEXT;
}
label_Not:
  A = IsTrue(B) ? 0 : kOne;
  NEXT;
label_Truth:
  A = IsTrue(B) ? kOne : 0;
  NEXT;

#define COMPARE(name, op, equality)                                                                   \
  label_##name : {                                                                                    \
    const Value left = B;                                                                             \
    const Value right = C;                                                                            \
    bool holds = left op right;                                                                       \
    if (__builtin_expect(IsNumber(left) != IsNumber(right) || (!(equality) && !IsNumber(left)), 0)) { \
      SAVE;                                                                                           \
      NumberFault(left, right);                                                                       \
      holds = false;                                                                                  \
    }                                                                                                 \
    A = holds ? kOne : 0;                                                                             \
    NEXT;                                                                                             \
  }
  COMPARE(Less, <, false)
  COMPARE(LessEqual, <=, false)
  COMPARE(Equal, ==, true)
  COMPARE(Unequal, !=, true)

label_Jump:
  at += i.wide();
  NEXT;
label_JumpLoop:
  at += i.wide();
  LOOK;
  NEXT;
label_JumpTrue:
  if (IsTrue(A)) at += i.wide();
  NEXT;
label_JumpFalse:
  if (!IsTrue(A)) at += i.wide();
  NEXT;
label_JumpTrueLoop:
  if (IsTrue(A)) {
    at += i.wide();
    LOOK;
  }
  NEXT;
label_JumpFalseLoop:
  if (!IsTrue(A)) {
    at += i.wide();
    LOOK;
  }
  NEXT;

// A comparison of what cannot be compared does not hold, whichever way it was turned round.
#define JUMP(label, right, op, equality, checked, loop)                                               \
  label : {                                                                                           \
    const Value one = A;                                                                              \
    const Value other = right;                                                                        \
    if (checked) {                                                                                    \
      if (__builtin_expect(IsNumber(one) != IsNumber(other) || (!(equality) && !IsNumber(one)), 0)) { \
        SAVE;                                                                                         \
        NumberFault(one, other);                                                                      \
        if ((program.notes[at - 1 - program.code.data()] & kJumpsUnless) == 0) NEXT;                  \
        at += i.short_c();                                                                            \
        if (loop) LOOK;                                                                               \
        NEXT;                                                                                         \
      }                                                                                               \
    }                                                                                                 \
    if (one op other) {                                                                               \
      at += i.short_c();                                                                              \
      if (loop) LOOK;                                                                                 \
    }                                                                                                 \
    NEXT;                                                                                             \
  }
#define JUMPS(name, op, equality)                                \
  JUMP(label_##name, B, op, equality, false, false)              \
  JUMP(label_##name##K, K[i.b()], op, equality, false, false)    \
  JUMP(label_##name##Any, B, op, equality, true, false)          \
  JUMP(label_##name##KAny, K[i.b()], op, equality, true, false)  \
  JUMP(label_##name##Loop, B, op, equality, false, true)         \
  JUMP(label_##name##KLoop, K[i.b()], op, equality, false, true) \
  JUMP(label_##name##AnyLoop, B, op, equality, true, true)       \
  JUMP(label_##name##KAnyLoop, K[i.b()], op, equality, true, true)
  JUMPS(JumpLess, <, false)
  JUMPS(JumpLessEqual, <=, false)
  JUMPS(JumpGreater, >, false)
  JUMPS(JumpGreaterEqual, >=, false)
  JUMPS(JumpEqual, ==, true)
  JUMPS(JumpUnequal, !=, true)

label_LoadElementK : {
  auto* array = reinterpret_cast<Array*>(K[i.b()]);
  const auto index = static_cast<uint64_t>(C >> kFractionBits);
  if (__builtin_expect(index >= array->count, 0)) {
    FAULT("The array has no element of this number.");
    A = 0;
    NEXT;
  }
  A = LoadCell(array->cells + index);
  NEXT;
}
label_StoreElementK : {
  auto* array = reinterpret_cast<Array*>(K[i.b()]);
  const auto index = static_cast<uint64_t>(C >> kFractionBits);
  if (__builtin_expect(index >= array->count, 0)) {
    FAULT("The array has no element of this number.");
    NEXT;
  }
  StoreCell(array->cells + index, A);
  NEXT;
}
label_LoadElement : {
  Array* array = ArrayAt(B);
  const auto index = static_cast<uint64_t>(C >> kFractionBits);
  if (__builtin_expect(array == nullptr || index >= array->count, 0)) {
    FAULT(array == nullptr ? "Only arrays have elements." : "The array has no element of this number.");
    A = 0;
    NEXT;
  }
  A = LoadCell(array->cells + index);
  NEXT;
}
label_StoreElement : {
  Array* array = ArrayAt(B);
  const auto index = static_cast<uint64_t>(C >> kFractionBits);
  if (__builtin_expect(array == nullptr || index >= array->count, 0)) {
    FAULT(array == nullptr ? "Only arrays have elements." : "The array has no element of this number.");
    NEXT;
  }
  StoreCell(array->cells + index, A);
  NEXT;
}

label_LoadMember : {
  const Value object = B;
  if (__builtin_expect(IsNull(object), 0)) {
    FAULT("null has no members.");
    A = 0;
    NEXT;
  }
  A = LoadMember(object, session.members.row(static_cast<int>(i.c())));
  NEXT;
}
label_StoreMember : {
  const Value object = B;
  if (__builtin_expect(IsNull(object), 0)) {
    FAULT("null has no members.");
    NEXT;
  }
  SAVE;
  StoreMember(object, session.members.row(static_cast<int>(i.c())), A);
  NEXT;
}
label_LoadMemberAny : {
  SAVE;
  const KorvelMember* member = FindMember(B, static_cast<int>(i.c()));
  A = member != nullptr ? LoadMember(B, *member) : 0;
  NEXT;
}
label_StoreMemberAny : {
  SAVE;
  if (const KorvelMember* member = FindMember(B, static_cast<int>(i.c()))) StoreMember(B, *member, A);
  NEXT;
}
label_MemberVector : {
  const Value object = B;
  if (__builtin_expect(IsNull(object), 0)) {
    FAULT("null has no members.");
    A = kNothing;
    NEXT;
  }
  A = object + session.members.row(static_cast<int>(i.c())).offset;
  NEXT;
}
label_MemberVectorAny : {
  SAVE;
  const KorvelMember* member = FindMember(B, static_cast<int>(i.c()));
  if (member != nullptr && !member->begins_vector) {
    Fault("A vector begins with a member such as x, pan or skill1.");
    member = nullptr;
  }
  A = member != nullptr ? B + member->offset : kNothing;
  NEXT;
}
label_CutVector:
  if (!IsNull(A)) Cut(reinterpret_cast<int32_t*>(A), static_cast<int>(i.c()));
  NEXT;
label_ArrayVector : {
  auto* array = reinterpret_cast<Array*>(B);
  if (!IsObject(B) || array->head.kind != kTypeArray || array->count < 3) {
    FAULT("A vector needs an array of 3 numbers.");
    A = kNothing;
    NEXT;
  }
  A = ToValue(array->cells);
  NEXT;
}
label_TextLine : {
  auto* text = reinterpret_cast<Text*>(B);
  if (!IsObject(B) || text->head.kind != kKorvelText) {
    FAULT(IsNull(B) ? "null has no members." : "Only texts have strings.");
    A = kNull;
    NEXT;
  }
  const Value line = C >> kFractionBits;
  if (line < 0 || line >= Floor(text->lines) || line >= static_cast<Value>(text->line_capacity)) {
    FAULT("The text has no line of this number.");
    A = kNull;
    NEXT;
  }
  A = ToValue(text->strings[line]);
  NEXT;
}
label_Number:
  if (__builtin_expect(!IsNumber(B), 0)) {
    SAVE;
    NumberFault(B, B);
    A = 0;
    NEXT;
  }
  A = B;
  NEXT;
label_CheckKind:
  if (IsNull(A)) NEXT;
  if (IsNumber(A) || !FitsKind(KindOf(A), static_cast<int>(i.b()))) {
    FAULT("This is not of the kind that the pointer points to; it becomes null.");
    A = kNull;
  }
  NEXT;

label_Call : {
  Function* callee = functions[i.wide()];
  Value* frame = &A;
  if (__builtin_expect(++now->depth > kDeepestCall, 0)) {
    FAULT("Functions call one another more than 200 deep; this one ends here.");
    goto end_task;
  }
  if (__builtin_expect(frame + callee->registers > now->segment->end, 0)) {
    Segment* segment = scheduler.Grow(*now, callee->registers);
    if (segment == nullptr) {
      FAULT("There is no more memory; this function ends here.");
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
  LOOK;
  NEXT;
}
label_ReturnZero : {
  const auto* back = reinterpret_cast<const Instruction*>(R[kSlotReturn]);
  if (back == nullptr) goto end_task;
  Value* frame = R;
  R = reinterpret_cast<Value*>(R[kSlotFrame]);
  --now->depth;
  if (__builtin_expect(frame == now->segment->slots, 0)) scheduler.Shrink(*now);
  at = back;
  R[Fetch(at - 1).a()] = 0;
  NEXT;
}
label_Return : {
  const Value value = A;
  const auto* back = reinterpret_cast<const Instruction*>(R[kSlotReturn]);
  if (back == nullptr) goto end_task;
  Value* frame = R;
  R = reinterpret_cast<Value*>(R[kSlotFrame]);
  --now->depth;
  if (__builtin_expect(frame == now->segment->slots, 0)) scheduler.Shrink(*now);
  at = back;
  R[Fetch(at - 1).a()] = value;
  NEXT;
}

label_Command : {
  SAVE;
  Value* arguments = &A;
  *arguments = session.command(i.wide()).function(session, arguments);
  NEXT;
}
label_CommandChecked : {
  SAVE;
  Value* arguments = &A;
  const Command& command = session.command(i.wide());
  const Signature& signature = session.signature(i.wide());
  if (__builtin_expect(!CheckArguments(command, signature, arguments), 0)) {
    *arguments = signature.result == kTypeNumber || signature.result == kTypeNothing ? 0 : kNull;
    NEXT;
  }
  *arguments = command.function(session, arguments);
  NEXT;
}
label_CommandSwitch : {
  SAVE;
  Value* arguments = &A;
  const Command& command = session.command(i.wide());
  const Signature& signature = session.signature(i.wide());
  if (!CheckArguments(command, signature, arguments)) {
    *arguments = signature.result == kTypeNumber || signature.result == kTypeNothing ? 0 : kNull;
    NEXT;
  }
  now->pc = at;
  now->frame = R;
  now->result = arguments;
  wanted = Switch::kNone;
  *arguments = command.function(session, arguments);
  seen = debugger.seen();
  if (wanted == Switch::kNone) NEXT;
  if (wanted == Switch::kStart) {
    started->caller = now;
    now = started;
    goto enter;
  }
  if (wanted == Switch::kEnd || now->ends_at_wait) goto end_task;
  Task* caller = now->caller;
  now->caller = nullptr;
  budget = fuel;
  if (caller == nullptr) return Outcome::kDone;
  now = caller;
  goto enter;
}
label_Poll:
  if (__atomic_load_n(mode, __ATOMIC_RELAXED) != seen) goto attention;
  NEXT;

end_task : {
  Task* caller = now->caller;
  debugger.TaskEnded(*now);
  scheduler.End(*now);
  budget = fuel;
  if (caller == nullptr) {
    task = nullptr;
    return Outcome::kDone;
  }
  now = caller;
  goto enter;
}
}

}  // namespace korvel
