#include "base/NameSet.h"

namespace quill {

bool NameSet::Insert(std::string_view word) {
  const uint32_t hash = Hash(word);
  if (Contains(word, hash)) return false;
  if ((m_entries.size() + 1) * 2 > m_slots.size()) Rehash(m_slots.empty() ? 64 : m_slots.size() * 2);
  m_entries.push_back({std::string(word), hash});
  const size_t mask = m_slots.size() - 1;
  size_t i = hash & mask;
  while (m_slots[i] != 0) i = (i + 1) & mask;
  m_slots[i] = static_cast<uint32_t>(m_entries.size());
  return true;
}

void NameSet::Clear() {
  m_entries.clear();
  m_slots.clear();
}

std::vector<std::string> NameSet::Words() const {
  std::vector<std::string> words;
  words.reserve(m_entries.size());
  for (const Entry& e : m_entries) words.push_back(e.text);
  return words;
}

void NameSet::Rehash(size_t slots) {
  m_slots.assign(slots, 0);
  const size_t mask = slots - 1;
  for (size_t n = 0; n < m_entries.size(); ++n) {
    size_t i = m_entries[n].hash & mask;
    while (m_slots[i] != 0) i = (i + 1) & mask;
    m_slots[i] = static_cast<uint32_t>(n + 1);
  }
}

}  // namespace quill
