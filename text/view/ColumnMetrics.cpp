#include "text/view/ColumnMetrics.h"

#include <algorithm>
#include <cstring>

namespace quill {

void ColumnMetrics::Set(const Advances& advances, int32_t tabSize) {
  m_advances = advances;
  m_tabWidth = std::max<int64_t>(1, static_cast<int64_t>(std::max(tabSize, 1)) * advances[' ']);
  m_widest = 1;
  m_uniform = true;
  for (size_t byte = 0; byte < advances.size(); ++byte) {
    if (byte == '\t') continue;
    m_uniform = m_uniform && advances[byte] == advances[' '];
    m_widest = std::max(m_widest, advances[byte]);
  }
}

int64_t ColumnMetrics::Walk(std::string_view text, int64_t x) const {
  if (!m_uniform) {
    for (const char c : text) x = AfterCharacter(c, x);
    return x;
  }
  const size_t indent = x == 0 ? std::min(text.find_first_not_of('\t'), text.size()) : 0;
  x += static_cast<int64_t>(indent) * m_tabWidth;
  text.remove_prefix(indent);
  while (true) {
    const size_t tab = text.find('\t');
    if (tab == std::string_view::npos) return x + static_cast<int64_t>(text.size()) * Cell();
    x = NextTab(x + static_cast<int64_t>(tab) * Cell());
    text.remove_prefix(tab + 1);
  }
}

int32_t ColumnMetrics::CountUpTo(std::string_view text, int64_t& x, int64_t target, bool nearest) const {
  int32_t count = 0;
  for (const char c : text) {
    const int64_t after = AfterCharacter(c, x);
    const int64_t reached = nearest ? x + (after - x + 1) / 2 : after;
    if (reached > target) break;
    x = after;
    ++count;
  }
  return count;
}

LongLinePlaces::Entry& LongLinePlaces::EntryOf(int32_t line) {
  auto found =
      std::find_if(m_entries.begin(), m_entries.end(), [line](const Entry& e) { return e.line == line; });
  if (found == m_entries.end()) {
    if (m_entries.size() == kMostEntries) m_entries.pop_back();
    found = m_entries.insert(m_entries.end(), Entry{line, {0}});
  }
  std::rotate(m_entries.begin(), found, found + 1);
  return m_entries.front();
}

void LongLinePlaces::Extend(Entry& entry, std::string_view text, size_t count) const {
  while (entry.places.size() < count) {
    const size_t from = (entry.places.size() - 1) * kStep;
    entry.places.push_back(m_metrics.Walk(text.substr(from, kStep), entry.places.back()));
  }
}

int64_t LongLinePlaces::XOf(int32_t line, std::string_view text, int32_t character) {
  const auto column = static_cast<size_t>(character);
  if (character < kStep) return m_metrics.Walk(text.substr(0, column), 0);
  Entry& entry = EntryOf(line);
  const size_t step = column / kStep;
  Extend(entry, text, step + 1);
  return m_metrics.Walk(text.substr(step * kStep, column % kStep), entry.places[step]);
}

int32_t LongLinePlaces::CharacterAt(int32_t line, std::string_view text, int64_t x, bool nearest) {
  int64_t place = 0;
  if (text.size() < kStep) return m_metrics.CountUpTo(text, place, x, nearest);
  Entry& entry = EntryOf(line);
  while (entry.places.back() <= x && entry.places.size() <= text.size() / kStep) {
    Extend(entry, text, entry.places.size() + 1);
  }
  const auto after = std::upper_bound(entry.places.begin(), entry.places.end(), x);
  const auto step = static_cast<size_t>(std::max<std::ptrdiff_t>(after - entry.places.begin() - 1, 0));
  place = entry.places[step];
  return static_cast<int32_t>(step * kStep) +
         m_metrics.CountUpTo(text.substr(step * kStep), place, x, nearest);
}

void LongLinePlaces::OnLineChanged(int32_t line, int32_t character) {
  for (Entry& entry : m_entries) {
    if (entry.line != line) continue;
    const size_t valid = static_cast<size_t>(character / kStep) + 1;
    if (entry.places.size() > valid) entry.places.resize(valid);
  }
}

}  // namespace quill
