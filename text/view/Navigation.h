#pragma once
#include <cstdint>
#include <string_view>

#include "text/buffer/TextPosition.h"
#include "text/view/VisualColumns.h"

namespace quill {

class TextViewModel;

/// Where the caret goes.
enum class Motion : uint8_t {
  kLeft,
  kRight,
  kUp,
  kDown,
  kWordLeft,
  kWordRight,
  kLineStart,  ///< the first character that is not white space, or column 0 when already there
  kLineEnd,
  kPageUp,
  kPageDown,
  kTextStart,
  kTextEnd,
};

/// Moves a caret through the shown lines of a view. Vertical moves aim for the place where the last
/// horizontal one ended, also past shorter lines.
class Navigator {
 public:
  explicit Navigator(TextViewModel& model) : m_model(model) {}

  /// The caret's next place. `pageRows` is at least 1.
  TextPosition Target(TextPosition from, Motion motion, int32_t pageRows);
  /// The next place of the corner of a column selection: it stays in its line when it goes sideways, also
  /// behind the line's end, and in its column when it goes up and down.
  BlockCorner BlockTarget(BlockCorner from, Motion motion, int32_t pageRows);
  /// The caret was placed by something else: vertical moves start from there.
  void ForgetWantedPlace() { m_wantedX = -1; }

 private:
  TextPosition Vertical(TextPosition from, int32_t rows);

  TextViewModel& m_model;
  int64_t m_wantedX = -1;  ///< 1/64 pixel, -1 for the caret's own
};

/// The run of equal characters (word, white space or other) at a column; at a line's end or behind a
/// word's last character, the run before it when that is a word. Columns start and end.
struct WordRange {
  int32_t start = 0;
  int32_t end = 0;
};
WordRange WordAt(std::string_view line, int32_t column);
/// The run of equal characters that the one at `column` belongs to; there is one.
WordRange RunAt(std::string_view line, int32_t column);
/// The start of the next word in this line, or its length.
int32_t NextWordStart(std::string_view line, int32_t column);
/// The start of the word before `column` in this line, or 0.
int32_t PreviousWordStart(std::string_view line, int32_t column);

}  // namespace quill
