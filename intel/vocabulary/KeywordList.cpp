#include "intel/vocabulary/KeywordList.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "base/CodePage1252.h"
#include "intel/vocabulary/KeywordFile.h"

namespace quill {

DatabaseResult KeywordList::Load(const std::string& path) {
  m_entries.clear();
  DatabaseResult result =
      ReadKeywordFile(path, [this](std::string entry) { m_entries.push_back(std::move(entry)); });
  std::stable_sort(m_entries.begin(), m_entries.end(), [](const std::string& a, const std::string& b) {
    return cp1252::ToLower(a) < cp1252::ToLower(b);
  });
  return result;
}

IoResult KeywordList::Save(const std::string& path) const {
  return WriteKeywordFile(path, m_entries);
}

std::optional<size_t> KeywordList::Add(const std::string& text) {
  const bool present = std::any_of(m_entries.begin(), m_entries.end(), [&](const std::string& entry) {
    return cp1252::EqualNoCase(entry, text);
  });
  if (present) return std::nullopt;
  // Not a binary search: after Edit the list need not be in order.
  const std::string key = cp1252::ToLower(text);
  const auto after = std::find_if(m_entries.begin(), m_entries.end(),
                                  [&](const std::string& entry) { return cp1252::ToLower(entry) > key; });
  const std::ptrdiff_t position = after - m_entries.begin();
  m_entries.insert(after, text);
  return static_cast<size_t>(position);
}

size_t KeywordList::Edit(std::optional<size_t> selected, const std::string& text) {
  CheckSelection(selected);
  if (selected) {
    m_entries[*selected] = text;
    return *selected;
  }
  m_entries.push_back(text);
  return m_entries.size() - 1;
}

void KeywordList::Remove(std::optional<size_t> selected) {
  CheckSelection(selected);
  if (selected) m_entries.erase(m_entries.begin() + static_cast<std::ptrdiff_t>(*selected));
}

void KeywordList::CheckSelection(std::optional<size_t> selected) const {
  if (selected && *selected >= m_entries.size()) throw std::invalid_argument("no such keyword entry");
}

}  // namespace quill
