// Values in definitions, and members in their bodies.
#include "engine/compile/Compiler.h"

namespace korvel {

bool Compiler::ReadConstant(Expression& e) {
  constants_only_ = true;
  ParseExpression(e);
  constants_only_ = false;
  return !complained_;
}

bool Compiler::ReadConstantNumber(Fixed* value) {
  const Token at = token();
  Expression e;
  if (!ReadConstant(e)) return false;
  if (e.where != Expression::kNumberConstant) {
    Complain(at, "A number is expected that is known before the game begins; here is %s.",
             e.type == kTypeNumber ? "one that is not" : TypeName(e.type));
    return false;
  }
  *value = e.number;
  return true;
}

bool Compiler::ReadConstantObject(int type, Value* value) {
  const Token at = token();
  Expression e;
  if (!ReadConstant(e)) return false;
  if (e.where != Expression::kObjectConstant || e.literal ||
      (e.type != kTypeNull && !FitsKind(e.type, type))) {
    Complain(at, "The name of %s is expected, or null.", TypeName(type));
    return false;
  }
  *value = e.object;
  return true;
}

void Compiler::ReadInitials() {
  for (uint32_t i = 0; i < initials_.size(); ++i) {
    const Initial initial = initials_[i];
    complained_ = false;
    at_ = initial.begin;
    ReadInitial(initial);
  }
  at_ = 0;
}

void Compiler::ReadInitial(const Initial& initial) {
  Symbol* symbol = initial.symbol;
  switch (symbol->kind) {
    case SymbolKind::kNumber:
    case SymbolKind::kArray:
      return ReadNumberInitial(symbol);
    case SymbolKind::kPointer:
      return ReadPointerInitial(symbol);
    default:
      break;
  }
  if (token().Is('{')) return ReadBody(symbol);
  ReadObjectInitial(symbol);
}

void Compiler::ReadNumberInitial(Symbol* symbol) {
  Fixed* cells = program_.cells + symbol->cell;
  uint32_t count = 1;
  if (symbol->kind == SymbolKind::kArray) {
    cells = program_.ArrayOf(*symbol)->cells;
    count = symbol->size;
  }
  for (uint32_t i = 0;; ++i) {
    Fixed value = 0;
    const Token at = token();
    if (token().Is(kTextToken)) {
      Complain(at, "A var holds a number; a text needs string %s = \"...\";", symbol->name->text);
      return;
    }
    if (!ReadConstantNumber(&value)) return;
    if (i < count) {
      cells[i] = value;
    } else {
      Complain(at,
               symbol->kind == SymbolKind::kArray ? "There are more values than the %u elements of \"%s\"."
                                                  : "There is more than %u value for the number \"%s\".",
               count, symbol->name->text);
      return;
    }
    if (!Accept(',')) break;
  }
  Expect(';', "behind these values");
}

void Compiler::ReadPointerInitial(Symbol* symbol) {
  Value value = kNull;
  if (!ReadConstantObject(symbol->type, &value)) return;
  program_.PointerOf(*symbol)->target = ToObject<KorvelHead>(value);
  Expect(';', "behind this value");
}

void Compiler::ReadObjectInitial(Symbol* symbol) {
  if (token().Is(';')) {
    if (symbol->type == kKorvelBitmap || symbol->type == kKorvelSound) {
      Complain(token(), "A file is missing: write = <file>; behind the name.");
    }
    return;
  }
  if (!Expect('=', "behind the name")) return;
  if (symbol->type == kKorvelString) {
    if (!token().Is(kTextToken)) {
      Complain(token(), "A text in quotes is expected; here is %s.", TextOf(token()));
      return;
    }
    maker_.SetString(symbol->object, token().view());
    Advance();
  } else if (symbol->type == kKorvelFont) {
    const Token face = token();
    if (!face.Is(kTextToken)) {
      Complain(face, "Write font name = \"face\", height; the face is a text in quotes.");
      return;
    }
    Advance();
    Fixed height = 16 * kOne;
    if (Accept(',') && !ReadConstantNumber(&height)) return;
    if (height < kOne || height > 500 * kOne) {
      Complain(face, "The height of a font is 1 to 500.");
      return;
    }
    maker_.SetFont(symbol->object, face.view(), Floor(height));
  } else {
    ReadFileOf(symbol);
  }
  Expect(';', "behind this definition");
}

void Compiler::ReadFileOf(Symbol* symbol) {
  const Token file = token();
  if (!file.Is(kFileToken)) {
    Complain(file, "A file is expected between < and >; here is %s.", TextOf(file));
    return;
  }
  Advance();
  if (!maker_.SetFile(symbol->object, file.view(), source_.file(file.file)->folder)) {
    // The game can be played without: it goes on with a placeholder.
    errors_.Fault(PlaceOf(file), "The file of this definition was not found, or cannot be read.");
  }
}

void Compiler::ReadBody(Symbol* symbol) {
  Advance();
  while (!token().Is('}') && !token().Is(kEndToken)) {
    complained_ = false;
    const Token name = token();
    if (!name.Is(kNameToken)) {
      Complain(name, "A member is expected, such as alpha = 50; here is %s.", TextOf(name));
      SkipStatement();
      continue;
    }
    Advance();
    if (Expect('=', "behind the member")) {
      if (symbol->kind == SymbolKind::kSkill) {
        ReadSkillMember(symbol, name);
      } else {
        ReadMember(symbol, name);
      }
    }
    if (complained_ || !Expect(';', "behind this member")) SkipStatement();
  }
  if (symbol->kind == SymbolKind::kSkill) {
    SkillCells* skill = program_.SkillOf(*symbol);
    skill->value = skill->value > skill->max ? skill->max : skill->value;
    skill->value = skill->value < skill->min ? skill->min : skill->value;
  }
}

void Compiler::ReadSkillMember(Symbol* symbol, const Token& name) {
  SkillCells* skill = program_.SkillOf(*symbol);
  const std::string_view text = name.name->view();
  Fixed* cell = SameWord(text, "value") ? &skill->value
                : SameWord(text, "min") ? &skill->min
                : SameWord(text, "max") ? &skill->max
                                        : nullptr;
  if (cell == nullptr) {
    Complain(name, "A skill has the members value, min and max, but no \"%s\".", name.name->text);
    return;
  }
  ReadConstantNumber(cell);
}

void Compiler::ReadMember(Symbol* symbol, const Token& name) {
  if (symbol->type == kKorvelEntity && SameWord(name.name->view(), "model")) return ReadFileOf(symbol);
  const int index = members_.Find(symbol->type, name.name->member);
  if (index < 0) {
    NoMember(name, symbol->type);
    return;
  }
  const KorvelMember& member = members_.row(index);
  auto* bytes = static_cast<char*>(symbol->object);
  const bool counts_lines = SameWord(name.name->view(), "lines");
  if (member.encoding == kKorvelStrings) {
    uint32_t line = 0;
    do {
      if (!token().Is(kTextToken)) {
        Complain(token(), "A text in quotes is expected; here is %s.", TextOf(token()));
        return;
      }
      maker_.SetTextLine(symbol->object, line++, token().view());
      Advance();
    } while (Accept(','));
  } else if (member.encoding == kKorvelObject && token().Is(kTextToken)) {
    maker_.SetObjectMember(symbol->object, member, maker_.MakeLiteral(token().view()));
    Advance();
  } else if (member.encoding == kKorvelObject) {
    const int wanted = SameWord(name.name->view(), "picture")   ? kKorvelBitmap
                       : SameWord(name.name->view(), "face")    ? kKorvelFont
                       : SameWord(name.name->view(), "surface") ? kKorvelMaterial
                                                                : kKorvelString;
    Value value = kNull;
    if (!ReadConstantObject(wanted, &value)) return;
    maker_.SetObjectMember(symbol->object, member, ToObject<void>(value));
  } else {
    Fixed value = 0;
    const Token at = token();
    if (!ReadConstantNumber(&value)) return;
    if (counts_lines) {
      if (value < kOne || value > 200 * kOne) {
        Complain(at, "A text has 1 to 200 lines.");
        return;
      }
      maker_.SetTextLines(symbol->object, static_cast<uint32_t>(Floor(value)));
      return;
    }
    if (member.access == kKorvelReadOnly) {
      Complain(name, "The member \"%s\" is only read.", name.name->text);
      return;
    }
    if (member.low != member.high)
      value = value < member.low ? member.low : value > member.high ? member.high : value;
    *reinterpret_cast<Fixed*>(bytes + member.offset) = value;
  }
}

}  // namespace korvel
