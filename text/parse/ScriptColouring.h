#pragma once
#include <cstdint>
#include <string_view>

#include "text/parse/ColourTable.h"
#include "text/parse/CommentMarkers.h"
#include "text/parse/WordClasses.h"

namespace quill {

class CCrystalTextBuffer;

/// A stretch of a line in one colour; it runs up to the next block's column or the line's end. The
/// blocks of a line are in strictly ascending column order, the first one at column 0.
struct TextBlock {
  int32_t column;
  int32_t colour;  ///< ColourIndex
  friend constexpr bool operator==(const TextBlock&, const TextBlock&) = default;
};

/// Bits of the state that is carried along while a line is parsed.
namespace parse_state {
inline constexpr uint32_t kLineComment = 0x01;
inline constexpr uint32_t kPreprocessor = 0x02;
inline constexpr uint32_t kBlockComment = 0x04;
inline constexpr uint32_t kString = 0x08;
inline constexpr uint32_t kCharLiteral = 0x10;
inline constexpr uint32_t kAll = 0x1F;
/// What survives the end of a line. A string goes on in the next line, a character literal does not.
inline constexpr uint32_t kAcrossLines = kBlockComment | kString;
}  // namespace parse_state

/// "0x" and hexadecimal digits, or a digit followed by digits, "+", "-", "." and "e" or "E" only.
bool IsNumber(std::string_view word);

/// Room for the blocks of one line.
constexpr int32_t MostBlocks(int32_t lineLength) {
  return lineLength + 1;
}

/// Parses one line that starts in `state` and returns the state in which the next one starts. Sets the
/// line's block marks in the buffer; a line that heads a collapsed block and stops being a block start
/// has its block expanded first (the views are told). When the marks of a line inside a collapsed block
/// change, the views get a flags hint for that line.
/// With `blocks` (room for `MostBlocks` entries after `*count`) appends the line's blocks; an empty line
/// has none. A block whose column lies before the last one's is dropped; at the same column it takes
/// the last one's place. Without `blocks` no word is looked up.
uint32_t ColourLine(CCrystalTextBuffer& buffer, const WordClasses& words, uint32_t state, int32_t line,
                    TextBlock* blocks, int32_t* count);

/// What the parse of a line finds for the lines below it and for folding.
struct ParsedLine {
  uint32_t stateAfter;
  uint32_t marks;  ///< line_flag::kBlockStart, kBlockEnd or none
};

/// Parses a line that starts in `state` and changes nothing. 16 bytes after the text must be readable, as
/// they are after the lines of a buffer.
ParsedLine ParseLine(std::string_view text, uint32_t state);

}  // namespace quill
