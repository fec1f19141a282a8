// Numbers of scripts: signed 32-bit integers that count steps of 1/1024.
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>

namespace korvel {

using Fixed = int32_t;

inline constexpr int kFractionBits = 10;
inline constexpr Fixed kOne = 1 << kFractionBits;
inline constexpr Fixed kLargest = INT32_MAX;
inline constexpr Fixed kSmallest = INT32_MIN;

/// The nearest number in range.
constexpr Fixed Cut(int64_t steps) {
  return steps > kLargest ? kLargest : steps < kSmallest ? kSmallest : static_cast<Fixed>(steps);
}

constexpr Fixed FromInt(int64_t whole) {
  return whole > INT32_MAX ? kLargest : whole < INT32_MIN ? kSmallest : Cut(whole * kOne);
}

/// The nearest step to a real number, halves away from zero, cut to the range.
inline Fixed FromDouble(double value) {
  const double steps = std::round(value * kOne);
  if (!(steps > kSmallest)) return kSmallest;
  return steps >= kLargest ? kLargest : static_cast<Fixed>(steps);
}

constexpr double ToDouble(Fixed value) {
  return static_cast<double>(value) / kOne;
}

/// The largest whole number that is not above the value.
constexpr int32_t Floor(Fixed value) {
  return value >> kFractionBits;
}

/// Product and quotient in steps, rounded to the nearest one, halves away from zero; not cut.
constexpr int64_t MultiplySteps(int64_t left, int64_t right) {
  const int64_t product = left * right;
  return product >= 0 ? (product + kOne / 2) >> kFractionBits : -((-product + kOne / 2) >> kFractionBits);
}
constexpr int64_t DivideSteps(int64_t left, int64_t right) {
  const int64_t scaled = left * kOne;
  const int64_t size = right < 0 ? -right : right;
  const int64_t quotient = ((scaled < 0 ? -scaled : scaled) * 2 + size) / (2 * size);
  return (scaled < 0) == (right < 0) ? quotient : -quotient;
}

/// Writes a number with decimals (0 to 10) in at least `width` characters; returns how many, at most 300.
/// `pad` fills up on the left, zeros behind the sign.
size_t WriteFixed(char* to, Fixed value, int decimals, int width, char pad);

/// Writes a number with up to four decimals, without zeros at its end; returns how many characters.
size_t WriteShort(char* to, Fixed value);

/// Reads blanks, a sign, digits, "." and digits, to the nearest step, cut to the range. `used` (may be null)
/// gets how many bytes were read, 0 when there is no number.
Fixed ReadFixed(const char* text, size_t length, size_t* used);

}  // namespace korvel
