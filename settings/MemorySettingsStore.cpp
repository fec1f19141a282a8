#include "settings/MemorySettingsStore.h"

namespace quill {

bool MemorySettingsStore::KeyExists(std::string_view key) {
  return m_keys.find(key) != m_keys.end();
}

bool MemorySettingsStore::CreateKey(std::string_view key) {
  for (size_t end = key.find('\\'); end != std::string_view::npos; end = key.find('\\', end + 1)) {
    m_keys.try_emplace(std::string(key.substr(0, end)));
  }
  m_keys.try_emplace(std::string(key));
  return true;
}

std::vector<std::string> MemorySettingsStore::SubKeys(std::string_view key) {
  std::vector<std::string> names;
  const std::string prefix = std::string(key) + '\\';
  for (auto it = m_keys.lower_bound(prefix); it != m_keys.end() && it->first.starts_with(prefix); ++it) {
    std::string name = it->first.substr(prefix.size());
    if (name.find('\\') == std::string::npos) names.push_back(std::move(name));
  }
  return names;
}

std::optional<SettingsValue> MemorySettingsStore::Read(std::string_view key, std::string_view name) {
  const auto values = m_keys.find(key);
  if (values == m_keys.end()) return std::nullopt;
  const auto value = values->second.find(name);
  if (value == values->second.end()) return std::nullopt;
  return value->second;
}

bool MemorySettingsStore::Write(std::string_view key, std::string_view name, RegistryType type,
                                std::string_view bytes) {
  CreateKey(key);
  m_keys.find(key)->second.insert_or_assign(std::string(name), SettingsValue{type, std::string(bytes)});
  return true;
}

bool MemorySettingsStore::Delete(std::string_view key, std::string_view name) {
  const auto values = m_keys.find(key);
  if (values == m_keys.end()) return false;
  const auto value = values->second.find(name);
  if (value == values->second.end()) return false;
  values->second.erase(value);
  return true;
}

void MemorySettingsStore::ForEachValue(std::string_view key, const ValueVisitor& visit) {
  const auto values = m_keys.find(key);
  if (values == m_keys.end()) return;
  for (const auto& [name, value] : values->second) visit(name, value.type, value.bytes);
}

bool MemorySettingsStore::BeginTransaction() {
  if (m_depth++ == 0) {
    m_before = m_keys;
    m_rollback = false;
  }
  return true;
}

bool MemorySettingsStore::EndTransaction(bool commit) {
  m_rollback = m_rollback || !commit;
  if (--m_depth == 0) {
    if (m_rollback) m_keys = std::move(m_before);
    m_before.clear();
  }
  return !m_rollback;
}

}  // namespace quill
