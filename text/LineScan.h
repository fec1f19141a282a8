#pragma once
#include <cstdint>
#include <string_view>

#include "text/ScriptColouring.h"

namespace quill {

/// Where a walk over one line stands: what is known before the character at `column`. A walk can go on
/// from a stored point, so that the middle of a very long line is coloured without its beginning.
struct ScanPoint {
  int32_t column = 0;
  uint32_t state = 0;         ///< parse_state bits
  int32_t firstFrom = 0;      ///< from here on only white space was seen; -1 once other text was
  int32_t commentEnd = -1;    ///< the column after the last end of a block comment
  bool openBrace = false;     ///< a "{" was seen in code
  bool closeBrace = false;    ///< a "}" was seen in code
  bool quietComment = false;  ///< the comment began right after another's end: drawn as what was before
};

/// The point before the first character of a line that starts in `state`.
ScanPoint StartOfLine(uint32_t state);

/// Walks from `from` to column `to` and returns the point there. 16 bytes after the text must be readable,
/// as they are after the lines of a buffer.
ScanPoint Skim(const char* text, const ScanPoint& from, int32_t to);

/// The block marks (line_flag::kBlockStart, kBlockEnd) of a line whose walk ended at `end`.
uint32_t BlockMarksOf(std::string_view line, const ScanPoint& end);

/// Walks from `from` to column `to` and appends the text blocks on the way. A word or a comment marker
/// that begins before `from` or ends after `to` is classified whole, so the first block may begin before
/// `from` and the returned point may lie after `to`. `from` must be the start of the line or a point from
/// `Skim`. 16 bytes after the line must be readable.
ScanPoint ColourColumns(std::string_view line, const WordSets& words, const ScanPoint& from, int32_t to,
                        TextBlock* blocks, int32_t* count);

}  // namespace quill
