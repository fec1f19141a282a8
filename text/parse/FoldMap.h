#pragma once
#include <cstddef>
#include <cstdint>
#include <vector>

#include "text/buffer/BufferObserver.h"
#include "text/buffer/LineRange.h"
#include "text/parse/TouchedLines.h"

namespace quill {

class CCrystalTextBuffer;

/// Which lines have a row on the screen. The first line of a collapsed block keeps its row, the lines
/// after it up to the block's last one have none; a block inside a collapsed one has none at all. A line
/// with the hidden flag that no block start above it accounts for is shown: nothing gets lost.
/// Without collapsed blocks rows are lines, and asking costs nothing. A change only notes where to look
/// again; who asks next pays for it, once for all changes up to then.
class FoldMap {
 public:
  explicit FoldMap(const CCrystalTextBuffer& buffer) : m_buffer(buffer) { Rebuild(); }
  FoldMap(const FoldMap&) = delete;
  FoldMap& operator=(const FoldMap&) = delete;

  /// Reads the flags of all lines anew.
  void Rebuild();
  /// What the buffer tells. Call it once for every update.
  void OnTextChange(const TextChange* change, uint32_t hints, int32_t line);
  /// The flags of lines may have changed without a word from the buffer.
  void Touch(LineRange lines) { m_touched.Add(lines.first, lines.last); }
  /// Brings the rows up to date, as every question does; true when they changed.
  bool Refresh() const { return !m_touched.IsEmpty() && RefreshTouched(); }

  bool IsIdentity() const {
    Refresh();
    return m_folds.empty();
  }
  int32_t RowCount() const;
  /// `row` from 0 to the row count; the row count stands for the end of the text.
  int32_t LineOfRow(int32_t row) const;
  /// A hidden line has the row of the line that hides it.
  int32_t RowOfLine(int32_t line) const;
  bool IsHidden(int32_t line) const;
  /// The line is shown and hides those after it.
  bool IsCollapsedHead(int32_t line) const;
  /// The line itself when shown, else the one that hides it.
  int32_t ShownLine(int32_t line) const;
  /// The next shown line after or before `line`; the line count, or -1, when there is none.
  int32_t NextShown(int32_t line) const;
  int32_t PreviousShown(int32_t line) const;
  /// The last line hidden by `line`, or the line itself when it hides none.
  int32_t LastLineUnder(int32_t line) const;

 private:
  struct Fold {
    int32_t head;
    int32_t last;         ///< lines head + 1 to last are hidden
    int32_t hiddenAbove;  ///< lines hidden by the folds before this one

    int32_t Hides() const { return last - head; }
  };

  /// The number of folds, counted from the first, of which `holds` is true.
  template <class Holds>
  size_t CountWhile(Holds holds) const;
  size_t CountHeadsBefore(int32_t line) const;
  Fold At(size_t index) const;
  /// Makes `m_movedFrom` that index.
  void MoveFrom(size_t index) const;
  /// The index of the last fold with its head at or before `line`, -1 when none.
  std::ptrdiff_t FoldAtOrBefore(int32_t line) const;
  void LinesInserted(int32_t after, int32_t count);
  void LinesRemoved(int32_t after, int32_t count);
  bool RefreshTouched() const;
  /// Finds the folds anew in the runs of flagged lines that touch these lines.
  bool Rescan(LineRange lines) const;
  /// Appends the folds of one run of flagged lines.
  void ScanRun(int32_t first, int32_t last, std::vector<Fold>& folds) const;
  void Replace(size_t from, size_t to, std::vector<Fold>& found) const;

  const CCrystalTextBuffer& m_buffer;
  mutable TouchedLines m_touched;
  mutable std::vector<Fold> m_folds;
  /// The folds from this index on lie so many lines further down, and so many more lines are hidden above
  /// them, than is written there: an edit need not walk through those below it.
  mutable size_t m_movedFrom = 0;
  mutable int32_t m_movedLines = 0;
  mutable int32_t m_movedHidden = 0;
};

}  // namespace quill
