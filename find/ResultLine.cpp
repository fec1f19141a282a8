#include "find/ResultLine.h"

#include <algorithm>
#include <charconv>

namespace quill {

size_t AppendResultLine(std::string& out, std::string_view path, int64_t line, std::string_view text) {
  out.append(path).append(" (").append(std::to_string(line)).append(")");
  const size_t textStart = out.size();
  out.append(text);
  std::replace_if(
      out.begin() + static_cast<std::ptrdiff_t>(textStart), out.end(),
      [](char c) { return c == '\t' || c == '\n'; }, ' ');
  return textStart;
}

std::optional<ResultPlace> ParseResultLine(std::string_view resultLine) {
  const size_t pathEnd = resultLine.find(" (");
  const size_t open = resultLine.find('(');
  const size_t close = resultLine.find(')', std::min(open, resultLine.size()));
  if (pathEnd == std::string_view::npos || close == std::string_view::npos) return std::nullopt;
  ResultPlace place{std::string(resultLine.substr(0, pathEnd)), 0};
  std::from_chars(resultLine.data() + open + 1, resultLine.data() + close, place.line);
  return place;
}

}  // namespace quill
