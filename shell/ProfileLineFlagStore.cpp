#include "shell/ProfileLineFlagStore.h"

#include <algorithm>
#include <charconv>
#include <optional>

#include "settings/SettingsBytes.h"

namespace quill {

namespace {

/// Room for any 32-bit integer in decimal.
constexpr size_t kMaxDigits = 11;
/// From this many words on, one look at all stored words is cheaper than touching each line's value.
constexpr size_t kBulk = 64;

std::string_view NameOf(int32_t line, char (&buffer)[kMaxDigits]) {
  const auto end = std::to_chars(buffer, buffer + kMaxDigits, line).ptr;
  return {buffer, static_cast<size_t>(end - buffer)};
}

/// The line index of a value's name; nothing unless it is written as `NameOf` writes it.
std::optional<int32_t> LineOf(std::string_view name) {
  int32_t line = 0;
  const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), line);
  char buffer[kMaxDigits];
  if (error != std::errc() || end != name.data() + name.size() || NameOf(line, buffer) != name) {
    return std::nullopt;
  }
  return line;
}

/// The stored word; 0, which no flag store keeps, for a value that is not a double-word.
uint32_t WordOf(RegistryType type, std::string_view bytes) {
  return type == RegistryType::kDword ? settings_bytes::ToUint32(bytes).value_or(0) : 0;
}

/// A section's words as they are stored, values of a wrong type included as 0.
class StoredWords {
 public:
  StoredWords() = default;
  StoredWords(SettingsStore& store, const std::string& key) {
    store.ForEachValue(key, [&](std::string_view name, RegistryType type, std::string_view bytes) {
      if (const std::optional<int32_t> line = LineOf(name)) m_words.emplace_back(*line, WordOf(type, bytes));
    });
    std::ranges::sort(m_words);
  }
  std::optional<uint32_t> Find(int32_t line) const {
    const auto it = std::ranges::lower_bound(m_words, line, {}, &LineFlagStore::Word::first);
    if (it == m_words.end() || it->first != line) return std::nullopt;
    return it->second;
  }

 private:
  std::vector<LineFlagStore::Word> m_words;
};

}  // namespace

std::vector<LineFlagStore::Word> ProfileLineFlagStore::ReadAll(const std::string& section) {
  std::vector<Word> words;
  m_profile.Store().ForEachValue(AppProfile::KeyOf(section),
                                 [&](std::string_view name, RegistryType type, std::string_view bytes) {
                                   const std::optional<int32_t> line = LineOf(name);
                                   const uint32_t word = WordOf(type, bytes);
                                   if (line && word != 0) words.emplace_back(*line, word);
                                 });
  return words;
}

void ProfileLineFlagStore::Write(const std::string& section, const std::vector<Word>& words) {
  SettingsStore& store = m_profile.Store();
  const std::string key = AppProfile::KeyOf(section);
  SettingsTransaction transaction(store);

  const bool bulk = words.size() >= kBulk;
  const StoredWords stored = bulk ? StoredWords(store, key) : StoredWords();
  char buffer[kMaxDigits];
  for (const auto& [line, word] : words) {
    const std::string_view name = NameOf(line, buffer);
    const std::optional<uint32_t> old = stored.Find(line);
    if (word != 0) {
      if (old != word) store.Write(key, name, RegistryType::kDword, settings_bytes::FromUint32(word));
    } else if (!bulk || old) {
      store.Delete(key, name);
    }
  }
  transaction.Commit();
}

}  // namespace quill
