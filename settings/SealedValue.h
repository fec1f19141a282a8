#pragma once
#include <optional>
#include <string>
#include <string_view>

/// Values whose bytes are handed to somebody who trusts them, such as a toolkit that restores its windows: a
/// CRC-32 stands in front (4 bytes, little-endian), so that a damaged value counts as missing.
namespace quill::sealed_value {

std::string Seal(std::string_view bytes);
/// Nothing when the bytes are not those that were sealed.
std::optional<std::string> Open(std::string_view sealed);

}  // namespace quill::sealed_value
