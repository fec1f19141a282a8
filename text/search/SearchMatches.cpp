#include "text/search/SearchMatches.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "res/Strings.h"
#include "text/buffer/CrystalTextBuffer.h"

namespace quill {

std::vector<TextRange> MatchesInLines(const CCrystalTextBuffer& buffer, const TextSearch& search,
                                      int32_t first, int32_t last) {
  std::vector<TextRange> matches;
  last = std::min(last, buffer.LineCount() - 1);
  for (int32_t line = std::max(first, 0); line <= last; ++line) {
    const std::string_view text = buffer.Line(line);
    for (int32_t at = search.NextOccurrence(text, 0); at >= 0;) {
      const int32_t end = at + search.Length();
      matches.push_back({{line, at}, {line, end}});
      at = search.NextOccurrence(text, end);
    }
  }
  return matches;
}

bool IsMatch(const CCrystalTextBuffer& buffer, const TextSearch& search, TextRange selection) {
  const TextPosition& start = selection.start;
  return start.line >= 0 && start.line == selection.end.line && start.line < buffer.LineCount() &&
         selection.end.character - start.character == search.Length() &&
         search.IsFoundAt(buffer.Line(start.line), start.character);
}

void MatchCounter::Start(const TextSearch& search) {
  Stop();
  if (!search.IsEmpty()) m_search = search;
}

void MatchCounter::Stop() {
  m_search.reset();
  m_blocks.clear();
  m_stale.clear();
  m_nextLine = 0;
  m_count = 0;
}

void MatchCounter::OnTextChanged(uint32_t hints, int32_t line) {
  if ((hints & hint::kFlagsOnly) != 0) return;
  const size_t block = line < 0 ? 0 : static_cast<size_t>(line / kLinesPerBlock);
  if (block >= m_blocks.size()) return;
  if ((hints & hint::kSingleLine) != 0) {
    if (!std::exchange(m_blocks[block].stale, true)) m_stale.push_back(block);
    return;
  }
  for (size_t i = block; i < m_blocks.size(); ++i) m_count -= m_blocks[i].count;
  m_blocks.resize(block);
  std::erase_if(m_stale, [block](size_t stale) { return stale >= block; });
  m_nextLine = static_cast<int32_t>(block) * kLinesPerBlock;
}

bool MatchCounter::Advance(int32_t lines) {
  while (!IsComplete()) {
    if (!m_stale.empty()) {
      RecountBlock(m_stale.back());
      m_stale.pop_back();
    } else {
      m_blocks.emplace_back();
      RecountBlock(m_blocks.size() - 1);
      m_nextLine = std::min(m_nextLine + kLinesPerBlock, LineCount());
    }
    lines -= kLinesPerBlock;
    if (lines <= 0) break;
  }
  return IsComplete();
}

int64_t MatchCounter::OrdinalOf(TextRange selection) const {
  const int32_t line = selection.start.line;
  if (!IsActive() || !m_stale.empty() || line >= m_nextLine || !IsMatch(*m_buffer, *m_search, selection)) {
    return 0;
  }
  const std::string_view text = m_buffer->Line(line);
  int32_t at = m_search->NextOccurrence(text, 0);
  while (at >= 0 && at + m_search->Length() <= selection.start.character) {
    at = m_search->NextOccurrence(text, at + m_search->Length());
  }
  if (at < 0) return 0;
  const int32_t block = line / kLinesPerBlock;
  int64_t before = 0;
  for (int32_t i = 0; i < block; ++i) before += m_blocks[static_cast<size_t>(i)].count;
  return before + CountInLines(block * kLinesPerBlock, line - 1) + CountInLine(line, at) + 1;
}

std::string MatchCounter::StatusText(TextRange selection) const {
  if (!IsActive()) return {};
  const int64_t ordinal = OrdinalOf(selection);
  std::string count = std::to_string(m_count);
  if (!IsComplete()) count += '+';
  return ordinal > 0 ? FormatText(StringId::kMatchCount, {std::to_string(ordinal), count}) : count;
}

int32_t MatchCounter::LineCount() const {
  return m_buffer->LineCount();
}

int64_t MatchCounter::CountInLine(int32_t line, int32_t end) const {
  const std::string_view text = m_buffer->Line(line);
  int64_t count = 0;
  int32_t at = m_search->NextOccurrence(text, 0);
  for (; at >= 0 && at < end; at = m_search->NextOccurrence(text, at + m_search->Length())) ++count;
  return count;
}

int64_t MatchCounter::CountInLines(int32_t first, int32_t last) const {
  int64_t count = 0;
  for (int32_t line = first; line <= last; ++line) {
    count += CountInLine(line, std::numeric_limits<int32_t>::max());
  }
  return count;
}

void MatchCounter::RecountBlock(size_t block) {
  const auto first = static_cast<int32_t>(block) * kLinesPerBlock;
  const int64_t count = CountInLines(first, std::min(first + kLinesPerBlock, LineCount()) - 1);
  m_count += count - m_blocks[block].count;
  m_blocks[block] = {static_cast<int32_t>(count), false};
}

}  // namespace quill
