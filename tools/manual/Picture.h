#pragma once
#include <cstdint>
#include <optional>
#include <string_view>

namespace quill::manual {

/// In pixels of the file.
struct PictureSize {
  uint32_t width = 0;
  uint32_t height = 0;
};

/// Of a PNG file; nothing when it is none.
std::optional<PictureSize> PngSize(std::string_view bytes);

}  // namespace quill::manual
