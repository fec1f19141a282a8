#include "text/parse/FoldMap.h"

#include <algorithm>
#include <iterator>

#include "text/buffer/CrystalTextBuffer.h"

namespace quill {
namespace {

bool HasHiddenFlag(const CCrystalTextBuffer& buffer, int32_t line) {
  return (buffer.LineFlags(line) & line_flag::kHidden) != 0;
}

}  // namespace

void FoldMap::Rebuild() {
  m_folds.clear();
  if (m_buffer.LineCount() > 0) Rescan(0, m_buffer.LineCount() - 1);
}

void FoldMap::OnTextChange(const TextChange* change, uint32_t hints, int32_t line) {
  if (change != nullptr) {
    const int32_t first = change->range.start.line;
    const int32_t lines = change->range.end.line - first;
    if (lines == 0) return;
    if (change->inserted) {
      LinesInserted(first, lines);
    } else {
      LinesRemoved(first, lines);
    }
  } else if ((hints & hint::kReset) != 0 || ((hints & hint::kFlagsOnly) != 0 && line < 0)) {
    Rebuild();
  } else if ((hints & hint::kFlagsOnly) != 0 && (!IsIdentity() || HasHiddenFlag(m_buffer, line))) {
    Rescan(line, line);
  }
}

void FoldMap::LinesInserted(int32_t after, int32_t count) {
  if (IsIdentity()) return;
  const auto endsAfter = [](int32_t line, const Fold& fold) { return line < fold.last; };
  for (auto fold = std::upper_bound(m_folds.begin(), m_folds.end(), after, endsAfter); fold != m_folds.end();
       ++fold) {
    if (fold->head > after) fold->head += count;
    fold->last += count;
  }
  Rescan(after, after + count);
}

void FoldMap::LinesRemoved(int32_t after, int32_t count) {
  if (IsIdentity()) {
    // Lines with the flag that no block start accounted for may have lost what kept them apart from one.
    if (HasHiddenFlag(m_buffer, after)) Rescan(after, after);
    return;
  }
  const auto moved = [after, count](int32_t line) {
    return line <= after ? line : std::max(after, line - count);
  };
  const auto headAfter = [](int32_t line, const Fold& fold) { return line < fold.head; };
  const auto from = std::upper_bound(m_folds.begin(), m_folds.end(), after, headAfter);
  const auto to = std::upper_bound(from, m_folds.end(), after + count, headAfter);
  const auto kept = m_folds.erase(from, to);
  const auto first = kept == m_folds.begin() ? kept : std::prev(kept);  // it may end among the removed lines
  for (auto fold = first; fold != m_folds.end(); ++fold) {
    fold->head = moved(fold->head);
    fold->last = moved(fold->last);
  }
  CountHidden(std::distance(m_folds.begin(), first));
  Rescan(after, after);
}

void FoldMap::Rescan(int32_t first, int32_t last) {
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
  const auto byHead = [](const Fold& fold, int32_t line) { return fold.head < line; };
  const auto same = [](const Fold& a, const Fold& b) { return a.head == b.head && a.last == b.last; };
  const auto from = std::lower_bound(m_folds.begin(), m_folds.end(), first, byHead);
  const auto to = std::lower_bound(from, m_folds.end(), last + 1, byHead);
  if (std::equal(from, to, found.begin(), found.end(), same)) return;
  const auto index = std::distance(m_folds.begin(), from);
  m_folds.insert(m_folds.erase(from, to), found.begin(), found.end());
  CountHidden(index);
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

void FoldMap::CountHidden(std::ptrdiff_t from) {
  auto fold = m_folds.begin() + from;
  int32_t hidden = 0;
  if (from > 0) {
    const Fold& before = *std::prev(fold);
    hidden = before.hiddenAbove + before.last - before.head;
  }
  for (; fold != m_folds.end(); ++fold) {
    fold->hiddenAbove = hidden;
    hidden += fold->last - fold->head;
  }
}

int32_t FoldMap::FoldAtOrBefore(int32_t line) const {
  const auto after = std::upper_bound(m_folds.begin(), m_folds.end(), line,
                                      [](int32_t l, const Fold& fold) { return l < fold.head; });
  return static_cast<int32_t>(std::distance(m_folds.begin(), after)) - 1;
}

const FoldMap::Fold* FoldMap::FoldHiding(int32_t line) const {
  const int32_t index = FoldAtOrBefore(line);
  if (index < 0) return nullptr;
  const Fold& fold = m_folds[static_cast<size_t>(index)];
  return line > fold.head && line <= fold.last ? &fold : nullptr;
}

int32_t FoldMap::RowCount() const {
  return RowOfLine(m_buffer.LineCount());
}

int32_t FoldMap::LineOfRow(int32_t row) const {
  const auto after = std::upper_bound(m_folds.begin(), m_folds.end(), row, [](int32_t r, const Fold& fold) {
    return r < fold.head - fold.hiddenAbove;
  });
  if (after == m_folds.begin()) return row;
  const Fold& fold = *std::prev(after);
  const int32_t line = row + fold.hiddenAbove;
  return line == fold.head ? line : line + fold.last - fold.head;
}

int32_t FoldMap::RowOfLine(int32_t line) const {
  const int32_t index = FoldAtOrBefore(line);
  if (index < 0) return line;
  const Fold& fold = m_folds[static_cast<size_t>(index)];
  if (line <= fold.last) return fold.head - fold.hiddenAbove;
  return line - fold.hiddenAbove - (fold.last - fold.head);
}

bool FoldMap::IsHidden(int32_t line) const {
  return FoldHiding(line) != nullptr;
}

bool FoldMap::IsCollapsedHead(int32_t line) const {
  const int32_t index = FoldAtOrBefore(line);
  return index >= 0 && m_folds[static_cast<size_t>(index)].head == line;
}

int32_t FoldMap::ShownLine(int32_t line) const {
  const Fold* fold = FoldHiding(line);
  return fold == nullptr ? line : fold->head;
}

int32_t FoldMap::NextShown(int32_t line) const {
  return LastLineUnder(ShownLine(line)) + 1;
}

int32_t FoldMap::PreviousShown(int32_t line) const {
  const int32_t shown = ShownLine(line);
  return shown != line ? shown : line == 0 ? -1 : ShownLine(line - 1);
}

int32_t FoldMap::LastLineUnder(int32_t line) const {
  const int32_t index = FoldAtOrBefore(line);
  if (index < 0 || m_folds[static_cast<size_t>(index)].head != line) return line;
  return m_folds[static_cast<size_t>(index)].last;
}

}  // namespace quill
