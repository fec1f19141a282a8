#include "text/view/Bookmarks.h"

#include <vector>

#include "text/buffer/CrystalTextBuffer.h"

namespace quill::bookmarks {
namespace {

constexpr int kNumberedCount = 10;

void ToggleFlag(CCrystalTextBuffer& buffer, int32_t line, uint32_t flag) {
  buffer.SetFlagOnLine(line, flag, (buffer.LineFlags(line) & flag) == 0);
}

bool HasBookmark(const CCrystalTextBuffer& buffer, int32_t line) {
  return (buffer.LineFlags(line) & line_flag::kBookmark) != 0;
}

void ClearFlags(CCrystalTextBuffer& buffer, uint32_t flags) {
  std::vector<LineRange> lines;
  for (int32_t i = 0; i < buffer.LineCount(); ++i) {
    if ((buffer.LineFlags(i) & flags) != 0) lines.push_back({i, i});
  }
  buffer.ChangeFlagsOnRanges(lines, 0, flags);
}

}  // namespace

void Toggle(CCrystalTextBuffer& buffer, int32_t line) {
  ToggleFlag(buffer, line, line_flag::kBookmark);
}

void ToggleBreakpoint(CCrystalTextBuffer& buffer, int32_t line) {
  ToggleFlag(buffer, line, line_flag::kBreakpoint);
}

std::optional<int32_t> Next(const CCrystalTextBuffer& buffer, int32_t line) {
  for (int32_t i = line + 1; i < buffer.LineCount(); ++i) {
    if (HasBookmark(buffer, i)) return i;
  }
  return std::nullopt;
}

std::optional<int32_t> Previous(const CCrystalTextBuffer& buffer, int32_t line) {
  for (int32_t i = line - 1; i >= 0; --i) {
    if (HasBookmark(buffer, i)) return i;
  }
  return std::nullopt;
}

bool SetNumbered(CCrystalTextBuffer& buffer, int32_t line, int n) {
  if (n < 0 || n >= kNumberedCount) return false;
  buffer.SetFlagOnLine(line, line_flag::NumberedBookmark(n), true, true);
  return true;
}

std::optional<int32_t> FindNumbered(const CCrystalTextBuffer& buffer, int n) {
  if (n < 0 || n >= kNumberedCount) return std::nullopt;
  const int32_t line = buffer.FirstLineWithFlag(line_flag::NumberedBookmark(n));
  return line < 0 ? std::nullopt : std::optional<int32_t>(line);
}

void RemoveNumbered(CCrystalTextBuffer& buffer, int n) {
  const std::optional<int32_t> line = FindNumbered(buffer, n);
  if (line) buffer.SetFlagOnLine(*line, line_flag::NumberedBookmark(n), false);
}

void RemoveNumbersOf(CCrystalTextBuffer& buffer, int32_t line) {
  const LineRange lines[] = {{line, line}};
  buffer.ChangeFlagsOnRanges(lines, 0, line_flag::kNumberedBookmarks);
}

void ClearNumbered(CCrystalTextBuffer& buffer) {
  ClearFlags(buffer, line_flag::kNumberedBookmarks);
}

void ClearAll(CCrystalTextBuffer& buffer) {
  ClearFlags(buffer, line_flag::kBookmark);
}

}  // namespace quill::bookmarks
