#include "base/NameSet.h"

#include <algorithm>
#include <cstring>

namespace quill {

uint64_t NameSet::Hash(std::string_view word) {
  uint64_t hash = 0;
  for (size_t at = 0; at < word.size(); at += kShortWord) {
    uint64_t halves[2] = {};
    std::memcpy(halves, word.data() + at, std::min(kShortWord, word.size() - at));
    hash = Mix(hash, halves[0], halves[1]);
  }
  return hash;
}

bool NameSet::Insert(std::string_view word) {
  const uint64_t hash = Hash(word);
  if (Contains(word, hash)) return false;
  if ((m_entries.size() + 1) * 2 > m_slots.size()) Rehash(m_slots.empty() ? 64 : m_slots.size() * 2);
  m_entries.push_back({std::string(word), hash});
  Place(m_entries.size() - 1);
  m_version = ++s_lastVersion;
  return true;
}

void NameSet::Clear() {
  m_entries.clear();
  m_slots.clear();
  m_version = ++s_lastVersion;
}

std::vector<std::string> NameSet::Words() const {
  std::vector<std::string> words;
  words.reserve(m_entries.size());
  for (const Entry& e : m_entries) words.push_back(e.text);
  return words;
}

bool NameSet::Contains(std::string_view word, uint64_t hash) const {
  if (m_slots.empty()) return false;
  const size_t mask = m_slots.size() - 1;
  for (size_t i = hash & mask; m_slots[i] != 0; i = (i + 1) & mask) {
    const Entry& e = m_entries[m_slots[i] - 1];
    if (e.hash == hash && e.text == word) return true;
  }
  return false;
}

void NameSet::Place(size_t number) {
  const size_t mask = m_slots.size() - 1;
  size_t i = m_entries[number].hash & mask;
  while (m_slots[i] != 0) i = (i + 1) & mask;
  m_slots[i] = static_cast<uint32_t>(number + 1);
}

void NameSet::Rehash(size_t slots) {
  m_slots.assign(slots, 0);
  for (size_t number = 0; number < m_entries.size(); ++number) Place(number);
}

}  // namespace quill
