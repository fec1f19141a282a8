// Cuts the text of one file into tokens.
#pragma once

#include "engine/language/Errors.h"
#include "engine/language/Token.h"

namespace korvel {

/// Longest text in quotes, and longest string at run time.
inline constexpr size_t kLongestText = 4000;
inline constexpr size_t kLongestName = 255;

/// Reads a file from its begin. Errors go to the list unless they are muted.
class Lexer {
 public:
  Lexer(const SourceFile& file, Names& names, Errors& errors, Arena& arena)
      : file_(&file),
        at_(file.text.data()),
        end_(at_ + file.text.size()),
        line_begin_(at_),
        names_(&names),
        errors_(&errors),
        arena_(&arena) {}

  /// The next token, kEndToken at the end for ever.
  Token Next();

  /// While muted, what is wrong inside tokens is not told: the lines are left out anyway.
  void Mute(bool on) { muted_ = on; }

  const SourceFile& file() const { return *file_; }
  uint32_t line() const { return line_; }

 private:
  Token NextOrNone();
  bool SkipBlanks();
  void EndLine();
  bool AtLineEnd() const { return *at_ == '\n'; }
  char Peek(int ahead) const { return at_ + ahead < end_ ? at_[ahead] : '\0'; }
  Token ReadName(Token token);
  Token ReadNumber(Token token);
  Token ReadText(Token token);
  Token ReadFile(Token token);
  Token ReadSign(Token token);
  void Complain(const char* format, ...) __attribute__((format(printf, 2, 3)));

  const SourceFile* file_;
  const char* at_;
  const char* end_;
  const char* line_begin_;
  Names* names_;
  Errors* errors_;
  Arena* arena_;
  uint32_t line_ = 1;
  uint32_t token_line_ = 0;
  uint32_t complained_line_ = 0;  ///< one complaint a line is enough
  bool after_file_opener_ = false;
  bool muted_ = false;
};

}  // namespace korvel
