#pragma once
#include <cstdint>
#include <initializer_list>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace quill {

/// Number of a text of the string table. Rows live in StringTable.inc; the numbers are stable.
enum class StringId : uint16_t {
#define QUILL_STRING(name, number, text) name = number,  // NOLINT(bugprone-macro-parentheses)
#include "res/StringTable.inc"
#undef QUILL_STRING
};

/// One row of the string table.
struct StringRow {
  StringId id;
  std::string_view name;  ///< the enumerator's name
  std::string_view text;  ///< ASCII, zero-terminated behind its last character
};

/// All rows, ordered by number.
std::span<const StringRow> StringTable();

/// The text of a row.
std::string_view Text(StringId id);

/// The text of the row with that number; nothing when the table has none.
std::optional<std::string_view> TextByNumber(int number);

/// The text with its placeholders replaced, in order, by `args`: "%s", "%d" and "%.2f" each take the
/// next argument as it stands (the caller formats numbers), "%%" gives "%". Throws
/// std::invalid_argument when the counts differ.
std::string FormatText(StringId id, std::span<const std::string_view> args);
inline std::string FormatText(StringId id, std::initializer_list<std::string_view> args) {
  return FormatText(id, std::span(args.begin(), args.size()));
}

/// The name of an undo action code (0 to 10); nothing for any other code.
std::optional<std::string_view> UndoActionText(int action);

}  // namespace quill
