// Reads the tokens of a script and makes a program of them, in one pass over each function's body after one
// over all definitions.
#pragma once

#include "engine/code/Command.h"
#include "engine/compile/CodeBuilder.h"
#include "engine/language/Preprocessor.h"
#include "engine/objects/Members.h"
#include "engine/objects/ObjectMaker.h"

namespace korvel {

/// An expression that may not have been written as instructions yet.
struct Expression {
  enum Where : uint8_t {
    kNumberConstant,  ///< number
    kObjectConstant,  ///< object, also null and texts in quotes
    kRegister,        ///< b
    kCell,            ///< index
    kSkill,
    kPointer,
    kMe,
    kYou,
    kElementK,   ///< of array constant b, index register c
    kElement,    ///< of array in register b, index register c
    kMember,     ///< member c of register b
    kMemberAny,  ///< member named by number c of register b
    kTextLine,   ///< string in register c of the text in register b
    kResult,     ///< of the instruction at index, whose register is still open
    kCompare,    ///< op, register b, and register or constant c
    kNothing,    ///< of a command that gives nothing
  };
  Where where = kNumberConstant;
  int8_t type = kTypeNumber;
  bool literal = false;     ///< a text in quotes
  bool assignable = false;  ///< a local variable, not a temporary register
  bool with_constant = false;
  bool checked = false;
  bool call = false;   ///< of a function or command
  bool logic = false;  ///< of && or ||: its value is 1 or 0
  Op op = Op::kJump;
  uint32_t b = 0;
  uint32_t c = 0;
  uint32_t index = 0;
  Fixed number = 0;
  Value object = kNull;
  const Symbol* symbol = nullptr;
  JumpList when_true = kNoJumps;
  JumpList when_false = kNoJumps;
};

class Compiler {
 public:
  struct Needs {
    Program& program;
    Preprocessor& source;
    Names& names;
    Errors& errors;
    Arena& arena;
    const MemberTable& members;
    ObjectMaker& maker;
  };
  explicit Compiler(const Needs& needs);

  /// Compiles all that was read. Whether it may run is told by the errors.
  void Compile();

 private:
  struct Body {
    Symbol* symbol;
    uint32_t begin;  ///< of its parameters
    uint32_t open;   ///< of the brace, 0 for a definition that is not a function
  };
  struct Initial {
    Symbol* symbol;
    uint32_t begin;
  };
  struct Loop {
    JumpList breaks;
    JumpList continues;
    bool takes_continue;
    Loop* outer;
  };
  struct LoopHead {
    uint32_t line;
    uint32_t mark;       ///< the first register that the loop may use
    uint32_t condition;  ///< where it begins
    uint32_t step;       ///< where the last part of a for begins, 0 for a while
  };
  struct Label {
    Name* name;
    uint32_t pc;
    uint32_t line;
  };

  // Definitions.cpp: what the script defines, without looking into bodies.
  void DefineEngineNames();
  void ReadDefinitions();
  void ReadVariable(bool saved);
  void ReadPointer(int kind);
  void ReadObject(int kind);
  void ReadFunction(bool is_action, bool is_starter);
  Symbol* Define(const Token& at, SymbolKind kind, int type);
  Symbol* MakeSymbol(Name* name, SymbolKind kind, int type);
  uint32_t TakeCells(uint32_t count);
  bool SkipBody(const Token& name);
  void SkipDefinition();
  void CheckDefines();
  void AllocateCells();

  // Initials.cpp: values and members in definitions.
  void ReadInitials();
  void ReadInitial(const Initial& initial);
  void ReadNumberInitial(Symbol* symbol);
  void ReadPointerInitial(Symbol* symbol);
  void ReadObjectInitial(Symbol* symbol);
  void ReadBody(Symbol* symbol);
  void ReadMember(Symbol* symbol, const Token& name);
  void ReadSkillMember(Symbol* symbol, const Token& name);
  void ReadFileOf(Symbol* symbol);
  bool ReadConstant(Expression& e);
  bool ReadConstantNumber(Fixed* value);
  bool ReadConstantObject(int type, Value* value);
  uint32_t ReadArraySize();

  // Statements.cpp
  void CompileFunctions();
  void CompileFunction(const Body& body);
  void ReadParameters(Function& function);
  void ReadLocals();
  void ReadLocalNumber();
  void ReadLocalPointer(int kind);
  void AddLocal(const Token& name, int type, uint32_t reg, uint32_t array_slot, uint32_t array_size);
  void StatementOrBlock();
  void Block();
  void Statement();
  void SimpleStatement();
  void Assign(Expression& target, const Token& sign);
  void PutInto(Expression& value, uint32_t reg);
  void ReturnStatement();
  void Goto();
  void ResolveGotos(const SourceFile* file);

