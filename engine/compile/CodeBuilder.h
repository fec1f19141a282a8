// Writes the instructions of one function: registers, jumps and the marks that the debugger needs.
#pragma once

#include "engine/code/Program.h"

namespace korvel {

/// A list of jumps whose target is not known yet.
using JumpList = int32_t;
inline constexpr JumpList kNoJumps = -1;

class CodeBuilder {
 public:
  CodeBuilder(Program& program, Arena& arena) : program_(program), jumps_(arena), numbers_(arena) {
    numbers_.Resize(1 << 10);
  }

  /// Begins a function behind what was written; the registers below `first` are taken.
  void Begin(uint32_t first);

  uint32_t Emit(Op op, uint32_t a, uint32_t b, uint32_t c);
  uint32_t EmitWide(Op op, uint32_t a, int32_t wide);

  /// A statement begins on a line: its first instruction is where a breakpoint of the line stops, if it is
  /// the line's first statement, or `again` (the head of a loop).
  void BeginStatement(uint32_t line, bool again = false);

  /// The next instruction is no place to stop at.
  void ClearMark() { mark_next_ = false; }

  /// Notes that the last instruction, or one before it, assigns what R[a] holds, after or before it.
  void MarkResult(uint32_t flag, uint32_t before = 0) { program_.notes[here() - 1 - before] |= flag; }

  uint32_t here() const { return program_.code.size(); }
  Instruction& at(uint32_t pc) { return program_.code[pc]; }

  /// A register that is free, taken.
  uint32_t TakeRegister();
  uint32_t free_register() const { return free_; }
  void SetFree(uint32_t reg);
  uint32_t most_registers() const { return most_; }

  /// Adds a jump to a list, or a list to another.
  void AddJump(JumpList& list, uint32_t pc);
  void Join(JumpList& list, JumpList other);
  /// Lets all jumps of a list go to a place, and empties it.
  void Patch(JumpList& list, uint32_t target);
  void PatchHere(JumpList& list);
  void PatchOne(uint32_t pc, uint32_t target);

  /// The index of a constant.
  uint32_t Constant(Value value);
  /// The index of a divisor and the number behind it that divides fast.
  uint32_t Divisor(Fixed value);

  /// True when a jump does not reach its target, or there are too many registers.
  bool too_large() const { return too_large_; }

 private:
  struct Jump {
    uint32_t pc;
    JumpList next;
  };

  Program& program_;
  List<Jump> jumps_;
  List<uint32_t> numbers_;  ///< index + 1 of constants, by hash
  uint32_t constant_count_ = 0;
  uint32_t free_ = 0;
  uint32_t most_ = 0;
  uint32_t line_ = 0;
  uint32_t marked_line_ = 0;
  bool mark_next_ = false;
  bool too_large_ = false;
};

}  // namespace korvel
