#pragma once

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include <array>
#include <cstdint>
#include <string_view>

#include "base/CodePage1252.h"

namespace quill {

/// What the walk over a line stops at, one bit a character: bit 0 is the first one.
struct CharMasks {
  uint64_t word = 0;     ///< characters of identifiers
  uint64_t special = 0;  ///< brackets, quotes, "/" and "#"
};

/// So many characters are classified at a time.
inline constexpr int32_t kMaskedChars = 64;

namespace char_masks {

inline constexpr int32_t kStep = 16;

enum Class : uint8_t { kWord = 1, kSpecial = 2 };

inline std::array<uint8_t, 256> MakeClasses() {
  std::array<uint8_t, 256> classes{};
  for (int i = 0; i < 256; ++i) {
    if (cp1252::IsWordChar(static_cast<char>(i))) classes[static_cast<size_t>(i)] = kWord;
  }
  for (const char c : std::string_view("[<({>)}]\"'/#")) classes[static_cast<uint8_t>(c)] = kSpecial;
  return classes;
}

inline const std::array<uint8_t, 256> kClasses = MakeClasses();

/// The masks of 16 characters, by table.
inline CharMasks OfStepByTable(const char* text) {
  CharMasks masks;
  for (int32_t i = 0; i < kStep; ++i) {
    const uint64_t classes = kClasses[static_cast<uint8_t>(text[i])];
    masks.word |= (classes & kWord) << i;
    masks.special |= (classes / kSpecial) << i;
  }
  return masks;
}

#if defined(__SSE2__)
/// The masks of 16 characters, all at once as long as they are ASCII. Characters that differ in one bit
/// only share a comparison with this bit set.
inline CharMasks OfStep(const char* text) {
  const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text));
  if (_mm_movemask_epi8(v) != 0) return OfStepByTable(text);
  const auto isEither = [](__m128i chars, char c) { return _mm_cmpeq_epi8(chars, _mm_set1_epi8(c)); };
  const auto with = [v](char bit) { return _mm_or_si128(v, _mm_set1_epi8(bit)); };
  const auto isBetween = [](__m128i chars, char first, char last) {
    return _mm_and_si128(_mm_cmpgt_epi8(chars, _mm_set1_epi8(static_cast<char>(first - 1))),
                         _mm_cmplt_epi8(chars, _mm_set1_epi8(static_cast<char>(last + 1))));
  };
  const auto either = [](__m128i a, __m128i b) { return _mm_or_si128(a, b); };
  const auto bits = [](__m128i found) { return static_cast<uint64_t>(_mm_movemask_epi8(found)); };

  const __m128i lower = with(0x20);
  const __m128i word = either(either(isBetween(lower, 'a', 'z'), isBetween(v, '0', '9')), isEither(v, '_'));
  const __m128i curlyOrSquare = either(isEither(lower, '{'), isEither(lower, '}'));
  const __m128i angleOrRound = either(isEither(with(0x02), '>'), isEither(with(0x01), ')'));
  const __m128i doubleQuoteOrHash = isEither(with(0x01), '#');
  const __m128i singleQuoteOrSlash = isEither(with(0x08), '/');
  return {bits(word),
          bits(either(either(curlyOrSquare, angleOrRound), either(doubleQuoteOrHash, singleQuoteOrSlash)))};
}
#else
inline CharMasks OfStep(const char* text) {
  return OfStepByTable(text);
}
#endif

}  // namespace char_masks

/// The masks of `count` characters, 1 to `kMaskedChars`; `text` must be readable up to the next multiple
/// of 16 of them.
inline CharMasks MasksOf(const char* text, int32_t count) {
  CharMasks masks;
  for (int32_t at = 0; at < count; at += char_masks::kStep) {
    const CharMasks step = char_masks::OfStep(text + at);
    masks.word |= step.word << at;
    masks.special |= step.special << at;
  }
  const uint64_t wanted = ~uint64_t{0} >> (kMaskedChars - count);
  return {masks.word & wanted, masks.special & wanted};
}

}  // namespace quill
