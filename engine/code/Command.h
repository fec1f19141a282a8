// Commands: what a script can call beside its own functions. Each theme has a table of rows; a new theme is
// one more table in the list of commands/Command.cpp.
#pragma once

#include <cstdint>
#include <string_view>

#include "engine/code/Value.h"

namespace korvel {

class Session;

/// Does the work. Arguments are checked: numbers are numbers, objects of the right kind and, unless the row
/// says otherwise, not null. What a command gives nothing back for is 0.
using CommandFunction = Value (*)(Session& session, const Value* arguments);

struct Command {
  const char* name;
  /// What it gives, ":", and its parameters, a letter each, see LetterType. "v" is a vector that is read, "V"
  /// one that is written, "s" a string that is read (a text in quotes will do), "S" one that is written. "?"
  /// behind a letter: null is taken silently. "-" gives nothing; "*" in front means that another function may
  /// have to run now, "~" that it waits for a number of frames, which the machine can do by itself.
  const char* signature;
  CommandFunction function;
};

struct CommandTable {
  const Command* rows;
  uint32_t count;
};

/// One parameter of a command, taken apart.
struct Parameter {
  char letter;
  bool takes_null;
};

/// A command's signature, taken apart.
struct Signature {
  static constexpr uint32_t kMost = 12;
  int8_t result;
  bool switches;
  bool waits;
  uint32_t count;
  Parameter parameters[kMost];
};

Signature ReadSignature(const char* text);

/// The kind that a letter of a signature asks for; kTypeAny for vectors.
int LetterType(char letter);

/// All tables, ended by one without rows.
extern const CommandTable kCommandTables[];

uint32_t CommandCount();
const Command& CommandAt(uint32_t index);

}  // namespace korvel
