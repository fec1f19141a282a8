#pragma once
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace quill {

/// A picture decoded from a PCX file.
struct PcxImage {
  int32_t width = 0;
  int32_t height = 0;
  std::vector<uint32_t> pixels;  ///< 0xFFRRGGBB, row after row from the top

  uint32_t At(int32_t x, int32_t y) const {
    return pixels[static_cast<size_t>(y) * static_cast<size_t>(width) + static_cast<size_t>(x)];
  }
};

/// Pixels that a picture may have at most.
inline constexpr int64_t kMaxPcxPixels = int64_t{1} << 24;

/// Decodes a run-length encoded PCX file: 256 colours with a palette, 16 colours in four planes, two
/// colours, or 24 bits in three planes. Nothing for any other bytes, or for a header that announces more
/// than the file can hold. A picture that breaks off is black from there on.
std::optional<PcxImage> DecodePcx(std::string_view bytes);

}  // namespace quill
