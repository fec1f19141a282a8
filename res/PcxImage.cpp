#include "res/PcxImage.h"

#include <algorithm>
#include <array>

namespace quill {
namespace {

constexpr size_t kHeaderSize = 128;
constexpr uint8_t kManufacturer = 0x0A;
constexpr uint8_t kRunLengthEncoded = 1;
/// A byte with both upper bits set says how often the next one is repeated.
constexpr uint8_t kRunMark = 0xC0;
constexpr int64_t kLongestRun = 63;
/// The palette of 256 colours: a mark and three bytes a colour, at the end of the file.
constexpr uint8_t kPaletteMark = 0x0C;
constexpr size_t kPaletteSize = 1 + 256 * 3;
constexpr size_t kHeaderPalette = 16;

using Palette = std::array<uint32_t, 256>;

struct Header {
  int32_t width = 0;
  int32_t height = 0;
  int32_t bitsPerPixel = 0;
  int32_t planes = 0;
  int64_t bytesPerLine = 0;  ///< of one plane

  int64_t RowBytes() const { return bytesPerLine * planes; }
};

uint8_t ByteAt(std::string_view bytes, size_t offset) {
  return static_cast<uint8_t>(bytes[offset]);
}
int32_t WordAt(std::string_view bytes, size_t offset) {
  return ByteAt(bytes, offset) | ByteAt(bytes, offset + 1) << 8;
}
uint32_t ColourAt(std::string_view bytes, size_t offset) {
  return 0xFF000000U | static_cast<uint32_t>(ByteAt(bytes, offset)) << 16 |
         static_cast<uint32_t>(ByteAt(bytes, offset + 1)) << 8 | ByteAt(bytes, offset + 2);
}

bool IsKnownForm(const Header& header) {
  const std::pair<int32_t, int32_t> form(header.bitsPerPixel, header.planes);
  return form == std::pair(8, 1) || form == std::pair(8, 3) || form == std::pair(1, 1) ||
         form == std::pair(1, 4);
}

std::optional<Header> ReadHeader(std::string_view bytes) {
  if (bytes.size() < kHeaderSize || ByteAt(bytes, 0) != kManufacturer ||
      ByteAt(bytes, 2) != kRunLengthEncoded) {
    return std::nullopt;
  }
  Header header;
  header.bitsPerPixel = ByteAt(bytes, 3);
  header.width = WordAt(bytes, 8) - WordAt(bytes, 4) + 1;
  header.height = WordAt(bytes, 10) - WordAt(bytes, 6) + 1;
  header.planes = ByteAt(bytes, 65);
  header.bytesPerLine = WordAt(bytes, 66);
  if (header.width < 1 || header.height < 1 || !IsKnownForm(header)) return std::nullopt;
  const int64_t pixels = int64_t{header.width} * header.height;
  const int64_t needed = (int64_t{header.width} * header.bitsPerPixel + 7) / 8;
  const int64_t unpacked = header.RowBytes() * header.height;
  if (pixels > kMaxPcxPixels || header.bytesPerLine < needed ||
      unpacked > static_cast<int64_t>(bytes.size()) * kLongestRun) {
    return std::nullopt;
  }
  return header;
}

Palette ReadPalette(std::string_view bytes, const Header& header) {
  Palette palette{};
  if (header.bitsPerPixel == 1) {
    for (size_t i = 0; i < 16; ++i) palette[i] = ColourAt(bytes, kHeaderPalette + 3 * i);
    if (header.planes == 1) {
      palette[0] = 0xFF000000U;
      palette[1] = 0xFFFFFFFFU;
    }
    return palette;
  }
  for (uint32_t i = 0; i < 256; ++i) palette[i] = 0xFF000000U | i << 16 | i << 8 | i;
  if (bytes.size() < kHeaderSize + kPaletteSize) return palette;
  const size_t start = bytes.size() - kPaletteSize;
  if (ByteAt(bytes, start) != kPaletteMark) return palette;
  for (size_t i = 0; i < 256; ++i) palette[i] = ColourAt(bytes, start + 1 + 3 * i);
  return palette;
}

/// Unpacks the runs; what the file lacks stays 0.
std::vector<uint8_t> Unpack(std::string_view bytes, size_t size) {
  std::vector<uint8_t> unpacked(size);
  size_t to = 0;
  for (size_t from = kHeaderSize; from < bytes.size() && to < size;) {
    uint8_t value = ByteAt(bytes, from++);
    size_t count = 1;
    if ((value & kRunMark) == kRunMark) {
      if (from == bytes.size()) break;
      count = value & ~kRunMark;
      value = ByteAt(bytes, from++);
    }
    count = std::min(count, size - to);
    std::fill_n(unpacked.begin() + static_cast<ptrdiff_t>(to), count, value);
    to += count;
  }
  return unpacked;
}

uint32_t PixelOf(const uint8_t* row, const Header& header, const Palette& palette, int32_t x) {
  const int64_t plane = header.bytesPerLine;
  if (header.bitsPerPixel == 8 && header.planes == 3) {
    return 0xFF000000U | static_cast<uint32_t>(row[x]) << 16 | static_cast<uint32_t>(row[plane + x]) << 8 |
           row[2 * plane + x];
  }
  if (header.bitsPerPixel == 8) return palette[row[x]];
  uint32_t index = 0;
  for (int32_t i = 0; i < header.planes; ++i) {
    index |= static_cast<uint32_t>(row[i * plane + x / 8] >> (7 - x % 8) & 1) << i;
  }
  return palette[index];
}

}  // namespace

std::optional<PcxImage> DecodePcx(std::string_view bytes) {
  const std::optional<Header> header = ReadHeader(bytes);
  if (!header) return std::nullopt;
  const Palette palette = ReadPalette(bytes, *header);
  const std::vector<uint8_t> unpacked =
      Unpack(bytes, static_cast<size_t>(header->RowBytes() * header->height));
  PcxImage image{header->width, header->height, {}};
  image.pixels.reserve(static_cast<size_t>(image.width) * static_cast<size_t>(image.height));
  for (int32_t y = 0; y < image.height; ++y) {
    const uint8_t* row = unpacked.data() + header->RowBytes() * y;
    for (int32_t x = 0; x < image.width; ++x) image.pixels.push_back(PixelOf(row, *header, palette, x));
  }
  return image;
}

}  // namespace quill
