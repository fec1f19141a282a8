#include "intel/outline/LiveOutline.h"

#include <algorithm>

#include "text/buffer/CrystalTextBuffer.h"

namespace quill {
namespace {

/// Lines of a group when it is read first: there is room for some more.
constexpr int32_t kUsualLines = OutlineGroup::kMostLines * 3 / 4;
/// A group that became smaller takes in the next one if both are not more than the usual.
constexpr int32_t kFewLines = OutlineGroup::kMostLines / 4;

}  // namespace

LiveOutline::LiveOutline(const CCrystalTextBuffer& buffer, std::string_view onlyElements)
    : m_buffer(buffer), m_scanner(onlyElements) {
  Restart();
}

void LiveOutline::Restart() {
  m_rows.clear();
  m_freeSlots.clear();
  m_slots = 0;
  m_place = {};
  m_firstUnread = 0;
  m_lines = m_unread = 0;
  if (m_buffer.LineCount() > 0) Insert(0, m_buffer.LineCount());
}

LiveOutline::Place LiveOutline::PlaceOf(int32_t line) {
  if (m_place.row >= m_rows.size()) m_place = {};
  while (line < m_place.line) m_place.line -= m_rows[--m_place.row].lines;
  while (line >= m_place.line + m_rows[m_place.row].lines) m_place.line += m_rows[m_place.row++].lines;
  return m_place;
}

void LiveOutline::MarkUnread(size_t row) {
  m_firstUnread = std::min(m_firstUnread, row);
  if (!m_rows[row].isRead) return;
  m_rows[row].isRead = false;
  m_unread += m_rows[row].lines;
}

void LiveOutline::Insert(size_t row, int32_t lines) {
  uint32_t slot = m_slots;
  if (m_freeSlots.empty()) {
    ++m_slots;
  } else {
    slot = m_freeSlots.back();
    m_freeSlots.pop_back();
  }
  m_rows.insert(m_rows.begin() + static_cast<ptrdiff_t>(row), Row{nullptr, lines, slot, false});
  m_lines += lines;
  m_unread += lines;
  m_firstUnread = std::min(m_firstUnread, row);
}

void LiveOutline::Remove(size_t first, size_t last) {
  for (size_t row = first; row < last; ++row) {
    m_freeSlots.push_back(m_rows[row].slot);
    m_lines -= m_rows[row].lines;
    if (!m_rows[row].isRead) m_unread -= m_rows[row].lines;
  }
  m_rows.erase(m_rows.begin() + static_cast<ptrdiff_t>(first), m_rows.begin() + static_cast<ptrdiff_t>(last));
}

void LiveOutline::OnTextChange(const TextChange& change) {
  const auto [start, end] = change.range;
  const int32_t lines = end.line - start.line;
  const int32_t before = m_buffer.LineCount() - (change.inserted ? lines : -lines);
  if (m_lines != before || m_rows.empty()) return Restart();  // it was not told of something
  const Place place = PlaceOf(start.line);
  MarkUnread(place.row);
  if (change.inserted) {
    m_rows[place.row].lines += lines;
    m_lines += lines;
    m_unread += lines;
    return;
  }
  // The lines behind the first one go, and what is left of the last one joins it.
  int32_t left = lines;
  const auto take = [this, &left](size_t row, int32_t most) {
    const int32_t taken = std::min(left, most);
    MarkUnread(row);
    m_rows[row].lines -= taken;
    m_lines -= taken;
    m_unread -= taken;
    left -= taken;
  };
  take(place.row, m_rows[place.row].lines - (start.line - place.line) - 1);
  size_t next = place.row + 1;
  while (left > 0 && m_rows[next].lines <= left) left -= m_rows[next++].lines;
  Remove(place.row + 1, next);
  if (left > 0) take(place.row + 1, left);
}

void LiveOutline::Divide(size_t row) {
  const int32_t lines = m_rows[row].lines;
  if (lines > OutlineGroup::kMostLines) {
    const int32_t here = lines < 2 * kUsualLines ? lines / 2 : kUsualLines;
    m_rows[row].lines = here;
    m_lines -= lines - here;
    m_unread -= lines - here;
    Insert(row + 1, lines - here);
  } else if (lines < kFewLines && row + 1 < m_rows.size() && lines + m_rows[row + 1].lines <= kUsualLines) {
    const int32_t more = m_rows[row + 1].lines;
    Remove(row + 1, row + 2);
    m_rows[row].lines += more;
    m_lines += more;
    m_unread += more;
  }
}

void LiveOutline::ReadSome() {
  if (m_lines != m_buffer.LineCount()) Restart();
  while (m_firstUnread < m_rows.size() && m_rows[m_firstUnread].isRead) ++m_firstUnread;
  if (m_firstUnread == m_rows.size()) return;
  const size_t row = m_firstUnread;
  // Before dividing it, which would leave the last place behind it wrong.
  while (m_place.row > row) m_place.line -= m_rows[--m_place.row].lines;
  while (m_place.row < row) m_place.line += m_rows[m_place.row++].lines;
  const int32_t line = m_place.line;
  Divide(row);
  for (int32_t i = 0; i < m_rows[row].lines; ++i) m_scanner.ScanLine(m_buffer.Line(line + i), i);
  auto group = m_scanner.Finish();
  Row& read = m_rows[row];
  // The one that is there stays when it is the same: nothing has to be sorted for it then.
  if (read.group == nullptr || *read.group != *group) read.group = std::move(group);
  read.isRead = true;
  m_unread -= read.lines;
}

OutlineParts LiveOutline::Parts() const {
  OutlineParts parts;
  parts.bySlot.resize(m_slots);
  parts.sequence.reserve(m_rows.size());
  int32_t line = 0;
  for (const Row& row : m_rows) {
    if (row.group != nullptr) {
      parts.bySlot[row.slot] = {row.group, line, 0, static_cast<uint32_t>(parts.sequence.size())};
      parts.sequence.push_back(row.slot);
    }
    line += row.lines;
  }
  return parts;
}

}  // namespace quill
