#pragma once
#include <cstdint>
#include <vector>

#include "text/buffer/BufferObserver.h"
#include "text/buffer/LineRange.h"
#include "text/parse/TouchedLines.h"

namespace quill {

class CCrystalTextBuffer;
class FoldMap;

/// Puts the hidden flags right after a parse. A collapsed block is shown when its first line is no block
/// start any more, and lines that are shown lose the flag: otherwise a brace that is typed there later
/// would collapse something. A run of flagged lines is settled once, when all its block marks are known, so
/// that it takes time by its length and not by the number of its marks that changed.
class FoldSettler {
 public:
  FoldSettler(CCrystalTextBuffer& buffer, FoldMap& folds) : m_buffer(buffer), m_folds(folds) {}

  /// What the buffer tells, after the fold map was told. Call it once for every update.
  void OnTextChange(const TextChange* change, uint32_t hints, int32_t line);
  /// A parse came to a line that has the hidden flag and has not set its new block marks yet.
  void OnHiddenLine(int32_t line, uint32_t newMarks);
  /// Where a parse has to go on to that was to end before `end`: a run that is to be settled is parsed whole.
  int32_t EndOfRun(int32_t end) const;
  /// After a parse of all lines before `end`, which `EndOfRun` gave. Tells the views when anything changed.
  void Settle(int32_t end);

 private:
  bool IsDueBefore(int32_t end) const { return !m_touched.IsEmpty() && m_touched.Range().first < end; }
  void FindStrays(LineRange lines, std::vector<LineRange>& strays) const;

  CCrystalTextBuffer& m_buffer;
  FoldMap& m_folds;
  TouchedLines m_touched;            ///< runs that touch these are to be settled
  std::vector<LineRange> m_opening;  ///< blocks that lost their start in this parse, in their order
};

}  // namespace quill
