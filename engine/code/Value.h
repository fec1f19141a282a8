// What a register holds: a number, or the address of an object, or null.
#pragma once

#include "engine/korvel.h"
#include "engine/language/Fixed.h"

namespace korvel {

/// Numbers are sign-extended; addresses and null lie outside the range of numbers, so that one comparison
/// tells them apart and a sum with an address is found out as if it were too large.
using Value = int64_t;

inline constexpr Value kNull = Value{1} << 40;
/// An argument whose fault has been told already.
inline constexpr Value kNothing = (Value{1} << 40) + 1;

inline bool IsNumber(Value value) {
  return value == static_cast<int32_t>(value);
}
inline bool IsNull(Value value) {
  return value == kNull || value == kNothing;
}
inline bool IsObject(Value value) {
  return !IsNumber(value) && !IsNull(value);
}
inline bool IsTrue(Value value) {
  return value != 0 && !IsNull(value);
}

/// The kind of a value by the names known while compiling; objects have their KorvelKind.
enum Type : int8_t {
  kTypeNumber = 0,
  kTypeFunction = kKorvelFunction,
  kTypeArray = 2,
  kTypeAny = -1,
  kTypeNull = -2,
  kTypeNothing = -3,  ///< of a command that gives nothing
};

inline int KindOf(Value value) {
  return reinterpret_cast<const KorvelHead*>(value)->kind;
}

/// True when an object can stand where a kind is asked for: both kinds of entities are entities.
inline bool FitsKind(int kind, int wanted) {
  return kind == wanted || (kind == kKorvelScreenEntity && wanted == kKorvelEntity);
}

template <class T>
Value ToValue(T* object) {
  return object == nullptr ? kNull : reinterpret_cast<Value>(object);
}

template <class T>
T* ToObject(Value value) {
  return IsNull(value) ? nullptr : reinterpret_cast<T*>(value);
}

/// The name of a kind in sentences.
const char* TypeName(int type);

/// Numbers in a row, of a script or of a function's locals.
struct Array {
  KorvelHead head;
  uint32_t count;
  Fixed cells[1];
};

/// A variable that points to an object. Engine_getobj gives those that point to entities.
struct PointerCell {
  KorvelHead head;
  uint32_t wanted;  ///< the kind that it may point to
  KorvelHead* target;
};
static_assert(sizeof(PointerCell) == sizeof(KorvelEntityPointerObject));
static_assert(offsetof(PointerCell, target) == offsetof(KorvelEntityPointerObject, target));

/// A number that stays within limits.
struct SkillCells {
  Fixed value, min, max;
};

}  // namespace korvel
