#include "settings/SettingsKey.h"

#include "settings/SettingsBytes.h"

namespace quill {

std::string_view RootName(RegistryRoot root) {
  switch (root) {
    case RegistryRoot::kClassesRoot:
      return "HKEY_CLASSES_ROOT";
    case RegistryRoot::kCurrentUser:
      return "HKEY_CURRENT_USER";
    case RegistryRoot::kLocalMachine:
      return "HKEY_LOCAL_MACHINE";
    case RegistryRoot::kUsers:
      return "HKEY_USERS";
  }
  return {};
}

std::string SettingsKey::FullPath(std::string_view path) const {
  if (path.empty()) return {};
  const std::string_view root = RootName(m_root);
  std::string full;
  full.reserve(root.size() + 1 + path.size());
  full.append(root).append(1, '\\').append(path);
  return full;
}

bool SettingsKey::SetRoot(RegistryRoot root) {
  if (RootName(root).empty()) return false;
  m_root = root;
  m_fullPath = FullPath(m_path);
  return true;
}

bool SettingsKey::SetKey(std::string_view path, bool create) {
  std::string full = FullPath(path);
  if (full.empty()) {
    m_status = Status::kSuccess;
  } else if (create) {
    m_status = m_store.CreateKey(full) ? Status::kSuccess : Status::kAccessDenied;
  } else {
    m_status = m_store.KeyExists(full) ? Status::kSuccess : Status::kNotFound;
  }
  if (m_status != Status::kSuccess) return false;
  m_path = path;
  m_fullPath = std::move(full);
  return true;
}

bool SettingsKey::Open() {
  m_status = !m_fullPath.empty() && m_store.KeyExists(m_fullPath) ? Status::kSuccess : Status::kNotFound;
  return m_status == Status::kSuccess;
}

std::optional<SettingsValue> SettingsKey::Read(std::string_view name) {
  std::optional<SettingsValue> value;
  if (!m_fullPath.empty()) value = m_store.Read(m_fullPath, name);
  if (value) {
    m_status = Status::kSuccess;
  } else {
    Open();
  }
  return value;
}

bool SettingsKey::Write(std::string_view name, RegistryType type, std::string_view bytes) {
  if (!Open() || !m_store.Write(m_fullPath, name, type, bytes)) return false;
  return m_lazyWrite || m_store.Flush();
}

bool SettingsKey::ReadFlag(std::string_view name, bool fallback) {
  const int32_t value = ReadInteger(name, fallback ? 1 : 0);
  return value == 0 || value == 1 ? value == 1 : fallback;
}

int32_t SettingsKey::ReadInteger(std::string_view name, int32_t fallback) {
  return static_cast<int32_t>(ReadColour(name, static_cast<uint32_t>(fallback)));
}

uint32_t SettingsKey::ReadColour(std::string_view name, uint32_t fallback) {
  const std::optional<SettingsValue> value = Read(name);
  return value ? settings_bytes::ToUint32(value->bytes).value_or(fallback) : fallback;
}

std::string SettingsKey::ReadText(std::string_view name, std::string_view fallback) {
  const std::optional<SettingsValue> value = Read(name);
  const bool isText =
      value && (value->type == RegistryType::kString || value->type == RegistryType::kExpandString);
  if (!isText || value->bytes.size() > kMaxTextLength + 1) return std::string(fallback);
  return settings_bytes::ToText(value->bytes);
}

bool SettingsKey::WriteFlag(std::string_view name, bool value) {
  return WriteInteger(name, value ? 1 : 0);
}

bool SettingsKey::WriteInteger(std::string_view name, int32_t value) {
  return WriteColour(name, static_cast<uint32_t>(value));
}

bool SettingsKey::WriteColour(std::string_view name, uint32_t value) {
  return Write(name, RegistryType::kBinary, settings_bytes::FromUint32(value));
}

bool SettingsKey::WriteText(std::string_view name, std::string_view text) {
  if (text.size() > kMaxTextLength || text.find('\0') != std::string_view::npos) return false;
  return Write(name, RegistryType::kString, settings_bytes::FromText(text));
}

bool SettingsKey::DeleteValue(std::string_view name) {
  if (!Open() || !m_store.Delete(m_fullPath, name)) return false;
  return m_lazyWrite || m_store.Flush();
}

std::optional<RegistryType> SettingsKey::ValueType(std::string_view name) {
  const std::optional<SettingsValue> value = Read(name);
  return value ? std::optional(value->type) : std::nullopt;
}

std::optional<size_t> SettingsKey::ValueSize(std::string_view name) {
  const std::optional<SettingsValue> value = Read(name);
  return value ? std::optional(value->bytes.size()) : std::nullopt;
}

size_t SettingsKey::SubKeyCount() {
  return Open() ? m_store.SubKeys(m_fullPath).size() : 0;
}

size_t SettingsKey::ValueCount() {
  size_t count = 0;
  if (Open())
    m_store.ForEachValue(m_fullPath, [&](std::string_view, RegistryType, std::string_view) { ++count; });
  return count;
}

}  // namespace quill
