// The walk over a line that computes states and braces only.

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include <algorithm>
#include <bit>
#include <cstring>

#include "base/CodePage1252.h"
#include "text/parse/LineScan.h"

namespace quill {
namespace {

using namespace parse_state;

constexpr int32_t kStep = 16;

/// One bit for each of 16 characters that may change the state or count as a brace.
#if defined(__SSE2__)
inline uint32_t InterestingIn(const char* text) {
  const __m128i v = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text));
  const auto is = [v](char c) { return _mm_cmpeq_epi8(v, _mm_set1_epi8(c)); };
  const __m128i quotes = _mm_or_si128(is('"'), is('\''));
  const __m128i braces = _mm_or_si128(is('{'), is('}'));
  const __m128i others = _mm_or_si128(is('/'), is('#'));
  return static_cast<uint32_t>(_mm_movemask_epi8(_mm_or_si128(_mm_or_si128(quotes, braces), others)));
}
#else
inline uint32_t InterestingIn(const char* text) {
  uint32_t mask = 0;
  for (int32_t i = 0; i < kStep; ++i) {
    const char c = text[i];
    const bool hit = c == '"' || c == '\'' || c == '{' || c == '}' || c == '/' || c == '#';
    mask |= static_cast<uint32_t>(hit) << i;
  }
  return mask;
}
#endif

/// Steps from one interesting character to the next.
class Skimmer {
 public:
  Skimmer(const char* text, const ScanPoint& from, int32_t to) : m_text(text), m_point(from), m_to(to) {}

  ScanPoint Run() {
    const int32_t from = m_point.column;
    if (from < m_to && from > 0 && IsCode() && m_text[from - 1] == '/') OpenComment(from - 1);
    for (int32_t base = from - from % kStep; base < m_to; base += kStep) {
      uint32_t mask = InterestingIn(m_text + base);
      if (base < from) mask &= ~0u << (from - base);
      if (m_to - base < kStep) mask &= (1u << (m_to - base)) - 1;
      while (mask != 0 && (m_point.state & kLineComment) == 0) {
        Visit(base + std::countr_zero(mask));
        mask &= mask - 1;
      }
      if ((m_point.state & kLineComment) != 0) break;
    }
    m_point.column = m_to;
    return m_point;
  }

 private:
  bool IsCode() const {
    return (m_point.state & (kLineComment | kString | kCharLiteral | kBlockComment)) == 0;
  }

  void Visit(int32_t at) {
    const char c = m_text[at];
    if (IsCode()) {
      VisitCode(at, c);
    } else if ((m_point.state & kString) != 0) {
      if (c == '"') m_point.state &= ~kString;
    } else if ((m_point.state & kCharLiteral) != 0) {
      if (c == '\'' && (at == 0 || m_text[at - 1] != '\\')) m_point.state &= ~kCharLiteral;
    } else if (c == '/' && at > 0 && m_text[at - 1] == '*') {
      m_point.state &= ~kBlockComment;
      m_point.commentEnd = at + 1;
      if (m_point.firstFrom >= 0) m_point.firstFrom = at + 1;
      OpenComment(at);
    }
  }

  void VisitCode(int32_t at, char c) {
    if (c == '/') {
      OpenComment(at);
    } else if (c == '{') {
      m_point.openBrace = true;
    } else if (c == '}') {
      m_point.closeBrace = true;
    } else if ((m_point.state & kPreprocessor) == 0) {
      if (c == '"') {
        m_point.state |= kString;
      } else if (c == '\'') {
        m_point.state |= kCharLiteral;
      } else if (IsFirstText(at)) {
        m_point.state |= kPreprocessor;
      }
    }
    if (c != '/' || m_point.commentEnd != at + 1) m_point.firstFrom = -1;
  }

  /// A comment whose marker begins with the "/" at `at`, which may also have ended another comment.
  void OpenComment(int32_t at) {
    if (at + 1 >= m_to) return;
    const char next = m_text[at + 1];
    if (next != '/' && next != '*') return;
    m_point.state |= next == '/' ? kLineComment : kBlockComment;
    m_point.quietComment = m_point.commentEnd == at + 1;
    m_point.firstFrom = -1;
  }

  bool IsFirstText(int32_t at) const {
    return m_point.firstFrom >= 0 && std::all_of(m_text + m_point.firstFrom, m_text + at, cp1252::IsSpace);
  }

  const char* m_text;
  ScanPoint m_point;
  int32_t m_to;
};

}  // namespace

ScanPoint Skim(const char* text, const ScanPoint& from, int32_t to) {
  return Skimmer(text, from, to).Run();
}

}  // namespace quill
