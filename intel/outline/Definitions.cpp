#include "intel/outline/Definitions.h"

#include <algorithm>
#include <span>
#include <stdexcept>

#include "base/CodePage1252.h"

namespace quill {

std::optional<DefinitionPlace> Definitions::Find(std::string_view name, int32_t line,
                                                 int32_t functionStart) const {
  const std::span<const OutlineRef> all = m_outline.Defining(name);
  if (name.empty() || all.empty()) return std::nullopt;
  std::optional<OutlineRef> first;
  std::optional<OutlineRef> global;
  std::optional<OutlineRef> local;
  for (const OutlineRef ref : all) {
    const int32_t at = m_outline.PlaceOf(ref).line;
    const bool isLocal =
        m_outline.FileOf(ref) == 0 && functionStart >= 0 && at >= functionStart && at <= line;
    if (isLocal && (!local || m_outline.IsBefore(*local, ref))) local = ref;
    if (!m_outline.IsIndented(ref) && (!global || m_outline.IsBefore(ref, *global))) global = ref;
    if (!first || m_outline.IsBefore(ref, *first)) first = ref;
  }
  const OutlineRef found = local ? *local : global ? *global : *first;
  const std::string_view text = m_outline.TextOf(found);
  TextPosition at = m_outline.PlaceOf(found);
  at.character += static_cast<int32_t>(DefinedWord(text).data() - text.data());
  return DefinitionPlace{m_outline.FileOf(found), at, m_outline.RootOf(found), m_outline.IsIndented(found)};
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
