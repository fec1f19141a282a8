#include "text/parse/FoldMap.h"

#include <algorithm>

#include "text/buffer/CrystalTextBuffer.h"

namespace quill {
namespace {

bool HasHiddenFlag(const CCrystalTextBuffer& buffer, int32_t line) {
  return (buffer.LineFlags(line) & line_flag::kHidden) != 0;
}

}  // namespace

void FoldMap::Rebuild() {
  m_folds.clear();
  m_movedFrom = 0;
  m_touched.Clear();
  if (m_buffer.LineCount() > 0) m_touched.Add(0, m_buffer.LineCount() - 1);
}

void FoldMap::OnTextChange(const TextChange* change, uint32_t hints, int32_t line) {
  if ((hints & hint::kReset) != 0) {
    Rebuild();
  } else if (change != nullptr) {
    const int32_t first = change->range.start.line;
    const int32_t lines = change->range.end.line - first;
    if (lines == 0) return;
    if (change->inserted) {
      LinesInserted(first, lines);
    } else {
      LinesRemoved(first, lines);
    }
  } else if ((hints & hint::kFlagsOnly) != 0) {
    Touch(line < 0 ? LineRange{0, m_buffer.LineCount() - 1} : LineRange{line, line});
  }
}

// Folds that moved

FoldMap::Fold FoldMap::At(size_t index) const {
  Fold fold = m_folds[index];
  if (index >= m_movedFrom) {
    fold.head += m_movedLines;
    fold.last += m_movedLines;
    fold.hiddenAbove += m_movedHidden;
  }
  return fold;
}

void FoldMap::MoveFrom(size_t index) const {
  const int32_t sign = index > m_movedFrom ? 1 : -1;
  for (size_t i = std::min(index, m_movedFrom); i < std::max(index, m_movedFrom); ++i) {
    m_folds[i].head += sign * m_movedLines;
    m_folds[i].last += sign * m_movedLines;
    m_folds[i].hiddenAbove += sign * m_movedHidden;
  }
  m_movedFrom = index;
  if (index == m_folds.size()) m_movedLines = m_movedHidden = 0;
}

template <class Holds>
size_t FoldMap::CountWhile(Holds holds) const {
  size_t low = 0;
  size_t high = m_folds.size();
  while (low < high) {
    const size_t middle = (low + high) / 2;
    if (holds(At(middle))) {
      low = middle + 1;
    } else {
      high = middle;
    }
  }
  return low;
}

size_t FoldMap::CountHeadsBefore(int32_t line) const {
  return CountWhile([line](const Fold& fold) { return fold.head < line; });
}

void FoldMap::LinesInserted(int32_t after, int32_t count) {
  m_touched.LinesInserted(after, count);
  m_touched.Add(after, after + count);
  size_t below = CountHeadsBefore(after + 1);
  MoveFrom(below);
  m_movedLines += count;
  if (below > 0 && m_folds[below - 1].last > after) {
    m_folds[below - 1].last += count;
    m_movedHidden += count;
  }
}

void FoldMap::LinesRemoved(int32_t after, int32_t count) {
  m_touched.LinesRemoved(after, count);
  m_touched.Add(after, after);
  const size_t from = CountHeadsBefore(after + 1);
  const size_t to = CountHeadsBefore(after + count + 1);
  MoveFrom(to);
  for (size_t i = from; i < to; ++i) m_movedHidden -= m_folds[i].Hides();
  if (from > 0 && m_folds[from - 1].last > after) {  // it ends among the removed lines or below them
    int32_t& last = m_folds[from - 1].last;
    const int32_t shorter = std::min(last - after, count);
    last -= shorter;
    m_movedHidden -= shorter;
  }
  m_folds.erase(m_folds.begin() + static_cast<std::ptrdiff_t>(from),
                m_folds.begin() + static_cast<std::ptrdiff_t>(to));
  m_movedFrom = from;
  m_movedLines -= count;
}

// Finding folds

bool FoldMap::RefreshTouched() const {
  const LineRange lines = m_touched.Range();
  m_touched.Clear();
  return Rescan({std::max(lines.first, 0), std::min(lines.last, m_buffer.LineCount() - 1)});
}

bool FoldMap::Rescan(LineRange lines) const {
  auto [first, last] = lines;
  const int32_t count = m_buffer.LineCount();
  while (first > 0 && HasHiddenFlag(m_buffer, first - 1)) --first;
  while (last + 1 < count && HasHiddenFlag(m_buffer, last + 1)) ++last;
  std::vector<Fold> found;
  for (int32_t i = first; i <= last; ++i) {
    if (!HasHiddenFlag(m_buffer, i)) continue;
    const int32_t runStart = i;
    while (i < last && HasHiddenFlag(m_buffer, i + 1)) ++i;
    ScanRun(runStart, i, found);
  }
  const size_t from = CountHeadsBefore(first);
  const size_t to = CountHeadsBefore(last + 1);
  bool same = found.size() == to - from;
  for (size_t i = from; same && i < to; ++i) {
    const Fold fold = At(i);
    same = fold.head == found[i - from].head && fold.last == found[i - from].last;
  }
  if (!same) Replace(from, to, found);
  return !same;
}

void FoldMap::ScanRun(int32_t first, int32_t last, std::vector<Fold>& folds) const {
  int32_t i = first;
  while (i <= last) {
    if ((m_buffer.LineFlags(i) & line_flag::kBlockStart) == 0) {
      ++i;
      continue;
    }
    int32_t end = i;
    for (int32_t depth = 1; depth > 0 && end < last;) {
      const uint32_t flags = m_buffer.LineFlags(++end);
      if ((flags & line_flag::kBlockStart) != 0) ++depth;
      if ((flags & line_flag::kBlockEnd) != 0) --depth;
    }
    if (end > i) folds.push_back({i, end, 0});
    i = end + 1;
  }
}

void FoldMap::Replace(size_t from, size_t to, std::vector<Fold>& found) const {
  MoveFrom(to);
  int32_t hidden = from == 0 ? 0 : m_folds[from - 1].hiddenAbove + m_folds[from - 1].Hides();
  const int32_t hiddenBefore = to == from ? hidden : m_folds[to - 1].hiddenAbove + m_folds[to - 1].Hides();
  for (Fold& fold : found) {
    fold.hiddenAbove = hidden;
    hidden += fold.Hides();
  }
  const size_t inPlace = std::min(found.size(), to - from);
  const auto place = m_folds.begin() + static_cast<std::ptrdiff_t>(from);
  const auto rest = found.begin() + static_cast<std::ptrdiff_t>(inPlace);
  const auto behind = std::copy(found.begin(), rest, place);
  m_folds.insert(m_folds.erase(behind, m_folds.begin() + static_cast<std::ptrdiff_t>(to)), rest, found.end());
  m_movedFrom = from + found.size();
  m_movedHidden += hidden - hiddenBefore;
  if (m_movedFrom == m_folds.size()) m_movedLines = m_movedHidden = 0;
}

// Questions

std::ptrdiff_t FoldMap::FoldAtOrBefore(int32_t line) const {
  Refresh();
  return static_cast<std::ptrdiff_t>(CountHeadsBefore(line + 1)) - 1;
}

int32_t FoldMap::RowCount() const {
  return RowOfLine(m_buffer.LineCount());
}

int32_t FoldMap::LineOfRow(int32_t row) const {
  Refresh();
  const size_t after = CountWhile([row](const Fold& fold) { return fold.head - fold.hiddenAbove <= row; });
  if (after == 0) return row;
  const Fold fold = At(after - 1);
  const int32_t line = row + fold.hiddenAbove;
  return line == fold.head ? line : line + fold.Hides();
}

int32_t FoldMap::RowOfLine(int32_t line) const {
  const std::ptrdiff_t index = FoldAtOrBefore(line);
  if (index < 0) return line;
  const Fold fold = At(static_cast<size_t>(index));
  if (line <= fold.last) return fold.head - fold.hiddenAbove;
  return line - fold.hiddenAbove - fold.Hides();
}

bool FoldMap::IsHidden(int32_t line) const {
  return ShownLine(line) != line;
}

bool FoldMap::IsCollapsedHead(int32_t line) const {
  const std::ptrdiff_t index = FoldAtOrBefore(line);
  return index >= 0 && At(static_cast<size_t>(index)).head == line;
}

int32_t FoldMap::ShownLine(int32_t line) const {
  const std::ptrdiff_t index = FoldAtOrBefore(line);
  if (index < 0) return line;
  const Fold fold = At(static_cast<size_t>(index));
  return line <= fold.last ? fold.head : line;
}

int32_t FoldMap::NextShown(int32_t line) const {
  return LastLineUnder(ShownLine(line)) + 1;
}

int32_t FoldMap::PreviousShown(int32_t line) const {
  const int32_t shown = ShownLine(line);
  return shown != line ? shown : line == 0 ? -1 : ShownLine(line - 1);
}

int32_t FoldMap::LastLineUnder(int32_t line) const {
  const std::ptrdiff_t index = FoldAtOrBefore(line);
  if (index < 0) return line;
  const Fold fold = At(static_cast<size_t>(index));
  return fold.head == line ? fold.last : line;
}

}  // namespace quill
