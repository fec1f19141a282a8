#include "base/CodePage1252.h"

#include <algorithm>
#include <array>

namespace quill::cp1252 {
namespace {

/// 0x80 to 0x9F, as published for Windows-1252.
constexpr std::array<char16_t, 32> kHigh = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                            0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                            0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                            0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

struct Tables {
  std::array<uint8_t, 256> classes{};
  std::array<uint8_t, 256> lower{};
  std::array<uint8_t, 256> upper{};
};

constexpr void Pair(Tables& t, int upper, int lower) {
  t.lower[upper] = static_cast<uint8_t>(lower);
  t.upper[lower] = static_cast<uint8_t>(upper);
  t.classes[upper] |= kLetter;
  t.classes[lower] |= kLetter;
}

constexpr Tables MakeTables() {
  Tables t;
  for (int i = 0; i < 256; ++i) t.lower[i] = t.upper[i] = static_cast<uint8_t>(i);
  for (int c = 'A'; c <= 'Z'; ++c) {
    Pair(t, c, c + 32);
    t.classes[c] |= kAsciiLetter;
    t.classes[c + 32] |= kAsciiLetter;
  }
  for (int c = '0'; c <= '9'; ++c) t.classes[c] |= kAsciiDigit;
  for (int c = 0xC0; c <= 0xDE; ++c) {
    if (c != 0xD7) Pair(t, c, c + 32);
  }
  Pair(t, 0x8A, 0x9A);
  Pair(t, 0x8C, 0x9C);
  Pair(t, 0x8E, 0x9E);
  Pair(t, 0x9F, 0xFF);
  // Letters without a partner in the code page: florin sign, modifier circumflex, ordinal marks,
  // micro sign, sharp s.
  for (int c : {0x83, 0x88, 0xAA, 0xB5, 0xBA, 0xDF}) t.classes[c] |= kLetter;
  for (int c : {9, 10, 11, 12, 13, 32, 0xA0}) t.classes[c] |= kSpace;
  return t;
}

constexpr Tables kTables = MakeTables();

}  // namespace

uint8_t ClassOf(char c) {
  return kTables.classes[static_cast<uint8_t>(c)];
}
char ToLower(char c) {
  return static_cast<char>(kTables.lower[static_cast<uint8_t>(c)]);
}
char ToUpper(char c) {
  return static_cast<char>(kTables.upper[static_cast<uint8_t>(c)]);
}

std::string ToLower(std::string_view text) {
  std::string out(text);
  for (char& c : out) c = ToLower(c);
  return out;
}

std::string ToUpper(std::string_view text) {
  std::string out(text);
  for (char& c : out) c = ToUpper(c);
  return out;
}

std::string_view Trimmed(std::string_view text) {
  while (!text.empty() && IsSpace(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsSpace(text.back())) text.remove_suffix(1);
  return text;
}

bool EqualNoCase(std::string_view a, std::string_view b) {
  return a.size() == b.size() &&
         std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) { return ToLower(x) == ToLower(y); });
}

char16_t ToUnicode(char c) {
  const auto byte = static_cast<uint8_t>(c);
  return byte >= 0x80 && byte <= 0x9F ? kHigh[byte - 0x80] : byte;
}

std::u16string ToUnicode(std::string_view text) {
  std::u16string out(text.size(), u'\0');
  std::transform(text.begin(), text.end(), out.begin(), [](char c) { return ToUnicode(c); });
  return out;
}

int FromUnicode(char32_t c) {
  if (c < 0x80 || (c >= 0xA0 && c <= 0xFF)) return static_cast<int>(c);
  const auto* found = std::find(kHigh.begin(), kHigh.end(), c);
  return found == kHigh.end() ? -1 : static_cast<int>(found - kHigh.begin()) + 0x80;
}

}  // namespace quill::cp1252
