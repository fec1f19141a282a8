#pragma once
#include <span>

#include "res/Commands.h"

/// The rows behind `Commands()`, a file a theme; only the catalogue asks for them.
namespace quill {

std::span<const Command> FileAndEditCommands();
std::span<const Command> ScriptCommands();
std::span<const Command> DebugCommands();
std::span<const Command> WindowCommands();

}  // namespace quill
