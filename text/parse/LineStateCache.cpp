#include "text/parse/LineStateCache.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "text/buffer/CrystalTextBuffer.h"
#include "text/parse/FoldSettler.h"
#include "text/parse/ScriptColouring.h"

namespace quill {

LineStateCache::LineStateCache(CCrystalTextBuffer& buffer, FoldSettler& folding)
    : m_buffer(buffer), m_folding(folding) {
  Reset();
}

void LineStateCache::Reset() {
  m_states.Clear();
  m_states.PushBack(0);
  m_firstDirty = m_dirtyEnd = 0;
  m_changed.reset();
  m_marksChanged = false;
}

void LineStateCache::OnTextChange(const TextChange* change, uint32_t hints, int32_t) {
  if ((hints & hint::kReset) != 0) Reset();
  if (change == nullptr) return;
  const int32_t first = change->range.start.line;
  const int32_t lines = change->range.end.line - first;
  MarkDirty(first);
  if (lines == 0) return;
  if (change->inserted) {
    InsertLines(first + 1, lines);
  } else {
    RemoveLines(first + 1, lines);
  }
}

void LineStateCache::MarkDirty(int32_t line) {
  if (line >= KnownLines()) return;
  m_states[static_cast<size_t>(line)] |= kDirty;
  if (m_firstDirty == m_dirtyEnd) {
    m_firstDirty = line;
    m_dirtyEnd = line + 1;
  } else {
    m_firstDirty = std::min(m_firstDirty, line);
    m_dirtyEnd = std::max(m_dirtyEnd, line + 1);
  }
}

void LineStateCache::InsertLines(int32_t at, int32_t count) {
  if (at >= KnownLines()) return;
  m_states.InsertFill(static_cast<size_t>(at), static_cast<size_t>(count), kDirty | kUnknown);
  // The line above was marked, so the dirty range is not empty and begins before `at`.
  m_dirtyEnd = std::max(m_dirtyEnd > at ? m_dirtyEnd + count : m_dirtyEnd, at + count);
}

void LineStateCache::RemoveLines(int32_t at, int32_t count) {
  const auto moved = [at, count](int32_t line) { return line <= at ? line : std::max(at, line - count); };
  const int32_t known = std::clamp(KnownLines() - at, 0, count);
  m_states.Erase(static_cast<size_t>(at), static_cast<size_t>(known));
  m_firstDirty = moved(m_firstDirty);
  m_dirtyEnd = moved(m_dirtyEnd);
}

uint32_t LineStateCache::StateAt(int32_t line) {
  if (line < 0 || line > m_buffer.LineCount()) throw std::invalid_argument("line index outside the buffer");
  if (!m_parsing) ParseBefore(line);
  return m_states[static_cast<size_t>(std::min(line, KnownLines() - 1))] & kStateBits;
}

void LineStateCache::ParseBefore(int32_t end) {
  m_parsing = true;
  RepairBefore(end);
  ExtendTo(end);
  if (const int32_t last = m_folding.EndOfRun(end); last != end) {
    end = last;
    RepairBefore(end);
    ExtendTo(end);
  }
  m_parsing = false;
  TellListeners();
  m_folding.Settle(end);
}

void LineStateCache::ParseThrough(int32_t line) {
  StateAt(std::min(line + 1, m_buffer.LineCount()));
}

void LineStateCache::ParseAll() {
  StateAt(m_buffer.LineCount());
}

void LineStateCache::RepairBefore(int32_t end) {
  const int32_t lastKnown = KnownLines() - 1;
  int32_t i = m_firstDirty;
  for (; i < m_dirtyEnd && i < end && i < lastKnown; ++i) {
    uint8_t& state = m_states[static_cast<size_t>(i)];
    if ((state & kDirty) == 0) continue;
    state &= static_cast<uint8_t>(~kDirty);
    const ParsedLine line = ParseLine(m_buffer.Line(i), state);
    const auto after = static_cast<uint8_t>(line.stateAfter);
    if (const uint32_t flags = m_buffer.LineFlags(i); (flags & line_flag::kBlockMarks) != line.marks) {
      if ((flags & line_flag::kHidden) != 0) m_folding.OnHiddenLine(i, line.marks);
      m_buffer.SetBlockMarks(i, line.marks);
      m_marksChanged = true;
    }
    uint8_t& next = m_states[static_cast<size_t>(i) + 1];
    if ((next & static_cast<uint8_t>(~kDirty)) == after) continue;
    if ((next & kUnknown) == 0) NoteChanged(i + 1);
    next = after | kDirty;
    m_dirtyEnd = std::max(m_dirtyEnd, i + 2);
  }
  if (i >= m_dirtyEnd || i >= lastKnown) {
    m_firstDirty = m_dirtyEnd = 0;
  } else {
    m_firstDirty = i;
  }
}

void LineStateCache::ExtendTo(int32_t end) {
  for (int32_t i = KnownLines() - 1; i < end; ++i) {
    // New marks are not worth a repaint: nobody has painted the line yet.
    const uint8_t state = m_states[static_cast<size_t>(i)] & kStateBits;
    const ParsedLine line = ParseLine(m_buffer.Line(i), state);
    const uint32_t flags = m_buffer.LineFlags(i);
    if ((flags & line_flag::kHidden) != 0) m_folding.OnHiddenLine(i, line.marks);
    if ((flags & line_flag::kBlockMarks) != line.marks) m_buffer.SetBlockMarks(i, line.marks);
    m_states.PushBack(static_cast<uint8_t>(line.stateAfter));
  }
}

void LineStateCache::NoteChanged(int32_t line) {
  if (line == m_buffer.LineCount()) return;
  if (!m_changed) {
    m_changed = LineRange{line, line};
  } else {
    m_changed->first = std::min(m_changed->first, line);
    m_changed->last = std::max(m_changed->last, line);
  }
}

void LineStateCache::TellListeners() {
  if (!m_changed && !m_marksChanged) return;
  const auto changed = std::exchange(m_changed, std::nullopt);
  const bool marksChanged = std::exchange(m_marksChanged, false);
  for (ParseListener* listener : m_listeners) listener->OnReparsed(changed, marksChanged);
}

}  // namespace quill
