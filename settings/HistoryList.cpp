#include "settings/HistoryList.h"

#include <utility>

namespace quill {

namespace {

/// Entries with an index from here on are never looked at.
constexpr size_t kEndOfStaleIndices = 1000;

/// Without white space of ASCII at both ends: a byte such as 0xA0 may be part of a file name.
std::string_view Trimmed(std::string_view text) {
  constexpr std::string_view kSpace = " \t\n\v\f\r";
  const size_t begin = text.find_first_not_of(kSpace);
  if (begin == std::string_view::npos) return {};
  return text.substr(begin, text.find_last_not_of(kSpace) + 1 - begin);
}

}  // namespace

HistoryList::HistoryList(AppProfile profile, std::string section, std::string prefix)
    : m_profile(profile), m_section(std::move(section)), m_prefix(std::move(prefix)) {}

void HistoryList::Load() {
  m_entries.clear();
  while (m_entries.size() < kMaxLoaded) {
    std::string entry = m_profile.ReadText(m_section, NameOf(m_entries.size()));
    if (entry.empty()) break;
    m_entries.push_back(std::move(entry));
  }
  m_lastText = m_profile.ReadText(m_section, LastName());
}

void HistoryList::MoveToTop(std::string_view text) {
  if (text.empty()) return;
  std::string entry(text);
  std::erase(m_entries, entry);
  m_entries.insert(m_entries.begin(), std::move(entry));
  if (m_entries.size() > kMaxStored) m_entries.resize(kMaxStored);
}

bool HistoryList::Save(std::string_view currentText) {
  m_lastText = currentText;
  MoveToTop(Trimmed(currentText));

  SettingsTransaction transaction(m_profile.Store());
  for (size_t i = 0; i < m_entries.size(); ++i) m_profile.WriteText(m_section, NameOf(i), m_entries[i]);
  for (size_t i = m_entries.size(); i < kEndOfStaleIndices; ++i) {
    if (!m_profile.DeleteValue(m_section, NameOf(i))) break;
  }
  m_profile.WriteText(m_section, LastName(), m_lastText);
  return transaction.Commit();
}

}  // namespace quill
