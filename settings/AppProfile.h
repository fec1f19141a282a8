#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "settings/SettingsStore.h"

namespace quill {

/// The application profile: sections below "Software\Quill\Vesper Editor" of the current user, each a
/// key with values. Integers are double-words, texts are strings of any length, blocks are binary. A value
/// of another type counts as missing. Reading creates nothing.
class AppProfile {
 public:
  explicit AppProfile(SettingsStore& store) : m_store(store) {}

  /// The store's key of a section; backslashes in the name make keys below keys.
  static std::string KeyOf(std::string_view section);

  int32_t ReadInteger(std::string_view section, std::string_view name, int32_t fallback) const;
  std::string ReadText(std::string_view section, std::string_view name, std::string_view fallback = {}) const;
  std::optional<std::string> ReadBinary(std::string_view section, std::string_view name) const;
  bool ValueExists(std::string_view section, std::string_view name) const;

  bool WriteInteger(std::string_view section, std::string_view name, int32_t value);
  bool WriteText(std::string_view section, std::string_view name, std::string_view text);
  bool WriteBinary(std::string_view section, std::string_view name, std::string_view bytes);
  /// False when there was no such value.
  bool DeleteValue(std::string_view section, std::string_view name);

  /// For transactions over several writes and walks over a section.
  SettingsStore& Store() const { return m_store; }

 private:
  std::optional<std::string> Read(std::string_view section, std::string_view name, RegistryType type) const;

  SettingsStore& m_store;
};

}  // namespace quill
