#pragma once
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

#include "base/HashFilter.h"
#include "base/NameSet.h"

namespace quill {

/// The names that words are looked up in, all in lower case; null stands for an empty set. In the order
/// in which they are asked: the first match wins.
struct WordSets {
  const NameSet* keywords = nullptr;
  const NameSet* commands = nullptr;
  const NameSet* functions = nullptr;
  const NameSet* variables = nullptr;
};

/// A word of up to 16 ASCII letters, digits and "_" as two machine words: filled up with zero, and with
/// the bit set in which the cases of letters differ. No two such words that differ in more than case are
/// the same then.
struct ShortWord {
  static constexpr size_t kLongest = NameSet::kShortWord;

  uint64_t first = 0;
  uint64_t second = 0;

  /// `kLongest` bytes must be readable at the word, which is not empty.
  static ShortWord Of(std::string_view text) {
    static_assert(std::endian::native == std::endian::little, "the first character is the lowest byte");
    ShortWord word, mask;
    std::memcpy(&word, text.data(), sizeof word);
    std::memcpy(&mask, kMasks.data() + kLongest - text.size(), sizeof mask);
    return {(word.first & mask.first) | kCaseBits, (word.second & mask.second) | kCaseBits};
  }
  uint64_t Hash() const { return NameSet::HashOfShort(first, second); }
  friend bool operator==(const ShortWord&, const ShortWord&) = default;

 private:
  static constexpr uint64_t kCaseBits = 0x2020202020202020u;
  /// The mask of a word ends where the bytes that are not zero end.
  static constexpr std::array<uint8_t, 2 * kLongest> kMasks = [] {
    std::array<uint8_t, 2 * kLongest> bytes{};
    for (size_t i = 0; i < kLongest; ++i) bytes[i] = 0xFF;
    return bytes;
  }();
};

/// Tells which of the sets has a word. Short names are in one table for all sets behind a filter: most
/// words of a script are in no set, and one look turns these away.
class WordClasses {
 public:
  static constexpr int32_t kNone = -1;

  WordClasses() : WordClasses(WordSets{}) {}
  explicit WordClasses(const WordSets& sets) { Use(sets); }

  /// Other sets; they must outlive it.
  void Use(const WordSets& sets);
  /// Those in use; an empty one where there was none.
  WordSets Sets() const;
  /// To be called before words are asked for when the sets may have changed; costs little when none has.
  void Refresh() {
    for (const Class& c : m_classes) {
      if (c.names->Version() != c.version) return Fill();
    }
  }

  /// The colour of a word, which is not empty, that a set has in lower case, else `kNone`.
  int32_t ColourOf(std::string_view word) const;

  /// The same for a short word of ASCII characters.
  int32_t ColourOf(ShortWord word) const {
    const uint64_t hash = word.Hash();
    return m_filter.MayHave(hash) ? Find(word, hash) : kNone;
  }

 private:
  static inline const NameSet kEmpty;

  struct Class {
    const NameSet* names;
    int32_t colour;
    uint64_t version;
  };
  struct Slot {
    ShortWord word;
    int32_t colour = kNone;  ///< of a free slot: kNone
  };

  void Fill();
  void Add(std::string_view name, int32_t colour);
  int32_t Find(ShortWord word, uint64_t hash) const;

  std::array<Class, 4> m_classes;
  HashFilter m_filter;        ///< for the short names
  std::vector<Slot> m_slots;  ///< these; size a power of two
};

/// Word classes with names of their own, which stay when others' change or go.
class WordClassesCopy {
 public:
  explicit WordClassesCopy(const WordClasses& original);
  WordClassesCopy(const WordClassesCopy&) = delete;
  WordClassesCopy& operator=(const WordClassesCopy&) = delete;

  const WordClasses& Get() const { return m_classes; }

 private:
  std::array<NameSet, 4> m_names;
  WordClasses m_classes;
};

}  // namespace quill
