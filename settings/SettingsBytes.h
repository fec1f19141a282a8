#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// Byte forms of settings values.
namespace quill::settings_bytes {

/// 4 bytes, little-endian.
inline std::string FromUint32(uint32_t value) {
  std::string bytes(4, '\0');
  for (char& byte : bytes) {
    byte = static_cast<char>(value & 0xFF);
    value >>= 8;
  }
  return bytes;
}

/// Nothing unless there are exactly 4 bytes.
inline std::optional<uint32_t> ToUint32(std::string_view bytes) {
  if (bytes.size() != 4) return std::nullopt;
  uint32_t value = 0;
  for (size_t i = 4; i-- > 0;) value = value << 8 | static_cast<uint8_t>(bytes[i]);
  return value;
}

/// A text with its terminator.
inline std::string FromText(std::string_view text) {
  std::string bytes(text);
  bytes.push_back('\0');
  return bytes;
}

/// The text up to the first NUL.
inline std::string ToText(std::string_view bytes) {
  return std::string(bytes.substr(0, bytes.find('\0')));
}

}  // namespace quill::settings_bytes
