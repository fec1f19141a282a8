#pragma once
#include <array>
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
  bool Contains(std::string_view word, uint64_t hash) const { return MayContain(hash) && Find(word, hash); }
  /// False when no word of the set has this hash, true for all words of the set and a few others: most
  /// words of a text are in no set, and this tells with one load and no branch.
  bool MayContain(uint64_t hash) const { return (~m_filter[hash >> kFilterShift] & FilterBits(hash)) == 0; }
  void Clear();
  size_t Size() const { return m_entries.size(); }
  /// All words, in the order in which they were added.
  std::vector<std::string> Words() const;

 private:
  struct Entry {
    std::string text;
    uint64_t hash;
  };
  /// The filter takes its bits from both ends of the hash, the slots from between them.
  static constexpr int kFilterShift = 56;
  static constexpr int kSlotShift = 12;
  static constexpr size_t kFilterWords = size_t{1} << (64 - kFilterShift);

  /// Folds a product of 128 bits: each of its halves depends on all bytes. The numbers are odd and their
  /// bits without a pattern; they keep short words from being multiplied by zero.
  static uint64_t Mix(uint64_t hash, uint64_t first, uint64_t second) {
    using Product = unsigned __int128;
    const Product product = Product{hash ^ first ^ 0x9E3779B97F4A7C15u} * (second ^ 0xD6E8FEB86659FD93u);
    return static_cast<uint64_t>(product) ^ static_cast<uint64_t>(product >> 64);
  }
  static uint64_t FilterBits(uint64_t hash) {
    return (uint64_t{1} << (hash & 63)) | (uint64_t{1} << ((hash >> 6) & 63));
  }
  bool Find(std::string_view word, uint64_t hash) const;
  void Place(size_t number);
  void Rehash(size_t slots);

  /// A Bloom filter: two bits in one word for each name. Up to some 2,000 names it lets fewer than one
  /// strange word in twenty through; with more names look-ups only get slower.
  std::array<uint64_t, kFilterWords> m_filter{};
  std::vector<Entry> m_entries;
  std::vector<uint32_t> m_slots;  ///< entry number plus one, 0 for free; size a power of two
};

}  // namespace quill
