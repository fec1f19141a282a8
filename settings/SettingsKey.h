#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "settings/SettingsStore.h"

namespace quill {

/// The roots of the registry, by their handle values on the platform.
enum class RegistryRoot : uint32_t {
  kClassesRoot = 0x80000000,
  kCurrentUser = 0x80000001,
  kLocalMachine = 0x80000002,
  kUsers = 0x80000003,
};

/// Name of a root as it begins the store's key paths, "HKEY_CURRENT_USER" and so on; empty for a value
/// that is not one of the four.
std::string_view RootName(RegistryRoot root);

/// One key of the settings store, through which preferences are read and written. Nothing is kept open
/// between two operations. Flags, integers and colours are binary values of 4 bytes, little-endian; texts
/// are strings of up to 254 characters.
class SettingsKey {
 public:
  /// Outcome of the last attempt to open the key, by the platform's status codes.
  enum class Status : int32_t { kSuccess = 0, kNotFound = 2, kAccessDenied = 5 };

  static constexpr size_t kMaxTextLength = 254;

  explicit SettingsKey(SettingsStore& store) : m_store(store) {}

  /// False, and nothing changed, for a value that is not one of the four roots.
  bool SetRoot(RegistryRoot root);
  RegistryRoot Root() const { return m_root; }
  /// Opens the key at `path` below the root; with `create` it is made when missing. The path is kept on
  /// success only. An empty path clears it and succeeds; reads then give defaults and writes fail.
  bool SetKey(std::string_view path, bool create);
  const std::string& Path() const { return m_path; }
  /// Lazy writes (the default) reach the disk when the system likes; others before the write returns.
  void SetLazyWrite(bool lazy) { m_lazyWrite = lazy; }
  bool IsLazyWrite() const { return m_lazyWrite; }
  Status LastStatus() const { return m_status; }

  /// `fallback` as well for a stored value other than 0 and 1.
  bool ReadFlag(std::string_view name, bool fallback);
  /// The type is not looked at; a value that is not 4 bytes long gives `fallback`.
  int32_t ReadInteger(std::string_view name, int32_t fallback);
  /// A colour reference 0x00BBGGRR.
  uint32_t ReadColour(std::string_view name, uint32_t fallback);
  /// `fallback` unless the value is a string or expandable string of at most 255 bytes.
  std::string ReadText(std::string_view name, std::string_view fallback);

  bool WriteFlag(std::string_view name, bool value);
  bool WriteInteger(std::string_view name, int32_t value);
  bool WriteColour(std::string_view name, uint32_t value);
  /// Refuses a text of 255 characters or more, and one with a NUL; the old value stays.
  bool WriteText(std::string_view name, std::string_view text);

  /// False when there was no such value.
  bool DeleteValue(std::string_view name);
  bool ValueExists(std::string_view name) { return Read(name).has_value(); }
  std::optional<RegistryType> ValueType(std::string_view name);
  /// In bytes, a text's terminator included.
  std::optional<size_t> ValueSize(std::string_view name);
  size_t SubKeyCount();
  size_t ValueCount();

 private:
  std::optional<SettingsValue> Read(std::string_view name);
  bool Write(std::string_view name, RegistryType type, std::string_view bytes);
  bool Open();
  std::string FullPath(std::string_view path) const;

  SettingsStore& m_store;
  RegistryRoot m_root = RegistryRoot::kCurrentUser;
  std::string m_path;
  std::string m_fullPath;  ///< root and path; empty while the path is
  bool m_lazyWrite = true;
  Status m_status = Status::kSuccess;
};

}  // namespace quill
