#pragma once
#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "base/CodePage1252.h"
#include "base/NameSet.h"
#include "text/ScriptColouring.h"

namespace quill {

/// A short ASCII word in lower case, made eight characters at a time.
class LowerWord {
 public:
  /// `kShortWord` bytes must be readable at `text`; `length` is 1 to `kShortWord`.
  LowerWord(const char* text, size_t length) : m_length(length) {
    static_assert(std::endian::native == std::endian::little, "the first character is the lowest byte");
    std::memcpy(m_halves, text, sizeof m_halves);
    m_halves[0] &= LowBytes(std::min<size_t>(length, 8));
    m_halves[1] &= LowBytes(std::max<size_t>(length, 8) - 8);
    m_ascii = ((m_halves[0] | m_halves[1]) & kHighBits) == 0;
    m_halves[0] = LowerAscii(m_halves[0]);
    m_halves[1] = LowerAscii(m_halves[1]);
  }

  /// Otherwise the rest is of no use.
  bool IsAscii() const { return m_ascii; }
  uint64_t Hash() const { return NameSet::HashOfShort(m_halves[0], m_halves[1]); }
  std::string_view Text() const { return {reinterpret_cast<const char*>(m_halves), m_length}; }

 private:
  static constexpr uint64_t kEachByte = 0x0101010101010101u;
  static constexpr uint64_t kHighBits = kEachByte * 0x80;

  static uint64_t LowBytes(size_t count) {
    static constexpr std::array<uint64_t, 9> kMasks = [] {
      std::array<uint64_t, 9> masks{};
      for (size_t i = 1; i < 9; ++i) masks[i] = masks[i - 1] << 8 | 0xFF;
      return masks;
    }();
    return kMasks[count];
  }

  /// Of eight ASCII characters. The sums carry into a byte's high bit from "A" and from behind "Z" on;
  /// where just the first one does, the bit moves to where the cases differ.
  static uint64_t LowerAscii(uint64_t bytes) {
    const uint64_t fromA = bytes + kEachByte * (0x80 - 'A');
    const uint64_t behindZ = bytes + kEachByte * (0x7F - 'Z');
    return bytes | ((fromA & ~behindZ & kHighBits) >> 2);
  }

  uint64_t m_halves[2];
  size_t m_length;
  bool m_ascii;
};

/// Tells which of the sets has a word.
class WordClasses {
 public:
  explicit WordClasses(const WordSets& sets)
      : m_keywords(OrEmpty(sets.keywords)),
        m_commands(OrEmpty(sets.commands)),
        m_functions(OrEmpty(sets.functions)),
        m_variables(OrEmpty(sets.variables)) {}

  /// The colour of a word that a set has, else -1. The word is not empty and `NameSet::kShortWord` bytes
  /// must be readable at it.
  int32_t ColourOf(const char* text, size_t length) const {
    if (length > NameSet::kShortWord) return ColourOfAny({text, length});
    const LowerWord word(text, length);
    if (!word.IsAscii()) return ColourOfAny({text, length});
    const uint64_t hash = word.Hash();
    // Without a branch for each set: it would be hard to predict.
    const auto mayHave = [hash](const NameSet& set) { return set.MayContain(hash) ? 1u : 0u; };
    const bool known =
        (mayHave(m_keywords) | mayHave(m_commands) | mayHave(m_functions) | mayHave(m_variables)) != 0;
    return known ? Find(word.Text(), hash) : -1;
  }

 private:
  static inline const NameSet kEmpty;

  static const NameSet& OrEmpty(const NameSet* set) { return set == nullptr ? kEmpty : *set; }
  int32_t ColourOfAny(std::string_view text) const {
    const std::string lower = cp1252::ToLower(text);
    return Find(lower, NameSet::Hash(lower));
  }
  int32_t Find(std::string_view word, uint64_t hash) const {
    if (m_keywords.Contains(word, hash)) return kColourKeyword;
    if (m_commands.Contains(word, hash)) return kColourCommand;
    if (m_functions.Contains(word, hash)) return kColourFunction;
    if (m_variables.Contains(word, hash)) return kColourVariable;
    return -1;
  }

  const NameSet& m_keywords;
  const NameSet& m_commands;
  const NameSet& m_functions;
  const NameSet& m_variables;
};

}  // namespace quill
