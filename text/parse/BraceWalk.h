#pragma once
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "text/parse/CommentMarkers.h"

namespace quill {

/// What a walk backwards over a text for the open brace knows so far.
struct BraceWalkState {
  int32_t depth = 1;      ///< the brace that brings it to 0 is the match
  int32_t comments = 0;   ///< braces count while it is 0
  bool lineDone = false;  ///< a line comment's marker ended the walk of this line
};

/// What a stretch of text does to a walk that enters it with some number of comments.
struct BraceSum {
  int32_t entered = 0;  ///< BraceWalkState::comments at its end, where the walk comes in
  int32_t left = 0;     ///< and at its start
  int32_t depth = 0;    ///< change of the depth
  int32_t lowest = 0;   ///< the smallest change of the depth on the way, at most 0
  bool lineDone = false;
};

/// How the number of comments goes in a stretch of text when nothing is left out. A walk whose number never
/// gets to 0 there meets no brace that counts and no end of a line's walk.
struct CommentRange {
  int32_t total = 0;
  int32_t least = 0;  ///< at most 0
  int32_t most = 0;   ///< at least 0
  bool Avoids(int32_t comments) const { return comments > 0 ? comments + least > 0 : comments + most < 0; }
};

/// Goes backwards over the characters of a text, a line or a part of one at a time.
class BraceWalk {
 public:
  explicit BraceWalk(const CommentMarkers& markers);

  /// Visits the characters of `line` before index `end` back to index `first`; none when the line is done.
  /// Returns the index of the match, or -1 when the walk goes on with what is before.
  int32_t Visit(std::string_view line, size_t end, size_t first, BraceWalkState& state) const;
  /// The same without looking for a match: adds what the characters do.
  void Add(std::string_view line, size_t end, size_t first, BraceSum& sum, CommentRange& range) const;

 private:
  enum class Kind { kPlain, kCommentOpen, kCommentClose };
  /// What the character at the end of `before` is, which is interesting.
  Kind KindOf(std::string_view before) const;
  bool EndsLine(std::string_view before) const;
  void Note(char c) { m_interesting[static_cast<uint8_t>(c)] = true; }

  CommentMarkers m_markers;
  std::array<bool, 256> m_interesting{};
};

}  // namespace quill
