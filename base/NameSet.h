#pragma once
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quill {

/// A set of byte strings for look-ups in hot loops: open addressing, the caller may compute a word's
/// hash once and ask several sets. Keys are compared exactly (case matters).
class NameSet {
 public:
  /// Hash of a word; the same for every set.
  static uint32_t Hash(std::string_view word) {
    uint32_t h = 2166136261u ^ static_cast<uint32_t>(word.size());
    for (char c : word) h = (h ^ static_cast<uint8_t>(c)) * 16777619u;
    return h ^ (h >> 15);
  }

  /// True when the word was not there before.
  bool Insert(std::string_view word);
  bool Contains(std::string_view word) const { return Contains(word, Hash(word)); }
  bool Contains(std::string_view word, uint32_t hash) const {
    if (m_slots.empty()) return false;
    const size_t mask = m_slots.size() - 1;
    for (size_t i = hash & mask; m_slots[i] != 0; i = (i + 1) & mask) {
      const Entry& e = m_entries[m_slots[i] - 1];
      if (e.hash == hash && e.text == word) return true;
    }
    return false;
  }
  void Clear();
  size_t Size() const { return m_entries.size(); }
  /// All words, in the order in which they were added.
  std::vector<std::string> Words() const;

 private:
  struct Entry {
    std::string text;
    uint32_t hash;
  };
  void Rehash(size_t slots);

  std::vector<Entry> m_entries;
  std::vector<uint32_t> m_slots;  ///< entry number plus one, 0 for free; size a power of two
};

}  // namespace quill
