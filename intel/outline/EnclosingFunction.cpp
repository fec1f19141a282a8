#include "intel/outline/EnclosingFunction.h"

#include <algorithm>

#include "intel/outline/CodeWalk.h"
#include "text/buffer/CrystalTextBuffer.h"

namespace quill {
namespace {

/// Looked at for one answer, which is wanted whenever the caret moves; a function of more text than that has
/// lost its last brace.
constexpr int64_t kMostCharacters = int64_t{1} << 20;

/// Whether the braces that the lines from `first` on open are closed again before line `line`.
bool IsClosedBefore(const CCrystalTextBuffer& buffer, int32_t first, int32_t line) {
  int64_t depth = 0;
  bool closed = false;
  uint32_t state = 0;
  int64_t left = kMostCharacters;
  for (int32_t i = first; i < line && !closed; ++i) {
    left -= buffer.LineLength(i) + 1;
    if (left < 0) return true;
    state = WalkCode(buffer.Line(i), state, [&depth, &closed](size_t, char c) {
      if (c == '{') ++depth;
      if (c == '}') closed = --depth <= 0 || closed;
    });
  }
  return closed;
}

}  // namespace

EnclosingFunction::EnclosingFunction(const Outline& outline) {
  for (const OutlineRoot root : {OutlineRoot::kFunctions, OutlineRoot::kActions, OutlineRoot::kStarters}) {
    const std::vector<OutlineItem>& items = outline.Items(root);
    for (size_t i = 0; i < items.size(); ++i) {
      if (items[i].file == 0) m_entries.push_back({root, i, items[i].at});
    }
  }
  std::sort(m_entries.begin(), m_entries.end(), [](const Entry& a, const Entry& b) { return a.at < b.at; });
}

const EnclosingFunction::Entry* EnclosingFunction::Around(const CCrystalTextBuffer& buffer,
                                                          int32_t line) const {
  const auto after = std::upper_bound(m_entries.begin(), m_entries.end(), line,
                                      [](int32_t l, const Entry& entry) { return l < entry.at.line; });
  if (after == m_entries.begin() || line >= buffer.LineCount()) return nullptr;
  const Entry& entry = *(after - 1);
  return IsClosedBefore(buffer, entry.at.line, line) ? nullptr : &entry;
}

}  // namespace quill
