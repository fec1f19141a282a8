#pragma once
#include <cstdint>
#include <optional>

#include "text/buffer/LineRange.h"

namespace quill {

class CCrystalTextBuffer;
class LineStateCache;

/// The block that contains `line`, by the block marks of the lines: the nearest open block start above,
/// the line itself included, and the matching end below. With `states` the marks are brought up to date
/// as far as the walk goes; without it they are taken as they are.
std::optional<LineRange> FindBlock(const CCrystalTextBuffer& buffer, int32_t line,
                                   LineStateCache* states = nullptr);

/// Collapses the block (hides its lines) or, when its first line is hidden already, expands it. False
/// when the lines are not a block's first and last. The views are told to repaint everything.
/// A view moves its caret to column 0 of `first` after a collapse.
bool ToggleFold(CCrystalTextBuffer& buffer, int32_t first, int32_t last);

/// The line is the first one of a collapsed block. It may lie inside another collapsed block.
bool IsHeadOfCollapsed(const CCrystalTextBuffer& buffer, int32_t line);

/// Makes every line visible; false when all were.
bool ExpandAll(CCrystalTextBuffer& buffer);
/// Collapses every outermost block; false when nothing changed. Parses the rest of the text first.
bool CollapseAll(CCrystalTextBuffer& buffer, LineStateCache& states);

/// Expands the collapsed block that `line` heads, also one whose end is no longer found.
void ExpandHead(CCrystalTextBuffer& buffer, int32_t line);

}  // namespace quill
