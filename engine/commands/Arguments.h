// How the functions behind commands read their arguments and give values.
#pragma once

#include <algorithm>
#include <string_view>

#include "engine/objects/Objects.h"
#include "engine/run/Session.h"
#include "engine/scene/Space.h"

namespace korvel {

inline Fixed Number(Value argument) {
  return static_cast<Fixed>(argument);
}
inline double Real(Value argument) {
  return ToDouble(static_cast<Fixed>(argument));
}
inline int32_t Whole(Value argument) {
  return Floor(static_cast<Fixed>(argument));
}
inline bool Flag(Value argument) {
  return argument != 0;
}
inline Value GiveBool(bool value) {
  return value ? kOne : 0;
}
inline Value GiveReal(double value) {
  return FromDouble(value);
}
inline Value GiveWhole(int64_t value) {
  return FromInt(value);
}

template <class T>
T& As(Value argument) {
  return *reinterpret_cast<T*>(argument);
}

inline std::string_view TextOf(Value argument) {
  return As<StringObject>(argument).view();
}

inline Triple ReadVector(Value argument) {
  const auto* cells = reinterpret_cast<const Fixed*>(argument);
  const auto read = [cells](int i) { return ToDouble(__atomic_load_n(cells + i, __ATOMIC_RELAXED)); };
  return {read(0), read(1), read(2)};
}

inline void WriteCell(Fixed* cell, Fixed value) {
  __atomic_store_n(cell, value, __ATOMIC_RELAXED);
}

inline void WriteVector(Value argument, const Triple& value) {
  auto* cells = reinterpret_cast<Fixed*>(argument);
  WriteCell(cells, FromDouble(value.x));
  WriteCell(cells + 1, FromDouble(value.y));
  WriteCell(cells + 2, FromDouble(value.z));
}

/// The same direction above -180 and up to 180.
inline double NormalAngle(double angle) {
  angle = std::fmod(angle, 360);
  return angle > 180 ? angle - 360 : angle <= -180 ? angle + 360 : angle;
}

/// Writes a number in the place of the first %d or %f of a format. Returns how many characters, at most
/// `size`.
size_t FormatNumber(std::string_view format, Fixed value, char* to, size_t size);

}  // namespace korvel
