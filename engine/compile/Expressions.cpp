// Expressions: from tokens to descriptions of values, which Values.cpp makes instructions of.
#include "engine/compile/Compiler.h"
#include "engine/language/Suggest.h"

namespace korvel {
namespace {

// How strongly an operator binds its sides, 0 when the sign is none.
int StrengthOf(uint16_t sign) {
  switch (sign) {
    case Pair('|', '|'):
      return 1;
    case Pair('&', '&'):
      return 2;
    case '|':
      return 3;
    case '&':
      return 4;
    case Pair('=', '='):
    case Pair('!', '='):
      return 5;
    case '<':
    case '>':
    case Pair('<', '='):
    case Pair('>', '='):
      return 6;
    case '+':
    case '-':
      return 7;
    case '*':
    case '/':
    case '%':
      return 8;
    default:
      return 0;
  }
}

// What to say about a sign that other languages have.
const char* WayOut(uint16_t sign) {
  switch (sign) {
    case '?':
      return "There is no ?: here; write if and else.";
    case '^':
      return "There is no ^; use pow(base, exponent).";
    case '~':
      return "There is no ~.";
    case Pair('<', '<'):
      return "There is no <<; multiply by 2 instead.";
    case Pair('>', '>'):
      return "There is no >>; divide by 2 and use floor.";
    default:
      return nullptr;
  }
}

bool IsAssignment(uint16_t sign) {
  return sign == '=' || sign == Pair('+', '=') || sign == Pair('-', '=') || sign == Pair('*', '=') ||
         sign == Pair('/', '=') || sign == Pair('%', '=');
}

}  // namespace

void Compiler::ParseExpression(Expression& e, int weaker_than) {
  const uint32_t mark = code_.free_register();
  if (!Enter(token())) {
    Leave();
    return;
  }
  ParseUnary(e);
  while (!complained_) {
    const Token sign = token();
    const int strength = StrengthOf(sign.type);
    if (strength == 0 || strength <= weaker_than) {
      if (const char* way_out = WayOut(sign.type)) Complain(sign, "%s", way_out);
      break;
    }
    Advance();
    const bool is_and = sign.Is(Pair('&', '&'));
    const bool is_or = sign.Is(Pair('|', '|'));
    if (!constants_only_) {
      if (is_and) {
        JumpUnless(e);
      } else if (is_or) {
        JumpWhen(e);
      } else if (e.logic ||
                 (e.where != Expression::kNumberConstant && e.where != Expression::kObjectConstant)) {
        ToAnyRegister(e);
      }
    }
    if (is_and || is_or) code_.SetFree(mark);
    Expression right;
    ParseExpression(right, strength);
    if (complained_) break;
    Operate(sign, e, right, mark);
  }
  Leave();
}

void Compiler::ParseUnary(Expression& e) {
  const Token sign = token();
  if (!sign.Is('-') && !sign.Is('!') && !sign.Is('+')) {
    ParsePrimary(e);
    ParsePostfix(e);
    return;
  }
  if (!Enter(sign)) {
    Leave();
    return;
  }
  Advance();
  const uint32_t mark = code_.free_register();
  if (sign.Is('-') && token().Is(kNumberToken) && token().number == kSmallest) {
    SetNumber(e, kSmallest);
    Advance();
    Leave();
    return;
  }
  ParseUnary(e);
  Leave();
  if (complained_) return;
  if (sign.Is('+')) {
    MustBeNumber(e, sign, "+");
  } else if (sign.Is('-')) {
    if (e.where == Expression::kNumberConstant) return SetNumber(e, Cut(-int64_t{e.number}));
    MustBeNumber(e, sign, "-");
    if (constants_only_ || complained_) return;
    const uint32_t reg = ToAnyRegister(e);
    code_.SetFree(mark);
    SetResult(e, code_.Emit(Op::kNeg, 0, reg, 0), kTypeNumber);
  } else {
    if (e.where == Expression::kNumberConstant) return SetNumber(e, e.number == 0 ? kOne : 0);
    if (e.where == Expression::kObjectConstant) return SetNumber(e, IsNull(e.object) ? kOne : 0);
    if (constants_only_) return;
    const uint32_t reg = ToAnyRegister(e);
    code_.SetFree(mark);
    SetResult(e, code_.Emit(Op::kNot, 0, reg, 0), kTypeNumber);
  }
}

void Compiler::ParsePrimary(Expression& e) {
  const Token at = token();
  if (at.Is(kNumberToken)) {
    if (at.number == kSmallest)
      Complain(at, "This number is too large; numbers go from -2097152 to 2097151.");
    SetNumber(e, at.number);
    return Advance();
  }
  if (at.Is(kTextToken)) {
    e = Expression();
    e.where = Expression::kObjectConstant;
    e.type = kKorvelString;
    e.literal = true;
    e.object = ToValue(maker_.MakeLiteral(at.view()));
    return Advance();
  }
  if (at.Is(kNameToken)) return ParseName(e);
  if (Accept('(')) {
    ParseExpression(e);
    if (complained_) return;
    if (IsAssignment(token().type)) {
      Complain(token(), "An assignment is not a value; did you mean \"==\"?");
      return;
    }
    Expect(')', "behind this expression");
    return;
  }
  if (const char* way_out = WayOut(at.type)) {
    Complain(at, "%s", way_out);
  } else if (at.Is(Pair('+', '+')) || at.Is(Pair('-', '-'))) {
    Complain(at, "Write the name first: x++; or x--; as a statement of its own.");
  } else {
    Complain(at, "A value is missing; here is %s.", TextOf(at));
  }
}

void Compiler::ParseName(Expression& e) {
  const Token at = token();
  Name* name = at.name;
  e = Expression();
  Advance();
  switch (name->keyword) {
    case Keyword::kNone:
      break;
    case Keyword::kTrue:
      return SetNumber(e, kOne);
    case Keyword::kFalse:
      return SetNumber(e, 0);
    case Keyword::kSizeof:
      return ParseSizeof(e);
    case Keyword::kNull:
      e.where = Expression::kObjectConstant;
      e.type = kTypeNull;
      return;
    case Keyword::kMe:
    case Keyword::kYou:
      e.where = name->keyword == Keyword::kMe ? Expression::kMe : Expression::kYou;
      e.type = kKorvelEntity;
      if (constants_only_) Complain(at, "%s is known only while the game runs.", TextOf(at));
      return;
    default:
      Complain(at, "%s cannot stand here: a value is expected.", TextOf(at));
      return;
  }
  if (name->local == stamp_ && stamp_ != 0) {
    const Local& local = locals_[name->local_index];
    SetRegister(e, local.reg, local.type);
    e.assignable = true;
    if (constants_only_) Complain(at, "%s is known only while the function runs.", TextOf(at));
    return;
  }
  if (token().Is('(')) return ParseCall(e, at);
  if (name->command >= 0) {
    Complain(at, "\"(\" and \")\" are missing behind the command \"%s\".", name->text);
    return;
  }
  const Symbol* symbol = name->symbol;
  if (symbol == nullptr) return UnknownName(at, false);
  e.symbol = symbol;
  e.type = symbol->type;
  e.index = symbol->cell;
  switch (symbol->kind) {
    case SymbolKind::kNumber:
      e.where = Expression::kCell;
      break;
    case SymbolKind::kSkill:
      e.where = Expression::kSkill;
      break;
    case SymbolKind::kPointer:
      e.where = Expression::kPointer;
      break;
    case SymbolKind::kArray:
      e.where = Expression::kObjectConstant;
      e.object = ToValue(program_.ArrayOf(*symbol));
      break;
    default:
      e.where = Expression::kObjectConstant;
      e.object = ToValue(symbol->object);
      break;
  }
  const bool constant = e.where == Expression::kObjectConstant;
  if (constants_only_ && !constant) {
    Complain(
        at,
        "\"%s\" is a variable; only numbers, defines and names of objects are known before the game begins.",
        name->text);
  }
}

// A script may have very many names and as many that are wrong.
bool Compiler::MaySuggest(uint32_t candidates) {
  if (candidates > patience_ || errors_.count() >= Errors::kMostErrors) return false;
  patience_ -= candidates;
  return true;
}

void Compiler::UnknownName(const Token& at, bool as_function) {
  complained_ = complained_ || at.name->reported;
  at.name->reported = true;
  if (complained_) {
    complained_ = true;
    return;
  }
  Suggestion near(at.name->view());
  if (MaySuggest(program_.symbols.size() + source_.macros().size() + CommandCount())) {
    for (uint32_t i = 0; i < CommandCount(); ++i) near.Consider(CommandAt(i).name);
    for (const Symbol* symbol : program_.symbols) near.Consider(symbol->name->text);
    for (const Local& local : locals_) near.Consider(local.name->text);
    for (const Macro* macro : source_.macros()) near.Consider(macro->name->text);
  }
  const char* what = as_function ? "function or command" : "name";
  if (near.best() != nullptr) {
    Complain(at, "The %s \"%s\" is unknown; did you mean %s?", what, at.name->text, near.best());
  } else if (at.name->last_macro != nullptr && !as_function) {
    Complain(at, "The define \"%s\" comes only later (%s, line %u).", at.name->text,
             at.name->last_macro->place.file->name, at.name->last_macro->place.line);
  } else {
    Complain(at, "The %s \"%s\" is unknown.", what, at.name->text);
  }
}

void Compiler::ParsePostfix(Expression& e) {
  while (!complained_) {
    if (token().Is('.')) {
      ParseMember(e);
    } else if (token().Is('[')) {
      ParseIndex(e);
    } else {
      return;
    }
  }
}

// `type` may be kTypeAny: what is in front could be any object.
void Compiler::NoMember(const Token& at, int type) {
  const bool any = type == kTypeAny;
  Suggestion near(at.name->view());
  const int count = members_.name_count();
  for (int i = MaySuggest(static_cast<uint32_t>(count)) ? 0 : count; i < count; ++i) {
    if (any || members_.Find(type, i) >= 0) near.Consider(members_.name(i));
  }
  const char* kind = any ? "an object" : TypeName(type);
  Complain(at, "%c%s has no member \"%s\"%s%s%s", UpperOf(kind[0]), kind + 1, at.name->text,
           near.best() != nullptr ? "; did you mean " : "", near.best() != nullptr ? near.best() : "",
           near.best() != nullptr ? "?" : ".");
}

void Compiler::ParseMember(Expression& e) {
  Advance();
  const Token at = token();
  if (!at.Is(kNameToken)) {
    Complain(at, "A member is missing behind the \".\"; here is %s.", TextOf(at));
    return;
  }
  Advance();
  if (constants_only_) {
    Complain(at, "Members are known only while the game runs.");
    return;
  }
  const std::string_view text = at.name->view();
  if (e.where == Expression::kSkill) {
    if (SameWord(text, "value")) return;
    if (!SameWord(text, "min") && !SameWord(text, "max")) {
      Complain(at, "A skill has the members value, min and max, but no \"%s\".", at.name->text);
      return;
    }
    e.where = Expression::kCell;
    e.index += SameWord(text, "min") ? 1 : 2;
    e.symbol = nullptr;
    return;
  }
  if (e.type == kTypeNumber || e.type == kTypeArray || e.type == kTypeNull || e.type == kTypeFunction ||
      e.literal) {
    Complain(at, "Only objects have members; in front of \".%s\" is %s.", at.name->text,
             e.literal ? "a text in quotes" : TypeName(e.type));
    return;
  }
  const bool any = e.type == kTypeAny;
  const int index = any ? -1 : members_.Find(e.type, at.name->member);
  if (any ? at.name->member < 0 : index < 0) {
    NoMember(at, e.type);
    return;
  }
  const uint32_t object = ToAnyRegister(e);
  if (SameWord(text, "string")) {
    if (!Expect('[', "behind \"string\"")) return;
    Expression index_of;
    ParseExpression(index_of);
    if (complained_ || !Expect(']', "behind the number of the line")) return;
    MustBeNumber(index_of, at, "The number of a line");
    if (complained_) return;
    const uint32_t line = ToAnyRegister(index_of);
    e = Expression();
    e.where = Expression::kTextLine;
    e.type = kKorvelString;
    e.b = object;
    e.c = line;
    return;
  }
  if (!any && members_.row(index).access == kKorvelDefinitionOnly) {
    Complain(at, "The member \"%s\" stands only in definitions.", at.name->text);
    return;
  }
  e = Expression();
  e.where = any ? Expression::kMemberAny : Expression::kMember;
  e.b = object;
  e.c = static_cast<uint32_t>(any ? at.name->member : index);
}

void Compiler::ParseIndex(Expression& e) {
  const Token at = token();
  Advance();
  if (e.type != kTypeArray && e.type != kTypeAny) {
    Complain(at, "Only arrays have elements; in front of \"[\" is %s.", TypeName(e.type));
    return;
  }
  if (constants_only_) {
    Complain(at, "Elements are known only while the game runs.");
    return;
  }
  const bool constant = e.where == Expression::kObjectConstant;
  uint32_t array = constant ? code_.Constant(e.object) : 0;
  const bool reachable = constant && array <= UINT16_MAX;
  if (!reachable) array = ToAnyRegister(e);
  Expression index;
  ParseExpression(index);
  if (complained_ || !Expect(']', "behind the number of the element")) return;
  MustBeNumber(index, at, "The number of an element");
  if (complained_) return;
  const uint32_t reg = ToAnyRegister(index);
  e = Expression();
  e.where = reachable ? Expression::kElementK : Expression::kElement;
  e.b = array;
  e.c = reg;
}

void Compiler::ParseSizeof(Expression& e) {
  if (!Expect('(', "behind sizeof")) return;
  const Token at = token();
  uint32_t size = 0;
  if (at.Is(kNameToken) && at.name->local == stamp_ && stamp_ != 0) {
    size = locals_[at.name->local_index].array_size;
  } else if (at.Is(kNameToken) && at.name->symbol != nullptr && at.name->symbol->kind == SymbolKind::kArray) {
    size = at.name->symbol->size;
  }
  if (size == 0) {
    Complain(at, "sizeof needs the name of an array; here is %s.", TextOf(at));
    return;
  }
  Advance();
  Expect(')', "behind sizeof");
  SetNumber(e, FromInt(size));
}

void Compiler::ParseCall(Expression& e, const Token& name) {
  if (constants_only_) {
    Complain(name, "Nothing can be called before the game begins.");
    return;
  }
  if (name.name->command >= 0) return ParseCommand(e, name);
  const Symbol* symbol = name.name->symbol;
  if (symbol == nullptr) return UnknownName(name, true);
  if (symbol->kind != SymbolKind::kFunction) {
    Complain(name, "\"%s\" is %s and cannot be called.", name.name->text, TypeName(symbol->type));
    return;
  }
  const auto* function = static_cast<const Function*>(symbol->object);
  const uint32_t base = code_.free_register();
  code_.SetFree(base + kFirstParameter);
  Advance();
  uint32_t count = 0;
  while (!token().Is(')')) {
    const Token at = token();
    Expression argument;
    ParseExpression(argument);
    if (complained_) return;
    if (argument.where == Expression::kNothing) {
      Complain(at, "This command gives no value.");
      return;
    }
    const uint32_t reg = base + kFirstParameter + count++;
    ToRegister(argument, reg);
    code_.SetFree(reg + 1);
    if (!Accept(',')) break;
  }
  if (IsAssignment(token().type)) {
    Complain(token(), "An assignment is not a value; did you mean \"==\"?");
    return;
  }
  if (!Expect(')', "behind the arguments")) return;
  if (count != function->parameters) {
    Complain(name, "\"%s\" takes %u argument%s; here %s %u.", name.name->text, function->parameters,
             function->parameters == 1 ? "" : "s", count == 1 ? "is" : "are", count);
    return;
  }
  code_.EmitWide(Op::kCall, base, static_cast<int32_t>(function->index));
  code_.SetFree(base + 1);
  SetRegister(e, base, kTypeAny);
  e.call = true;
}

void Compiler::ParseCommand(Expression& e, const Token& name) {
  const auto number = static_cast<uint32_t>(name.name->command);
  const Command& command = CommandAt(number);
  const Signature signature = ReadSignature(command.signature);
  const uint32_t base = code_.free_register();
  code_.TakeRegister();
  code_.SetFree(base);
  Advance();
  bool checked = false;
  uint32_t count = 0;
  uint32_t cut_member = UINT32_MAX;
  while (!token().Is(')')) {
    const Token at = token();
    if (count >= signature.count) {
      ++count;
      Expression rest;
      ParseExpression(rest);
    } else {
      const Parameter& parameter = signature.parameters[count];
      const uint32_t reg = base + count++;
      code_.SetFree(reg);
      ParseArgument(command, parameter, count, reg, &checked);
      if (complained_) return;
      if (parameter.letter == 'V' && at.Is(kNameToken)) {
        const Instruction& last = program_.code[code_.here() - 1];
        if (last.op == Op::kMemberVector && members_.row(last.c).low != members_.row(last.c).high)
          cut_member = last.c;
      }
      code_.SetFree(reg + 1);
    }
    if (complained_) return;
    if (!Accept(',')) break;
  }
  if (IsAssignment(token().type)) {
    Complain(token(), "An assignment is not a value; did you mean \"==\"?");
    return;
  }
  if (!Expect(')', "behind the arguments")) return;
  if (count != signature.count) {
    Complain(name, "\"%s\" takes %u argument%s; here %s %u.", command.name, signature.count,
             signature.count == 1 ? "" : "s", count == 1 ? "is" : "are", count);
    return;
  }
  // A vector that is written and begins at a member with a range is always the first argument.
  uint32_t kept = 0;
  if (cut_member != UINT32_MAX) {
    kept = code_.TakeRegister();
    code_.Emit(Op::kMove, kept, base, 0);
  }
  code_.Emit(signature.waits && !checked ? Op::kWait
             : signature.switches        ? Op::kCommandSwitch
             : checked                   ? Op::kCommandChecked
                                         : Op::kCommand,
             base, number, checked ? 1 : 0);
  if (cut_member != UINT32_MAX) code_.Emit(Op::kCutVector, kept, 0, cut_member);
  code_.SetFree(base + 1);
  SetRegister(e, base, signature.result);
  if (signature.result == kTypeNothing) e.where = Expression::kNothing;
  e.call = true;
}

void Compiler::ParseArgument(const Command& command, const Parameter& parameter, uint32_t number,
                             uint32_t reg, bool* checked) {
  if (parameter.letter == 'v' || parameter.letter == 'V')
    return ParseVector(command, parameter, reg, checked);
  const Token at = token();
  const int wanted = LetterType(parameter.letter);
  Expression e;
  ParseExpression(e);
  if (complained_) return;
  if (e.where == Expression::kNothing) {
    Complain(at, "This command gives no value.");
    return;
  }
  const bool is_null = e.type == kTypeNull;
  if (e.type != kTypeAny && !FitsKind(e.type, wanted) && !(is_null && wanted != kTypeNumber)) {
    Complain(at, "Argument %u of %s is %s; here is %s.", number, command.name, TypeName(wanted),
             e.literal ? "a text in quotes" : TypeName(e.type));
    return;
  }
  if (parameter.letter == 'S' && e.literal) {
    Complain(at, "Argument %u of %s is changed by it; a text in quotes cannot be changed.", number,
             command.name);
    return;
  }
  if (e.type == kTypeAny ||
      (wanted != kTypeNumber && !(e.where == Expression::kObjectConstant && !is_null))) {
    *checked = true;
  }
  ToRegister(e, reg);
}

void Compiler::ParseVector(const Command& command, const Parameter& parameter, uint32_t reg, bool* checked) {
  const Token at = token();
  Expression e;
  ParseExpression(e);
  if (complained_) return;
  (void)parameter;
  if (e.where == Expression::kMember && members_.row(static_cast<int>(e.c)).begins_vector) {
    code_.Emit(Op::kMemberVector, reg, e.b, e.c);
    *checked = true;
  } else if (e.where == Expression::kMemberAny) {
    code_.Emit(Op::kMemberVectorAny, reg, e.b, e.c);
    *checked = true;
  } else if (e.where == Expression::kObjectConstant && e.type == kTypeArray) {
    auto* array = ToObject<Array>(e.object);
    if (array->count < 3) {
      Complain(at, "A vector needs an array of 3 numbers; this one has %u.", array->count);
      return;
    }
    code_.EmitWide(Op::kConstant, reg, static_cast<int32_t>(code_.Constant(ToValue(array->cells))));
  } else if (e.where == Expression::kRegister && (e.type == kTypeAny || e.type == kTypeArray)) {
    code_.Emit(Op::kArrayVector, reg, e.b, 0);
    *checked = true;
  } else {
    Complain(at,
             "%s takes a vector here: an array of 3 numbers, or a member such as x, pan or skill1 that "
             "begins one.",
             command.name);
  }
}

}  // namespace korvel
