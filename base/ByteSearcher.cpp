#include "base/ByteSearcher.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include "base/CodePage1252.h"

#if defined(__x86_64__) || defined(__i386__)
#include <immintrin.h>
#endif

namespace quill {
namespace {

/// How common a byte is in scripts, upper and lower case taken together: 0 for all that are not named.
constexpr std::array<uint8_t, 256> MakeCommonness() {
  constexpr std::string_view kCommonestFirst =
      " etaionsrldcpmuh_fgbvywx;,().=k0*1/-2\"zqj{}[]+3<>&|456789:!\t";
  std::array<uint8_t, 256> commonness{};
  for (size_t i = 0; i < kCommonestFirst.size(); ++i) {
    const auto c = static_cast<uint8_t>(kCommonestFirst[i]);
    const auto rank = static_cast<uint8_t>(kCommonestFirst.size() - i);
    commonness[c] = rank;
    if (c >= 'a' && c <= 'z') commonness[c - 'a' + 'A'] = rank;
  }
  return commonness;
}

constexpr std::array<uint8_t, 256> kCommonness = MakeCommonness();

uint8_t Commonness(char c) {
  return kCommonness[static_cast<uint8_t>(c)];
}

#if defined(__SSE2__)
/// Bit n is set when `text[n]` fits the value; sixteen bytes are read.
inline uint32_t Compare16(const char* text, __m128i mask, __m128i value) {
  const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text));
  return static_cast<uint32_t>(_mm_movemask_epi8(_mm_cmpeq_epi8(_mm_or_si128(bytes, mask), value)));
}

/// The same for eight bytes.
inline uint32_t Compare8(const char* text, __m128i mask, __m128i value) {
  const __m128i bytes = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(text));
  return static_cast<uint32_t>(_mm_movemask_epi8(_mm_cmpeq_epi8(_mm_or_si128(bytes, mask), value))) & 0xFF;
}

const bool kHasAvx2 = __builtin_cpu_supports("avx2") != 0;
#endif

}  // namespace

ByteSearcher::ByteSearcher(std::string_view what, bool matchCase)
    : m_what(matchCase ? std::string(what) : cp1252::ToUpper(what)),
      m_shortestText(what.empty() ? kNone : what.size()),
      m_matchCase(matchCase) {
  if (m_what.empty()) return;
  const auto rarest = std::min_element(m_what.begin(), m_what.end(),
                                       [](char a, char b) { return Commonness(a) < Commonness(b); });
  const auto first = static_cast<size_t>(rarest - m_what.begin());
  size_t second = first;
  for (size_t i = 0; i < m_what.size(); ++i) {
    if (m_what[i] == m_what[first]) continue;  // the same byte again tells little
    if (second == first || Commonness(m_what[i]) < Commonness(m_what[second])) second = i;
  }
  if (second == first && m_what.size() > 1) second = first == 0 ? m_what.size() - 1 : 0;
  m_first = MakeProbe(first);
  m_second = MakeProbe(second);
}

ByteSearcher::Probe ByteSearcher::MakeProbe(size_t offset) const {
  const auto upper = static_cast<uint8_t>(m_what[offset]);
  if (m_matchCase) return {offset, 0, upper};
  const auto lower = static_cast<uint8_t>(cp1252::ToLower(m_what[offset]));
  return {offset, static_cast<uint8_t>(upper ^ lower), static_cast<uint8_t>(upper | lower)};
}

bool ByteSearcher::Matches(const char* at) const {
  if (m_matchCase) return std::memcmp(at, m_what.data(), m_what.size()) == 0;
  return std::equal(m_what.begin(), m_what.end(), at, [](char a, char b) { return a == cp1252::ToUpper(b); });
}

size_t ByteSearcher::FirstMatch(const char* text, uint64_t candidates) const {
  for (; candidates != 0; candidates &= candidates - 1) {
    const auto at = static_cast<size_t>(std::countr_zero(candidates));
    if (Matches(text + at)) return at;
  }
  return kNone;
}

size_t ByteSearcher::FindBytewise(const char* text, size_t places) const {
  for (size_t i = 0; i < places; ++i) {
    if (m_first.Fits(text + i) && m_second.Fits(text + i) && Matches(text + i)) return i;
  }
  return kNone;
}

#if defined(__SSE2__)

