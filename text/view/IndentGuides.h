#pragma once
#include <cstdint>
#include <vector>

namespace quill {

class CCrystalTextBuffer;

/// Width of a line's leading white space in visual columns; `tabSize` at least 1. Not more than `limit`
/// is measured. Returns -1 for a line of white space only.
int32_t IndentWidth(const CCrystalTextBuffer& buffer, int32_t line, int32_t tabSize, int32_t limit);

/// The visual columns at which guides are drawn in `line`: the tab stops inside its leading white space,
/// column 0 excepted, ascending and below `limit`. A blank line takes the smaller indentation of the
/// nearest lines above and below that have text, looked for within a bounded distance.
void IndentGuideColumns(const CCrystalTextBuffer& buffer, int32_t line, int32_t tabSize, int32_t limit,
                        std::vector<int32_t>& columns);

}  // namespace quill
