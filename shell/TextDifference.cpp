#include "shell/TextDifference.h"

#include <algorithm>

namespace quill {

bool ReplaceDifference(CCrystalTextBuffer& buffer, const CCrystalTextBuffer& wanted) {
  const int32_t oldCount = buffer.LineCount();
  const int32_t newCount = wanted.LineCount();
  const int32_t shorter = std::min(oldCount, newCount);
  int32_t before = 0;
  while (before < shorter && buffer.Line(before) == wanted.Line(before)) ++before;
  if (buffer.IsReadOnly() || (before == oldCount && before == newCount)) return false;
  int32_t after = 0;
  while (after < shorter - before && buffer.Line(oldCount - 1 - after) == wanted.Line(newCount - 1 - after)) {
    ++after;
  }
  // Whole lines are replaced by whole lines: with none on one side, an equal neighbour goes along.
  if (before + after == shorter) --(before > 0 ? before : after);

  std::vector<std::string_view> lines;
  for (int32_t line = before; line < newCount - after; ++line) lines.push_back(wanted.Line(line));
  const int32_t last = oldCount - after - 1;
  const TextRange replaced{{before, 0}, {last, buffer.LineLength(last)}};
  TextPosition end;
  buffer.OpenUndoGroup();
  if (!replaced.IsEmpty()) buffer.DeleteRange(nullptr, replaced);
  buffer.InsertLinesAt(nullptr, replaced.start, lines, end);
  buffer.CloseUndoGroup();
  return true;
}

}  // namespace quill
