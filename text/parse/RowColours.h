#pragma once
#include <cstdint>
#include <span>
#include <vector>

#include "text/parse/LineScan.h"

namespace quill {

class TextCopy;
class WordClasses;

/// Colours a copied text piece by piece from its beginning on, so that a line of any length costs what its
/// characters cost once.
class RowColours {
 public:
  /// Both outlive it.
  RowColours(const TextCopy& text, const WordClasses& words) : m_text(text), m_words(words) {}

  /// The blocks of columns [start, end) of a line, the first of which begins at or before `start`; there
  /// may be more behind. No piece may lie before the one that was asked for last. Valid until the next call.
  std::span<const TextBlock> Blocks(int32_t line, int32_t start, int32_t end);

 private:
  void GoTo(int32_t line);

  const TextCopy& m_text;
  const WordClasses& m_words;
  int32_t m_line = 0;
  uint32_t m_state = 0;  ///< at the start of the line
  ScanPoint m_point;     ///< in the line
  std::vector<TextBlock> m_blocks;
  int32_t m_through = 0;  ///< the column up to which the blocks are known
};

}  // namespace quill
