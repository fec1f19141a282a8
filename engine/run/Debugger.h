// Stops, steps and breakpoints. While nobody debugs, the code is as it was compiled and costs nothing: a
// breakpoint is an instruction of its own in place of one, and stepping puts it in place of all.
#pragma once

#include "engine/code/Program.h"
#include "engine/run/Task.h"

namespace korvel {

class Debugger {
 public:
  Debugger(Program& program, Arena& arena) : program_(program), arena_(arena) {}

  /// Takes the code as it is compiled now, and lets instructions that follow one another join.
  void Begin();

  /// Values of debug_mode.
  enum Mode : Fixed { kRun = 0, kBreak = kOne, kStep = 2 * kOne, kIgnore = -kOne };

  /// Sets or clears a breakpoint; may be called on another thread. False when no line of the file has code
  /// from there.
  bool SetBreakpoint(std::string_view file, uint32_t line, bool set);

  /// What debug_mode holds now.
  Fixed WantedMode() const { return __atomic_load_n(mode_, __ATOMIC_RELAXED); }
  /// What it held when the debugger looked last.
  Fixed seen() const { return seen_; }

  /// Debug_mode has changed while the script runs. `jumped`: the instruction that jumped back to where it is
  /// now, or null.
  void Attend(Task& task, const Instruction* jumped, const Value* frame);

  /// The instruction at a trap is about to run. True when the script stops in front of it.
  bool AtTrap(Task& task, const Instruction* pc, const Value* frame);
  Op OriginalAt(const Instruction* pc) const { return plain_[pc - program_.code.data()]; }

  /// From the script: stop at the next line, unless breakpoints are ignored.
  void BreakNext(Task& task);

  /// Notes what the instruction that runs next assigns or tests.
  void NoteResult(const Task& task, const Instruction* pc, const Value* frame);

  bool stopped() const { return __atomic_load_n(&stopped_, __ATOMIC_ACQUIRE); }
  const Task* stopped_task() const { return __atomic_load_n(&stopped_task_, __ATOMIC_RELAXED); }

  /// While stopped: true when debug_mode says to go on.
  bool MayGoOn();

  /// A copy has ended: a step in it goes on to the next line of any.
  void TaskEnded(const Task& task) {
    if (step_task_ == &task) step_task_ = nullptr;
    if (result_task_ == &task) result_task_ = nullptr;
  }

  /// Once a frame: breakpoints that were set elsewhere.
  void Refresh();

  /// Where it stopped last; no file when it never did, or runs on freely.
  Place position() const;

 private:
  /// Marks of an instruction.
  enum : uint8_t {
    kBreaks = 1,   ///< a breakpoint stands there
    kNotes = 2,    ///< it may give the last result before a breakpoint
    kNeeds = 4,    ///< a breakpoint can be reached from here before there is another result
    kFalls = 8,    ///< the test in front of it did not jump, which is the last result before a breakpoint
    kTarget = 16,  ///< a jump goes here
    kTraps = kBreaks | kNotes | kFalls,
  };

  uint8_t MarksAt(uint32_t pc) const { return __atomic_load_n(&marks_[pc], __ATOMIC_RELAXED); }
  bool Mark(uint32_t pc, uint8_t mark);
  bool Traps(uint32_t pc) const;
  void Patch();
  void PatchTraps();
  void FindResults();
  bool FindResultsOnce();
  bool IsNeededBehind(uint32_t pc);
  bool GivesResult(uint32_t pc) const;
  int64_t TargetOf(uint32_t pc) const;
  bool IsNeeded(int64_t pc) const;
  void TakeFall(const Instruction* pc, const Value* frame);
  void TakeResult(const Task& task);
  void SetResult(Value value);
  bool Decide(const Task& task, uint32_t pc) const;

  Program& program_;
  Arena& arena_;
  Op* plain_ = nullptr;   ///< the code as it was compiled
  Op* joined_ = nullptr;  ///< with joined instructions where that is possible
  uint8_t* lengths_ = nullptr;
  uint8_t* marks_ = nullptr;
  uint8_t* returns_ = nullptr;  ///< of each function: kNeeds behind a call of it
  Fixed* mode_ = nullptr;
  Fixed seen_ = kRun;
  bool stepping_ = false;
  bool changed_ = false;
  bool stopped_ = false;
  const Task* stopped_task_ = nullptr;
  const Task* step_task_ = nullptr;
  uint32_t step_depth_ = 0;
  const Task* result_task_ = nullptr;
  const Value* result_ = nullptr;  ///< register of the instruction before, when it gave a result
  const SourceFile* file_ = nullptr;
  uint32_t line_ = 0;
};

}  // namespace korvel
