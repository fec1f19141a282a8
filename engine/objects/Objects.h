// Objects as the engine has them: what the host may see, in korvel.h, and what it need not know.
#pragma once

#include <string_view>

#include "engine/korvel.h"
#include "engine/memory/Arena.h"
#include "engine/scene/Space.h"

namespace korvel {

/// Flags in the head of an object.
enum : uint8_t {
  kByScript = 1,  ///< defined, not made while the game runs: it can be hidden, but not removed
  kShown = 2,
  kRemoved = 4,  ///< gone at the end of the frame
  kLiteral = 8,  ///< a text in quotes: nobody may change it
};

inline bool IsShown(const KorvelHead& head) {
  return (head.flags & kShown) != 0 && (head.flags & kRemoved) == 0;
}

struct StringObject : KorvelStringObject {
  uint32_t capacity;

  std::string_view view() const { return {text, length}; }
};

/// Pixels are red, green and blue, a byte each, row by row from the top.
struct Bitmap : KorvelBitmapObject {
  uint8_t* pixels;
  const char* file;
  uint32_t number;   ///< no other has it; 0 without pixels
  uint32_t version;  ///< counts changes of its pixels
};

struct Sound {
  KorvelHead head;
  uint32_t length_ms;
  const char* file;  ///< null when it was not found
};

struct Font : KorvelFontObject {
  const char* face;
};

/// Of a text without a font.
inline constexpr int kUsualFontWidth = 8;
inline constexpr int kUsualFontHeight = 16;

struct Panel : KorvelPanelObject {};

struct Text : KorvelTextObject {
  uint32_t line_capacity;
};

struct Material : KorvelMaterialObject {};
struct Sky : KorvelSkyObject {};
struct Window : KorvelWindowObject {};

struct Entity : KorvelEntityObject {
  Entity* next;  ///< in the level, in the order in which they were made
  Entity* previous;
  Bitmap* picture;   ///< null for a box
  const char* file;  ///< of its model or picture
  const char* name;
  bool solid;
};

struct View : KorvelViewObject {
  Entity* guide;  ///< that it follows, or null
  int32_t distance;
  int32_t shake_strength;
  int64_t shake_begin, shake_end;  ///< microseconds of game time
  Triple shake;                    ///< how far it is off its place in this frame
  int32_t fog_red, fog_green, fog_blue;
  bool has_fog_color;
};

}  // namespace korvel
