// What a script defines, before any body is looked into: everything may be used before its definition.
#include "engine/compile/Compiler.h"

namespace korvel {
namespace {

constexpr Fixed kLargestArray = 65535;

bool BeginsDefinition(const Token& token) {
  if (!token.Is(kNameToken)) return false;
  switch (token.name->keyword) {
    case Keyword::kVar:
    case Keyword::kVarInfo:
    case Keyword::kVarNsave:
    case Keyword::kSkill:
    case Keyword::kFunction:
    case Keyword::kAction:
    case Keyword::kStarter:
      return true;
    default:
      return KindOfKeyword(token.name->keyword) >= 0;
  }
}

bool BeginsFunction(const Token& token) {
  return token.Is(Keyword::kFunction) || token.Is(Keyword::kAction) || token.Is(Keyword::kStarter);
}

}  // namespace

Symbol* Compiler::MakeSymbol(Name* name, SymbolKind kind, int type) {
  Symbol* symbol = arena_.New<Symbol>();
  symbol->name = name;
  symbol->kind = kind;
  symbol->type = static_cast<int8_t>(type);
  name->symbol = symbol;
  program_.symbols.Add(symbol);
  return symbol;
}

uint32_t Compiler::TakeCells(uint32_t count) {
  const uint32_t cell = next_cell_;
  next_cell_ += (count + kCellsOfNumber - 1) / kCellsOfNumber * kCellsOfNumber;
  return cell;
}

void Compiler::DefineEngineNames() {
  Symbol** const numbers[] = {&program_.video_mode, &program_.debug_mode, &program_.debug_result};
  const char* const texts[] = {"video_mode", "debug_mode", "debug_result"};
  for (int i = 0; i < 3; ++i) {
    Symbol* symbol = MakeSymbol(names_.Intern(texts[i]), SymbolKind::kNumber, kTypeNumber);
    symbol->by_engine = true;
    symbol->cell = TakeCells(kCellsOfNumber);
    *numbers[i] = symbol;
  }
  Symbol* camera = MakeSymbol(names_.Intern("camera"), SymbolKind::kObject, kKorvelView);
  camera->by_engine = true;
  camera->object = maker_.camera();
}

// The symbol of a new definition; null, with an error, when the word is taken.
Symbol* Compiler::Define(const Token& at, SymbolKind kind, int type) {
  if (!at.Is(kNameToken) || at.name->keyword != Keyword::kNone) {
    if (at.define != nullptr && at.define->last_macro != nullptr) {
      const Place& place = at.define->last_macro->place;
      Token plain = at;
      plain.define = nullptr;
      Complain(plain, "\"%s\" is a define (%s, line %u); give this definition another name.", at.define->text,
               place.file->name, place.line);
    } else if (at.Is(kNameToken)) {
      Complain(at, "%s is a word of the language and cannot be defined.", TextOf(at));
    } else {
      Complain(at, "A name is missing; here is %s.", TextOf(at));
    }
    return nullptr;
  }
  Name* name = at.name;
  if (name->command >= 0) {
    Complain(at, "\"%s\" is a command; give this definition another name.", name->text);
    return nullptr;
  }
  if (const Symbol* other = name->symbol) {
    if (other->by_engine) {
      Complain(at, "\"%s\" is known without a definition and cannot be defined again.", name->text);
    } else {
      Complain(at, "\"%s\" is defined twice: here and in %s, line %u.", name->text, other->place.file->name,
               other->place.line);
    }
    return nullptr;
  }
  Symbol* symbol = MakeSymbol(name, kind, type);
  symbol->place = PlaceOf(at);
  return symbol;
}

void Compiler::ReadDefinitions() {
  while (!token().Is(kEndToken)) {
    complained_ = false;
    const Token& first = token();
    const Keyword keyword = first.Is(kNameToken) ? first.name->keyword : Keyword::kNone;
    const int kind = KindOfKeyword(keyword);
    if (keyword == Keyword::kVar || keyword == Keyword::kVarInfo || keyword == Keyword::kVarNsave) {
      ReadVariable(keyword == Keyword::kVar);
    } else if (BeginsFunction(first)) {
      ReadFunction(keyword == Keyword::kAction, keyword == Keyword::kStarter);
    } else if (keyword == Keyword::kSkill) {
      ReadObject(-1);
    } else if (kind >= 0 && Peek(1).Is('*')) {
      ReadPointer(kind);
    } else if (kind >= 0) {
      ReadObject(kind);
    } else if (first.Is(';')) {
      Advance();
    } else if (first.Is('}')) {
      Complain(first, "There is a \"}\" too many.");
      Advance();
    } else if (first.Is(Keyword::kEndif) || first.Is(Keyword::kIfdef) || first.Is(Keyword::kIfndef)) {
      Complain(first, "%s stands at the very begin of its line.", TextOf(first));
      SkipDefinition();
    } else if (first.Is(kNameToken) &&
               (SameWord(first.name->view(), "int") || SameWord(first.name->view(), "float") ||
                SameWord(first.name->view(), "double"))) {
      Complain(first, "There is no \"%s\"; a number is defined with var.", first.name->text);
      SkipDefinition();
    } else if (first.Is(kNameToken) && SameWord(first.name->view(), "struct")) {
      Complain(first, "There is no struct; use arrays, or the skills of an entity.");
      SkipDefinition();
    } else if (first.Is(kNameToken) && SameWord(first.name->view(), "void")) {
      Complain(first, "There is no \"void\"; a function begins with the word function.");
      SkipDefinition();
    } else if (keyword != Keyword::kNone) {
      Complain(first, "%s stands inside of a function; here a definition is expected.", TextOf(first));
      SkipDefinition();
    } else {
      Complain(first, "A definition is expected, such as var, function or panel; here is %s.", TextOf(first));
      SkipDefinition();
    }
  }
}

// On to what may begin the next definition.
void Compiler::SkipDefinition() {
  int braces = 0;
  for (Advance(); at_ < end_; Advance()) {
    if (token().Is('{')) ++braces;
    if (token().Is('}') && --braces <= 0) {
      Advance();
      return;
    }
    if (braces == 0 && token().Is(';')) {
      Advance();
      return;
    }
    if (token().begins_line && (BeginsFunction(token()) || (braces == 0 && BeginsDefinition(token()))))
      return;
  }
}

void Compiler::ReadVariable(bool saved) {
  Advance();
  const Token name = token();
  Symbol* symbol = Define(name, SymbolKind::kNumber, kTypeNumber);
  if (symbol == nullptr) return SkipDefinition();
  Advance();
  symbol->saved = saved;
  if (token().Is('[')) {
    symbol->kind = SymbolKind::kArray;
    symbol->type = kTypeArray;
    symbol->size = ReadArraySize();
    symbol->cell = TakeCells(2 + (symbol->size < 3 ? 3 : symbol->size));
  } else {
    symbol->cell = TakeCells(kCellsOfNumber);
  }
  if (token().Is('=')) {
    initials_.Add({symbol, at_ + 1});
    while (!token().Is(';') && !token().Is(kEndToken) && !(token().begins_line && BeginsDefinition(token())))
      Advance();
  } else if (token().Is(',')) {
    Complain(token(), "One name a definition: write another var for the next one.");
    return SkipDefinition();
  }
  if (!Expect(';', "behind this definition") && !BeginsDefinition(token())) SkipDefinition();
}

uint32_t Compiler::ReadArraySize() {
  const Token at = token();
  Advance();
  Fixed size = 0;
  if (!ReadConstantNumber(&size) || !Expect(']', "behind the size of an array")) return 1;
  if (size < kOne || Floor(size) > kLargestArray) {
    Complain(at, "An array has 1 to 65535 elements.");
    return 1;
  }
  return static_cast<uint32_t>(Floor(size));
}

void Compiler::ReadPointer(int kind) {
  Advance();
  Advance();
  Symbol* symbol = Define(token(), SymbolKind::kPointer, kind);
  if (symbol == nullptr) return SkipDefinition();
  symbol->cell = TakeCells(sizeof(PointerCell) / sizeof(Fixed));
  Advance();
  if (token().Is('=')) {
    initials_.Add({symbol, at_ + 1});
    while (!token().Is(';') && !token().Is(kEndToken) && !(token().begins_line && BeginsDefinition(token())))
      Advance();
  }
  if (!Expect(';', "behind this definition") && !BeginsDefinition(token())) SkipDefinition();
}

void Compiler::ReadObject(int kind) {
  Advance();
  const Token name = token();
  const bool is_skill = kind < 0;
  Symbol* symbol =
      Define(name, is_skill ? SymbolKind::kSkill : SymbolKind::kObject, is_skill ? int{kTypeNumber} : kind);
  if (symbol == nullptr) return SkipDefinition();
  Advance();
  if (is_skill) {
    symbol->cell = TakeCells(kCellsOfNumber);
  } else {
    const bool on_screen = kind == kKorvelEntity;
    symbol->object = maker_.MakeObject(on_screen ? int{kKorvelScreenEntity} : kind, name.name);
  }
  const bool has_body =
      kind != kKorvelString && kind != kKorvelBitmap && kind != kKorvelSound && kind != kKorvelFont;
  initials_.Add({symbol, at_});
  if (has_body) {
    if (token().Is('{')) {
      SkipBody(name);
    } else if (!Accept(';')) {
      Complain(token(), "A \"{\" is missing behind the name of this definition; here is %s.",
               TextOf(token()));
      SkipDefinition();
    }
    return;
  }
  while (!token().Is(';') && !token().Is(kEndToken) && !(token().begins_line && BeginsDefinition(token())))
    Advance();
  if (!Expect(';', "behind this definition") && !BeginsDefinition(token())) SkipDefinition();
}

// From "{" to behind its "}". A word that only begins a function tells of a brace that is missing before it.
bool Compiler::SkipBody(const Token& name) {
  int braces = 0;
  for (; at_ < end_; ++at_) {
    if (token().Is('{')) ++braces;
    if (token().Is('}') && --braces == 0) {
      ++at_;
      return true;
    }
    if (token().begins_line && BeginsFunction(token())) break;
  }
  Complain(name, "A \"}\" is missing at the end of \"%s\".", name.Is(kNameToken) ? name.name->text : "this");
  return false;
}

void Compiler::ReadFunction(bool is_action, bool is_starter) {
  Advance();
  const Token name = token();
  const bool named = name.Is(kNameToken) && name.name->keyword == Keyword::kNone;
  Advance();
  const uint32_t begin = at_;
  uint32_t parameters = 0;
  if (Accept('(')) {
    for (; !token().Is(')') && !token().Is('{') && !token().Is(';') && !token().Is(kEndToken); Advance()) {
      if (token().Is(kNameToken)) ++parameters;
    }
    if (!Expect(')', "behind the parameters")) return SkipDefinition();
  } else if (!is_action && !is_starter && named) {
    Complain(token(), "\"(\" and \")\" are missing behind the name of this function.");
  }
  if (Accept(';')) return;  // a prototype
  Symbol* symbol = Define(name, SymbolKind::kFunction, kTypeFunction);
  // Whatever follows is wrong with it, it can be called.
  Function* function = nullptr;
  if (symbol != nullptr) {
    function = arena_.New<Function>();
    function->head.kind = kKorvelFunction;
    function->name = name.name;
    function->place = symbol->place;
    function->index = program_.functions.size();
    function->is_action = is_action;
    function->is_starter = is_starter;
    symbol->object = function;
    program_.functions.Add(function);
    function->parameters = parameters;
  }
  if (!token().Is('{')) {
    Complain(token(), "A \"{\" is missing at the begin of this function; here is %s.", TextOf(token()));
    return SkipDefinition();
  }
  const uint32_t open = at_;
  complained_ = false;
  const bool whole = SkipBody(name);
  if (symbol == nullptr || !whole) return;
  if (is_starter) program_.starters.Add(function);
  if ((is_action || is_starter) && parameters > 0) Complain(name, "An action or starter has no parameters.");
  bodies_.Add({symbol, begin, open});
}

// A define may not be called like anything else: the other would be replaced by its value.
void Compiler::CheckDefines() {
  for (const Macro* macro : source_.macros()) {
    const Symbol* symbol = macro->name->symbol;
    if (symbol == nullptr) continue;
    if (symbol->by_engine) {
      errors_.Add(macro->place, "\"%s\" is known without a definition; give the define another name.",
                  macro->name->text);
    } else {
      errors_.Add(macro->place,
                  "The define \"%s\" has the name of a definition (%s, line %u); case makes no difference.",
                  macro->name->text, symbol->place.file->name, symbol->place.line);
    }
  }
}

void Compiler::AllocateCells() {
  program_.cell_count = next_cell_ + kCellsOfNumber;
  program_.cells = static_cast<Fixed*>(arena_.Allocate(program_.cell_count * sizeof(Fixed)));
  for (const Symbol* symbol : program_.symbols) {
    if (symbol->kind == SymbolKind::kArray) {
      Array* array = program_.ArrayOf(*symbol);
      array->head.kind = kTypeArray;
      array->count = symbol->size;
    } else if (symbol->kind == SymbolKind::kPointer) {
      PointerCell* pointer = program_.PointerOf(*symbol);
      pointer->head.kind = kKorvelEntityPointer;
      pointer->wanted = static_cast<uint32_t>(symbol->type);
    } else if (symbol->kind == SymbolKind::kSkill) {
      SkillCells* skill = program_.SkillOf(*symbol);
      skill->min = kSmallest;
      skill->max = kLargest;
    }
  }
}

}  // namespace korvel
