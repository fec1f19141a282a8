#pragma once
#include <cstdint>
#include <string>
#include <string_view>

/// The single-byte code page of all text (Windows-1252) and its character classes. Nothing here
/// depends on the process's locale. The five bytes that the code page leaves unassigned (0x81, 0x8D,
/// 0x8F, 0x90, 0x9D) stand for U+0081 and so on, so that every byte has one character.
namespace quill::cp1252 {

/// Bits of a byte's class word, see `ClassOf`.
enum CharClass : uint8_t {
  kAsciiLetter = 0x01,
  kAsciiDigit = 0x02,
  kLetter = 0x04,  ///< a letter as Unicode sees it, ASCII included
  kSpace = 0x08,   ///< white space as Unicode sees it: 9 to 13, 32, 0xA0
};

uint8_t ClassOf(char c);

/// "Single-byte" tests: ASCII only.
inline bool IsAsciiAlnum(char c) {
  return (ClassOf(c) & (kAsciiLetter | kAsciiDigit)) != 0;
}
inline bool IsAsciiDigit(char c) {
  return c >= '0' && c <= '9';
}
/// "Wide-character" tests.
inline bool IsAlnum(char c) {
  return (ClassOf(c) & (kLetter | kAsciiDigit)) != 0;
}
inline bool IsLetter(char c) {
  return (ClassOf(c) & kLetter) != 0;
}
inline bool IsSpace(char c) {
  return (ClassOf(c) & kSpace) != 0;
}
/// A character of an identifier: letter or digit (wide-character test) or "_".
inline bool IsWordChar(char c) {
  return IsAlnum(c) || c == '_';
}

/// Case pairs within the code page; a character whose partner lies outside it stays as it is.
char ToLower(char c);
char ToUpper(char c);
std::string ToLower(std::string_view text);
std::string ToUpper(std::string_view text);
/// Without white space at both ends.
std::string_view Trimmed(std::string_view text);
/// Equal but for case.
bool EqualNoCase(std::string_view a, std::string_view b);

/// The Unicode character of a byte.
char16_t ToUnicode(char c);
std::u16string ToUnicode(std::string_view text);
/// The byte of a Unicode character, or -1 when the code page has none.
int FromUnicode(char32_t c);

}  // namespace quill::cp1252
