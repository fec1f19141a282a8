#pragma once

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include <bit>
#include <cstdint>
#include <string_view>

#include "base/CodePage1252.h"

namespace quill {

/// What the walk over a line has to know of its characters, one bit a character: bit 0 is the first one.
struct CharMasks {
  uint64_t word = 0;         ///< characters of identifiers
  uint64_t beyondAscii = 0;  ///< from 0x80 on
  uint64_t digit = 0;        ///< "0" to "9"
  uint64_t bracket = 0;      ///< of all kinds
  uint64_t openBrace = 0;    ///< "{"
  uint64_t closeBrace = 0;   ///< "}"
  uint64_t marker = 0;       ///< quotes, "/" and "#": what may end a stretch of code
};

/// So many characters are classified at a time.
inline constexpr int32_t kMaskedChars = 64;

namespace char_masks {

inline constexpr int32_t kStep = 16;

/// The masks of `count` characters, one at a time.
inline CharMasks ByCharacter(const char* text, int32_t count) {
  CharMasks masks;
  for (int32_t i = 0; i < count; ++i) {
    const char c = text[i];
    const uint64_t bit = uint64_t{1} << i;
    if (cp1252::IsWordChar(c)) masks.word |= bit;
    if ((c & 0x80) != 0) masks.beyondAscii |= bit;
    if (cp1252::IsAsciiDigit(c)) masks.digit |= bit;
    if (std::string_view("[<({>)}]").find(c) != std::string_view::npos) masks.bracket |= bit;
    if (c == '{') masks.openBrace |= bit;
    if (c == '}') masks.closeBrace |= bit;
    if (std::string_view("\"'/#").find(c) != std::string_view::npos) masks.marker |= bit;
  }
  return masks;
}

#if defined(__SSE2__)
/// The masks of 16 characters, all at once, right for ASCII. Characters that differ in one bit only share a
/// comparison with this bit set.
inline CharMasks OfStep(const char* text) {
  const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text));
  const auto isEither = [](__m128i chars, char c) { return _mm_cmpeq_epi8(chars, _mm_set1_epi8(c)); };
  const auto with = [v](char bit) { return _mm_or_si128(v, _mm_set1_epi8(bit)); };
  const auto isBetween = [](__m128i chars, char first, char last) {
    return _mm_and_si128(_mm_cmpgt_epi8(chars, _mm_set1_epi8(static_cast<char>(first - 1))),
                         _mm_cmplt_epi8(chars, _mm_set1_epi8(static_cast<char>(last + 1))));
  };
  const auto either = [](__m128i a, __m128i b) { return _mm_or_si128(a, b); };
  const auto bits = [](__m128i found) { return static_cast<uint64_t>(_mm_movemask_epi8(found)); };

  const __m128i lower = with(0x20);
  const __m128i digit = isBetween(v, '0', '9');
  const __m128i word = either(either(isBetween(lower, 'a', 'z'), digit), isEither(v, '_'));
  const __m128i curlyOrSquare = either(isEither(lower, '{'), isEither(lower, '}'));
  const __m128i angleOrRound = either(isEither(with(0x02), '>'), isEither(with(0x01), ')'));
  const __m128i doubleQuoteOrHash = isEither(with(0x01), '#');
  const __m128i singleQuoteOrSlash = isEither(with(0x08), '/');
  return {.word = bits(word),
          .beyondAscii = bits(v),
          .digit = bits(digit),
          .bracket = bits(either(curlyOrSquare, angleOrRound)),
          .openBrace = bits(isEither(v, '{')),
          .closeBrace = bits(isEither(v, '}')),
          .marker = bits(either(doubleQuoteOrHash, singleQuoteOrSlash))};
}
#else
inline CharMasks OfStep(const char* text) {
  return ByCharacter(text, kStep);
}
#endif

inline void AddStep(const CharMasks& step, int32_t at, CharMasks& masks) {
  masks.word |= step.word << at;
  masks.beyondAscii |= step.beyondAscii << at;
  masks.digit |= step.digit << at;
  masks.bracket |= step.bracket << at;
  masks.openBrace |= step.openBrace << at;
  masks.closeBrace |= step.closeBrace << at;
  masks.marker |= step.marker << at;
}

}  // namespace char_masks

/// The masks of `count` characters, 1 to `kMaskedChars`; `text` must be readable up to the next multiple
/// of 16 of them. There may be bits of characters behind, but none in `word` and `beyondAscii`.
inline CharMasks MasksOf(const char* text, int32_t count) {
  CharMasks masks;
  for (int32_t at = 0; at < count; at += char_masks::kStep) {
    char_masks::AddStep(char_masks::OfStep(text + at), at, masks);
  }
  const uint64_t wanted = ~uint64_t{0} >> (kMaskedChars - count);
  masks.word &= wanted;
  masks.beyondAscii &= wanted;
  // Rare, and only words can have them.
  for (uint64_t left = masks.beyondAscii; left != 0; left &= left - 1) {
    if (cp1252::IsWordChar(text[std::countr_zero(left)])) masks.word |= left & -left;
  }
  return masks;
}

}  // namespace quill
