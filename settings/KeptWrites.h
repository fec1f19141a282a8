#pragma once
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "settings/SettingsStore.h"

namespace quill {

/// Writes that a store has promised and could not make yet: the last one of each value, and keys.
class KeptWrites {
 public:
  /// Nothing stands for a value that is to be deleted.
  using Value = std::optional<SettingsValue>;

  void AddKey(std::string_view key) { KeyOf(key); }
  void Put(std::string_view key, std::string_view name, Value value) {
    KeyOf(key).insert_or_assign(std::string(name), std::move(value));
  }
  void Clear() { m_keys.clear(); }
  bool Empty() const { return m_keys.empty(); }

  /// Null when nothing is kept for this value.
  const Value* Find(std::string_view key, std::string_view name) const;
  /// The key, or one below it, is to be there.
  bool HasKey(std::string_view key) const;
  /// Adds the names of the keys directly below a key that are not in the list, and sorts it.
  void AddSubKeys(std::string_view key, std::vector<std::string>& names) const;
  /// Puts a key's writes over its values as they are stored.
  void PutOver(std::string_view key, std::map<std::string, SettingsValue>& values) const;

  /// Calls `key` for each key and `value` for each of its values until one returns false.
  bool ForEach(
      const std::function<bool(const std::string& key)>& key,
      const std::function<bool(const std::string& key, const std::string& name, const Value&)>& value) const;

 private:
  using Values = std::map<std::string, Value, std::less<>>;
  Values& KeyOf(std::string_view key);

  std::map<std::string, Values, std::less<>> m_keys;
};

}  // namespace quill
