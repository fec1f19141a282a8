#include "intel/outline/EnclosingFunction.h"

#include <algorithm>

#include "intel/outline/CodeWalk.h"
#include "text/buffer/CrystalTextBuffer.h"

namespace quill {
namespace {

/// Looked at for one answer, which is wanted whenever the caret moves; a function of more text than that has
/// lost its last brace.
constexpr int64_t kMostCharacters = int64_t{1} << 20;

bool IsCalled(OutlineRoot root) {
  return root == OutlineRoot::kFunctions || root == OutlineRoot::kActions || root == OutlineRoot::kStarters;
}

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

std::optional<OutlineRef> EnclosingFunction::LastFrom(int32_t line) const {
  const OutlineParts& parts = m_outline.Parts();
  const auto isFrom = [&parts, line](uint32_t slot) {
    return parts.bySlot[slot].file == 0 && parts.bySlot[slot].firstLine <= line;
  };
  auto group = std::partition_point(parts.sequence.begin(), parts.sequence.end(), isFrom);
  while (group != parts.sequence.begin()) {
    const uint32_t slot = *--group;
    for (size_t i = parts.bySlot[slot].group->items.size(); i > 0; --i) {
      const OutlineRef ref = Outline::RefOf(slot, i - 1);
      if (IsCalled(m_outline.RootOf(ref)) && m_outline.PlaceOf(ref).line <= line) return ref;
    }
  }
  return std::nullopt;
}

std::optional<EnclosingFunction::Entry> EnclosingFunction::Around(const CCrystalTextBuffer& buffer,
                                                                  int32_t line) const {
  if (line >= buffer.LineCount()) return std::nullopt;
  const std::optional<OutlineRef> last = LastFrom(line);
  if (!last) return std::nullopt;
  const TextPosition at = m_outline.PlaceOf(*last);
  if (IsClosedBefore(buffer, at.line, line)) return std::nullopt;
  return Entry{m_outline.RootOf(*last), m_outline.IndexOf(*last), at};
}

}  // namespace quill
