// What a copy of a function is doing: its calls, and the variables of each. For whoever looks at a script
// that stands: the debugger's views, watches, and the sweep of removed objects.
#pragma once

#include "engine/run/Task.h"

namespace korvel {

/// A call that has not come back. `place` is the line that it stands on: the one that is about to run, waits,
/// or calls the function further in.
struct Call {
  const Function* function;
  Value* frame;
  Place place;
};

/// Walks over the calls of a copy that does not run at this moment, from the innermost one outwards. Nothing
/// is copied: it holds as long as the copy stands.
class CallStack {
 public:
  /// `stopped`: the debugger stopped the copy in front of the instruction that it goes on with.
  CallStack(const Program& program, const Task& task, bool stopped);

  /// The next call; false behind the outermost one.
  bool Next(Call* call);

 private:
  const Program& program_;
  Value* frame_;
  const Instruction* at_;  ///< the instruction that this call stands on
};

/// The value of a local variable or parameter in a call: a cell of 32 bits for a number, whose upper half the
/// machine brings up to date when the script goes on, else an object, or the first cell of an array. Null
/// when a pointer is null.
void* FindValue(const Call& call, const Local& local);

/// True of a register whose lower half is a number, even if its upper half has not followed yet.
bool HoldsNumber(Value value);

}  // namespace korvel
