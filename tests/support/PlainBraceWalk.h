#pragma once
#include <cctype>
#include <optional>
#include <string_view>

#include "text/buffer/CrystalTextBuffer.h"
#include "text/parse/CommentMarkers.h"

namespace quill {

/// The brace that is open before `from`, by the plainest walk: the slow twin of `BraceIndex`.
inline std::optional<TextPosition> PlainBraceWalk(const CCrystalTextBuffer& buffer, TextPosition from,
                                                  const CommentMarkers& markers) {
  int32_t depth = 1;
  int32_t comments = 0;
  const auto endsWith = [](std::string_view text, std::string_view marker) {
    if (marker.empty() || text.size() < marker.size()) return false;
    text.remove_prefix(text.size() - marker.size());
    for (size_t i = 0; i < text.size(); ++i) {
      if (std::tolower(static_cast<unsigned char>(text[i])) !=
          std::tolower(static_cast<unsigned char>(marker[i])))
        return false;
    }
    return true;
  };
  for (int32_t line = from.line; line >= 0; --line) {
    std::string_view before = buffer.Line(line);
    if (line == from.line) before = before.substr(0, static_cast<size_t>(from.character));
    for (; !before.empty(); before.remove_suffix(1)) {
      const char c = before.back();
      if (endsWith(before, markers.open)) {
        --comments;
      } else if (endsWith(before, markers.close)) {
        ++comments;
      } else if (comments == 0) {
        if (endsWith(before, markers.line)) break;
        if (c == '}' || c == ')' || c == ']') ++depth;
        if ((c == '{' || c == '(' || c == '[') && --depth == 0)
          return TextPosition{line, static_cast<int32_t>(before.size()) - 1};
      }
    }
  }
  return std::nullopt;
}

}  // namespace quill
