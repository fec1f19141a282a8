// What instructions do only now and then: they look at what the compiler could not know, and tell faults.
#include <cstdio>

#include "engine/run/Cells.h"
#include "engine/run/Machine.h"
#include "engine/run/Session.h"

namespace korvel {

void Machine::Fault(const char* sentence) {
  session_.Fault(sentence);
}

Value Machine::NotANumber(Value left, Value right, Value result) {
  if (IsNumber(left) && IsNumber(right)) {
    Fault("The number is too large; it was cut.");
    return korvel::Cut(result);
  }
  Fault(IsNull(left) || IsNull(right) ? "A number is needed, but here is null."
                                      : "A number is needed, but here is an object.");
  return 0;
}

Value Machine::DividedByZero() {
  Fault("A division by zero gives 0.");
  return 0;
}

// The element of an array that its number means, or null, with a fault.
Fixed* Machine::FindElement(Value array_value, Value index) {
  if (!IsObject(array_value) || KindOf(array_value) != kTypeArray) {
    Fault("Only arrays have elements.");
    return nullptr;
  }
  auto* array = reinterpret_cast<Array*>(array_value);
  const auto number = static_cast<uint64_t>(index >> kFractionBits);
  if (number < array->count) return array->cells + number;
  Fault("The array has no element of this number.");
  return nullptr;
}

Value Machine::FindVector(Value array_value) {
  auto* array = reinterpret_cast<Array*>(array_value);
  if (IsObject(array_value) && array->head.kind == kTypeArray && array->count >= 3)
    return ToValue(array->cells);
  Fault("A vector needs an array of 3 numbers.");
  return kNothing;
}

Value Machine::FindLine(Value text_value, Value number) {
  auto* text = reinterpret_cast<Text*>(text_value);
  if (!IsObject(text_value) || text->head.kind != kKorvelText) {
    Fault(IsNull(text_value) ? "null has no members." : "Only texts have strings.");
    return kNull;
  }
  const Value line = number >> kFractionBits;
  if (line < 0 || line >= Floor(text->lines) || line >= static_cast<Value>(text->line_capacity)) {
    Fault("The text has no line of this number.");
    return kNull;
  }
  return ToValue(text->strings[line]);
}

Value Machine::CheckKind(Value value, int kind) {
  if (IsNull(value) || (!IsNumber(value) && FitsKind(KindOf(value), kind))) return value;
  Fault("This is not of the kind that the pointer points to; it becomes null.");
  return kNull;
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
  if (IsNull(object)) {
    Fault("null has no members.");
    return 0;
  }
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
  if (IsNull(object)) return Fault("null has no members.");
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

Value Machine::FindMemberVector(Value object, int name) {
  const KorvelMember* member = FindMember(object, name);
  if (member == nullptr) return kNothing;
  if (member->begins_vector) return object + member->offset;
  Fault("A vector begins with a member such as x, pan or skill1.");
  return kNothing;
}

void Machine::Cut(int32_t* cells, int member) {
  for (int i = 0; i < 3; ++i) {
    const KorvelMember& row = session_.members.row(member + i);
    if (row.low == row.high) continue;
    const Value value = LoadCell(cells + i);
    StoreCell(cells + i, value < row.low ? row.low : value > row.high ? row.high : value);
  }
}

}  // namespace korvel
