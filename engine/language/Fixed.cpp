#include "engine/language/Fixed.h"

#include <algorithm>

namespace korvel {

size_t WriteFixed(char* to, Fixed value, int decimals, int width, char pad) {
  decimals = std::clamp(decimals, 0, 10);
  width = std::clamp(width, 0, 255);
  uint64_t power = 1;
  for (int i = 0; i < decimals; ++i) power *= 10;
  const bool negative = value < 0;
  const uint64_t steps =
      negative ? uint64_t{0} - static_cast<uint64_t>(static_cast<int64_t>(value)) : uint64_t(value);
  const uint64_t scaled = (steps * power + kOne / 2) / kOne;

  char digits[32];
  int count = 0;
  uint64_t rest = scaled;
  while (rest > 0 || count <= decimals) {
    if (count == decimals && decimals > 0) digits[count] = '.';
    digits[count < decimals || decimals == 0 ? count : count + 1] = static_cast<char>('0' + rest % 10);
    rest /= 10;
    ++count;
  }
  if (decimals > 0) {
    digits[decimals] = '.';
    ++count;
  }
  const bool sign = negative && scaled > 0;
  size_t length = 0;
  const int fill = width - count - (sign ? 1 : 0);
  if (sign && pad == '0') to[length++] = '-';
  for (int i = 0; i < fill; ++i) to[length++] = pad;
  if (sign && pad != '0') to[length++] = '-';
  while (count > 0) to[length++] = digits[--count];
  return length;
}

size_t WriteShort(char* to, Fixed value) {
  size_t length = WriteFixed(to, value, 4, 0, ' ');
  while (to[length - 1] == '0') --length;
  if (to[length - 1] == '.') --length;
  return length;
}

Fixed ReadFixed(const char* text, size_t length, size_t* used) {
  size_t i = 0;
  if (used != nullptr) *used = 0;
  while (i < length && (text[i] == ' ' || text[i] == '\t')) ++i;
  const bool negative = i < length && text[i] == '-';
  if (i < length && (text[i] == '-' || text[i] == '+')) ++i;
  const auto digit = [&] { return i < length && text[i] >= '0' && text[i] <= '9'; };
  if (!digit()) return 0;
  int64_t whole = 0;
  for (; digit(); ++i) whole = std::min<int64_t>(whole * 10 + (text[i] - '0'), int64_t{1} << 40);
  int64_t fraction = 0;
  int64_t power = 1;
  if (i < length && text[i] == '.') {
    ++i;
    for (; digit(); ++i) {
      if (power >= 1'000'000'000'000) continue;
      fraction = fraction * 10 + (text[i] - '0');
      power *= 10;
    }
  }
  if (used != nullptr) *used = i;
  const int64_t steps = whole * kOne + (fraction * kOne * 2 + power) / (2 * power);
  return Cut(negative ? -steps : steps);
}

}  // namespace korvel
