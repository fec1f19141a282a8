// The walk over a line that finds its coloured blocks.
#include "text/LineScan.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include "base/CodePage1252.h"
#include "text/CharMasks.h"
#include "text/WordClasses.h"

namespace quill {
namespace {

using namespace parse_state;

int32_t ColourOfState(uint32_t state) {
  if ((state & (kLineComment | kBlockComment)) != 0) return kColourComment;
  if ((state & (kString | kCharLiteral)) != 0) return kColourString;
  return (state & kPreprocessor) != 0 ? kColourPreprocessor : kColourText;
}

/// Appends blocks in ascending columns.
class BlockWriter {
 public:
  BlockWriter(TextBlock* blocks, int32_t count)
      : m_next(blocks + count), m_lastColumn(count > 0 ? m_next[-1].column : -1) {}

  /// False when the rule of ascending columns drops the block.
  bool Append(int32_t column, int32_t colour) {
    if (m_lastColumn > column) return false;
    m_next -= m_lastColumn == column ? 1 : 0;
    *m_next++ = {column, colour};
    m_lastColumn = column;
    return true;
  }
  const TextBlock* End() const { return m_next; }

 private:
  TextBlock* m_next;
  int32_t m_lastColumn;
};

class BlockScanner {
 public:
  BlockScanner(std::string_view line, const WordSets& words, const ScanPoint& from, int32_t to,
               TextBlock* blocks, int32_t count)
      : m_text(line.data()),
        m_length(static_cast<int32_t>(line.size())),
        m_to(to),
        m_words(words),
        m_point(from),
        m_blocks(blocks, count) {}

  ScanPoint Run() {
    StepBack();
    int32_t& i = m_point.column;
    m_blocks.Append(i, IsInQuietComment() ? CodeColour() : ColourOfState(m_point.state));
    if (IsCode() && i > 0 && i < m_to && m_text[i - 1] == '/') OpenComment(i);
    while (i < m_to && (m_point.state & kLineComment) == 0) {
      if ((m_point.state & kString) != 0) {
        SkipString();
      } else if ((m_point.state & kCharLiteral) != 0) {
        SkipCharLiteral();
      } else if ((m_point.state & kBlockComment) != 0) {
        SkipComment();
      } else if ((m_point.state & kPreprocessor) != 0) {
        SkipPreprocessor();
      } else {
        ScanCode();
      }
    }
    i = std::max(i, m_to);
    return m_point;
  }

  const TextBlock* BlocksEnd() const { return m_blocks.End(); }

 private:
  int32_t CodeColour() const { return ColourOfState(m_point.state & kPreprocessor); }
  bool IsInQuietComment() const {
    return m_point.quietComment && (m_point.state & (kLineComment | kBlockComment)) != 0;
  }
  bool IsCode() const { return (m_point.state & ~kPreprocessor) == 0; }
  bool IsFirstText(int32_t at) const {
    return m_point.firstFrom >= 0 && std::all_of(m_text + m_point.firstFrom, m_text + at, cp1252::IsSpace);
  }

  /// To where a word or a comment marker begins that the point lies in.
  void StepBack() {
    int32_t& i = m_point.column;
    if (i == 0 || !IsCode()) return;
    if (m_text[i - 1] == '/' && m_point.commentEnd != i) {
      --i;
    } else if ((m_point.state & kPreprocessor) == 0) {
      while (i > 0 && cp1252::IsWordChar(m_text[i - 1])) --i;
    }
    if (i > m_point.firstFrom && !IsFirstText(i)) m_point.firstFrom = -1;
  }

  int32_t Find(char c) const {
    const int32_t from = m_point.column;
    const void* found = std::memchr(m_text + from, c, static_cast<size_t>(m_to - from));
    return found == nullptr ? -1 : static_cast<int32_t>(static_cast<const char*>(found) - m_text);
  }

  /// Goes on after the character at `end`, which ended a string, a literal or a comment.
  void Leave(uint32_t state, int32_t end) {
    m_point.state &= ~state;
    m_point.column = end + 1;
    m_blocks.Append(m_point.column, ColourOfState(m_point.state));
  }

  void SkipString() {
    const int32_t end = Find('"');
    if (end < 0) {
      m_point.column = m_to;
    } else {
      Leave(kString, end);
    }
  }

  void SkipCharLiteral() {
    const int32_t end = Find('\'');
    if (end < 0) {
      m_point.column = m_to;
    } else if (end > 0 && m_text[end - 1] == '\\') {
      m_point.column = end + 1;
    } else {
      Leave(kCharLiteral, end);
    }
  }

  void SkipComment() {
    const int32_t end = Find('/');
    if (end < 0) {
      m_point.column = m_to;
    } else if (end == 0 || m_text[end - 1] != '*') {
      m_point.column = end + 1;
    } else {
      Leave(kBlockComment, end);
      m_point.commentEnd = end + 1;
      if (m_point.firstFrom >= 0) m_point.firstFrom = end + 1;
      OpenComment(end + 1);  // the "/" may begin the next marker, too
    }
  }

