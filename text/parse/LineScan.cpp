// The walk over a line that finds its coloured blocks.
#include "text/parse/LineScan.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

#include "base/CodePage1252.h"
#include "text/parse/CharMasks.h"
#include "text/parse/WordClasses.h"

namespace quill {
namespace {

using namespace parse_state;

int32_t ColourOfState(uint32_t state) {
  if ((state & (kLineComment | kBlockComment)) != 0) return kColourComment;
  if ((state & (kString | kCharLiteral)) != 0) return kColourString;
  return (state & kPreprocessor) != 0 ? kColourPreprocessor : kColourText;
}

/// The bits from `from` on up to and excluding `to`, 0 <= from <= to <= 64 and from < 64.
uint64_t BitsBetween(int32_t from, int32_t to) {
  const uint64_t below = to < kMaskedChars ? (uint64_t{1} << to) - 1 : ~uint64_t{0};
  return below & ~uint64_t{0} << from;
}

/// Of bits that are not all clear.
uint32_t FirstBit(uint64_t bits) {
  return static_cast<uint32_t>(__builtin_ctzll(bits));
}

/// Where the run of bits begins that ends before bit `end`; 1 to 64.
int32_t RunStart(uint64_t bits, int32_t end) {
  return end - std::countl_one(bits << (kMaskedChars - end));
}

/// Where the run of bits ends that begins at or before bit `start`; not all bits are set.
int32_t RunEnd(uint64_t bits, int32_t start) {
  return start + static_cast<int32_t>(FirstBit(~(bits >> start)));
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
  /// The same for the columns that have a bit, bit 0 being column `base`. `colours` are by bit.
  void AppendEach(int32_t base, uint64_t bits, const uint8_t* colours) {
    const int32_t before = m_lastColumn - base;
    if (before > 0) bits &= before < kMaskedChars ? ~uint64_t{0} << before : 0;
    if (bits == 0) return;
    TextBlock* next = m_next - (m_lastColumn == base + static_cast<int32_t>(FirstBit(bits)) ? 1 : 0);
    for (; bits != 0; bits &= bits - 1) {
      const uint32_t bit = FirstBit(bits);
      *next++ = {base + static_cast<int32_t>(bit), colours[bit]};
    }
    m_next = next;
    m_lastColumn = next[-1].column;
  }
  const TextBlock* End() const { return m_next; }

 private:
  TextBlock* m_next;
  int32_t m_lastColumn;
};

/// A stretch of a line, from column `base` on.
struct Chunk {
  int32_t base;
  CharMasks masks;
};

int32_t ColourOfWord(const WordClasses& classes, std::string_view word) {
  const int32_t colour = classes.ColourOf(word);
  if (colour != WordClasses::kNone) return colour;
  return IsNumber(word) ? kColourNumber : kColourText;
}

/// Puts the colours of the words that have one at their first characters, and returns these. A function of
/// its own, not inlined: the loop needs all registers.
[[gnu::noinline]] uint64_t ColourWords(const WordClasses& classes, const char* text, const CharMasks& masks,
                                       uint64_t words, uint8_t* colours) {
  uint64_t starts = words & ~(words << 1);
  uint64_t ends = ~words & words << 1;
  // A first digit, added to a run of bits that begins with it, is carried to behind the run.
  const uint64_t digits = masks.digit & words;
  const uint64_t decimalEnds = ((starts & digits) + digits) & ends;
  const uint64_t otherNumberEnds = ((starts & digits) + words) & ends & ~decimalEnds;
  const bool ascii = (masks.beyondAscii & words) == 0;
  uint64_t coloured = 0;
  for (; starts != 0; starts &= starts - 1, ends &= ends - 1) {
    const uint32_t start = FirstBit(starts);
    const uint32_t end = FirstBit(ends);
    const std::string_view word(text + start, end - start);
    int32_t colour = (decimalEnds >> end & 1) != 0 ? kColourNumber : kColourText;
    if (!ascii || word.size() > ShortWord::kLongest) [[unlikely]] {
      colour = ColourOfWord(classes, word);
    } else if (const int32_t known = classes.ColourOf(ShortWord::Of(word)); known != WordClasses::kNone) {
      colour = known;
    } else if ((otherNumberEnds >> end & 1) != 0) {
      colour = IsNumber(word) ? kColourNumber : kColourText;
    }
    colours[start] = static_cast<uint8_t>(colour);
    coloured |= uint64_t{colour != kColourText} << start;
  }
  return coloured;
}

class BlockScanner {
 public:
  BlockScanner(std::string_view line, const WordClasses& words, ScanPoint& point, int32_t to,
               TextBlock* blocks, int32_t count)
      : m_text(line.data()),
        m_length(static_cast<int32_t>(line.size())),
        m_to(to),
        m_words(words),
        m_point(point),
        m_blocks(blocks, count) {}

