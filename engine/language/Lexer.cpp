#include "engine/language/Lexer.h"

#include <cstdio>

namespace korvel {
namespace {

constexpr int64_t kLimit = 2097152;
constexpr uint16_t kNoToken = 0xFFFF;

bool IsNameBegin(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}
bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}
bool IsNamePart(char c) {
  return IsNameBegin(c) || IsDigit(c);
}

int HexDigit(char c) {
  if (IsDigit(c)) return c - '0';
  const char lower = LowerOf(c);
  return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

}  // namespace

void Lexer::Complain(const char* format, ...) {
  if (muted_ || complained_line_ == token_line_) return;
  complained_line_ = token_line_;
  char sentence[400];
  va_list values;
  va_start(values, format);
  std::vsnprintf(sentence, sizeof sentence, format, values);
  va_end(values);
  errors_->Add({file_, token_line_}, "%s", sentence);
}

// Steps over one line feed, and over the carriage return behind it: LF CR is one line end.
void Lexer::EndLine() {
  ++at_;
  if (at_ < end_ && *at_ == '\r' && (at_ + 1 >= end_ || at_[1] != '\n')) ++at_;
  ++line_;
  line_begin_ = at_;
}

bool Lexer::SkipBlanks() {
  while (at_ < end_) {
    if (*at_ == '\n') {
      EndLine();
    } else if (*at_ == ' ' || *at_ == '\t' || *at_ == '\r' || *at_ == '\f' || *at_ == '\v') {
      ++at_;
    } else if (*at_ == '/' && Peek(1) == '/') {
      while (at_ < end_ && !AtLineEnd()) ++at_;
    } else if (*at_ == '/' && Peek(1) == '*') {
      token_line_ = line_;
      at_ += 2;
      while (at_ < end_ && !(*at_ == '*' && Peek(1) == '/')) {
        if (AtLineEnd()) {
          EndLine();
        } else {
          ++at_;
        }
      }
      if (at_ >= end_) {
        Complain("This comment has no end; it ends with */.");
        return false;
      }
      at_ += 2;
    } else {
      return true;
    }
  }
  return false;
}

Token Lexer::Next() {
  Token token = NextOrNone();
  while (token.type == kNoToken) token = NextOrNone();
  return token;
}

Token Lexer::NextOrNone() {
  const bool file_may_follow = after_file_opener_;
  after_file_opener_ = false;
  Token token;
  token.file = file_->index;
  if (!SkipBlanks()) {
    token.line = line_;
    token.begins_line = true;
    return token;
  }
  token.line = token_line_ = line_;
  token.first_column = at_ == line_begin_;
  const char* before = at_;
  while (before > line_begin_ && (before[-1] == ' ' || before[-1] == '\t')) --before;
  token.begins_line = before == line_begin_;

  const char c = *at_;
  if (IsNameBegin(c)) return ReadName(token);
  if (IsDigit(c)) return ReadNumber(token);
  if (c == '"') return ReadText(token);
  if (c == '<' && file_may_follow) return ReadFile(token);
  if (c == '#' && token.begins_line) {
    ++at_;
    token.type = kHashToken;
    return token;
  }
  return ReadSign(token);
}

Token Lexer::ReadName(Token token) {
  const char* begin = at_;
  while (at_ < end_ && IsNamePart(*at_)) ++at_;
  size_t length = static_cast<size_t>(at_ - begin);
  if (length > kLongestName) {
    Complain("This name has %zu characters; a name has %zu at most.", length, kLongestName);
    length = kLongestName;
  }
  token.type = kNameToken;
  token.name = names_->Intern({begin, length});
  after_file_opener_ = token.name->keyword == Keyword::kInclude;
  return token;
}

Token Lexer::ReadNumber(Token token) {
  token.type = kNumberToken;
  const char* begin = at_;
  if (*at_ == '0' && (Peek(1) == 'x' || Peek(1) == 'X') && HexDigit(Peek(2)) >= 0) {
    at_ += 2;
    uint64_t value = 0;
    for (; at_ < end_ && HexDigit(*at_) >= 0; ++at_) {
      if (value <= 0xFFFFFFFF) value = value * 16 + static_cast<uint64_t>(HexDigit(*at_));
    }
    if (value > 0x1FFFFF) Complain("This number is too large; the largest is 0x1FFFFF.");
    token.number = FromInt(static_cast<int64_t>(value & 0x1FFFFF));
  } else {
    while (at_ < end_ && IsDigit(*at_)) ++at_;
    if (Peek(0) == '.' && IsDigit(Peek(1))) {
      ++at_;
      while (at_ < end_ && IsDigit(*at_)) ++at_;
    }
    const size_t length = static_cast<size_t>(at_ - begin);
    token.number = ReadFixed(begin, length, nullptr);
    int64_t whole = 0;
    for (size_t i = 0; i < length && begin[i] != '.' && whole <= kLimit; ++i)
      whole = whole * 10 + (begin[i] - '0');
    if (whole >= kLimit) {
      // The smallest number is written as a minus and this one, so it is told from the largest.
      token.number = kSmallest;
      if (whole > kLimit) Complain("This number is too large; numbers go from -2097152 to 2097151.");
    }
  }
  if (at_ < end_ && IsNamePart(*at_)) {
    while (at_ < end_ && IsNamePart(*at_)) ++at_;
    Complain("\"%.*s\" is neither a number nor a name; a name begins with a letter.",
             static_cast<int>(at_ - begin < 60 ? at_ - begin : 60), begin);
  }
  return token;
}

Token Lexer::ReadText(Token token) {
  ++at_;
  const char* begin = at_;
  bool has_line_end = false;
  while (at_ < end_ && *at_ != '"') {
    if (AtLineEnd()) {
      has_line_end = true;
      EndLine();
    } else {
      ++at_;
    }
  }
  const char* text_end = at_;
  if (at_ >= end_) {
    Complain("This text has no end: a double quote is missing.");
  } else {
    ++at_;
  }
  token.type = kTextToken;
  token.text = begin;
  token.length = static_cast<uint32_t>(text_end - begin);
  if (has_line_end) {
    char* copy = static_cast<char*>(arena_->Allocate(token.length + 1));
    uint32_t length = 0;
    for (const char* c = begin; c < text_end; ++c) {
      if (*c == '\r') continue;
      copy[length++] = *c;
    }
    token.text = copy;
    token.length = length;
  }
  if (token.length > kLongestText) {
    Complain("This text has %u characters; a text has %zu at most.", token.length, kLongestText);
    token.length = kLongestText;
  }
  return token;
}

Token Lexer::ReadFile(Token token) {
  ++at_;
  const char* begin = at_;
  while (at_ < end_ && *at_ != '>' && !AtLineEnd()) ++at_;
  token.type = kFileToken;
  token.text = begin;
  token.length = static_cast<uint32_t>(at_ - begin);
  if (at_ < end_ && *at_ == '>') {
    ++at_;
  } else {
    Complain("This file name has no end: a > is missing.");
  }
  if (token.length > 1000) {
    Complain("This file name is too long.");
    token.length = 0;
  }
  return token;
}

Token Lexer::ReadSign(Token token) {
  const char c = *at_++;
  const char next = Peek(0);
  switch (c) {
    case '=':
      after_file_opener_ = next != '=';
      [[fallthrough]];
    case '+':
    case '-':
    case '*':
    case '/':
    case '%':
    case '<':
    case '>':
    case '!':
    case '&':
    case '|': {
      const bool doubled =
          next == c && (c == '+' || c == '-' || c == '<' || c == '>' || c == '&' || c == '|');
      if ((next == '=' && c != '&' && c != '|') || doubled) {
        ++at_;
        token.type = Pair(c, next);
        return token;
      }
      break;
    }
    case '(':
    case ')':
    case '[':
    case ']':
    case '{':
    case '}':
    case ';':
    case ',':
    case '.':
    case ':':
    case '?':
    case '^':
    case '~':
      break;
    case '\'': {
      Complain("A text stands in double quotes, not in single ones.");
      while (at_ < end_ && !AtLineEnd() && *at_ != '\'') ++at_;
      if (at_ < end_ && *at_ == '\'') ++at_;
      token.type = kTextToken;
      token.text = "";
      token.length = 0;
      return token;
    }
    default:
      if (c == '#') {
        Complain("\"#\" stands only at the begin of a line.");
      } else {
        Complain("The character with the code %d has no meaning here.", static_cast<uint8_t>(c));
      }
      token.type = kNoToken;
      return token;
  }
  token.type = static_cast<uint16_t>(static_cast<uint8_t>(c));
  return token;
}

}  // namespace korvel
