#pragma once
#include <cstdint>
#include <functional>

#include "intel/writing/ObjectMembers.h"
#include "text/buffer/TextPosition.h"

namespace quill {

class CCrystalTextBuffer;

/// The kind of object in whose definition a member may begin at `place`: between the braces behind `panel
/// name`, at the start of a statement. Null elsewhere. `stateAt` gives the parse_state bits at a line's
/// start.
const ObjectKind* DefinitionBodyAt(const CCrystalTextBuffer& buffer, TextPosition place,
                                   const std::function<uint32_t(int32_t line)>& stateAt);

}  // namespace quill
