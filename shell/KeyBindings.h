#pragma once
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "res/Commands.h"

namespace quill {

/// The user's shortcut keys: for some commands, by name, a list of keys in portable form that replaces the
/// keys of the command table.
///
/// As the profile keeps them: the characters "QKB1", a 16-bit count, then for each command its name and
/// its keys: a text (8-bit length, bytes), an 8-bit count, as many texts. Little-endian.
class KeyBindings {
 public:
  static constexpr size_t kMaxTextLength = 255;

  /// Nothing unless the bytes are such a record, whole and without a rest. Names that the command table
  /// lacks are kept: another version of the program may know them.
  static std::optional<KeyBindings> FromBytes(std::string_view bytes);
  std::string ToBytes() const;

  /// No user bindings at all: every command has its keys of the table.
  bool IsEmpty() const { return m_keys.empty(); }
  /// An empty list takes all keys away. Throws std::invalid_argument for more than 255 keys or a text that
  /// is longer than `kMaxTextLength`.
  void Set(std::string_view commandName, std::vector<std::string> keys);
  /// Back to the keys of the table.
  void Reset(std::string_view commandName);
  /// The keys that a command has: the user's, else those of the table that the user gave to no other.
  std::vector<std::string> KeysOf(const Command& command) const;
  bool operator==(const KeyBindings&) const = default;

 private:
  bool IsTaken(std::string_view key) const;

  std::map<std::string, std::vector<std::string>, std::less<>> m_keys;
};

}  // namespace quill
