#include "settings/AppProfile.h"

#include "settings/SettingsBytes.h"

namespace quill {

namespace {
constexpr std::string_view kProfileKey = "HKEY_CURRENT_USER\\Software\\Quill\\Vesper Editor";
}  // namespace

std::string AppProfile::KeyOf(std::string_view section) {
  std::string key(kProfileKey);
  if (!section.empty()) key.append(1, '\\').append(section);
  return key;
}

std::optional<std::string> AppProfile::Read(std::string_view section, std::string_view name,
                                            RegistryType type) const {
  std::optional<SettingsValue> value = m_store.Read(KeyOf(section), name);
  if (!value || value->type != type) return std::nullopt;
  return std::move(value->bytes);
}

int32_t AppProfile::ReadInteger(std::string_view section, std::string_view name, int32_t fallback) const {
  const std::optional<std::string> bytes = Read(section, name, RegistryType::kDword);
  const std::optional<uint32_t> value = bytes ? settings_bytes::ToUint32(*bytes) : std::nullopt;
  return value ? static_cast<int32_t>(*value) : fallback;
}

std::string AppProfile::ReadText(std::string_view section, std::string_view name,
                                 std::string_view fallback) const {
  const std::optional<std::string> bytes = Read(section, name, RegistryType::kString);
  return bytes ? settings_bytes::ToText(*bytes) : std::string(fallback);
}

std::optional<std::string> AppProfile::ReadBinary(std::string_view section, std::string_view name) const {
  return Read(section, name, RegistryType::kBinary);
}

bool AppProfile::ValueExists(std::string_view section, std::string_view name) const {
  return m_store.Read(KeyOf(section), name).has_value();
}

bool AppProfile::WriteInteger(std::string_view section, std::string_view name, int32_t value) {
  return m_store.Write(KeyOf(section), name, RegistryType::kDword,
                       settings_bytes::FromUint32(static_cast<uint32_t>(value)));
}

bool AppProfile::WriteText(std::string_view section, std::string_view name, std::string_view text) {
  return m_store.Write(KeyOf(section), name, RegistryType::kString, settings_bytes::FromText(text));
}

bool AppProfile::WriteBinary(std::string_view section, std::string_view name, std::string_view bytes) {
  return m_store.Write(KeyOf(section), name, RegistryType::kBinary, bytes);
}

bool AppProfile::DeleteValue(std::string_view section, std::string_view name) {
  return m_store.Delete(KeyOf(section), name);
}

}  // namespace quill
