#pragma once
#include <atomic>
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
  /// Words of up to so many bytes have a hash that is made of two machine words, see `HashOfShort`.
  static constexpr size_t kShortWord = 16;

  /// Hash of a word; the same for every set.
  static uint64_t Hash(std::string_view word);
  /// The same for a word of up to `kShortWord` bytes, given as its first and its second eight bytes as
  /// they lie in memory, filled up with zero.
  static uint64_t HashOfShort(uint64_t first, uint64_t second) { return Mix(0, first, second); }

  /// True when the word was not there before.
  bool Insert(std::string_view word);
  bool Contains(std::string_view word) const { return Contains(word, Hash(word)); }
  bool Contains(std::string_view word, uint64_t hash) const;
  void Clear();
  size_t Size() const { return m_entries.size(); }
  /// All words, in the order in which they were added.
  std::vector<std::string> Words() const;
  /// The word number `index` in this order.
  std::string_view WordAt(size_t index) const { return m_entries[index].text; }
  /// Another number after each change. Sets with the same number have the same words, so that it tells
  /// whether what was made from them still holds.
  uint64_t Version() const { return m_version; }

 private:
  struct Entry {
    std::string text;
    uint64_t hash;
  };
  /// Folds a product of 128 bits: each of its halves depends on all bytes. The numbers are odd and their
  /// bits without a pattern; they keep short words from being multiplied by zero.
  static uint64_t Mix(uint64_t hash, uint64_t first, uint64_t second) {
    using Product = unsigned __int128;
    const Product product = Product{hash ^ first ^ 0x9E3779B97F4A7C15u} * (second ^ 0xD6E8FEB86659FD93u);
    return static_cast<uint64_t>(product) ^ static_cast<uint64_t>(product >> 64);
  }
  void Place(size_t number);
  void Rehash(size_t slots);

  static inline std::atomic<uint64_t> s_lastVersion = 0;

  std::vector<Entry> m_entries;
  std::vector<uint32_t> m_slots;  ///< entry number plus one, 0 for free; size a power of two
  uint64_t m_version = 0;
};

}  // namespace quill
