#include "engine/language/Preprocessor.h"

namespace korvel {
namespace {

constexpr uint32_t kDeepest = 32;
constexpr uint32_t kDeepestDefine = 100;
constexpr uint32_t kMostTokens = 8'000'000;
constexpr uint32_t kMostFiles = 2000;

}  // namespace

Preprocessor::Preprocessor(ScriptFiles& files, Names& names, Errors& errors, Arena& arena)
    : files_(files),
      names_(names),
      errors_(errors),
      arena_(arena),
      tokens_(arena),
      macros_(arena),
      conditions_(arena),
      sources_(arena) {}

void Preprocessor::Read(const SourceFile& main) {
  ReadFile(main, 0);
  Token end;
  end.file = main.index;
  end.line = tokens_.empty() ? 1 : tokens_.back().line;
  if (!tokens_.empty()) end.file = tokens_.back().file;
  tokens_.Add(end);
}

Token Preprocessor::Next(Open& open) {
  if (has_ahead_) {
    has_ahead_ = false;
    return ahead_;
  }
  return open.lexer.Next();
}

void Preprocessor::ReadFile(const SourceFile& file, uint32_t depth) {
  sources_.Resize(sources_.size() > file.index + 1 ? sources_.size() : file.index + 1);
  sources_[file.index] = &file;
  Open open{Lexer(file, names_, errors_, arena_), conditions_.size()};
  while (!full_) {
    open.lexer.Mute(!active());
    const Token token = Next(open);
    if (token.Is(kEndToken)) break;
    if (token.Is(kHashToken)) {
      Directive(open);
    } else if (token.first_column &&
               (token.Is(Keyword::kIfdef) || token.Is(Keyword::kIfndef) || token.Is(Keyword::kEndif))) {
      OldCondition(open, token);
    } else if (!active()) {
      continue;
    } else if (after_dot_) {
      Add(token, 0);
    } else if (token.Is(Keyword::kDefine)) {
      DefineStatement(open, token);
    } else if (token.Is(Keyword::kInclude)) {
      Include(open, token, depth);
    } else if (token.Is(Keyword::kPath) && braces_ == 0) {
      Path(open, token);
    } else {
      Add(token, 0);
    }
  }
  while (conditions_.size() > open.conditions) {
    errors_.Add({&file, conditions_.back().line}, "This condition is not closed: #endif is missing.");
    conditions_.RemoveLast();
  }
  has_ahead_ = false;
}

// What is left on a line stays unread; the first token of the next one is kept.
void Preprocessor::SkipLine(Open& open, uint32_t line) {
  for (;;) {
    const Token token = Next(open);
    if (token.Is(kEndToken)) return;
    if (token.line != line) {
      ahead_ = token;
      has_ahead_ = true;
      return;
    }
  }
}

void Preprocessor::Directive(Open& open) {
  const uint32_t line = open.lexer.line();
  const Token word = Next(open);
  if (word.line != line || !word.Is(kNameToken)) {
    if (active())
      errors_.Add({&open.lexer.file(), line}, "A word such as define or ifdef is missing behind \"#\".");
    if (word.line != line) {
      ahead_ = word;
      has_ahead_ = !word.Is(kEndToken);
      return;
    }
    return SkipLine(open, line);
  }
  if (word.Is(Keyword::kElse)) {
    Else(word);
    return SkipLine(open, line);
  }
  if (word.Is(Keyword::kEndif)) {
    EndCondition(open, word);
    return SkipLine(open, line);
  }
  const bool begins = word.Is(Keyword::kIfdef) || word.Is(Keyword::kIfndef);
  if (!begins && !active()) return SkipLine(open, line);
  if (!begins && !word.Is(Keyword::kDefine) && !word.Is(Keyword::kUndef)) {
    errors_.Add(PlaceOf(word),
                "\"#%s\" is unknown; there are #define, #undef, #ifdef, #ifndef, #else and #endif.%s",
                word.name->text, word.Is(Keyword::kInclude) ? " Write include <file>; without \"#\"." : "");
    return SkipLine(open, line);
  }
  const Token name = Next(open);
  if (name.line != line || !name.Is(kNameToken)) {
    errors_.Add(PlaceOf(word), "A name is missing behind \"#%s\".", word.name->text);
    if (begins) BeginCondition(open, word, word, false);
    ahead_ = name;
    has_ahead_ = name.line != line && !name.Is(kEndToken);
    if (name.line == line) SkipLine(open, line);
    return;
  }
  if (begins) {
    BeginCondition(open, word, name, word.Is(Keyword::kIfdef));
    return SkipLine(open, line);
  }
  if (word.Is(Keyword::kDefine)) return DefineLine(open, name);
  name.name->macro = nullptr;
  SkipLine(open, line);
}

void Preprocessor::OldCondition(Open& open, const Token& word) {
  if (word.Is(Keyword::kEndif)) {
    EndCondition(open, word);
  } else {
    const Token name = Next(open);
    if (!name.Is(kNameToken)) {
      errors_.Add(PlaceOf(word), "A name is missing behind \"%s\".", word.name->text);
      BeginCondition(open, word, word, false);
    } else {
      BeginCondition(open, word, name, word.Is(Keyword::kIfdef));
    }
  }
  const Token end = Next(open);
  if (end.Is(';')) return;
  if (active()) errors_.Add(PlaceOf(word), "A \";\" is missing behind this \"%s\".", word.name->text);
  ahead_ = end;
  has_ahead_ = !end.Is(kEndToken);
}

void Preprocessor::BeginCondition(Open& open, const Token& word, const Token& name, bool wanted) {
  if (conditions_.size() - open.conditions >= kDeepest) {
    errors_.Add(PlaceOf(word), "Conditions stand in one another more than %u deep.", kDeepest);
    full_ = true;
    return;
  }
  const bool outer = active();
  conditions_.Add({outer && (name.name->macro != nullptr) == wanted, outer, false, word.line});
}

void Preprocessor::Else(const Token& at) {
  if (conditions_.empty()) {
    errors_.Add(PlaceOf(at), "There is no #ifdef to this #else.");
    return;
  }
  Condition& condition = conditions_.back();
  if (condition.else_seen) errors_.Add(PlaceOf(at), "This is the second #else to one #ifdef.");
  condition.else_seen = true;
  condition.active = condition.outer_active && !condition.active;
}

void Preprocessor::EndCondition(Open& open, const Token& at) {
  if (conditions_.size() <= open.conditions) {
    errors_.Add(PlaceOf(at), "There is no #ifdef to this #endif.");
    return;
  }
  conditions_.RemoveLast();
}

void Preprocessor::DefineLine(Open& open, const Token& name) {
  List<Token> value(arena_);
  for (;;) {
    const Token token = Next(open);
    if (token.Is(kEndToken)) break;
    if (token.line != name.line) {
      ahead_ = token;
      has_ahead_ = true;
      break;
    }
    value.Add(token);
  }
  if (!value.empty() && value[0].Is('(') && value.size() > 2 && value[1].Is(kNameToken) && value[2].Is(',')) {
    errors_.Add(PlaceOf(name), "A define has no parameters; write a function.");
  }
  Define(name, value);
}

void Preprocessor::DefineStatement(Open& open, const Token& at) {
  const Token name = Next(open);
  if (!name.Is(kNameToken)) {
    errors_.Add(PlaceOf(at), "A name is missing behind \"define\".");
    ahead_ = name;
    has_ahead_ = !name.Is(kEndToken);
    return;
  }
  List<Token> value(arena_);
  Token token = Next(open);
  if (token.Is(',')) {
    token = Next(open);
  } else if (!token.Is(';')) {
    errors_.Add(PlaceOf(name), "Write define %s, value; with a comma behind the name.", name.name->text);
  }
  while (!token.Is(';')) {
    if (token.Is(kEndToken) || (token.begins_line && token.Is(kNameToken) && token.first_column &&
                                token.name->keyword != Keyword::kNone)) {
      errors_.Add(PlaceOf(name), "A \";\" is missing behind this define.");
      ahead_ = token;
      has_ahead_ = !token.Is(kEndToken);
      break;
    }
    value.Add(token);
    token = Next(open);
  }
  Define(name, value);
}

void Preprocessor::Define(const Token& name, const List<Token>& value) {
  Name* word = name.name;
  if (word->keyword != Keyword::kNone) {
    errors_.Add(PlaceOf(name), "\"%s\" is a word of the language; a define needs another name.", word->text);
    return;
  }
  if (word->command >= 0) {
    errors_.Add(PlaceOf(name), "\"%s\" is a command; give the define another name.", word->text);
    return;
  }
  if (const Macro* old = word->macro) {
    bool same = old->count == value.size();
    for (uint32_t i = 0; same && i < old->count; ++i) {
      const Token& a = old->tokens[i];
      const Token& b = value[i];
      same = a.type == b.type;
      if (same && (a.Is(kTextToken) || a.Is(kFileToken))) same = a.view() == b.view();
      if (same && a.Is(kNameToken)) same = a.name == b.name;
      if (same && a.Is(kNumberToken)) same = a.number == b.number;
    }
    if (!same) {
      errors_.Add(PlaceOf(name), "\"%s\" has another value already (%s, line %u); write #undef %s before.",
                  word->text, old->place.file->name, old->place.line, word->text);
    }
    return;
  }
  Macro* macro = arena_.New<Macro>();
  *macro = {word, PlaceOf(name), value.data(), value.size(), false};
  word->macro = word->last_macro = macro;
  macros_.Add(macro);
}

void Preprocessor::Include(Open& open, const Token& at, uint32_t depth) {
  const Token file = Next(open);
  if (!file.Is(kFileToken)) {
    errors_.Add(PlaceOf(at), "Write include <file>; with the file's name between < and >.");
    ahead_ = file;
    has_ahead_ = !file.Is(kEndToken);
    return;
  }
  const Token end = Next(open);
  if (!end.Is(';')) {
    errors_.Add(PlaceOf(at), "A \";\" is missing behind this include.");
    ahead_ = end;
    has_ahead_ = !end.Is(kEndToken);
  }
  if (braces_ > 0) {
    errors_.Add(PlaceOf(at), "An include stands outside of functions.");
    return;
  }
  if (too_deep_) return;
  if (depth + 1 >= kDeepest || sources_.size() >= kMostFiles) {
    errors_.Add(PlaceOf(at), "Files include one another more than %u deep; does <%.*s> include itself?",
                kDeepest, static_cast<int>(file.length), file.text);
    too_deep_ = true;
    return;
  }
  bool too_large = false;
  const SourceFile* source = files_.OpenScript(file.view(), open.lexer.file().folder, &too_large);
  if (source == nullptr) {
    errors_.Add(PlaceOf(at), too_large ? "The file <%.*s> is too large." : "The file <%.*s> was not found.",
                static_cast<int>(file.length), file.text);
    return;
  }
  const Token ahead = ahead_;
  const bool has_ahead = has_ahead_;
  has_ahead_ = false;
  ReadFile(*source, depth + 1);
  ahead_ = ahead;
  has_ahead_ = has_ahead;
}

void Preprocessor::Path(Open& open, const Token& at) {
  const Token folder = Next(open);
  if (folder.Is(kTextToken)) {
    files_.AddPath(folder.view());
  } else {
    errors_.Add(PlaceOf(at), "Write path \"folder\"; with the folder's name in quotes.");
    ahead_ = folder;
    has_ahead_ = !folder.Is(kEndToken);
    return;
  }
  const Token end = Next(open);
  if (end.Is(';')) return;
  errors_.Add(PlaceOf(at), "A \";\" is missing behind this path.");
  ahead_ = end;
  has_ahead_ = !end.Is(kEndToken);
}

bool Preprocessor::Put(const Token& token) {
  if (tokens_.size() >= kMostTokens) {
    if (!full_) errors_.Add(PlaceOf(token), "The script is too long.");
    full_ = true;
    return false;
  }
  if (token.Is('{')) ++braces_;
  if (token.Is('}') && braces_ > 0) --braces_;
  after_dot_ = token.Is('.');
  tokens_.Add(token);
  return true;
}

// Adds a token, or what it stands for, word by word.
void Preprocessor::Add(Token token, uint32_t depth) {
  // Defines that stand for nothing, many times over, add no tokens and yet take for ever.
  if (++steps_ > 2 * kMostTokens) {
    if (!full_) errors_.Add(PlaceOf(token), "The script is too long.");
    full_ = true;
    return;
  }
  Macro* macro = token.Is(kNameToken) ? token.name->macro : nullptr;
  if (macro == nullptr || macro->busy) {
    Put(token);
    return;
  }
  if (after_dot_ && !(macro->count == 1 && macro->tokens[0].Is(kNameToken))) {
    Put(token);
    return;
  }
  if (depth >= kDeepestDefine) {
    errors_.Add(PlaceOf(token), "Defines stand for one another more than %u deep.", kDeepestDefine);
    return;
  }
  macro->busy = true;
  for (uint32_t i = 0; i < macro->count && !full_; ++i) {
    Token part = macro->tokens[i];
    part.file = token.file;
    part.line = token.line;
    part.begins_line = part.first_column = false;
    part.define = macro->name;
    Add(part, depth + 1);
  }
  macro->busy = false;
}

}  // namespace korvel
