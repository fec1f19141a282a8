#include "text/search/Search.h"

#include <algorithm>

#include "base/CodePage1252.h"
#include "text/buffer/CrystalTextBuffer.h"

namespace quill {
namespace {

bool IsInWord(char c) {
  return cp1252::IsAsciiAlnum(c) || c == '_';
}

}  // namespace

TextSearch::TextSearch(std::string_view what, uint32_t flags)
    : m_what(what), m_flags(flags), m_searcher(what, (flags & search_flag::kMatchCase) != 0) {}

int32_t TextSearch::FindInLine(std::string_view text) const {
  if ((m_flags & search_flag::kWholeWord) != 0) return FindWordInLine(text);
  return static_cast<int32_t>(m_searcher.Find(text));  // none becomes -1
}

int32_t TextSearch::FindWordInLine(std::string_view text) const {
  size_t offset = 0;
  while (true) {
    const size_t distance = m_searcher.Find(text);
    if (distance == ByteSearcher::kNone) return -1;
    const size_t end = distance + m_what.size();
    if (distance > 0 && IsInWord(text[distance - 1])) {
      offset += distance;  // one less than the text is shortened by: see the header
    } else if (end < text.size() && IsInWord(text[end])) {
      offset += distance + 1;
    } else {
      return static_cast<int32_t>(offset + distance);
    }
    text.remove_prefix(distance + 1);
  }
}

int32_t TextSearch::FindInBufferLine(const CCrystalTextBuffer& buffer, int32_t line, int32_t from) const {
  const std::string_view text = buffer.Line(line);
  const auto base = static_cast<size_t>(from);
  if ((m_flags & search_flag::kWholeWord) == 0) {
    return static_cast<int32_t>(m_searcher.FindPadded(text.data(), text.size(), base));
  }
  const int32_t column = base < text.size() ? FindWordInLine(text.substr(base)) : -1;
  return column < 0 ? -1 : from + column;
}

int32_t TextSearch::NextOccurrence(std::string_view text, int32_t from) const {
  const bool wholeWord = (m_flags & search_flag::kWholeWord) != 0;
  for (size_t base = static_cast<size_t>(from); base < text.size();) {
    const size_t distance = m_searcher.Find(text.substr(base));
    if (distance == ByteSearcher::kNone) break;
    const size_t at = base + distance;
    const size_t end = at + m_what.size();
    const bool inWord = (at > 0 && IsInWord(text[at - 1])) || (end < text.size() && IsInWord(text[end]));
    if (!wholeWord || !inWord) return static_cast<int32_t>(at);
    base = at + 1;
  }
  return -1;
}

bool TextSearch::IsFoundAt(std::string_view text, int32_t column) const {
  const auto at = static_cast<size_t>(column);
  if (IsEmpty() || column < 0 || at >= text.size()) return false;
  if ((m_flags & search_flag::kWholeWord) == 0) {
    return m_searcher.Find(text.substr(at, m_what.size())) == 0;
  }
  size_t passedOver = 0;  // since the last whole word; each shifts the reported column by one
  for (size_t base = 0; base < text.size();) {
    const size_t distance = m_searcher.Find(text.substr(base));
    if (distance == ByteSearcher::kNone) break;
    const size_t found = base + distance;
    const size_t end = found + m_what.size();
    if (found > 0 && IsInWord(text[found - 1])) {
      ++passedOver;
    } else if (end >= text.size() || !IsInWord(text[end])) {
      if (found >= at) return found - at <= passedOver;
      passedOver = 0;
    }
    base = found + 1;
  }
  return false;
}

bool TextSearch::FindDownwards(const CCrystalTextBuffer& buffer, TextPosition start, TextPosition end,
                               TextPosition& found) const {
  const int32_t last = std::min(end.line, buffer.LineCount() - 1);
  for (int32_t line = start.line; line <= last; ++line) {
    const int32_t from = line == start.line ? start.character : 0;
    const int32_t column = FindInBufferLine(buffer, line, from);
    if (column < 0 || (line == end.line && column >= end.character)) continue;
    found = {line, column};
    return true;
  }
  return false;
}

bool TextSearch::FindUpwards(const CCrystalTextBuffer& buffer, TextPosition start,
                             TextPosition& found) const {
  for (int32_t line = std::min(start.line, buffer.LineCount() - 1); line >= 0; --line) {
    const int32_t from = line == start.line ? start.character : 0;
    const int32_t column = FindInBufferLine(buffer, line, from);
    if (column < 0) continue;
    found = {line, column};
    return true;
  }
  return false;
}

bool TextSearch::FindInRange(const CCrystalTextBuffer& buffer, TextPosition start, TextRange block, bool wrap,
                             TextPosition& found) const {
  if (block.IsEmpty() || IsEmpty()) return false;
  const TextPosition textStart{};
  block.start = std::max(block.start, textStart);
  start = std::max(start, block.start);
  start.character = std::max(start.character, 0);
  if ((m_flags & search_flag::kUpwards) != 0) {
    return FindUpwards(buffer, start, found) ||
           (wrap && FindUpwards(buffer, {buffer.LineCount() - 1, 0}, found));
  }
  return FindDownwards(buffer, start, block.end, found) ||
         (wrap && FindDownwards(buffer, block.start, block.end, found));
}

bool TextSearch::FindInText(const CCrystalTextBuffer& buffer, TextPosition start, bool wrap,
                            TextPosition& found) const {
  return FindInRange(buffer, start, {{}, buffer.EndOfText()}, wrap, found);
}

int32_t TextSearch::LastOccurrence(std::string_view text, int32_t before) const {
  int32_t last = -1;
  for (int32_t at = NextOccurrence(text, 0); at >= 0 && at + Length() <= before;) {
    last = at;
    at = NextOccurrence(text, at + Length());
  }
  return last;
}

bool TextSearch::FindPrevious(const CCrystalTextBuffer& buffer, TextPosition before, bool wrap,
                              TextPosition& found) const {
  if (IsEmpty()) return false;
  before = std::min(before, buffer.EndOfText());
  for (int32_t line = before.line; line >= 0; --line) {
    const std::string_view text = buffer.Line(line);
    const int32_t end = line == before.line ? before.character : static_cast<int32_t>(text.size());
    const int32_t column = LastOccurrence(text, end);
    if (column < 0) continue;
    found = {line, column};
    return true;
  }
  return wrap && FindPrevious(buffer, buffer.EndOfText(), false, found);
}

int32_t FindInLine(std::string_view text, std::string_view what, bool wholeWord) {
  return TextSearch(what, search_flag::kMatchCase | (wholeWord ? search_flag::kWholeWord : 0))
      .FindInLine(text);
}

bool FindInRange(const CCrystalTextBuffer& buffer, std::string_view what, TextPosition start,
                 TextPosition blockBegin, TextPosition blockEnd, uint32_t flags, bool wrap,
                 TextPosition& outFound) {
  return TextSearch(what, flags).FindInRange(buffer, start, {blockBegin, blockEnd}, wrap, outFound);
}

bool FindInText(const CCrystalTextBuffer& buffer, std::string_view what, TextPosition start, uint32_t flags,
                bool wrap, TextPosition& outFound) {
  return TextSearch(what, flags).FindInText(buffer, start, wrap, outFound);
}

}  // namespace quill
