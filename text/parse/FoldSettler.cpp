#include "text/parse/FoldSettler.h"

#include <algorithm>
#include <utility>

#include "text/buffer/CrystalTextBuffer.h"
#include "text/parse/FoldMap.h"

namespace quill {
namespace {

using line_flag::kHidden;

bool HasHiddenFlag(const CCrystalTextBuffer& buffer, int32_t line) {
  return (buffer.LineFlags(line) & kHidden) != 0;
}

}  // namespace

void FoldSettler::OnTextChange(const TextChange* change, uint32_t hints, int32_t line) {
  if ((hints & hint::kReset) != 0) {
    m_touched.Clear();
  } else if (change != nullptr) {
    const int32_t after = change->range.start.line;
    const int32_t count = change->range.end.line - after;
    if (count == 0) return;
    if (change->inserted) {
      m_touched.LinesInserted(after, count);
    } else {
      m_touched.LinesRemoved(after, count);
    }
    const int32_t last = std::min(after + (change->inserted ? count : 0) + 1, m_buffer.LineCount() - 1);
    for (int32_t i = std::max(after - 1, 0); i <= last; ++i) {
      if (HasHiddenFlag(m_buffer, i)) m_touched.Add(i, i);
    }
  } else if ((hints & hint::kFlagsOnly) != 0) {
    if (line < 0) {
      m_touched.Add(0, m_buffer.LineCount() - 1);
    } else if (HasHiddenFlag(m_buffer, line)) {
      m_touched.Add(line, line);
    }
  }
}

void FoldSettler::OnHiddenLine(int32_t line, uint32_t newMarks) {
  const bool losesStart = (m_buffer.LineFlags(line) & ~newMarks & line_flag::kBlockStart) != 0;
  m_folds.Refresh();  // before it could see some new marks beside old ones
  if (losesStart && m_folds.IsCollapsedHead(line)) m_opening.push_back({line, m_folds.LastLineUnder(line)});
  m_touched.Add(line, line);
}

int32_t FoldSettler::EndOfRun(int32_t end) const {
  if (!IsDueBefore(end)) return end;
  while (end < m_buffer.LineCount() && HasHiddenFlag(m_buffer, end - 1) && HasHiddenFlag(m_buffer, end))
    ++end;
  return end;
}

void FoldSettler::Settle(int32_t end) {
  if (!IsDueBefore(end)) return;
  LineRange lines = m_touched.Range();
  lines.last = std::min(lines.last, end - 1);
  m_touched.ClearBefore(end);
  while (lines.first > 0 && HasHiddenFlag(m_buffer, lines.first - 1)) --lines.first;
  while (lines.last + 1 < end && HasHiddenFlag(m_buffer, lines.last + 1)) ++lines.last;
  const std::vector<LineRange> opening = std::exchange(m_opening, {});
  bool changed = m_buffer.ShowLines(opening);
  m_folds.Touch(lines);
  changed = m_folds.Refresh() || changed;
  std::vector<LineRange> strays;
  FindStrays(lines, strays);
  m_buffer.ShowLines(strays);  // they are shown already
  if (changed) m_buffer.NotifyViews(nullptr, nullptr, hint::kLinesChanged, lines.first);
}

void FoldSettler::FindStrays(LineRange lines, std::vector<LineRange>& strays) const {
  for (int32_t i = lines.first; i <= lines.last; ++i) {
    if (!HasHiddenFlag(m_buffer, i)) continue;
    const int32_t last = m_folds.LastLineUnder(i);
    if (last == i) strays.push_back({i, i});
    i = last;
  }
}

}  // namespace quill
