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

uint32_t SoundLength(GameFolder& folder, const char* path) {
  char bytes[4096];
  const size_t count = folder.ReadBegin(path, bytes, sizeof bytes);
  const std::string_view view(bytes, count);
  if (count < 44 || view.substr(0, 4) != "RIFF" || view.substr(8, 4) != "WAVE") return 0;
  uint32_t rate = 0;
  for (size_t at = 12; at + 8 <= count;) {
    const uint32_t size = Number(view, at + 4, 4);
    if (view.substr(at, 4) == "fmt " && at + 24 <= count) rate = Number(view, at + 16, 4);
    if (view.substr(at, 4) == "data")
      return rate == 0 ? 0 : static_cast<uint32_t>(uint64_t{size} * 1000 / rate);
    at += 8 + size_t{size} + (size & 1);
  }
  return 0;
}

}  // namespace korvel
