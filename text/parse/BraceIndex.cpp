#include "text/parse/BraceIndex.h"

#include <algorithm>

#include "text/buffer/CrystalTextBuffer.h"

namespace quill {

// Edits

void BraceIndex::OnTextChange(const TextChange* change, uint32_t hints, int32_t) {
  if ((hints & hint::kReset) != 0) m_groups.clear();
  if (change == nullptr || m_groups.empty()) return;
  const TextRange& range = change->range;
  const int32_t lines = range.end.line - range.start.line;
  m_near = PlaceOf(range.start, m_near);
  if (lines == 0) {
    LineChanged(*change);
    return;
  }
  JoinParts();
  if (change->inserted) {
    m_groups[m_near.group].lines += lines;
  } else {
    LinesWent(range.end.line, lines);
  }
  m_groups[m_near.group].Forget();
}

void BraceIndex::LineChanged(const TextChange& change) {
  Group& group = m_groups[m_near.group];
  group.Forget();
  if (!group.IsPart()) return;
  const int32_t count = change.range.end.character - change.range.start.character;
  const int32_t left = m_near.start.character + group.characters - change.range.end.character;
  if (change.inserted) {
    group.characters += count;
  } else if (left >= 0 && count < group.characters) {
    group.characters -= count;
  } else {
    JoinParts();
    m_groups[m_near.group].Forget();
    return;
  }
  // A marker may begin in this part and end in the next one, or behind it when it is short.
  size_t reach = 0;
  for (const std::string& marker : m_markerTexts) reach = std::max(reach, marker.size());
  for (auto part = m_groups.begin() + static_cast<std::ptrdiff_t>(m_near.group); part->lines == 0;) {
    (++part)->Forget();
    if (static_cast<size_t>(part->characters) >= reach) break;
    reach -= static_cast<size_t>(part->characters);
  }
}

void BraceIndex::LinesWent(int32_t lastLine, int32_t count) {
  const auto first = m_groups.begin() + static_cast<std::ptrdiff_t>(m_near.group);
  auto end = first + 1;
  int32_t lines = first->lines;
  for (; m_near.start.line + lines <= lastLine; ++end) lines += end->lines;
  first->lines = lines - count;
  m_groups.erase(first + 1, end);
}

void BraceIndex::JoinParts() {
  if (!m_groups[m_near.group].IsPart()) return;
  auto first = m_groups.begin() + static_cast<std::ptrdiff_t>(m_near.group);
  auto last = first;
  while (m_near.start.character > 0) m_near.start.character -= (--first)->characters;
  while (last->lines == 0) ++last;
  m_near.group = static_cast<size_t>(first - m_groups.begin());
  *first = Group{.lines = 1};
  m_groups.erase(first + 1, last + 1);
}

// Groups

void BraceIndex::CutIntoGroups() {
  m_near = {};
  const int32_t count = m_buffer.LineCount();
  m_groups.reserve(static_cast<size_t>(count / m_sizes.lines + 1));
  for (int32_t line = 0; line < count; line += m_sizes.lines)
    m_groups.push_back({.lines = std::min(m_sizes.lines, count - line)});
}

BraceIndex::Place BraceIndex::PlaceOf(TextPosition position, Place near) const {
  if (position < near.start) near = {};
  while (true) {
    const Group& group = m_groups[near.group];
    TextPosition end{near.start.line + group.lines, 0};
    if (group.lines == 0) end.character = near.start.character + group.characters;
    if (position < end || near.group + 1 == m_groups.size()) return near;
    near = {near.group + 1, end};
  }
}

BraceIndex::Place BraceIndex::Before(Place place) const {
  const Group& group = m_groups[--place.group];
  if (!group.IsPart()) {
    place.start.line -= group.lines;
  } else if (group.lines == 0) {
    place.start.character -= group.characters;
  } else {
    --place.start.line;
    place.start.character = m_buffer.LineLength(place.start.line) - group.characters;
  }
  return place;
}

int64_t BraceIndex::CharactersOf(const Place& place) const {
  const Group& group = m_groups[place.group];
  if (group.IsPart()) return group.characters;
  int64_t characters = 0;
  for (int32_t i = 0; i < group.lines; ++i) characters += m_buffer.LineLength(place.start.line + i);
  return characters;
}

bool BraceIndex::Divide(const Place& place) {
  const Group group = m_groups[place.group];
  std::vector<Group> pieces;
  if (group.IsPart()) {
    if (group.characters <= 2 * m_sizes.partCharacters) return false;
    CutLine(group.characters, pieces);
    pieces.back().lines = group.lines;
  } else {
    if (group.lines <= 2 * m_sizes.lines && CharactersOf(place) <= m_sizes.heavy) return false;
    int64_t characters = 0;
    for (int32_t i = 0; i < group.lines; ++i) {
      const int32_t length = m_buffer.LineLength(place.start.line + i);
      if (length > m_sizes.heavy) {
        CutLine(length, pieces);
      } else if (pieces.empty() || pieces.back().IsPart() || pieces.back().lines == m_sizes.lines ||
                 characters + length > m_sizes.heavy) {
        pieces.push_back({.lines = 1});
        characters = length;
      } else {
        ++pieces.back().lines;
        characters += length;
      }
    }
  }
  if (m_near.group > place.group) m_near.group += pieces.size() - 1;
  const auto at = m_groups.begin() + static_cast<std::ptrdiff_t>(place.group);
  *at = pieces.front();
  m_groups.insert(at + 1, pieces.begin() + 1, pieces.end());
  return true;
}

void BraceIndex::CutLine(int32_t length, std::vector<Group>& groups) const {
  for (int32_t at = 0; at < length; at += m_sizes.partCharacters)
    groups.push_back({.characters = std::min(m_sizes.partCharacters, length - at)});
  groups.back().lines = 1;
}

// Searching

std::optional<TextPosition> BraceIndex::FindIn(const BraceWalk& walk, const Place& place, TextPosition end,
                                               BraceWalkState& state) const {
  TextPosition at = end;
  if (at.character == 0 && at.line > place.start.line) at = {at.line - 1, m_buffer.LineLength(at.line - 1)};
  for (;; at = {at.line - 1, m_buffer.LineLength(at.line - 1)}) {
    const bool first = at.line == place.start.line;
    const auto start = static_cast<size_t>(first ? place.start.character : 0);
    const int32_t found = walk.Visit(m_buffer.Line(at.line), static_cast<size_t>(at.character), start, state);
    if (found >= 0) return TextPosition{at.line, found};
    if (start == 0) state.lineDone = false;
    if (first) return std::nullopt;
  }
}

const BraceSum* BraceIndex::SumOf(const Group& group, int32_t comments) const {
  for (int32_t i = 0; i < group.sumCount; ++i) {
    if (group.sums[static_cast<size_t>(i)].entered == comments) return &group.sums[static_cast<size_t>(i)];
  }
  return nullptr;
}

const BraceSum* BraceIndex::AddSum(const BraceWalk& walk, const Place& place, int32_t comments) {
  Group& group = m_groups[place.group];
  BraceSum sum{.entered = comments, .left = comments};
  CommentRange range;
  if (group.IsPart()) {
    const auto first = static_cast<size_t>(place.start.character);
    walk.Add(m_buffer.Line(place.start.line), first + static_cast<size_t>(group.characters), first, sum,
             range);
    if (first == 0) sum.lineDone = false;
  }
  for (int32_t i = group.IsPart() ? 0 : group.lines; i-- > 0;) {
    const std::string_view line = m_buffer.Line(place.start.line + i);
    walk.Add(line, line.size(), 0, sum, range);
    sum.lineDone = false;
  }
  group.range = range;
  group.hasRange = true;
  if (group.sumCount == 2) group.sums[0] = group.sums[1];
  group.sumCount = std::min(group.sumCount + 1, 2);
  BraceSum& kept = group.sums[static_cast<size_t>(group.sumCount) - 1];
  kept = sum;
  return &kept;
}

BraceIndex::Answer BraceIndex::Find(TextPosition from, const CommentMarkers& markers,
                                    int64_t mostCharacters) {
  m_buffer.CheckPosition(from);
  if (m_markerTexts[0] != markers.open || m_markerTexts[1] != markers.close ||
      m_markerTexts[2] != markers.line) {
    m_markerTexts = {std::string(markers.open), std::string(markers.close), std::string(markers.line)};
    m_groups.clear();
  }
  if (m_groups.empty()) CutIntoGroups();
  m_near = PlaceOf(from, m_near);
  if (Divide(m_near)) m_near = PlaceOf(from, m_near);
  const BraceWalk walk(markers);
  BraceWalkState state;
  if (const auto match = FindIn(walk, m_near, from, state)) return {match};
  Place place = m_near;
  while (place.group > 0) {
    const TextPosition end = place.start;
    place = Before(place);
    if (state.lineDone) {
      state.lineDone = place.start.character != 0;
      continue;
    }
    const Group& group = m_groups[place.group];
    if (group.hasRange && group.range.Avoids(state.comments)) {
      state.comments += group.range.total;
      continue;
    }
    const BraceSum* sum = SumOf(group, state.comments);
    if (sum == nullptr) {
      if (mostCharacters <= 0) return {std::nullopt, false};
      if (const size_t groups = m_groups.size(); Divide(place)) {
        place = {place.group + 1 + m_groups.size() - groups, end};
        continue;
      }
      mostCharacters -= CharactersOf(place);
      sum = AddSum(walk, place, state.comments);
    }
    if (state.depth + sum->lowest <= 0) return {FindIn(walk, place, end, state)};
    state.depth += sum->depth;
    state.comments = sum->left;
    state.lineDone = sum->lineDone;
  }
  return {};
}

}  // namespace quill
