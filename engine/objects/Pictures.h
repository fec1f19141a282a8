// Pictures and sounds as far as their sizes and pixels matter to a game that has no window.
#pragma once

#include <cstdint>
#include <string_view>

namespace korvel {

class Arena;
class GameFolder;

struct PictureSize {
  int width = 0;
  int height = 0;
};

/// The size of a bitmap file (8, 24 or 32 bits, not packed), at most 4096 each; false for anything else.
bool ReadPictureSize(std::string_view bytes, PictureSize* size);

/// Its pixels, three bytes each, from the top.
bool ReadPicturePixels(std::string_view bytes, uint8_t* pixels);

/// How long a sound file (wave, Vorbis in Ogg, FLAC) lasts, in milliseconds; 0 when it is none of them.
uint32_t SoundLength(GameFolder& folder, const char* path, Arena& arena);

}  // namespace korvel
