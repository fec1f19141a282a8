#include "settings/SealedValue.h"

#include <zlib.h>

#include "settings/SettingsBytes.h"

namespace quill::sealed_value {
namespace {

constexpr size_t kSealBytes = 4;

std::string SealOf(std::string_view bytes) {
  const uLong sum = crc32_z(0, reinterpret_cast<const Bytef*>(bytes.data()), bytes.size());
  return settings_bytes::FromUint32(static_cast<uint32_t>(sum));
}

}  // namespace

std::string Seal(std::string_view bytes) {
  return SealOf(bytes).append(bytes);
}

std::optional<std::string> Open(std::string_view sealed) {
  if (sealed.size() < kSealBytes) return std::nullopt;
  const std::string_view bytes = sealed.substr(kSealBytes);
  if (sealed.substr(0, kSealBytes) != SealOf(bytes)) return std::nullopt;
  return std::string(bytes);
}

}  // namespace quill::sealed_value