  void Run() {
    int32_t& i = m_point.column;
    if (i == 0) {
      m_blocks.Append(0, ColourOfState(m_point.state));
    } else {
      Resume();
    }
    while (i < m_to) {
      if (m_point.state == 0) {
        ScanCode();
      } else if ((m_point.state & kLineComment) != 0) {
        break;
      } else if ((m_point.state & kString) != 0) {
        SkipString();
      } else if ((m_point.state & kCharLiteral) != 0) {
        SkipCharLiteral();
      } else if ((m_point.state & kBlockComment) != 0) {
        SkipComment();
      } else {
        SkipPreprocessor();
      }
    }
    i = std::max(i, m_to);
  }

  const TextBlock* BlocksEnd() const { return m_blocks.End(); }

 private:
  bool IsInQuietComment() const {
    return m_point.quietComment && (m_point.state & (kLineComment | kBlockComment)) != 0;
  }
  bool IsCode() const { return (m_point.state & ~kPreprocessor) == 0; }
  bool IsFirstText(int32_t at) const {
    return m_point.firstFrom >= 0 && std::all_of(m_text + m_point.firstFrom, m_text + at, cp1252::IsSpace);
  }

  /// Takes up the walk in the middle of the line.
  void Resume() {
    int32_t& i = m_point.column;
    if (IsCode()) StepBack();
    const uint32_t state = m_point.state;
    m_blocks.Append(i, ColourOfState(IsInQuietComment() ? state & kPreprocessor : state));
    if (m_inLongWord) SkipLongWord();
    if (IsCode() && i > 0 && i < m_to && m_text[i - 1] == '/') OpenComment(i);
  }

  /// To where a word or a comment marker begins that the point lies in.
  void StepBack() {
    int32_t& i = m_point.column;
    if (m_text[i - 1] == '/' && m_point.commentEnd != i) {
      --i;
    } else if ((m_point.state & kPreprocessor) == 0) {
      const int32_t from = i;
      const int32_t nearest = std::max(from - kLongestWord, 0);
      while (i > nearest && cp1252::IsWordChar(m_text[i - 1])) --i;
      m_inLongWord = i > 0 && i == nearest && cp1252::IsWordChar(m_text[i - 1]);
      if (m_inLongWord) i = from;
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
      m_point.openBrace |= c == '{';
      m_point.closeBrace |= c == '}';
      if (c == '/') OpenComment(m_point.column);
    }
  }

  /// Begins a comment when the character at `second`, behind a "/", completes its marker; a marker that
  /// begins before the end column is seen whole.
  void OpenComment(int32_t second) {
    if (!IsCommentMarker(second)) return;
    m_point.state |= m_text[second] == '/' ? kLineComment : kBlockComment;
    m_point.quietComment = !m_blocks.Append(second - 1, kColourComment);
    m_point.firstFrom = -1;
    m_point.column = second + 1;
  }
  bool IsCommentMarker(int32_t second) const {
    return second < m_length && (m_text[second] == '/' || m_text[second] == '*');
  }

  /// Walks over up to `kMaskedChars` characters of code. Where blocks begin between two markers follows
  /// from masks, without a decision for each character.
  void ScanCode() {
    const int32_t base = m_point.column;
    const Chunk chunk{base, MasksOf(m_text + base, std::min(kMaskedChars, m_length - base))};
    const int32_t limit = LimitOf(chunk);
    if (limit == 0) return ScanLongWord();
    int32_t from = 0;
    do {
      const int32_t end = FirstMarker(chunk, from, limit);
      AppendBlocks(chunk, from, end);
      m_point.column = base + end;
      if (end == limit) return;
      EnterMarker(base + end);
      from = m_point.column - base;
    } while (m_point.state == 0 && from < limit && m_point.column < m_to);
  }

  /// The first character from `from` on that ends the code, or `limit`.
  int32_t FirstMarker(const Chunk& chunk, int32_t from, int32_t limit) {
    for (uint64_t left = chunk.masks.marker & BitsBetween(from, limit); left != 0; left &= left - 1) {
      const auto bit = static_cast<int32_t>(FirstBit(left));
      if (IsMarker(chunk.base + bit)) return bit;
    }
    return limit;
  }

