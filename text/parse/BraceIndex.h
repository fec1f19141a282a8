#pragma once
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "text/buffer/BufferObserver.h"
#include "text/parse/BraceWalk.h"

namespace quill {

class CCrystalTextBuffer;

/// Finds the brace that is open before a place, however far it is. The search walks backwards over the
/// characters, line by line. Braces inside block comments do not count. A line comment's marker ends the walk
/// of its line, and what was met of that line up to then has counted. Markers are compared without regard to
/// case.
///
/// The text lies in groups of lines, a very long line in parts. A group that was walked once remembers what
/// it does to a walk, and later searches step over it, until an edit in it.
class BraceIndex {
 public:
  /// How finely the text is cut; tests cut finer.
  struct Sizes {
    int32_t lines = 512;            ///< of a group
    int32_t heavy = 1 << 16;        ///< characters of a group from which on it is cut further
    int32_t partCharacters = 8192;  ///< of a part of a line
  };
  struct Answer {
    std::optional<TextPosition> match;
    bool complete = true;  ///< else the next search for the same place gets further
  };

  explicit BraceIndex(const CCrystalTextBuffer& buffer) : BraceIndex(buffer, Sizes{}) {}
  BraceIndex(const CCrystalTextBuffer& buffer, const Sizes& sizes) : m_buffer(buffer), m_sizes(sizes) {}

  /// What the buffer tells; costs no walk. Call it once for every update.
  void OnTextChange(const TextChange* change, uint32_t hints, int32_t line);
  /// Walks through about `mostCharacters` of the groups that are not known yet, besides one group at each end
  /// of the search. Other markers than those of the last call forget what is known.
  Answer Find(TextPosition from, const CommentMarkers& markers, int64_t mostCharacters);

 private:
  static constexpr int32_t kWholeLines = -1;

  struct Group {
    int32_t lines = 0;                 ///< line ends; of the parts of a line only the last one has it
    int32_t characters = kWholeLines;  ///< of a part of a line
    int32_t sumCount = 0;
    bool hasRange = false;
    std::array<BraceSum, 2> sums{};  ///< a text is entered from code or from a comment
    CommentRange range{};

    bool IsPart() const { return characters != kWholeLines; }
    void Forget() {
      sumCount = 0;
      hasRange = false;
    }
  };
  /// A group and where it starts.
  struct Place {
    size_t group = 0;
    TextPosition start;
  };

  void CutIntoGroups();
  void LinesWent(int32_t lastLine, int32_t count);
  void LineChanged(const TextChange& change);
  /// The group with that place, found from `near` on when it does not lie behind.
  Place PlaceOf(TextPosition position, Place near) const;
  Place Before(Place place) const;
  /// Makes one group of the parts of the line at `m_near`.
  void JoinParts();
  /// Cuts a group that is too large; true when it was.
  bool Divide(const Place& place);
  void CutLine(int32_t length, std::vector<Group>& groups) const;
  int64_t CharactersOf(const Place& place) const;
  /// Walks from `end` back to the start of the group.
  std::optional<TextPosition> FindIn(const BraceWalk& walk, const Place& place, TextPosition end,
                                     BraceWalkState& state) const;
  const BraceSum* SumOf(const Group& group, int32_t comments) const;
  const BraceSum* AddSum(const BraceWalk& walk, const Place& place, int32_t comments);

  const CCrystalTextBuffer& m_buffer;
  Sizes m_sizes;
  std::array<std::string, 3> m_markerTexts;
  std::vector<Group> m_groups;  ///< none until the first search
  Place m_near;                 ///< where the last search began or the last edit was
};

}  // namespace quill
