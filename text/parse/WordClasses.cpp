#include "text/parse/WordClasses.h"

#include <algorithm>
#include <string>

#include "base/CodePage1252.h"
#include "text/parse/ColourTable.h"

namespace quill {
namespace {

/// Whether words can be the same as the name, and it fits into a slot.
bool IsShortWord(std::string_view name) {
  return !name.empty() && name.size() <= ShortWord::kLongest &&
         std::all_of(name.begin(), name.end(),
                     [](char c) { return (c >= 'a' && c <= 'z') || cp1252::IsAsciiDigit(c) || c == '_'; });
}

}  // namespace

void WordClasses::Use(const WordSets& sets) {
  const auto classOf = [](const NameSet* names, int32_t colour) {
    return Class{names == nullptr ? &kEmpty : names, colour, 0};
  };
  m_classes = {classOf(sets.keywords, kColourKeyword), classOf(sets.commands, kColourCommand),
               classOf(sets.functions, kColourFunction), classOf(sets.variables, kColourVariable)};
  Fill();
}

WordSets WordClasses::Sets() const {
  return {m_classes[0].names, m_classes[1].names, m_classes[2].names, m_classes[3].names};
}

WordClassesCopy::WordClassesCopy(const WordClasses& original) {
  const WordSets sets = original.Sets();
  m_names = {*sets.keywords, *sets.commands, *sets.functions, *sets.variables};
  m_classes.Use({&m_names[0], &m_names[1], &m_names[2], &m_names[3]});
}

void WordClasses::Fill() {
  size_t names = 0;
  for (Class& c : m_classes) {
    c.version = c.names->Version();
    names += c.names->Size();
  }
  m_filter.Clear();
  m_slots.assign(std::bit_ceil(names * 2 + 1), {});
  for (const Class& c : m_classes) {
    for (size_t i = 0; i < c.names->Size(); ++i) Add(c.names->WordAt(i), c.colour);
  }
}

void WordClasses::Add(std::string_view name, int32_t colour) {
  if (!IsShortWord(name)) return;
  char padded[ShortWord::kLongest] = {};
  std::copy(name.begin(), name.end(), padded);
  const ShortWord word = ShortWord::Of({padded, name.size()});
  const uint64_t hash = word.Hash();
  m_filter.Add(hash);
  const size_t mask = m_slots.size() - 1;
  size_t i = hash & mask;
  for (; m_slots[i].colour != kNone; i = (i + 1) & mask) {
    if (m_slots[i].word == word) return;  // a set that is asked first has it
  }
  m_slots[i] = {word, colour};
}

int32_t WordClasses::Find(ShortWord word, uint64_t hash) const {
  const size_t mask = m_slots.size() - 1;
  for (size_t i = hash & mask; m_slots[i].colour != kNone; i = (i + 1) & mask) {
    if (m_slots[i].word == word) return m_slots[i].colour;
  }
  return kNone;
}

int32_t WordClasses::ColourOf(std::string_view word) const {
  const std::string lower = cp1252::ToLower(word);
  const uint64_t hash = NameSet::Hash(lower);
  for (const Class& c : m_classes) {
    if (c.names->Contains(lower, hash)) return c.colour;
  }
  return kNone;
}

}  // namespace quill
