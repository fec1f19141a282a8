#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "settings/AppProfile.h"
#include "settings/ProfileTable.h"
#include "settings/SettingsStore.h"
#include "settings/SettingsTable.h"

/// Reading and writing the rows of both tables. Nothing is cached by the readers: each reads a value when it
/// needs it.
namespace quill {

bool ReadFlag(SettingsStore& store, const FlagSetting& setting);
/// A stored number outside the setting's range gives the nearest end of it.
int32_t ReadInt(SettingsStore& store, const IntegerSetting& setting);
uint32_t ReadColour(SettingsStore& store, const ColourSetting& setting, const DesktopColours& colours);
std::string ReadText(SettingsStore& store, const TextSetting& setting);

/// False when the value was not stored. Put a SettingsTransaction around several.
bool WriteFlag(SettingsStore& store, const FlagSetting& setting, bool value);
bool WriteInt(SettingsStore& store, const IntegerSetting& setting, int32_t value);
bool WriteColour(SettingsStore& store, const ColourSetting& setting, uint32_t value);
/// False as well for a text of 255 characters or more; the old one stays.
bool WriteText(SettingsStore& store, const TextSetting& setting, std::string_view text);

inline int32_t ReadInt(const AppProfile& profile, const ProfileInteger& entry) {
  return profile.ReadInteger(entry.section, entry.name, entry.fallback);
}
/// Empty when missing.
inline std::string ReadText(const AppProfile& profile, const ProfileText& entry) {
  return profile.ReadText(entry.section, entry.name);
}
inline std::optional<std::string> ReadBinary(const AppProfile& profile, const ProfileBinary& entry) {
  return profile.ReadBinary(entry.section, entry.name);
}
inline bool WriteInt(AppProfile& profile, const ProfileInteger& entry, int32_t value) {
  return profile.WriteInteger(entry.section, entry.name, value);
}
inline bool WriteText(AppProfile& profile, const ProfileText& entry, std::string_view text) {
  return profile.WriteText(entry.section, entry.name, text);
}
inline bool WriteBinary(AppProfile& profile, const ProfileBinary& entry, std::string_view bytes) {
  return profile.WriteBinary(entry.section, entry.name, bytes);
}

}  // namespace quill
