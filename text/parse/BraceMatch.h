#pragma once
#include <cstdint>
#include <limits>
#include <optional>

#include "text/buffer/TextPosition.h"
#include "text/parse/CommentMarkers.h"

namespace quill {

class CCrystalTextBuffer;

/// The brace that is open before `from`: walks backwards over the characters before it, line by line.
/// Braces inside block comments do not count. A line comment's marker ends the walk of its line, and what
/// was met of that line up to then has counted. Markers are compared without regard to case. Gives up
/// after `mostCharacters`.
std::optional<TextPosition> FindOpenBrace(const CCrystalTextBuffer& buffer, TextPosition from,
                                          const CommentMarkers& markers,
                                          int64_t mostCharacters = std::numeric_limits<int64_t>::max());

/// Characters that are highlighted as a match.
bool IsBrace(char c);

}  // namespace quill
