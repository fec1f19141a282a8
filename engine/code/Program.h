// A compiled script: code, constants, functions, the cells of its variables, and what its names mean.
#pragma once

#include "engine/code/Instruction.h"
#include "engine/code/Value.h"
#include "engine/language/Errors.h"
#include "engine/language/Names.h"

namespace korvel {

/// A local variable or parameter, for the debugger.
struct Local {
  Name* name;
  int8_t type;
  uint16_t reg;         ///< its register; of an array: the one that holds its address
  uint32_t array_slot;  ///< the first register that an array lies in, 0 when it is none
  uint32_t array_size;
};

/// Slots at the begin of each frame: where to go on, the caller's frame, and the function itself.
enum : uint16_t { kSlotReturn = 0, kSlotFrame = 1, kSlotFunction = 2, kFirstParameter = 3 };

/// A function, action or starter.
struct Function {
  KorvelHead head;
  Name* name;
  Place place;
  uint32_t index;
  uint32_t entry;      ///< its first instruction
  uint32_t end;        ///< behind its last
  uint32_t registers;  ///< of its frame, with the slots at its begin and its local arrays
  uint32_t parameters;
  Local* locals;
  uint32_t local_count;
  uint32_t copies;  ///< how many run now that were begun with it
  bool is_starter;
  bool is_action;
};

/// What a defined word is.
enum class SymbolKind : uint8_t { kNumber, kArray, kSkill, kPointer, kObject, kFunction };

struct Symbol {
  Name* name;
  Place place;
  SymbolKind kind;
  int8_t type;     ///< of an object, or of what a pointer points to
  bool saved;      ///< game_save keeps it
  bool by_engine;  ///< known without a definition
  uint32_t cell;   ///< where it begins among the cells
  uint32_t size;   ///< elements of an array
  void* object;    ///< of an object or function
};

/// Cells of 32 bits that a plain number takes: a watch reads three.
inline constexpr uint32_t kCellsOfNumber = 4;

class Program {
 public:
  explicit Program(Arena& arena)
      : code(arena), notes(arena), constants(arena), functions(arena), symbols(arena), starters(arena) {}

  List<Instruction> code;
  List<uint32_t> notes;  ///< of each instruction: its line and flags
  List<Value> constants;
  List<Function*> functions;
  List<Symbol*> symbols;
  List<Function*> starters;
  Fixed* cells = nullptr;
  uint32_t cell_count = 0;
  Function* main = nullptr;
  Symbol* debug_mode = nullptr;
  Symbol* debug_result = nullptr;
  Symbol* video_mode = nullptr;

  uint32_t LineOf(uint32_t pc) const { return notes[pc] >> kLineShift; }

  /// The function that an instruction belongs to, or null.
  Function* FunctionAt(uint32_t pc) const;

  Array* ArrayOf(const Symbol& symbol) const { return reinterpret_cast<Array*>(cells + symbol.cell); }
  PointerCell* PointerOf(const Symbol& symbol) const {
    return reinterpret_cast<PointerCell*>(cells + symbol.cell);
  }
  SkillCells* SkillOf(const Symbol& symbol) const {
    return reinterpret_cast<SkillCells*>(cells + symbol.cell);
  }
};

}  // namespace korvel
