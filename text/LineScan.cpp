// The walk over a line that finds its coloured blocks.
#include "text/LineScan.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "base/CodePage1252.h"

namespace quill {
namespace {

using namespace parse_state;

enum CharKind : uint8_t { kOther, kBlank, kWord, kBracket, kSlashOrStar, kQuote, kHash };

/// What the walk asks of each byte, side by side.
struct CharTraits {
  uint8_t kind = kOther;
  char lower = 0;
};

std::array<CharTraits, 256> MakeTraits() {
  std::array<CharTraits, 256> traits;
  for (int i = 0; i < 256; ++i) {
    const char c = static_cast<char>(i);
    const CharKind kind = cp1252::IsWordChar(c) ? kWord : cp1252::IsSpace(c) ? kBlank : kOther;
    traits[static_cast<size_t>(i)] = {kind, cp1252::ToLower(c)};
  }
  for (const char c : {'[', '<', '(', '{', '>', ')', '}', ']'})
    traits[static_cast<uint8_t>(c)].kind = kBracket;
  for (const char c : {'/', '*'}) traits[static_cast<uint8_t>(c)].kind = kSlashOrStar;
  for (const char c : {'"', '\''}) traits[static_cast<uint8_t>(c)].kind = kQuote;
  traits['#'].kind = kHash;
  return traits;
}

const std::array<CharTraits, 256> kTraits = MakeTraits();

inline uint8_t KindOf(char c) {
  return kTraits[static_cast<uint8_t>(c)].kind;
}

int32_t ColourOfState(uint32_t state) {
  if ((state & (kLineComment | kBlockComment)) != 0) return kColourComment;
  if ((state & (kString | kCharLiteral)) != 0) return kColourString;
  return (state & kPreprocessor) != 0 ? kColourPreprocessor : kColourText;
}

/// Asks the sets for a word, once made lower case and hashed once. Returns -1 for an unknown one.
int32_t ColourOfName(std::string_view word, const WordSets& words) {
  const uint32_t hash = NameSet::Hash(word);
  const auto has = [&](const NameSet* set) { return set != nullptr && set->Contains(word, hash); };
  if (has(words.keywords)) return kColourKeyword;
  if (has(words.commands)) return kColourCommand;
  if (has(words.functions)) return kColourFunction;
  if (has(words.variables)) return kColourVariable;
  return -1;
}

int32_t ColourOfWord(std::string_view word, const WordSets& words) {
  constexpr size_t kUsualLength = 64;
  int32_t colour = -1;
  if (word.size() <= kUsualLength) {
    char lower[kUsualLength];
    std::transform(word.begin(), word.end(), lower,
                   [](char c) { return kTraits[static_cast<uint8_t>(c)].lower; });
    colour = ColourOfName({lower, word.size()}, words);
  } else {
    colour = ColourOfName(cp1252::ToLower(word), words);
  }
  if (colour < 0 && word.front() >= '0' && word.front() <= '9' && IsNumber(word)) colour = kColourNumber;
  return colour;
}

class BlockScanner {
 public:
  BlockScanner(std::string_view line, const WordSets& words, TextBlock* blocks, int32_t* count)
      : m_line(line), m_words(words), m_blocks(blocks), m_count(*count) {}

  ScanPoint Run(const ScanPoint& from, int32_t to) {
    m_point = from;
    StepBack();
    Append(m_point.column,
           m_point.quietComment && m_point.column > 0 ? CodeColour() : ColourOfState(m_point.state));
    while (m_point.column < to && (m_point.state & kLineComment) == 0) {
      if ((m_point.state & kString) != 0) {
        SkipString(to);
      } else if ((m_point.state & kCharLiteral) != 0) {
        SkipCharLiteral(to);
      } else if ((m_point.state & kBlockComment) != 0) {
        SkipComment(to);
      } else {
        StepCode();
      }
    }
    m_point.column = std::max(m_point.column, to);
    return m_point;
  }

  int32_t Count() const { return m_count; }

 private:
  char At(int32_t i) const { return m_line[static_cast<size_t>(i)]; }
  int32_t CodeColour() const { return ColourOfState(m_point.state & kPreprocessor); }

  /// False when the rule of ascending columns drops the block.
  bool Append(int32_t column, int32_t colour) {
    if (m_count > 0) {
      TextBlock& last = m_blocks[m_count - 1];
      if (last.column > column) return false;
      if (last.column == column) --m_count;
    }
    m_blocks[m_count++] = {column, colour};
    return true;
  }

