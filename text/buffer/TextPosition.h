#pragma once
#include <compare>
#include <cstdint>

namespace quill {

/// A place in a text: both indices from zero. Ordered by line, then by character.
struct TextPosition {
  int32_t line = 0;
  int32_t character = 0;  ///< byte index within the line
  friend constexpr auto operator<=>(const TextPosition&, const TextPosition&) = default;
};

/// A stretch of text, start first; empty when both ends are equal.
struct TextRange {
  TextPosition start;
  TextPosition end;
  constexpr bool IsEmpty() const { return start == end; }
  /// The range between two places in either order.
  static constexpr TextRange Between(TextPosition a, TextPosition b) {
    return a <= b ? TextRange{a, b} : TextRange{b, a};
  }
  friend constexpr bool operator==(const TextRange&, const TextRange&) = default;
};

/// Where `p` lies after `inserted` (the range that new text now covers) went in before or at it.
constexpr TextPosition PositionAfterInsert(TextPosition p, TextRange inserted) {
  if (p < inserted.start) return p;
  if (p.line != inserted.start.line) return {p.line + inserted.end.line - inserted.start.line, p.character};
  return {inserted.end.line, inserted.end.character + p.character - inserted.start.character};
}

/// Where `p` lies after the text of `deleted` went away; a place inside it moves to its start.
constexpr TextPosition PositionAfterDelete(TextPosition p, TextRange deleted) {
  if (p <= deleted.start) return p;
  if (p <= deleted.end) return deleted.start;
  if (p.line != deleted.end.line) return {p.line - (deleted.end.line - deleted.start.line), p.character};
  return {deleted.start.line, deleted.start.character + p.character - deleted.end.character};
}

}  // namespace quill
