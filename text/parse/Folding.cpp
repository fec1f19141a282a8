#include "text/parse/Folding.h"

#include <algorithm>
#include <vector>

#include "text/buffer/CrystalTextBuffer.h"
#include "text/parse/FoldDepthIndex.h"
#include "text/parse/LineStateCache.h"

namespace quill {
namespace {

using line_flag::kBlockEnd;
using line_flag::kBlockStart;
using line_flag::kHidden;

/// -1 when no block is open before `line`, that line's own start included.
int32_t FindBlockStart(const CCrystalTextBuffer& buffer, int32_t line) {
  int32_t depth = 0;
  for (int32_t i = line; i >= 0; --i) {
    const uint32_t flags = buffer.LineFlags(i);
    if (i < line && (flags & kBlockEnd) != 0) ++depth;
    if ((flags & kBlockStart) != 0 && depth-- == 0) return i;
  }
  return -1;
}

int32_t FindBlockEnd(const CCrystalTextBuffer& buffer, int32_t line, LineStateCache* states) {
  constexpr int32_t kLinesAhead = 256;
  const int32_t count = buffer.LineCount();
  int32_t depth = 0;
  for (int32_t i = line; i < count; ++i) {
    if (states != nullptr && (i - line) % kLinesAhead == 0) {
      states->ParseThrough(std::min(i + kLinesAhead, count) - 1);
    }
    const uint32_t flags = buffer.LineFlags(i);
    if (i > line && (flags & kBlockStart) != 0) ++depth;
    if ((flags & kBlockEnd) != 0 && depth-- == 0) return i;
  }
  return -1;
}

}  // namespace

std::optional<LineRange> FindBlock(const CCrystalTextBuffer& buffer, int32_t line, LineStateCache* states) {
  if (states != nullptr) states->ParseThrough(line);
  const int32_t start = FindBlockStart(buffer, line);
  if (start < 0) return std::nullopt;
  const int32_t end = FindBlockEnd(buffer, line, states);
  if (end <= start) return std::nullopt;
  return LineRange{start, end};
}

bool ToggleFold(CCrystalTextBuffer& buffer, int32_t first, int32_t last) {
  if (first < 0 || last >= buffer.LineCount() || first > last) return false;
  if ((buffer.LineFlags(first) & kBlockStart) == 0 || (buffer.LineFlags(last) & kBlockEnd) == 0) return false;
  const bool expand = (buffer.LineFlags(first) & kHidden) != 0;
  buffer.ChangeFlagsOnLines(first, last, expand ? 0 : kHidden, expand ? kHidden : 0);
  buffer.NotifyViews(nullptr, nullptr, hint::kLinesChanged, first);
  return true;
}

bool IsHeadOfCollapsed(const CCrystalTextBuffer& buffer, int32_t line) {
  constexpr uint32_t kHead = kBlockStart | kHidden;
  return (buffer.LineFlags(line) & kHead) == kHead;
}

bool ExpandAll(CCrystalTextBuffer& buffer) {
  std::vector<LineRange> hidden;
  const int32_t count = buffer.LineCount();
  for (int32_t i = 0; i < count; ++i) {
    if ((buffer.LineFlags(i) & kHidden) == 0) continue;
    const int32_t first = i;
    while (i + 1 < count && (buffer.LineFlags(i + 1) & kHidden) != 0) ++i;
    hidden.push_back({first, i});
  }
  if (!buffer.ChangeFlagsOnRanges(hidden, 0, kHidden)) return false;
  buffer.NotifyViews(nullptr, nullptr, hint::kLinesChanged, hidden.front().first);
  return true;
}

bool CollapseAll(CCrystalTextBuffer& buffer, LineStateCache& states) {
  states.ParseAll();
  std::vector<int32_t> open;
  std::vector<LineRange> blocks;
  for (int32_t i = 0; i < buffer.LineCount(); ++i) {
    const uint32_t flags = buffer.LineFlags(i);
    if ((flags & kBlockStart) != 0) open.push_back(i);
    if ((flags & kBlockEnd) == 0 || open.empty()) continue;
    const LineRange block{open.back(), i};
    open.pop_back();
    while (!blocks.empty() && blocks.back().first > block.first) blocks.pop_back();
    blocks.push_back(block);
  }
  if (!buffer.ChangeFlagsOnRanges(blocks, kHidden, 0)) return false;
  buffer.NotifyViews(nullptr, nullptr, hint::kLinesChanged, blocks.front().first);
  return true;
}

void ExpandHead(CCrystalTextBuffer& buffer, int32_t line) {
  const std::optional<LineRange> block = FindBlock(buffer, line);
  if (block && block->first == line && ToggleFold(buffer, block->first, block->last)) return;
  int32_t last = line;
  while (last + 1 < buffer.LineCount() && (buffer.LineFlags(last + 1) & kHidden) != 0) ++last;
  buffer.ChangeFlagsOnLines(line, last, 0, kHidden);
  buffer.NotifyViews(nullptr, nullptr, hint::kLinesChanged, line);
}

}  // namespace quill