  /// To where a word or a comment marker begins that the point lies in.
  void StepBack() {
    int32_t& i = m_point.column;
    if (i == 0 || ColourOfState(m_point.state & ~kPreprocessor) != kColourText) return;
    if (At(i - 1) == '/' && m_point.commentEnd != i) {
      --i;
    } else if ((m_point.state & kPreprocessor) == 0) {
      while (i > 0 && KindOf(At(i - 1)) == kWord) --i;
    }
    if (m_point.firstFrom >= 0 && i > m_point.firstFrom &&
        !std::all_of(m_line.begin() + m_point.firstFrom, m_line.begin() + i, cp1252::IsSpace)) {
      m_point.firstFrom = -1;
    }
  }

  int32_t Find(char c, int32_t to) const {
    const int32_t from = m_point.column;
    const void* found = std::memchr(m_line.data() + from, c, static_cast<size_t>(to - from));
    return found == nullptr ? -1 : static_cast<int32_t>(static_cast<const char*>(found) - m_line.data());
  }

  /// Goes on after the character at `end`, which ended a string, a literal or a comment.
  void Leave(uint32_t state, int32_t end) {
    m_point.state &= ~state;
    m_point.column = end + 1;
    Append(m_point.column, ColourOfState(m_point.state));
  }

  void SkipString(int32_t to) {
    const int32_t end = Find('"', to);
    if (end < 0) {
      m_point.column = to;
    } else {
      Leave(kString, end);
    }
  }

  void SkipCharLiteral(int32_t to) {
    const int32_t end = Find('\'', to);
    if (end < 0) {
      m_point.column = to;
    } else if (end > 0 && At(end - 1) == '\\') {
      m_point.column = end + 1;
    } else {
      Leave(kCharLiteral, end);
    }
  }

  void SkipComment(int32_t to) {
    const int32_t end = Find('/', to);
    if (end < 0) {
      m_point.column = to;
    } else if (end == 0 || At(end - 1) != '*') {
      m_point.column = end + 1;
    } else {
      Leave(kBlockComment, end);
      m_point.commentEnd = end + 1;
      if (m_point.firstFrom >= 0) m_point.firstFrom = end + 1;
    }
  }

  void StepCode() {
    const int32_t i = m_point.column;
    const char c = At(i);
    const uint8_t kind = KindOf(c);
    const bool preprocessor = (m_point.state & kPreprocessor) != 0;
    ++m_point.column;
    if (kind == kBlank) return;
    if (kind == kSlashOrStar && i > 0 && At(i - 1) == '/') {
      OpenComment(i, c);
      return;
    }
    if (c == '{') m_point.openBrace = true;
    if (c == '}') m_point.closeBrace = true;
    if (preprocessor) return;
    const bool first = m_point.firstFrom >= 0;
    m_point.firstFrom = -1;
    if (kind == kWord) {
      Word(i);
    } else if (kind == kBracket) {
      Append(i, kColourText);
      Append(i + 1, kColourText);
    } else if (kind == kQuote) {
      m_point.state |= c == '"' ? kString : kCharLiteral;
      Append(i, kColourString);
    } else if (kind == kHash && first) {
      m_point.state |= kPreprocessor;
      Append(i, kColourPreprocessor);
    }
  }

  void OpenComment(int32_t at, char second) {
    m_point.state |= second == '/' ? kLineComment : kBlockComment;
    m_point.quietComment = !Append(at - 1, kColourComment);
    m_point.firstFrom = -1;
  }

  void Word(int32_t start) {
    const auto length = static_cast<int32_t>(m_line.size());
    int32_t end = start + 1;
    while (end < length && KindOf(At(end)) == kWord) ++end;
    m_point.column = end;
    // The string that a quote opens is appended first, and so a word in front of it is dropped.
    if (end < length && KindOf(At(end)) == kQuote) return;
    const int32_t colour =
        ColourOfWord(m_line.substr(static_cast<size_t>(start), static_cast<size_t>(end - start)), m_words);
    if (colour >= 0) Append(start, colour);
    if (end < length) Append(end, kColourText);
  }

  std::string_view m_line;
  const WordSets& m_words;
  TextBlock* m_blocks;
  int32_t m_count;
  ScanPoint m_point;
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
  BlockScanner scanner(line, words, blocks, count);
  const ScanPoint end = scanner.Run(from, to);
  *count = scanner.Count();
  return end;
}

}  // namespace quill
