#pragma once
#include <cstdint>

#include "text/buffer/TextPosition.h"

namespace quill {

/// Selecting with the mouse: what a press selected first stays selected while the pointer moves, and the
/// selection grows by whole units.
class MouseSelection {
 public:
  enum class Unit : uint8_t { kNone, kCharacter, kWord, kLine, kColumns };

  /// `origin` is what the press selected (empty for a place).
  void Begin(Unit unit, TextRange origin) {
    m_unit = unit;
    m_origin = origin;
  }
  void End() { m_unit = Unit::kNone; }
  bool IsActive() const { return m_unit != Unit::kNone; }
  Unit CurrentUnit() const { return m_unit; }

  struct Ends {
    TextPosition anchor;
    TextPosition caret;
  };
  /// Anchor and caret when the pointer is over `target`, the unit there.
  Ends ExtendTo(TextRange target) const {
    if (target.start < m_origin.start) return {m_origin.end, target.start};
    if (target.end > m_origin.end) return {m_origin.start, target.end};
    return {m_origin.start, m_origin.end};
  }

 private:
  Unit m_unit = Unit::kNone;
  TextRange m_origin;
};

}  // namespace quill
