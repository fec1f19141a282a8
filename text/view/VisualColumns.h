#pragma once
#include <cstdint>
#include <string_view>

namespace quill {

/// The column at which a character of a line is shown when tabs reach to the next multiple of `tabSize`.
inline int32_t ColumnOf(std::string_view line, int32_t character, int32_t tabSize) {
  std::string_view rest = line.substr(0, static_cast<size_t>(character));
  int32_t column = 0;
  while (true) {
    const size_t tab = rest.find('\t');
    if (tab == std::string_view::npos) return column + static_cast<int32_t>(rest.size());
    column = ((column + static_cast<int32_t>(tab)) / tabSize + 1) * tabSize;
    rest.remove_prefix(tab + 1);
  }
}

/// A place by its column, which may lie behind the line's end, as a corner of a column selection can.
struct BlockCorner {
  int32_t line = 0;
  int32_t column = 0;
  friend constexpr bool operator==(const BlockCorner&, const BlockCorner&) = default;
};

/// The first character that is shown at `column` or after it; the line's length when there is none.
inline int32_t CharacterAtColumn(std::string_view line, int32_t column, int32_t tabSize) {
  int32_t at = 0;
  size_t i = 0;
  for (; i < line.size() && at < column; ++i) at = line[i] == '\t' ? (at / tabSize + 1) * tabSize : at + 1;
  return static_cast<int32_t>(i);
}

}  // namespace quill
