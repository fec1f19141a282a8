#include "intel/jumper/OutlineFilter.h"

#include <algorithm>
#include <utility>

#include "base/CodePage1252.h"

namespace quill {

OutlineFilter::OutlineFilter(std::string_view typed) {
  std::string word;
  for (const char c : typed) {
    if (!cp1252::IsSpace(c)) {
      word += cp1252::ToLower(c);
    } else if (!word.empty()) {
      m_words.push_back(std::exchange(word, {}));
    }
  }
  if (!word.empty()) m_words.push_back(word);
}

bool OutlineFilter::Fits(std::string_view text) const {
  return std::all_of(m_words.begin(), m_words.end(), [text](const std::string& word) {
    return std::search(text.begin(), text.end(), word.begin(), word.end(),
                       [](char c, char w) { return cp1252::ToLower(c) == w; }) != text.end();
  });
}

std::array<std::vector<uint32_t>, kOutlineRootCount> FilterOutline(const Outline& outline,
                                                                   const OutlineFilter& filter) {
  std::array<std::vector<uint32_t>, kOutlineRootCount> shown;
  for (size_t root = 0; root < kOutlineRootCount; ++root) {
    const std::vector<OutlineRef>& items = outline.Order(static_cast<OutlineRoot>(root));
    const bool all = filter.Fits(OutlineRootName(static_cast<OutlineRoot>(root)));
    for (uint32_t i = 0; i < items.size(); ++i) {
      if (all || filter.Fits(outline.TextOf(items[i]))) shown[root].push_back(i);
    }
  }
  return shown;
}

}  // namespace quill