  /// Nothing but comments and braces counts.
  void SkipPreprocessor() {
    while (m_point.column < m_to && m_point.state == kPreprocessor) {
      const char c = m_text[m_point.column++];
      if (c == '/') OpenComment(m_point.column);
      NoteBrace(c);
    }
  }

  /// Begins a comment when the character at `second`, behind a "/", completes its marker; a marker that
  /// begins before the end column is seen whole.
  void OpenComment(int32_t second) {
    if (second >= m_length) return;
    const char c = m_text[second];
    if (c != '/' && c != '*') return;
    m_point.state |= c == '/' ? kLineComment : kBlockComment;
    m_point.quietComment = !m_blocks.Append(second - 1, kColourComment);
    m_point.firstFrom = -1;
    m_point.column = second + 1;
  }

  void NoteBrace(char c) {
    m_point.openBrace |= c == '{';
    m_point.closeBrace |= c == '}';
  }

  /// Steps through up to `kMaskedChars` characters of code from one word or special character to the
  /// next; what lies between them has no colour of its own.
  void ScanCode() {
    // Whole steps from the line's start on: so far the text may be read.
    const int32_t base = m_point.column - m_point.column % char_masks::kStep;
    const int32_t limit = std::min(m_to, base + kMaskedChars);
    const CharMasks masks = MasksOf(m_text + base, limit - base);
    uint64_t left = ~uint64_t{0} << (m_point.column - base);
    const uint64_t word = masks.word & left;
    const uint64_t stops = (word & ~(word << 1)) | masks.special;
    m_point.column = limit;
    while ((left &= stops) != 0) {
      const int bit = std::countr_zero(left);
      const int32_t at = base + bit;
      left &= left - 1;
      if ((word >> bit & 1) != 0) {
        Word(at, at + std::countr_one(word >> bit), limit);
      } else if (!Special(at)) {
        if (m_point.column >= limit || m_point.state != 0) return;
        left &= ~uint64_t{0} << (m_point.column - base);
        m_point.column = limit;
      }
    }
  }

  /// False when the walk goes on at the point's column instead of the next stop.
  bool Special(int32_t at) {
    const char c = m_text[at];
    switch (c) {
      case '/':
        m_point.column = at + 1;
        OpenComment(at + 1);
        if (m_point.state == kBlockComment && m_point.column < m_to) SkipComment();
        return false;
      case '"':
      case '\'':
        m_point.state = c == '"' ? kString : kCharLiteral;
        m_point.column = at + 1;
        m_blocks.Append(at, kColourString);
        if (c == '"') SkipString();
        return false;
      case '#':
        if (!IsFirstText(at)) {
          m_point.firstFrom = -1;
          return true;
        }
        m_point.state = kPreprocessor;
        m_point.column = at + 1;
        m_blocks.Append(at, kColourPreprocessor);
        return false;
      default:
        NoteBrace(c);
        m_blocks.Append(at, kColourText);
        m_blocks.Append(at + 1, kColourText);
        return true;
    }
  }

  /// The word from `start` to `end`; at `limit` it may go on.
  void Word(int32_t start, int32_t end, int32_t limit) {
    if (end == limit) {
      while (end < m_length && cp1252::IsWordChar(m_text[end])) ++end;
      m_point.column = end;
    }
    const bool atEnd = end == m_length;
    // The string that a quote opens is appended first, and so a word in front of it is dropped.
    if (!atEnd && (m_text[end] == '"' || m_text[end] == '\'')) return;
    const int32_t colour = ColourOfWord(start, end);
    if (colour >= 0) m_blocks.Append(start, colour);
    if (!atEnd) m_blocks.Append(end, kColourText);
  }

  int32_t ColourOfWord(int32_t start, int32_t end) const {
    const std::string_view word(m_text + start, static_cast<size_t>(end - start));
    const int32_t colour = m_words.ColourOf(word.data(), word.size());
    const bool digit = word.front() >= '0' && word.front() <= '9';
    return colour < 0 && digit && IsNumber(word) ? kColourNumber : colour;
  }

  const char* m_text;
  int32_t m_length;
  int32_t m_to;
  WordClasses m_words;
  ScanPoint m_point;
  BlockWriter m_blocks;
};

}  // namespace

bool IsNumber(std::string_view word) {
  const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
  if (word.starts_with("0x")) {
    word.remove_prefix(2);
    return !word.empty() && std::all_of(word.begin(), word.end(), [&](char c) {
      return isDigit(c) || (c >= 'A' && c <= 'F') || (c >= 'a' && c <= 'f');
    });
  }
  return !word.empty() && isDigit(word.front()) && std::all_of(word.begin(), word.end(), [&](char c) {
    return isDigit(c) || c == '+' || c == '-' || c == '.' || c == 'e' || c == 'E';
  });
}

ScanPoint ColourColumns(std::string_view line, const WordSets& words, const ScanPoint& from, int32_t to,
                        TextBlock* blocks, int32_t* count) {
  BlockScanner scanner(line, words, from, to, blocks, *count);
  const ScanPoint end = scanner.Run();
  *count = static_cast<int32_t>(scanner.BlocksEnd() - blocks);
  return end;
}

}  // namespace quill
