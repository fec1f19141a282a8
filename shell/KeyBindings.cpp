#include "shell/KeyBindings.h"

#include <algorithm>
#include <cstdint>
#include <stdexcept>

namespace quill {
namespace {

constexpr std::string_view kMagic = "QKB1";
constexpr size_t kMaxKeys = 255;

/// Takes numbers and texts off the front of a record; once something is missing, it stays failed.
class Reader {
 public:
  explicit Reader(std::string_view bytes) : m_rest(bytes) {}

  std::string_view Take(size_t length) {
    if (length > m_rest.size()) {
      m_failed = true;
      m_rest = {};
      return {};
    }
    const std::string_view taken = m_rest.substr(0, length);
    m_rest.remove_prefix(length);
    return taken;
  }
  size_t Byte() {
    const std::string_view taken = Take(1);
    return taken.empty() ? 0 : static_cast<uint8_t>(taken[0]);
  }
  std::string Text() { return std::string(Take(Byte())); }
  bool Failed() const { return m_failed; }
  bool AtEnd() const { return m_rest.empty(); }

 private:
  std::string_view m_rest;
  bool m_failed = false;
};

void AppendText(std::string& bytes, std::string_view text) {
  bytes += static_cast<char>(text.size());
  bytes += text;
}

}  // namespace

std::optional<KeyBindings> KeyBindings::FromBytes(std::string_view bytes) {
  Reader reader(bytes);
  if (reader.Take(kMagic.size()) != kMagic) return std::nullopt;
  const size_t low = reader.Byte();
  const size_t count = low | reader.Byte() << 8;
  KeyBindings bindings;
  for (size_t i = 0; i < count && !reader.Failed(); ++i) {
    const std::string name = reader.Text();
    std::vector<std::string> keys;
    for (size_t left = reader.Byte(); left > 0 && !reader.Failed(); --left) keys.push_back(reader.Text());
    bindings.m_keys.insert_or_assign(name, std::move(keys));
  }
  if (reader.Failed() || !reader.AtEnd()) return std::nullopt;
  return bindings;
}

std::string KeyBindings::ToBytes() const {
  std::string bytes(kMagic);
  bytes += static_cast<char>(m_keys.size() & 0xFF);
  bytes += static_cast<char>(m_keys.size() >> 8);
  for (const auto& [name, keys] : m_keys) {
    AppendText(bytes, name);
    bytes += static_cast<char>(keys.size());
    for (const std::string& key : keys) AppendText(bytes, key);
  }
  return bytes;
}

void KeyBindings::Set(std::string_view commandName, std::vector<std::string> keys) {
  const auto isTooLong = [](std::string_view text) { return text.size() > kMaxTextLength; };
  if (keys.size() > kMaxKeys || isTooLong(commandName) || std::any_of(keys.begin(), keys.end(), isTooLong)) {
    throw std::invalid_argument("key binding too long");
  }
  m_keys.insert_or_assign(std::string(commandName), std::move(keys));
}

void KeyBindings::Reset(std::string_view commandName) {
  const auto found = m_keys.find(commandName);
  if (found != m_keys.end()) m_keys.erase(found);
}

std::vector<std::string> KeyBindings::KeysOf(const Command& command) const {
  const auto found = m_keys.find(command.name);
  if (found != m_keys.end()) return found->second;
  std::vector<std::string> keys;
  for (std::string_view key : ShortcutsOf(command)) {
    if (!IsTaken(key)) keys.emplace_back(key);
  }
  return keys;
}

bool KeyBindings::IsTaken(std::string_view key) const {
  return std::any_of(m_keys.begin(), m_keys.end(), [key](const auto& entry) {
    return std::find(entry.second.begin(), entry.second.end(), key) != entry.second.end();
  });
}

}  // namespace quill
