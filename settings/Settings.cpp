#include "settings/Settings.h"

#include <algorithm>

#include "settings/SettingsKey.h"

namespace quill {

namespace {

/// The settings key, created when missing. When that fails, reads through it give their defaults.
SettingsKey OpenSettings(SettingsStore& store) {
  SettingsKey key(store);
  key.SetKey(settings::kKeyPath, true);
  return key;
}

}  // namespace

bool ReadFlag(SettingsStore& store, const FlagSetting& setting) {
  return OpenSettings(store).ReadFlag(setting.name, setting.fallback);
}

int32_t ReadInt(SettingsStore& store, const IntegerSetting& setting) {
  const int32_t value = OpenSettings(store).ReadInteger(setting.name, setting.fallback);
  return std::clamp(value, setting.min, setting.max);
}

uint32_t ReadColour(SettingsStore& store, const ColourSetting& setting, const DesktopColours& colours) {
  return OpenSettings(store).ReadColour(setting.name, setting.Fallback(colours));
}

std::string ReadText(SettingsStore& store, const TextSetting& setting) {
  return OpenSettings(store).ReadText(setting.name, setting.fallback);
}

bool WriteFlag(SettingsStore& store, const FlagSetting& setting, bool value) {
  return OpenSettings(store).WriteFlag(setting.name, value);
}

bool WriteInt(SettingsStore& store, const IntegerSetting& setting, int32_t value) {
  return OpenSettings(store).WriteInteger(setting.name, value);
}

bool WriteColour(SettingsStore& store, const ColourSetting& setting, uint32_t value) {
  return OpenSettings(store).WriteColour(setting.name, value);
}

bool WriteText(SettingsStore& store, const TextSetting& setting, std::string_view text) {
  return OpenSettings(store).WriteText(setting.name, text);
}

}  // namespace quill
