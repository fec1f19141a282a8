#pragma once
#include <cstdint>
#include <string_view>

#include "text/buffer/LineFlags.h"
#include "text/parse/ScriptColouring.h"

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
inline ScanPoint StartOfLine(uint32_t state) {
  ScanPoint point;
  point.state = state & parse_state::kAll;
  point.firstFrom = (state & ~parse_state::kBlockComment) == 0 ? 0 : -1;
  return point;
}

/// Characters of the longest word that is looked up or taken for a number. Longer ones are plain text, so
/// that colouring a part of one does not walk over all of it.
inline constexpr int32_t kLongestWord = 1 << 16;

/// Walks from `from` to column `to` and returns the point there. 16 bytes after the text must be readable,
/// as they are after the lines of a buffer.
ScanPoint Skim(const char* text, const ScanPoint& from, int32_t to);

/// The block marks (line_flag::kBlockStart, kBlockEnd) of a line whose walk ended at `end`.
inline uint32_t BlockMarksOf(std::string_view line, const ScanPoint& end) {
  if (end.openBrace && !end.closeBrace) return line_flag::kBlockStart;
  const char first = line.empty() ? '\0' : line.front();
  if (first == 'i' && (line.starts_with("ifdef") || line.starts_with("ifndef")))
    return line_flag::kBlockStart;
  if (end.closeBrace && !end.openBrace) return line_flag::kBlockEnd;
  if (first == 'e' && line.starts_with("endif")) return line_flag::kBlockEnd;
  return 0;
}

/// Walks from `point` to column `to`, moves `point` there and appends the text blocks on the way. A word
/// or a comment marker that begins before the point or ends after `to` is classified whole, so the first
/// block may begin before the point and it may be moved beyond `to`. `point` must be the start of the line
/// or come from `Skim`. 16 bytes after the line must be readable.
void ColourColumns(std::string_view line, const WordClasses& words, ScanPoint& point, int32_t to,
                   TextBlock* blocks, int32_t* count);

}  // namespace quill
