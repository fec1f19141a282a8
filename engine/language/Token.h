// The words and signs that a script is made of.
#pragma once

#include "engine/language/Fixed.h"
#include "engine/language/Names.h"

namespace korvel {

/// Signs have the code of their character, or of a pair of characters made by Pair.
enum : uint16_t {
  kEndToken = 0,
  kNameToken = 1,
  kNumberToken = 2,
  kTextToken = 3,  ///< a text in quotes
  kFileToken = 4,  ///< a name between "<" and ">"
  kHashToken = 5,  ///< "#" that begins a line
};

constexpr uint16_t Pair(char first, char second) {
  return static_cast<uint16_t>(static_cast<uint8_t>(first) << 8 | static_cast<uint8_t>(second));
}

struct Token {
  uint16_t type = kEndToken;
  bool begins_line = false;   ///< nothing but blanks stands before it on its line
  bool first_column = false;  ///< nothing at all does
  uint32_t line = 0;
  uint32_t file = 0;
  uint32_t length = 0;  ///< of a text or file name
  union {
    Name* name = nullptr;
    Fixed number;
    const char* text;
  };
  Name* define = nullptr;  ///< the define that it came from

  bool Is(uint16_t sign) const { return type == sign; }
  bool Is(Keyword keyword) const { return type == kNameToken && name->keyword == keyword; }
  std::string_view view() const { return {text, length}; }
};

}  // namespace korvel
