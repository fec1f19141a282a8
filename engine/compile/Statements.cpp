// Bodies of functions: locals and statements.
#include "engine/compile/Compiler.h"
#include "engine/language/Suggest.h"

namespace korvel {
namespace {

constexpr uint32_t kMostLabels = 1000;

// The sign of the operation in "+=" and its like, 0 for "=" and what is no assignment.
char OperationOf(uint16_t sign) {
  switch (sign) {
    case Pair('+', '='):
      return '+';
    case Pair('-', '='):
      return '-';
    case Pair('*', '='):
      return '*';
    case Pair('/', '='):
      return '/';
    case Pair('%', '='):
      return '%';
    default:
      return 0;
  }
}

bool IsVar(const Token& token) {
  return token.Is(Keyword::kVar) || token.Is(Keyword::kVarNsave) || token.Is(Keyword::kVarInfo);
}

}  // namespace

void Compiler::CompileFunctions() {
  for (uint32_t i = 0; i < bodies_.size(); ++i) {
    complained_ = false;
    CompileFunction(bodies_[i]);
  }
}

void Compiler::CompileFunction(const Body& body) {
  auto& function = *static_cast<Function*>(body.symbol->object);
  ++stamp_;
  locals_.Clear();
  labels_.Clear();
  gotos_.Clear();
  goto_jumps_.Clear();
  loop_ = nullptr;
  depth_ = 0;
  end_ = end_mark_;
  at_ = body.begin;
  function.entry = code_.here();
  code_.Begin(kFirstParameter);
  ReadParameters(function);
  at_ = body.open + 1;
  ReadLocals();
  while (!token().Is('}') && !token().Is(kEndToken)) Statement();
  code_.BeginStatement(token().line);
  code_.ClearMark();
  code_.Emit(Op::kReturnZero, 0, 0, 0);
  ResolveGotos(function.place.file);
  if (code_.too_large()) {
    errors_.Add(function.place, "The function \"%s\" is too large; cut it into several.",
                function.name->text);
  }
  function.end = code_.here();
  function.registers = code_.most_registers();
  function.local_count = locals_.size();
  function.locals = static_cast<Local*>(arena_.Allocate(sizeof(Local) * (locals_.size() + 1)));
  for (uint32_t i = 0; i < locals_.size(); ++i) function.locals[i] = locals_[i];
}

void Compiler::AddLocal(const Token& name, int type, uint32_t reg, uint32_t array_slot, uint32_t array_size) {
  if (!name.Is(kNameToken) || name.name->keyword != Keyword::kNone) {
    if (name.define != nullptr) {
      Complain(name, "\"%s\" is a define; give this variable another name.", name.define->text);
    } else {
      Complain(name, "A name is missing; here is %s.", TextOf(name));
    }
    return;
  }
  if (name.name->command >= 0) {
    Complain(name, "\"%s\" is a command; give this variable another name.", name.name->text);
    return;
  }
  if (name.name->last_macro != nullptr) {
    const Place& place = name.name->last_macro->place;
    Complain(name, "\"%s\" has the name of a define (%s, line %u); case makes no difference.",
             name.name->text, place.file->name, place.line);
    return;
  }
  if (name.name->local == stamp_) {
    Complain(name, "\"%s\" is defined twice in this function.", name.name->text);
    return;
  }
  name.name->local = stamp_;
  name.name->local_index = locals_.size();
  locals_.Add({name.name, static_cast<int8_t>(type), static_cast<uint16_t>(reg), array_slot, array_size});
}

void Compiler::ReadParameters(Function& function) {
  if (!token().Is('(')) return;
  Advance();
  uint32_t count = 0;
  while (!token().Is(')') && !complained_) {
    if (token().Is(Keyword::kVar)) Advance();
    const Token name = token();
    AddLocal(name, kTypeAny, kFirstParameter + count, 0, 0);
    ++count;
    Advance();
    if (!Accept(',') && !token().Is(')')) {
      Complain(token(), "A \",\" is missing between parameters; here is %s.", TextOf(token()));
    }
  }
  function.parameters = count;
  code_.SetFree(kFirstParameter + count);
}

void Compiler::ReadLocals() {
  for (;;) {
    complained_ = false;
    const int kind = token().Is(kNameToken) ? KindOfKeyword(token().name->keyword) : -1;
    if (IsVar(token())) {
      ReadLocalNumber();
    } else if (kind >= 0 && Peek(1).Is('*')) {
      ReadLocalPointer(kind);
    } else {
      return;
    }
    if (complained_ || !Expect(';', "behind this definition")) SkipStatement();
  }
}

void Compiler::ReadLocalNumber() {
  code_.BeginStatement(token().line);
  Advance();
  const Token name = token();
  Advance();
  if (token().Is('[')) {
    const uint32_t size = ReadArraySize();
    if (complained_) return;
    const uint32_t reg = code_.TakeRegister();
    const uint32_t slot = code_.free_register();
    const uint32_t cells = size < 3 ? 3 : size;
    code_.SetFree(slot + 1 + (cells + 1) / 2);
    code_.ClearMark();
    code_.EmitWide(Op::kInitArray, reg, static_cast<int32_t>(slot));
    code_.EmitWide(Op::kInt, 0, static_cast<int32_t>(size));
    AddLocal(name, kTypeArray, reg, slot, size);
    if (token().Is('='))
      Complain(token(), "An array of a function has no values at first; write them in statements.");
    return;
  }
  const uint32_t reg = code_.TakeRegister();
  if (Accept('=')) {
    const Token at = token();
    Expression e;
    ParseExpression(e);
    if (complained_) return;
    MustBeNumber(e, at, "A var");
    if (complained_) return;
    PutInto(e, reg);
    code_.SetFree(reg + 1);
  } else {
    code_.ClearMark();
    code_.EmitWide(Op::kInt, reg, 0);
  }
  if (token().Is(',')) {
    Complain(token(), "One name a definition: write another var for the next one.");
    return;
  }
  AddLocal(name, kTypeNumber, reg, 0, 0);
}

void Compiler::ReadLocalPointer(int kind) {
  code_.BeginStatement(token().line);
  Advance();
  Advance();
  const Token name = token();
  Advance();
  const uint32_t reg = code_.TakeRegister();
  code_.ClearMark();
  code_.EmitWide(Op::kConstant, reg, static_cast<int32_t>(code_.Constant(kNull)));
  AddLocal(name, kind, reg, 0, 0);
  if (!complained_ && token().Is('=')) {
    Expression target;
    SetRegister(target, reg, kind);
    target.assignable = true;
    const Token sign = token();
    Advance();
    Assign(target, sign);
    code_.SetFree(reg + 1);
  }
}

void Compiler::StatementOrBlock() {
  if (!Enter(token())) {
    // Too deep: the rest of the function would only repeat this.
    at_ = end_;
    Leave();
    return;
  }
  Statement();
  Leave();
}

void Compiler::Block() {
  Advance();
  while (!token().Is('}') && !token().Is(kEndToken)) StatementOrBlock();
  Expect('}', "at the end of these statements");
}

void Compiler::Statement() {
  complained_ = false;
  const uint32_t mark = code_.free_register();
  const Token first = token();
  code_.BeginStatement(first.line);
  if (first.Is('{')) {
    code_.ClearMark();
    return Block();
  }
  if (first.Is(';')) return Advance();
  const Keyword keyword = first.Is(kNameToken) ? first.name->keyword : Keyword::kNone;
  switch (keyword) {
    case Keyword::kIf:
      If();
      break;
    case Keyword::kWhile:
      While();
      break;
    case Keyword::kDo:
      DoWhile();
      break;
    case Keyword::kFor:
      For();
      break;
    case Keyword::kSwitch:
      Switch();
      break;
    case Keyword::kReturn:
      ReturnStatement();
      break;
    case Keyword::kBreak:
      BreakOrContinue(true);
      break;
    case Keyword::kContinue:
      BreakOrContinue(false);
      break;
    case Keyword::kGoto:
      Goto();
      break;
    case Keyword::kElse:
      Complain(first, "There is no if to this else.");
      Advance();
      return;
    case Keyword::kCase:
    case Keyword::kDefault:
      Complain(first, "%s stands only directly in the braces of a switch.", TextOf(first));
      break;
    case Keyword::kNone:
    case Keyword::kMe:
    case Keyword::kYou: {
      if (first.Is(kNameToken) && keyword == Keyword::kNone && Peek(1).Is(':')) {
        for (const Label& label : labels_) {
          if (label.name == first.name)
            Complain(first, "The label \"%s\" is defined twice.", first.name->text);
        }
        if (labels_.size() >= kMostLabels) Complain(first, "A function has %u labels at most.", kMostLabels);
        if (labels_.size() < kMostLabels) labels_.Add({first.name, code_.here(), first.line});
        Advance();
        Advance();
        return;
      }
      if (first.Is(kNameToken) && Peek(1).Is(kNameToken) &&
          (SameWord(first.name->view(), "int") || SameWord(first.name->view(), "float"))) {
        Complain(first, "There is no \"%s\"; a number is defined with var at the begin of the function.",
                 first.name->text);
        break;
      }
      if (first.Is(kNameToken) && Peek(1).Is(kNameToken) && SameWord(first.name->view(), "struct")) {
        Complain(first, "There is no struct; use arrays, or the skills of an entity.");
        break;
      }
      SimpleStatement();
      // Where the next line begins anew, only the sign is missing.
      if (!complained_ && !Expect(';', "at the end of this statement") && token().begins_line)
        complained_ = false;
      break;
    }
    default:
      if (IsVar(first) || KindOfKeyword(keyword) >= 0) {
        Complain(first,
                 "Variables of a function are defined at the begin of its body, before all statements.");
      } else {
        Complain(first, "%s cannot stand here.", TextOf(first));
      }
  }
  code_.SetFree(mark);
  if (complained_) {
    // A word that nobody skips would be met for ever.
    const uint32_t before = at_;
    SkipStatement();
    if (at_ == before && !token().Is('}')) Advance();
    // The other half of an if that was skipped is a statement like any other.
    const bool is_else = token().Is(kNameToken) && token().name->keyword == Keyword::kElse;
    if (keyword == Keyword::kIf && is_else) Advance();
  }
}

// A call, an assignment, or x++.
void Compiler::SimpleStatement() {
  const Token first = token();
  Expression target;
  ParseUnary(target);
  if (complained_) return;
  const Token sign = token();
  const bool steps = sign.Is(Pair('+', '+')) || sign.Is(Pair('-', '-'));
  if (sign.Is('=') || OperationOf(sign.type) != 0 || steps) {
    Advance();
    return Assign(target, sign);
  }
  if (target.call) return;
  if (sign.Is(Pair('=', '='))) {
    Complain(sign, "A comparison alone does nothing; did you mean \"=\"?");
  } else if (target.where == Expression::kObjectConstant && target.type == kTypeFunction) {
    Complain(first, "\"(\" and \")\" are missing behind the function %s.", TextOf(first));
  } else if (token().Is(kNameToken) && first.Is(kNameToken)) {
    Complain(token(), "%s cannot follow here.", TextOf(token()));
  } else {
    Complain(first, "This does nothing; a call or an assignment is expected.");
  }
}

void Compiler::Assign(Expression& target, const Token& sign) {
  const uint32_t mark = code_.free_register();
  const bool writable =
      target.assignable || (target.where >= Expression::kCell && target.where <= Expression::kMemberAny);
  if (target.where == Expression::kMe) {
    Complain(sign, "\"me\" cannot be changed.");
    return;
  }
  if (target.where == Expression::kTextLine ||
      (target.type == kKorvelString && target.where == Expression::kObjectConstant)) {
    Complain(sign, "A string gets its content with str_copy(target, source), not with \"=\".");
    return;
  }
  if (!writable || target.type == kTypeArray) {
    Complain(sign,
             target.type == kTypeArray ? "An array is written element by element: name[0] = value;"
             : target.where == Expression::kObjectConstant && !target.literal && target.type != kTypeNull
                 ? "What is defined as an object stays this object; only a pointer can be changed."
                 : "What stands on the left cannot be changed.");
    return;
  }
  if (target.where == Expression::kMember &&
      members_.row(static_cast<int>(target.c)).access == kKorvelReadOnly) {
    Complain(sign, "The member \"%s\" is only read.", members_.row(static_cast<int>(target.c)).name);
    return;
  }
  Expression value;
  Token at = token();
  const char operation = OperationOf(sign.type);
  const bool steps = sign.Is(Pair('+', '+')) || sign.Is(Pair('-', '-'));
  if (operation != 0 || steps) {
    value = target;
    value.symbol = nullptr;
    if (!target.assignable) ToAnyRegister(value);
    Expression right;
    Token sign_of_operation = sign;
    sign_of_operation.type = static_cast<uint16_t>(steps ? sign.type & 255 : operation);
    if (steps) {
      SetNumber(right, kOne);
    } else {
      ParseExpression(right);
    }
    if (complained_) return;
    if (right.where == Expression::kNothing) {
      Complain(at, "This command gives no value.");
      return;
    }
    Operate(sign_of_operation, value, right, code_.free_register());
  } else {
    ParseExpression(value);
  }
  if (complained_) return;
  if (value.where == Expression::kNothing) {
    Complain(at, "This command gives no value.");
    return;
  }
  if (token().Is('=')) {
    Complain(token(), "An assignment is a statement, not a value; write one after the other.");
    return;
  }
  const int wanted = target.type;
  if (wanted == kTypeNumber) {
    if (target.assignable && value.type == kTypeAny && !value.logic) {
      const uint32_t reg = ToAnyRegister(value);
      code_.Emit(Op::kNumber, target.b, reg, 0);
      code_.MarkResult(kGivesResult);
      return;
    }
    if (value.type != kTypeNumber && value.type != kTypeAny) {
      Complain(
          at, "A number is expected; here is %s.%s",
          value.literal ? "a text in quotes" : TypeName(value.type),
          value.type == kKorvelEntity ? " Write entity* name; for a variable that points to an entity." : "");
      return;
    }
    MustBeNumber(value, at, "A number");
  } else if (wanted != kTypeAny) {
    if (value.literal) {
      Complain(at, "A text in quotes is put into a string with str_copy(target, source).");
      return;
    }
    if (value.type != kTypeAny && value.type != kTypeNull && !FitsKind(value.type, wanted)) {
      Complain(at, "%c%s is expected, or null; here is %s.", UpperOf(TypeName(wanted)[0]),
               TypeName(wanted) + 1, TypeName(value.type));
      return;
    }
    if (value.type == kTypeAny) {
      const uint32_t reg = value.assignable ? code_.TakeRegister() : ToAnyRegister(value);
      ToRegister(value, reg);
      code_.Emit(Op::kCheckKind, reg, static_cast<uint32_t>(wanted), 0);
    }
  }
  if (complained_) return;
  if (target.assignable) {
    PutInto(value, target.b);
  } else {
    Store(target, ToAnyRegister(value));
  }
  code_.SetFree(mark);
}

// Assigns to a local variable; each instruction that gives it its value is marked as the one that does.
void Compiler::PutInto(Expression& value, uint32_t reg) {
  if (value.where == Expression::kRegister && !value.logic && value.b == reg) {
    code_.Emit(Op::kMove, reg, reg, 0);
  } else {
    const bool logic = value.logic;
    ToRegister(value, reg);
    if (logic) code_.MarkResult(kGivesResult, 2);
  }
  code_.MarkResult(kGivesResult);
}

void Compiler::ReturnStatement() {
  Advance();
  if (Accept(';')) {
    code_.Emit(Op::kReturnZero, 0, 0, 0);
    return;
  }
  const Token at = token();
  Expression value;
  ParseExpression(value);
  if (complained_) return;
  if (value.type == kTypeArray || value.where == Expression::kNothing) {
    Complain(at, "A function returns a number or an object.");
    return;
  }
  code_.Emit(Op::kReturn, ToAnyRegister(value), 0, 0);
  code_.MarkResult(kStoresResult);
  Expect(';', "behind the value");
}

void Compiler::Goto() {
  Advance();
  const Token name = token();
  if (!name.Is(kNameToken)) {
    Complain(name, "The name of a label is missing behind \"goto\".");
    return;
  }
  Advance();
  gotos_.Add({name.name, code_.EmitWide(Op::kJump, 0, 0), name.line});
  Expect(';', "behind the label");
}

void Compiler::ResolveGotos(const SourceFile* file) {
  for (const Label& jump : gotos_) {
    const Label* target = nullptr;
    for (const Label& label : labels_) {
      if (label.name == jump.name) {
        target = &label;
        break;
      }
    }
    if (target != nullptr) {
      code_.PatchOne(jump.pc, target->pc);
      continue;
    }
    Suggestion near(jump.name->view());
    if (MaySuggest(labels_.size())) {
      for (const Label& label : labels_) near.Consider(label.name->text);
    }
    complained_ = false;
    const Place place{file, jump.line};
    errors_.Add(place, "There is no label \"%s\" in this function%s%s%s", jump.name->text,
                near.best() != nullptr ? "; did you mean " : "", near.best() != nullptr ? near.best() : "",
                near.best() != nullptr ? "?" : ".");
  }
}

}  // namespace korvel
