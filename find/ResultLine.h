#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quill {

/// Appends the line that lists a hit: path, " (", line number, ")" and the text with a blank for each tab
/// and line feed. Returns the index at which the text begins.
size_t AppendResultLine(std::string& out, std::string_view path, int64_t line, std::string_view text);

struct ResultPlace {
  std::string path;
  int64_t line = 0;  ///< from 1; 0 when there is no number
};

/// What a result line opens: the path ends before the first " (", the number follows the first "(". A
/// path that itself holds one of them opens something else: the line does not say where the path ends.
/// Nothing without " (" and a ")".
std::optional<ResultPlace> ParseResultLine(std::string_view resultLine);

}  // namespace quill
