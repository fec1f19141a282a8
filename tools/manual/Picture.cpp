#include "tools/manual/Picture.h"

namespace quill::manual {
namespace {

using namespace std::string_view_literals;

/// The signature, and the length and name of the first chunk, which begins with width and height.
constexpr std::string_view kHead = "\x89PNG\r\n\x1A\n\0\0\0\x0DIHDR"sv;

uint32_t BigEndian(std::string_view bytes) {
  uint32_t number = 0;
  for (const char c : bytes.substr(0, sizeof number)) number = number << 8 | static_cast<unsigned char>(c);
  return number;
}

}  // namespace

std::optional<PictureSize> PngSize(std::string_view bytes) {
  if (!bytes.starts_with(kHead) || bytes.size() < kHead.size() + 2 * sizeof(uint32_t)) return std::nullopt;
  bytes.remove_prefix(kHead.size());
  return PictureSize{BigEndian(bytes), BigEndian(bytes.substr(sizeof(uint32_t)))};
}

}  // namespace quill::manual
