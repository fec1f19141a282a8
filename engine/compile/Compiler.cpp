#include "engine/compile/Compiler.h"

#include <cstdio>

namespace korvel {
namespace {

constexpr uint32_t kDeepest = 200;

}  // namespace

int KindOfKeyword(Keyword keyword) {
  switch (keyword) {
    case Keyword::kBmap:
      return kKorvelBitmap;
    case Keyword::kEntity:
      return kKorvelEntity;
    case Keyword::kFont:
      return kKorvelFont;
    case Keyword::kMaterial:
      return kKorvelMaterial;
    case Keyword::kPanel:
      return kKorvelPanel;
    case Keyword::kSky:
      return kKorvelSky;
    case Keyword::kSound:
      return kKorvelSound;
    case Keyword::kString:
      return kKorvelString;
    case Keyword::kText:
      return kKorvelText;
    case Keyword::kView:
      return kKorvelView;
    case Keyword::kWindow:
      return kKorvelWindow;
    default:
      return -1;
  }
}

Compiler::Compiler(const Needs& needs)
    : program_(needs.program),
      source_(needs.source),
      names_(needs.names),
      errors_(needs.errors),
      arena_(needs.arena),
      members_(needs.members),
      maker_(needs.maker),
      code_(needs.program, needs.arena),
      tokens_(needs.source.tokens()),
      bodies_(needs.arena),
      initials_(needs.arena),
      locals_(needs.arena),
      labels_(needs.arena),
      gotos_(needs.arena),
      goto_jumps_(needs.arena) {}

void Compiler::Compile() {
  end_ = end_mark_ = tokens_.size() - 1;
  DefineEngineNames();
  ReadDefinitions();
  CheckDefines();
  AllocateCells();
  ReadInitials();
  CompileFunctions();
  Name* main = names_.Find("main");
  Symbol* symbol = main != nullptr ? main->symbol : nullptr;
  if (symbol == nullptr || symbol->kind != SymbolKind::kFunction) {
    Token at;
    at.file = tokens_[end_mark_].file;
    at.line = 1;
    errors_.Add({source_.file(0), 1}, "There is no function \"main\", with which a game begins.");
  } else {
    program_.main = static_cast<Function*>(symbol->object);
  }
}

void Compiler::Complain(const Token& at, const char* format, ...) {
  if (complained_) return;
  complained_ = true;
  char sentence[600];
  va_list values;
  va_start(values, format);
  std::vsnprintf(sentence, sizeof sentence, format, values);
  va_end(values);
  if (at.define != nullptr && at.define->last_macro != nullptr) {
    errors_.Add(PlaceOf(at), "%s (It comes from the define \"%s\".)", sentence, at.define->text);
  } else {
    errors_.Add(PlaceOf(at), "%s", sentence);
  }
}

// What a token looks like in a sentence.
const char* Compiler::TextOf(const Token& token) {
  switch (token.type) {
    case kEndToken:
      return "the end";
    case kNameToken:
      std::snprintf(text_, sizeof text_, "\"%.60s\"", token.name->text);
      return text_;
    case kNumberToken:
      return "a number";
    case kTextToken:
      return "a text in quotes";
    case kFileToken:
      return "a file name";
    case kHashToken:
      return "\"#\"";
    default:
      break;
  }
  if (token.type > 255) {
    std::snprintf(text_, sizeof text_, "\"%c%c\"", token.type >> 8, token.type & 255);
  } else {
    std::snprintf(text_, sizeof text_, "\"%c\"", token.type);
  }
  return text_;
}

bool Compiler::Accept(uint16_t sign) {
  if (!token().Is(sign)) return false;
  Advance();
  return true;
}

bool Compiler::Expect(uint16_t sign, const char* where) {
  if (Accept(sign)) return true;
  // A missing sign is missed where the text before it ends, not on the line where the next word stands.
  const Token& at = at_ > 0 && token().line != tokens_[at_ - 1].line && tokens_[at_ - 1].file == token().file
                        ? tokens_[at_ - 1]
                        : token();
  Complain(at, "A \"%c\" is missing %s; here is %s.", sign, where, TextOf(token()));
  return false;
}

// After an error: on to the next statement.
void Compiler::SkipStatement() {
  int braces = 0;
  for (; at_ < end_; ++at_) {
    const Token& now = token();
    if (now.Is('{')) ++braces;
    if (now.Is('}')) {
      if (braces == 0) return;
      --braces;
      if (braces == 0) {
        ++at_;
        return;
      }
    }
    if (braces == 0 && now.Is(';')) {
      ++at_;
      return;
    }
    if (braces == 0 && now.begins_line && now.Is(kNameToken)) {
      switch (now.name->keyword) {
        case Keyword::kIf:
        case Keyword::kWhile:
        case Keyword::kFor:
        case Keyword::kSwitch:
        case Keyword::kDo:
        case Keyword::kReturn:
        case Keyword::kElse:
        case Keyword::kCase:
        case Keyword::kDefault:
          return;
        default:
          break;
      }
    }
  }
}

bool Compiler::Enter(const Token& at) {
  if (++depth_ <= kDeepest) return true;
  Complain(at, "This is nested more than %u deep.", kDeepest);
  return false;
}

}  // namespace korvel