  /// Up to which of its characters the chunk is walked: no word begins before it and ends after it. 0 when
  /// the chunk is all one word.
  int32_t LimitOf(const Chunk& chunk) const {
    // A block may begin behind each character, and so the last one must wait.
    const int32_t limit = std::min(m_to - chunk.base, kMaskedChars - 1);
    const uint64_t word = chunk.masks.word;
    if ((word >> (limit - 1) & 3) != 3) return limit;
    const int32_t wordEnd = RunEnd(word, limit);
    return wordEnd < kMaskedChars ? wordEnd : RunStart(word, limit);
  }

  /// Whether one of the characters that may end a stretch of code does.
  bool IsMarker(int32_t at) {
    if (m_text[at] == '/') return IsCommentMarker(at + 1);
    if (m_text[at] != '#' || IsFirstText(at)) return true;
    m_point.firstFrom = -1;
    return false;
  }

  void EnterMarker(int32_t at) {
    const char c = m_text[at];
    m_point.column = at + 1;
    if (c == '/') {
      OpenComment(at + 1);
      if (m_point.state == kBlockComment && m_point.column < m_to) SkipComment();
    } else if (c == '#') {
      m_point.state = kPreprocessor;
      m_blocks.Append(at, kColourPreprocessor);
    } else {
      m_point.state = c == '"' ? kString : kCharLiteral;
      m_blocks.Append(at, kColourString);
      if (c == '"') SkipString();
    }
  }

  /// Appends the blocks of the chunk's code between two of its characters.
  void AppendBlocks(const Chunk& chunk, int32_t from, int32_t end) {
    const uint64_t part = BitsBetween(from, end);
    m_point.openBrace |= (chunk.masks.openBrace & part) != 0;
    m_point.closeBrace |= (chunk.masks.closeBrace & part) != 0;
    const uint64_t brackets = chunk.masks.bracket & part;
    uint64_t words = chunk.masks.word & part;
    // The string that a quote opens is appended first, and so a word in front of it is dropped.
    if (end > from && IsQuote(chunk.base + end)) words &= BitsBetween(0, RunStart(chunk.masks.word, end));
    uint64_t ends = ~words & words << 1;
    if (m_length - chunk.base < kMaskedChars) ends &= ~(uint64_t{1} << (m_length - chunk.base));
    std::array<uint8_t, kMaskedChars> colours;
    colours.fill(kColourText);
    const uint64_t coloured = ColourWords(m_words, m_text + chunk.base, chunk.masks, words, colours.data());
    m_blocks.AppendEach(chunk.base, coloured | brackets | brackets << 1 | ends, colours.data());
  }

  /// A word that is longer than a chunk.
  void ScanLongWord() {
    const int32_t start = m_point.column;
    int32_t& end = m_point.column;
    const int32_t farthest = std::min(m_length - start, kLongestWord) + start;
    while (end < farthest && cp1252::IsWordChar(m_text[end])) ++end;
    if (end == farthest && end < m_length && cp1252::IsWordChar(m_text[end])) return SkipLongWord();
    if (IsQuote(end)) return;  // as in `AppendBlocks`
    const int32_t colour = ColourOfWord(m_words, {m_text + start, static_cast<size_t>(end - start)});
    if (colour != kColourText) m_blocks.Append(start, colour);
    if (end != m_length) m_blocks.Append(end, kColourText);
  }

  /// Goes on in a word that is too long for a colour.
  void SkipLongWord() {
    int32_t& i = m_point.column;
    while (i < m_to && cp1252::IsWordChar(m_text[i])) ++i;
    m_inLongWord = false;
    if (i < m_to && !IsQuote(i)) m_blocks.Append(i, kColourText);
  }

  bool IsQuote(int32_t at) const { return at < m_length && (m_text[at] == '"' || m_text[at] == '\''); }

  const char* m_text;
  int32_t m_length;
  int32_t m_to;
  const WordClasses& m_words;
  ScanPoint& m_point;
  BlockWriter m_blocks;
  bool m_inLongWord = false;  ///< the point lies far behind the beginning of a word
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

void ColourColumns(std::string_view line, const WordClasses& words, ScanPoint& point, int32_t to,
                   TextBlock* blocks, int32_t* count) {
  BlockScanner scanner(line, words, point, to, blocks, *count);
  scanner.Run();
  *count = static_cast<int32_t>(scanner.BlocksEnd() - blocks);
}

}  // namespace quill
