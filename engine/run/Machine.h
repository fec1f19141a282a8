// Runs the code of one function copy after the other.
#pragma once

#include "engine/code/Program.h"
#include "engine/commands/Command.h"
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
    kDone,     ///< the copy waits or has ended, and so have all that it began
    kStopped,  ///< by the debugger; Run goes on with the same copy
    kSpent,    ///< the budget is used up
  };

  /// Runs a copy until it waits or ends.
  Outcome Run(Task& task);

  /// The copy that runs now, and the instruction behind the one that does.
  Task* task = nullptr;
  const Instruction* pc = nullptr;

  /// Set by commands of the kind that may switch.
  Switch wanted = Switch::kNone;
  Task* started = nullptr;

  /// Jumps back and calls that are left; a test or the fuzzer sets it.
  int64_t budget = INT64_MAX;
  /// Where the debugger stopped: the trap there is not asked again.
  const Instruction* resume_at = nullptr;
  Task* stopped = nullptr;

 private:
  bool CheckArguments(const Command& command, const Signature& signature, const Value* arguments);
  Value LoadMember(Value object, const KorvelMember& member);
  void StoreMember(Value object, const KorvelMember& member, Value value);
  const KorvelMember* FindMember(Value object, int name);
  void Cut(int32_t* cells, int member);
  void Fault(const char* sentence);
  void NumberFault(Value left, Value right);

  Session& session_;
};

}  // namespace korvel