// Every load stays inside the text: a block of places is compared only where all of it exists, and the
// last block overlaps the one before.
size_t ByteSearcher::FindIn(const char* text, size_t places) const {
  if (places < 8) return FindBytewise(text, places);
  if (places >= 128 && kHasAvx2) return FindBy32(text, places);
  const __m128i mask1 = _mm_set1_epi8(static_cast<char>(m_first.mask));
  const __m128i value1 = _mm_set1_epi8(static_cast<char>(m_first.value));
  const __m128i mask2 = _mm_set1_epi8(static_cast<char>(m_second.mask));
  const __m128i value2 = _mm_set1_epi8(static_cast<char>(m_second.value));
  const char* first = text + m_first.offset;
  const char* second = text + m_second.offset;
  const size_t block = places < 16 ? 8 : 16;
  for (size_t i = 0;;) {
    const uint32_t fits = block == 16
                              ? Compare16(first + i, mask1, value1) & Compare16(second + i, mask2, value2)
                              : Compare8(first + i, mask1, value1) & Compare8(second + i, mask2, value2);
    if (fits != 0) [[unlikely]] {
      const size_t at = FirstMatch(text + i, fits);
      if (at != kNone) return i + at;
    }
    if (i + block == places) return kNone;
    i = std::min(i + block, places - block);
  }
}

size_t ByteSearcher::FindPadded(const char* text, size_t size, size_t from) const {
  constexpr size_t kMostBytes = 64;
  if (size < from || size - from < m_shortestText) return kNone;
  if (size > kMostBytes) {
    const size_t at = Find({text + from, size - from});
    return at == kNone ? kNone : from + at;
  }
  const __m128i mask1 = _mm_set1_epi8(static_cast<char>(m_first.mask));
  const __m128i value1 = _mm_set1_epi8(static_cast<char>(m_first.value));
  const __m128i mask2 = _mm_set1_epi8(static_cast<char>(m_second.mask));
  const __m128i value2 = _mm_set1_epi8(static_cast<char>(m_second.value));
  uint64_t first = 0;  // a bit for each byte of the text
  uint64_t second = 0;
  for (size_t i = 0; i < size; i += kReadable) {
    first |= uint64_t{Compare16(text + i, mask1, value1)} << i;
    second |= uint64_t{Compare16(text + i, mask2, value2)} << i;
  }
  const size_t places = size - m_what.size() + 1;
  const uint64_t allowed = (~uint64_t{0} >> (kMostBytes - places)) & (~uint64_t{0} << from);
  return FirstMatch(text, (first >> m_first.offset) & (second >> m_second.offset) & allowed);
}

__attribute__((target("avx2"))) size_t ByteSearcher::FindBy32(const char* text, size_t places) const {
  constexpr size_t kBlock = 32;
  const __m256i mask1 = _mm256_set1_epi8(static_cast<char>(m_first.mask));
  const __m256i value1 = _mm256_set1_epi8(static_cast<char>(m_first.value));
  const __m256i mask2 = _mm256_set1_epi8(static_cast<char>(m_second.mask));
  const __m256i value2 = _mm256_set1_epi8(static_cast<char>(m_second.value));
  const char* first = text + m_first.offset;
  const char* second = text + m_second.offset;
  for (size_t i = 0;;) {
    const __m256i a = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(first + i));
    const __m256i b = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(second + i));
    const __m256i both = _mm256_and_si256(_mm256_cmpeq_epi8(_mm256_or_si256(a, mask1), value1),
                                          _mm256_cmpeq_epi8(_mm256_or_si256(b, mask2), value2));
    const auto fits = static_cast<uint32_t>(_mm256_movemask_epi8(both));
    if (fits != 0) [[unlikely]] {
      const size_t at = FirstMatch(text + i, fits);
      if (at != kNone) return i + at;
    }
    if (i + kBlock == places) return kNone;
    i = std::min(i + kBlock, places - kBlock);
  }
}

#else

size_t ByteSearcher::FindIn(const char* text, size_t places) const {
  return FindBytewise(text, places);
}

size_t ByteSearcher::FindPadded(const char* text, size_t size, size_t from) const {
  const size_t at = size < from ? kNone : Find({text + from, size - from});
  return at == kNone ? kNone : from + at;
}

#endif

}  // namespace quill
