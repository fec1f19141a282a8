// Runs the code of one function copy after the other.
#pragma once

#include "engine/code/Command.h"
#include "engine/code/Program.h"
#include "engine/run/Task.h"

namespace korvel {

class Session;

/// What a command asks of the machine beside its value.
enum class Switch : uint8_t {
  kNone,
  kStart,    ///< run the new copy first
  kSuspend,  ///< this copy waits
  kEnd,      ///< this copy ends
};

class Machine {
 public:
  explicit Machine(Session& session) : session_(session) {}

  enum class Outcome : uint8_t {
    kDone,     ///< all that ran wait or have ended
    kStopped,  ///< by the debugger; Run goes on with the same copy
    kSpent,    ///< the budget is used up
  };

  /// Runs a copy until it waits or ends, then those that are due in the scheduler's walk.
  Outcome Run(Task& task);

  /// The copy that runs now, and the instruction behind the one that does.
  Task* task = nullptr;
  const Instruction* pc = nullptr;

  /// Set by commands of the kind that may switch.
  Switch wanted = Switch::kNone;
  Task* started = nullptr;

  /// Looks at debug_mode that are left: at jumps back, calls and commands. A test or the fuzzer sets it.
  int64_t budget = INT64_MAX;
  /// Where the debugger stopped: the trap there is not asked again.
  const Instruction* resume_at = nullptr;
  Task* stopped = nullptr;

 private:
  // MachineChecks.cpp
  void Fault(const char* sentence);
  /// What an operator gives whose result is no number: it is cut, or 0 when an operand is none.
  Value NotANumber(Value left, Value right, Value result);
  Value DividedByZero();
  Fixed* FindElement(Value array, Value index);
  Value FindVector(Value array);
  Value FindLine(Value text, Value number);
  Value CheckKind(Value value, int kind);
  bool CheckArguments(const Command& command, const Signature& signature, const Value* arguments);
  Value LoadMember(Value object, const KorvelMember& member);
  void StoreMember(Value object, const KorvelMember& member, Value value);
  const KorvelMember* FindMember(Value object, int name);
  Value FindMemberVector(Value object, int name);
  void Cut(int32_t* cells, int member);

  Session& session_;
};

}  // namespace korvel
