#include "settings/KeptWrites.h"

#include <algorithm>

namespace quill {

KeptWrites::Values& KeptWrites::KeyOf(std::string_view key) {
  const auto found = m_keys.find(key);
  return found != m_keys.end() ? found->second : m_keys[std::string(key)];
}

const KeptWrites::Value* KeptWrites::Find(std::string_view key, std::string_view name) const {
  const auto values = m_keys.find(key);
  if (values == m_keys.end()) return nullptr;
  const auto value = values->second.find(name);
  return value == values->second.end() ? nullptr : &value->second;
}

bool KeptWrites::HasKey(std::string_view key) const {
  const std::string below = std::string(key) + '\\';
  return std::ranges::any_of(
      m_keys, [&](const auto& entry) { return entry.first == key || entry.first.starts_with(below); });
}

void KeptWrites::AddSubKeys(std::string_view key, std::vector<std::string>& names) const {
  const std::string above = std::string(key) + '\\';
  for (const auto& [path, values] : m_keys) {
    if (!path.starts_with(above)) continue;
    names.push_back(path.substr(above.size(), path.find('\\', above.size()) - above.size()));
  }
  std::ranges::sort(names);
  names.erase(std::unique(names.begin(), names.end()), names.end());
}

void KeptWrites::PutOver(std::string_view key, std::map<std::string, SettingsValue>& values) const {
  const auto kept = m_keys.find(key);
  if (kept == m_keys.end()) return;
  for (const auto& [name, value] : kept->second) {
    if (value) {
      values[name] = *value;
    } else {
      values.erase(name);
    }
  }
}

bool KeptWrites::ForEach(
    const std::function<bool(const std::string& key)>& key,
    const std::function<bool(const std::string& key, const std::string& name, const Value&)>& value) const {
  for (const auto& [path, values] : m_keys) {
    if (!key(path)) return false;
    for (const auto& [name, kept] : values) {
      if (!value(path, name, kept)) return false;
    }
  }
  return true;
}

}  // namespace quill
