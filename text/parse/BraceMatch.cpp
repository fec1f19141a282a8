#include "text/parse/BraceMatch.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "base/CodePage1252.h"
#include "text/buffer/CrystalTextBuffer.h"

namespace quill {
namespace {

bool EndsWith(std::string_view text, std::string_view marker) {
  return !marker.empty() && text.size() >= marker.size() &&
         cp1252::EqualNoCase(text.substr(text.size() - marker.size()), marker);
}

/// Goes backwards over the characters of a text, one line at a time.
class BackwardWalk {
 public:
  explicit BackwardWalk(const CommentMarkers& markers) : m_markers(markers) {
    for (const char c : std::string_view("{[(}])")) Note(c);
    for (const std::string_view marker : {markers.open, markers.close, markers.line}) {
      if (marker.empty()) continue;
      Note(cp1252::ToLower(marker.back()));
      Note(cp1252::ToUpper(marker.back()));
    }
  }

  /// Visits the characters of `text` from the last one back to index `first`. Returns the index of the
  /// match, or -1 when the walk goes on with the line above.
  int32_t Visit(std::string_view text, size_t first) {
    for (size_t end = text.size(); end > first; --end) {
      const char c = text[end - 1];
      if (!m_interesting[static_cast<uint8_t>(c)]) continue;
      const std::string_view before = text.substr(0, end);
      if (EndsWith(before, m_markers.open)) {
        --m_commentDepth;
      } else if (EndsWith(before, m_markers.close)) {
        ++m_commentDepth;
      } else if (m_commentDepth == 0) {
        if (EndsWith(before, m_markers.line)) return -1;
        if (c == '}' || c == ')' || c == ']') ++m_depth;
        if ((c == '{' || c == '(' || c == '[') && --m_depth == 0) return static_cast<int32_t>(end) - 1;
      }
    }
    return -1;
  }

 private:
  void Note(char c) { m_interesting[static_cast<uint8_t>(c)] = true; }

  const CommentMarkers& m_markers;
  std::array<bool, 256> m_interesting{};
  int32_t m_depth = 1;
  int32_t m_commentDepth = 0;
};

}  // namespace

std::optional<TextPosition> FindOpenBrace(const CCrystalTextBuffer& buffer, TextPosition from,
                                          const CommentMarkers& markers, int64_t mostCharacters) {
  buffer.CheckPosition(from);
  BackwardWalk walk(markers);
  std::string_view text = buffer.Line(from.line).substr(0, static_cast<size_t>(from.character));
  for (int32_t line = from.line;; text = buffer.Line(line)) {
    const auto length = static_cast<int64_t>(text.size());
    const int32_t column =
        walk.Visit(text, static_cast<size_t>(std::max<int64_t>(length - mostCharacters, 0)));
    if (column >= 0) return TextPosition{line, column};
    mostCharacters -= length + 1;
    if (line-- == 0 || mostCharacters <= 0) return std::nullopt;
  }
}

bool IsBrace(char c) {
  return c != '\0' && std::string_view("{}()[]<>").find(c) != std::string_view::npos;
}

}  // namespace quill
