#include "engine/objects/Pictures.h"

#include <cstring>

#include "engine/files/GameFolder.h"

namespace korvel {
namespace {

constexpr int kLargestSide = 4096;

uint32_t Number(std::string_view bytes, size_t at, size_t count) {
  uint32_t value = 0;
  for (size_t i = 0; i < count; ++i)
    value |= static_cast<uint32_t>(static_cast<uint8_t>(bytes[at + i])) << (8 * i);
  return value;
}

struct Header {
  size_t pixels;
  int width, height, bits;
  bool from_top;
  size_t palette;
};

bool ReadHeader(std::string_view bytes, Header* header) {
  if (bytes.size() < 54 || bytes.substr(0, 2) != "BM") return false;
  header->pixels = Number(bytes, 10, 4);
  const size_t info = Number(bytes, 14, 4);
  header->width = static_cast<int>(Number(bytes, 18, 4));
  const int height = static_cast<int>(Number(bytes, 22, 4));
  header->from_top = height < 0;
  if (height < -kLargestSide || height > kLargestSide || height == 0) return false;
  header->height = height < 0 ? -height : height;
  header->bits = static_cast<int>(Number(bytes, 28, 2));
  const uint32_t packing = Number(bytes, 30, 4);
  header->palette = 14 + info;
  return header->width > 0 && header->width <= kLargestSide && (packing == 0 || packing == 3) &&
         (header->bits == 8 || header->bits == 24 || header->bits == 32);
}

}  // namespace

bool ReadPictureSize(std::string_view bytes, PictureSize* size) {
  Header header;
  if (!ReadHeader(bytes, &header)) return false;
  *size = {header.width, header.height};
  return true;
}

bool ReadPicturePixels(std::string_view bytes, uint8_t* pixels) {
  Header header;
  if (!ReadHeader(bytes, &header)) return false;
  const size_t pixel = static_cast<size_t>(header.bits) / 8;
  const size_t row = (static_cast<size_t>(header.width) * pixel + 3) / 4 * 4;
  if (header.pixels > bytes.size() || bytes.size() - header.pixels < row * static_cast<size_t>(header.height))
    return false;
  for (int y = 0; y < header.height; ++y) {
    const size_t from =
        header.pixels + row * static_cast<size_t>(header.from_top ? y : header.height - 1 - y);
    for (int x = 0; x < header.width; ++x, pixels += 3) {
      size_t at = from + static_cast<size_t>(x) * pixel;
      if (header.bits == 8) at = header.palette + 4 * static_cast<uint8_t>(bytes[at]);
      if (at + 3 > bytes.size()) return false;
      pixels[0] = static_cast<uint8_t>(bytes[at + 2]);
      pixels[1] = static_cast<uint8_t>(bytes[at + 1]);
      pixels[2] = static_cast<uint8_t>(bytes[at]);
    }
  }
  return true;
}

namespace {

uint32_t Milliseconds(uint64_t samples, uint64_t rate) {
  const uint64_t time = rate == 0 ? 0 : samples * 1000 / rate;
  return static_cast<uint32_t>(samples > 0 && time == 0 ? 1 : time < UINT32_MAX ? time : UINT32_MAX);
}

uint32_t WaveLength(std::string_view bytes) {
  uint32_t rate = 0;
  for (size_t at = 12; at + 8 <= bytes.size();) {
    const uint32_t size = Number(bytes, at + 4, 4);
    if (bytes.substr(at, 4) == "fmt " && at + 24 <= bytes.size()) rate = Number(bytes, at + 16, 4);
    if (bytes.substr(at, 4) == "data") {
      return Milliseconds(size < bytes.size() - at - 8 ? size : bytes.size() - at - 8, rate);
    }
    at += 8 + size_t{size} + (size & 1);
  }
  return 0;
}

// The samples of a stream are told by its last page.
uint32_t OggLength(std::string_view bytes) {
  const size_t first = bytes.find("\x01vorbis");
  const size_t last = bytes.rfind("OggS");
  if (first == std::string_view::npos || first + 16 > bytes.size() || last + 14 > bytes.size()) return 0;
  const uint64_t samples = Number(bytes, last + 6, 4) | uint64_t{Number(bytes, last + 10, 4)} << 32;
  return Milliseconds(samples, Number(bytes, first + 12, 4));
}

uint32_t FlacLength(std::string_view bytes) {
  if (bytes.size() < 26) return 0;
  const auto byte = [bytes](size_t at) { return uint64_t{static_cast<uint8_t>(bytes[at])}; };
  const uint64_t rate = byte(18) << 12 | byte(19) << 4 | byte(20) >> 4;
  const uint64_t samples = (byte(21) & 15) << 32 | byte(22) << 24 | byte(23) << 16 | byte(24) << 8 | byte(25);
  return Milliseconds(samples, rate);
}

}  // namespace

uint32_t SoundLength(GameFolder& folder, const char* path, Arena& arena) {
  const std::string_view bytes = folder.ReadWhole(path, arena);
  uint32_t length = 0;
  if (bytes.size() > 12 && bytes.substr(0, 4) == "RIFF" && bytes.substr(8, 4) == "WAVE") {
    length = WaveLength(bytes);
  } else if (bytes.substr(0, 4) == "OggS") {
    length = OggLength(bytes);
  } else if (bytes.substr(0, 4) == "fLaC") {
    length = FlacLength(bytes);
  }
  folder.GiveBack(bytes, arena);
  return length;
}

}  // namespace korvel
