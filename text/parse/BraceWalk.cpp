#include "text/parse/BraceWalk.h"

#include "base/CodePage1252.h"

namespace quill {
namespace {

bool EndsWith(std::string_view text, std::string_view marker) {
  return !marker.empty() && text.size() >= marker.size() &&
         cp1252::EqualNoCase(text.substr(text.size() - marker.size()), marker);
}

/// What a character that counts adds to the depth.
int32_t DepthOf(char c) {
  if (c == '}' || c == ')' || c == ']') return 1;
  return c == '{' || c == '(' || c == '[' ? -1 : 0;
}

}  // namespace

BraceWalk::BraceWalk(const CommentMarkers& markers) : m_markers(markers) {
  for (const char c : std::string_view("{[(}])")) Note(c);
  for (const std::string_view marker : {markers.open, markers.close, markers.line}) {
    if (marker.empty()) continue;
    Note(cp1252::ToLower(marker.back()));
    Note(cp1252::ToUpper(marker.back()));
  }
}

BraceWalk::Kind BraceWalk::KindOf(std::string_view before) const {
  if (EndsWith(before, m_markers.open)) return Kind::kCommentOpen;
  return EndsWith(before, m_markers.close) ? Kind::kCommentClose : Kind::kPlain;
}

bool BraceWalk::EndsLine(std::string_view before) const {
  return EndsWith(before, m_markers.line);
}

int32_t BraceWalk::Visit(std::string_view line, size_t end, size_t first, BraceWalkState& state) const {
  if (state.lineDone) return -1;
  for (; end > first; --end) {
    const char c = line[end - 1];
    if (!m_interesting[static_cast<uint8_t>(c)]) continue;
    const std::string_view before = line.substr(0, end);
    const Kind kind = KindOf(before);
    if (kind == Kind::kCommentOpen) {
      --state.comments;
    } else if (kind == Kind::kCommentClose) {
      ++state.comments;
    } else if (state.comments == 0) {
      if (EndsLine(before)) {
        state.lineDone = true;
        return -1;
      }
      state.depth += DepthOf(c);
      if (state.depth == 0) return static_cast<int32_t>(end) - 1;
    }
  }
  return -1;
}

void BraceWalk::Add(std::string_view line, size_t end, size_t first, BraceSum& sum,
                    CommentRange& range) const {
  for (; end > first; --end) {
    const char c = line[end - 1];
    if (!m_interesting[static_cast<uint8_t>(c)]) continue;
    const std::string_view before = line.substr(0, end);
    const Kind kind = KindOf(before);
    if (kind != Kind::kPlain) {
      const int32_t change = kind == Kind::kCommentOpen ? -1 : 1;
      range.total += change;
      range.least = std::min(range.least, range.total);
      range.most = std::max(range.most, range.total);
      if (!sum.lineDone) sum.left += change;
    } else if (sum.left == 0 && !sum.lineDone) {
      sum.lineDone = EndsLine(before);
      if (!sum.lineDone) sum.depth += DepthOf(c);
      sum.lowest = std::min(sum.lowest, sum.depth);
    }
  }
}

}  // namespace quill
