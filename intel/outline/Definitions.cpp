#include "intel/outline/Definitions.h"

#include <algorithm>
#include <stdexcept>

#include "base/CodePage1252.h"

namespace quill {

Definitions::Definitions(const Outline& outline) {
  for (size_t r = 0; r < kOutlineRootCount; ++r) {
    const auto root = static_cast<OutlineRoot>(r);
    if (root == OutlineRoot::kPaths) continue;
    for (const OutlineItem& item : outline.roots[r]) {
      const std::string_view word = DefinedWord(item.text);
      if (word.empty()) continue;
      const auto offset = static_cast<int32_t>(word.data() - item.text.data());
      const TextPosition at{item.at.line, item.at.character + offset};
      m_places[cp1252::ToLower(word)].push_back({item.file, at, root, item.indented});
    }
  }
  for (auto& [name, places] : m_places) {
    std::stable_sort(places.begin(), places.end(), [](const DefinitionPlace& a, const DefinitionPlace& b) {
      return a.file != b.file ? a.file < b.file : a.at < b.at;
    });
  }
}

const DefinitionPlace* Definitions::Find(std::string_view name, int32_t line, int32_t functionStart) const {
  const auto found = m_places.find(cp1252::ToLower(name));
  if (found == m_places.end()) return nullptr;
  const DefinitionPlace* local = nullptr;
  const DefinitionPlace* global = nullptr;
  for (const DefinitionPlace& place : found->second) {
    if (place.file == 0 && functionStart >= 0 && place.at.line >= functionStart && place.at.line <= line) {
      local = &place;
    }
    if (global == nullptr && !place.indented) global = &place;
  }
  if (local != nullptr) return local;
  return global != nullptr ? global : &found->second.front();
}

void JumpHistory::Push(JumpPlace place) {
  if (!m_places.empty() && m_places.back() == place) return;
  if (m_places.size() == kMostPlaces) m_places.erase(m_places.begin());
  m_places.push_back(std::move(place));
}

JumpPlace JumpHistory::Pop() {
  if (m_places.empty()) throw std::invalid_argument("no jump to come back from");
  JumpPlace place = std::move(m_places.back());
  m_places.pop_back();
  return place;
}

Identifier IdentifierAt(std::string_view line, int32_t column) {
  const auto length = static_cast<int32_t>(line.size());
  Identifier word{std::clamp(column, 0, length), std::clamp(column, 0, length)};
  while (word.start > 0 && cp1252::IsWordChar(line[static_cast<size_t>(word.start - 1)])) --word.start;
  while (word.end < length && cp1252::IsWordChar(line[static_cast<size_t>(word.end)])) ++word.end;
  return word;
}

}  // namespace quill
