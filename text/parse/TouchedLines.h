#pragma once
#include <algorithm>
#include <cstdint>
#include <optional>

#include "text/buffer/LineRange.h"

namespace quill {

/// Lines that somebody has yet to look at: one range that covers them all and moves with the text.
class TouchedLines {
 public:
  bool IsEmpty() const { return !m_range; }
  /// Ask only when not empty.
  LineRange Range() const { return *m_range; }

  void Add(int32_t first, int32_t last) {
    if (m_range) {
      first = std::min(first, m_range->first);
      last = std::max(last, m_range->last);
    }
    m_range = LineRange{first, last};
  }
  void Clear() { m_range.reset(); }
  /// Takes the lines before `line` out; those that remain begin there.
  void ClearBefore(int32_t line) {
    if (!m_range || m_range->first >= line) return;
    if (m_range->last < line) {
      m_range.reset();
    } else {
      m_range->first = line;
    }
  }

  /// `count` lines came after line `after`.
  void LinesInserted(int32_t after, int32_t count) {
    if (!m_range) return;
    if (m_range->first > after) m_range->first += count;
    if (m_range->last > after) m_range->last += count;
  }
  /// `count` lines after line `after` went.
  void LinesRemoved(int32_t after, int32_t count) {
    if (!m_range) return;
    const auto moved = [&](int32_t line) { return line <= after ? line : std::max(after, line - count); };
    m_range = LineRange{moved(m_range->first), moved(m_range->last)};
  }

 private:
  std::optional<LineRange> m_range;
};

}  // namespace quill
