// Conditions and loops.
#include "engine/compile/Compiler.h"

namespace korvel {
namespace {

constexpr uint32_t kMostCases = 4000;

bool IsVar(const Token& token) {
  return token.Is(Keyword::kVar) || token.Is(Keyword::kVarNsave) || token.Is(Keyword::kVarInfo);
}

}  // namespace

// An expression that something is decided by.
void Compiler::ParseTest(Expression& e) {
  const Token at = token();
  ParseExpression(e);
  if (complained_) return;
  if (token().Is('=')) {
    Complain(token(), "An assignment is not a value; did you mean \"==\"?");
  } else if (e.where == Expression::kNothing) {
    Complain(at, "This command gives no value.");
  }
}

void Compiler::ParseCondition(Expression& e) {
  if (!Expect('(', "in front of the condition")) return;
  ParseTest(e);
  if (!complained_) Expect(')', "behind the condition");
}

void Compiler::If() {
  const uint32_t mark = code_.free_register();
  Advance();
  Expression condition;
  ParseCondition(condition);
  if (complained_) return;
  JumpUnless(condition);
  code_.SetFree(mark);
  JumpList otherwise = condition.when_false;
  StatementOrBlock();
  if (token().Is(Keyword::kElse)) {
    Advance();
    code_.ClearMark();
    JumpList end = kNoJumps;
    code_.AddJump(end, code_.EmitWide(Op::kJump, 0, 0));
    code_.PatchHere(otherwise);
    StatementOrBlock();
    code_.PatchHere(end);
  } else {
    code_.PatchHere(otherwise);
  }
  complained_ = false;
}

// From behind "(" to behind its ")".
bool Compiler::SkipBrackets() {
  int depth = 1;
  for (; at_ < end_; ++at_) {
    if (token().Is('{') || token().Is('}') || (depth == 1 && token().Is(';'))) break;
    if (token().Is('(')) ++depth;
    if (token().Is(')') && --depth == 0) {
      ++at_;
      return true;
    }
  }
  Complain(token(), "A \")\" is missing; here is %s.", TextOf(token()));
  return false;
}

void Compiler::BodyOfLoop(Loop& loop) {
  Loop* outer = loop_;
  loop.breaks = loop.continues = kNoJumps;
  loop.takes_continue = true;
  loop.outer = outer;
  loop_ = &loop;
  StatementOrBlock();
  loop_ = outer;
  complained_ = false;
}

// The body of a loop, then its last part and its condition, although they stand in front of it: there the
// condition costs one jump a round. Goes on behind the body.
void Compiler::RestOfLoop(const LoopHead& head) {
  code_.ClearMark();
  JumpList to_condition = kNoJumps;
  code_.AddJump(to_condition, code_.EmitWide(Op::kJump, 0, 0));
  const uint32_t body = code_.here();
  Loop loop;
  BodyOfLoop(loop);
  const uint32_t behind = at_;
  code_.PatchHere(loop.continues);
  code_.BeginStatement(head.line, true);
  Expression condition;
  if (head.step != 0) {
    at_ = head.step;
    if (!token().Is(')')) SimpleStatement();
    if (!complained_) Expect(')', "behind the last part of this for");
    code_.SetFree(head.mark);
  }
  code_.PatchHere(to_condition);
  at_ = head.condition;
  if (head.step == 0) {
    ParseCondition(condition);
  } else if (token().Is(';')) {
    SetNumber(condition, kOne);
  } else if (!complained_) {
    ParseTest(condition);
    if (!complained_) Expect(';', "behind the condition of this for");
  }
  if (!complained_) {
    JumpWhen(condition);
    code_.Patch(condition.when_true, body);
  }
  code_.SetFree(head.mark);
  code_.PatchHere(loop.breaks);
  at_ = behind;
  complained_ = false;
}

void Compiler::While() {
  LoopHead head{token().line, code_.free_register(), at_ + 1, 0};
  Advance();
  if (!Expect('(', "in front of the condition") || !SkipBrackets()) return;
  RestOfLoop(head);
}

void Compiler::DoWhile() {
  const uint32_t mark = code_.free_register();
  Advance();
  code_.ClearMark();
  const uint32_t body = code_.here();
  Loop loop;
  BodyOfLoop(loop);
  code_.PatchHere(loop.continues);
  if (!token().Is(Keyword::kWhile)) {
    Complain(token(), "\"while\" is missing behind the statements of this do; here is %s.", TextOf(token()));
    return;
  }
  code_.BeginStatement(token().line, true);
  Advance();
  Expression condition;
  ParseCondition(condition);
  if (complained_) return;
  JumpWhen(condition);
  code_.Patch(condition.when_true, body);
  code_.SetFree(mark);
  code_.PatchHere(loop.breaks);
  Expect(';', "behind the condition");
}

void Compiler::For() {
  LoopHead head{token().line, code_.free_register(), 0, 0};
  Advance();
  if (!Expect('(', "behind \"for\"")) return;
  if (IsVar(token())) {
    Complain(token(), "Variables of a function are defined at the begin of its body, before all statements.");
    return;
  }
  if (!token().Is(';')) SimpleStatement();
  if (complained_ || !Expect(';', "behind the first part of this for")) return;
  code_.SetFree(head.mark);
  head.condition = at_;
  while (!token().Is(';') && !token().Is('{') && !token().Is('}') && !token().Is(kEndToken)) Advance();
  if (!Expect(';', "behind the condition of this for")) return;
  head.step = at_;
  if (SkipBrackets()) RestOfLoop(head);
}

void Compiler::Switch() {
  const uint32_t mark = code_.free_register();
  Advance();
  const Token at = token();
  Expression value;
  ParseCondition(value);
  if (complained_) return;
  MustBeNumber(value, at, "switch");
  if (complained_) return;
  const uint32_t reg = code_.TakeRegister();
  ToRegister(value, reg);
  code_.SetFree(reg + 1);
  if (!token().Is('{')) {
    Complain(token(), "A \"{\" is missing behind the brackets of this switch; here is %s.", TextOf(token()));
    return;
  }
  Advance();
  JumpList to_choice = kNoJumps;
  code_.AddJump(to_choice, code_.EmitWide(Op::kJump, 0, 0));
  Loop* outer = loop_;
  Loop loop{kNoJumps, kNoJumps, false, outer};
  loop_ = &loop;
  struct Case {
    Fixed value;
    uint32_t pc;
  };
  List<Case> cases(arena_);
  int64_t otherwise = -1;
  while (!token().Is('}') && !token().Is(kEndToken)) {
    complained_ = false;
    const Token word = token();
    if (word.Is(Keyword::kCase)) {
      Advance();
      Fixed number = 0;
      if (ReadConstantNumber(&number)) {
        for (const Case& other : cases) {
          if (other.value == number) Complain(word, "This case is there already.");
        }
        if (cases.size() >= kMostCases) Complain(word, "A switch has %u cases at most.", kMostCases);
        if (!complained_) cases.Add({number, code_.here()});
        if (!complained_) Expect(':', "behind the case");
      }
      if (complained_) SkipStatement();
    } else if (word.Is(Keyword::kDefault)) {
      Advance();
      if (otherwise >= 0) Complain(word, "There is a default already.");
      otherwise = code_.here();
      if (!Expect(':', "behind \"default\"")) SkipStatement();
    } else {
      if (cases.empty() && otherwise < 0) {
        Complain(word, "A switch begins with a case; here is %s.", TextOf(word));
        SkipStatement();
        if (token().Is('}')) break;
        continue;
      }
      StatementOrBlock();
    }
  }
  complained_ = false;
  Expect('}', "at the end of this switch");
  loop_ = outer;
  code_.ClearMark();
  code_.AddJump(loop.breaks, code_.EmitWide(Op::kJump, 0, 0));
  code_.PatchHere(to_choice);
  for (const Case& one : cases) {
    const uint32_t constant = code_.Constant(one.value);
    uint32_t jump = 0;
    if (constant <= UINT16_MAX) {
      jump = code_.Emit(Op::kJumpEqualK, reg, constant, 0);
    } else {
      const uint32_t temporary = code_.TakeRegister();
      code_.EmitWide(Op::kInt, temporary, one.value);
      code_.SetFree(temporary);
      jump = code_.Emit(Op::kJumpEqual, reg, temporary, 0);
    }
    code_.PatchOne(jump, one.pc);
  }
  if (otherwise >= 0) code_.PatchOne(code_.EmitWide(Op::kJump, 0, 0), static_cast<uint32_t>(otherwise));
  code_.PatchHere(loop.breaks);
  code_.SetFree(mark);
}

void Compiler::BreakOrContinue(bool is_break) {
  const Token at = token();
  Advance();
  Loop* loop = loop_;
  while (!is_break && loop != nullptr && !loop->takes_continue) loop = loop->outer;
  if (loop == nullptr) {
    Complain(at,
             is_break ? "There is no loop or switch to leave here." : "There is no loop to go on with here.");
    return;
  }
  const uint32_t jump = code_.EmitWide(Op::kJump, 0, 0);
  code_.AddJump(is_break ? loop->breaks : loop->continues, jump);
  Expect(';', is_break ? "behind \"break\"" : "behind \"continue\"");
}

}  // namespace korvel
