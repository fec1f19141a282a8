// Makes one row of tokens of a script and all that it includes: conditions on lines, defines, included files
// and path folders are dealt with here.
#pragma once

#include "engine/language/Lexer.h"

namespace korvel {

/// What a word stands for. It stays known after #undef, for the errors.
struct Macro {
  Name* name;
  Place place;
  const Token* tokens;
  uint32_t count;
  bool busy;  ///< being replaced now: it does not replace itself
};

/// Where the texts of scripts come from.
class ScriptFiles {
 public:
  /// The file of this name as a line in a file of `folder` means it; null when it is missing. A text that is
  /// too large is told by `too_large`.
  virtual const SourceFile* OpenScript(std::string_view name, const char* folder, bool* too_large) = 0;

  /// One more folder to look in, from a `path` line.
  virtual void AddPath(std::string_view folder) = 0;

 protected:
  ~ScriptFiles() = default;
};

class Preprocessor {
 public:
  Preprocessor(ScriptFiles& files, Names& names, Errors& errors, Arena& arena);

  /// Reads a script with all that it includes. The last token is kEndToken.
  void Read(const SourceFile& main);

  List<Token>& tokens() { return tokens_; }
  const List<Macro*>& macros() const { return macros_; }
  const SourceFile* file(uint32_t index) const { return sources_[index]; }

 private:
  struct Condition {
    bool active;
    bool outer_active;
    bool else_seen;
    uint32_t line;
  };
  struct Open {
    Lexer lexer;
    uint32_t conditions;  ///< how many were open when the file began
  };

  void ReadFile(const SourceFile& file, uint32_t depth);
  void Directive(Open& open);
  void OldCondition(Open& open, const Token& word);
  void BeginCondition(Open& open, const Token& word, const Token& name, bool wanted);
  void Else(const Token& at);
  void EndCondition(Open& open, const Token& at);
  void DefineLine(Open& open, const Token& name);
  void DefineStatement(Open& open, const Token& at);
  void Define(const Token& name, const List<Token>& value);
  void Include(Open& open, const Token& at, uint32_t depth);
  void Path(Open& open, const Token& at);
  void Add(Token token, uint32_t depth);
  bool Put(const Token& token);
  void SkipLine(Open& open, uint32_t line);
  bool active() const { return conditions_.empty() || conditions_[conditions_.size() - 1].active; }
  Place PlaceOf(const Token& token) const { return {sources_[token.file], token.line}; }
  Token Next(Open& open);

  ScriptFiles& files_;
  Names& names_;
  Errors& errors_;
  Arena& arena_;
  List<Token> tokens_;
  List<Macro*> macros_;
  List<Condition> conditions_;
  List<const SourceFile*> sources_;
  Token ahead_;
  bool has_ahead_ = false;
  bool after_dot_ = false;
  bool full_ = false;
  bool too_deep_ = false;
  int braces_ = 0;
  uint32_t steps_ = 0;
};

}  // namespace korvel
