#pragma once
#include <optional>
#include <string>

#include "intel/outline/Definitions.h"
#include "intel/outline/ScriptFacts.h"

namespace quill {

class CommandDatabase;

/// What is shown of a name that the mouse rests on.
struct HoverText {
  Identifier word;      ///< the columns of the name
  std::string heading;  ///< script text: a command's parameters, the line of a definition, a member
  std::string text;     ///< what it is for
  std::string where;    ///< for people: the place of its definition; a file's name as on the disk
};

/// What the script is known to be.
struct HoverSource {
  const CommandDatabase& commands;
  const ScriptFacts& facts;
  const Definitions& definitions;  ///< those of `facts`
  ScriptReader read;               ///< of included files
};

/// About the name at a place of the text; `state` holds the parse_state bits at the line's start. Nothing in
/// comments and strings, on what nobody defines, and where a definition is not found at its place any more.
std::optional<HoverText> HoverTextAt(const CCrystalTextBuffer& buffer, TextPosition place, uint32_t state,
                                     const HoverSource& source);

}  // namespace quill