  // Loops.cpp
  void ParseTest(Expression& e);
  void ParseCondition(Expression& e);
  void RestOfLoop(const LoopHead& head);
  void If();
  void While();
  void DoWhile();
  void For();
  void Switch();
  void BodyOfLoop(Loop& loop);
  void BreakOrContinue(bool is_break);
  bool SkipBrackets();

  // Expressions.cpp
  void ParseExpression(Expression& e, int weaker_than = 0);
  void ParseUnary(Expression& e);
  void ParsePostfix(Expression& e);
  void ParsePrimary(Expression& e);
  void ParseName(Expression& e);
  void ParseMember(Expression& e);
  void NoMember(const Token& at, int type);
  void ParseIndex(Expression& e);
  void ParseCall(Expression& e, const Token& name);
  void ParseCommand(Expression& e, const Token& name);
  void ParseArgument(const Command& command, const Parameter& parameter, uint32_t number, uint32_t reg,
                     bool* checked);
  void ParseVector(const Command& command, const Parameter& parameter, uint32_t reg, bool* checked);
  void ParseSizeof(Expression& e);
  void UnknownName(const Token& token, bool as_function);
  bool MaySuggest(uint32_t candidates);

  // Values.cpp: from expressions to registers and jumps.
  uint32_t ToAnyRegister(Expression& e);
  void ToRegister(Expression& e, uint32_t reg);
  void Store(const Expression& target, uint32_t reg);
  void JumpUnless(Expression& e);  ///< goes on behind it when the expression holds
  void JumpWhen(Expression& e);    ///< goes on behind it when it does not
  void EmitTest(Expression& e, bool jump_when);
  void Operate(const Token& sign, Expression& left, Expression& right, uint32_t mark);
  void Arithmetic(const Token& sign, Expression& left, Expression& right, uint32_t mark);
  void Compare(const Token& sign, Expression& left, Expression& right, uint32_t mark);
  bool Fold(const Token& sign, const Expression& left, const Expression& right, Expression& result);
  void MustBeNumber(Expression& e, const Token& at, const char* what);
  void SetNumber(Expression& e, Fixed number);
  void SetRegister(Expression& e, uint32_t reg, int type);
  void SetResult(Expression& e, uint32_t pc, int type);

  // Tokens.
  const Token& token() const { return tokens_[at_ < end_ ? at_ : end_mark_]; }
  const Token& Peek(uint32_t ahead) const { return tokens_[at_ + ahead < end_ ? at_ + ahead : end_mark_]; }
  void Advance() {
    if (at_ < end_) ++at_;
  }
  bool Accept(uint16_t sign);
  bool Expect(uint16_t sign, const char* where);
  bool Expect(uint16_t sign, const char* text, const char* where);
  Place PlaceOf(const Token& token) const { return {source_.file(token.file), token.line}; }
  void Complain(const Token& at, const char* format, ...) __attribute__((format(printf, 3, 4)));
  const char* TextOf(const Token& token);
  void SkipStatement();
  bool Enter(const Token& at);
  void Leave() { --depth_; }

  Program& program_;
  Preprocessor& source_;
  Names& names_;
  Errors& errors_;
  Arena& arena_;
  const MemberTable& members_;
  ObjectMaker& maker_;
  CodeBuilder code_;
  const List<Token>& tokens_;
  uint32_t at_ = 0;
  uint32_t end_ = 0;
  uint32_t end_mark_ = 0;
  uint32_t depth_ = 0;
  uint32_t next_cell_ = 0;
  bool complained_ = false;  ///< of this statement: what follows from the first error is not told

  List<Body> bodies_;
  List<Initial> initials_;
  List<Local> locals_;
  List<Label> labels_;
  List<Label> gotos_;
  List<uint32_t> goto_jumps_;
  Loop* loop_ = nullptr;
  uint32_t stamp_ = 0;  ///< number of the function whose locals are known
  bool constants_only_ = false;
  uint32_t patience_ = 1'000'000;  ///< names that may still be looked at for "did you mean"
  char text_[80];
};

/// The kind of object that a keyword defines, or -1.
int KindOfKeyword(Keyword keyword);

}  // namespace korvel
