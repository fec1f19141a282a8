// The tables of commands, a file each.
#pragma once

#include "engine/code/Command.h"

namespace korvel {

extern const CommandTable kControlCommands;
extern const CommandTable kMathCommands;
extern const CommandTable kVectorCommands;
extern const CommandTable kStringCommands;
extern const CommandTable kTextCommands;
extern const CommandTable kPanelCommands;
extern const CommandTable kEntityCommands;
extern const CommandTable kViewCommands;
extern const CommandTable kFileCommands;
extern const CommandTable kInputCommands;
extern const CommandTable kDebugCommands;
extern const CommandTable kDrawCommands;
extern const CommandTable kScreenCommands;
extern const CommandTable kSoundCommands;

/// A table of all rows of an array.
template <size_t N>
constexpr CommandTable TableOf(const Command (&rows)[N]) {
  return {rows, N};
}

}  // namespace korvel
