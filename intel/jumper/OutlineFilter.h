#pragma once
#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "intel/outline/Outline.h"

namespace quill {

/// What the user typed above the tree: words, all of which must occur in an item, in either case.
class OutlineFilter {
 public:
  explicit OutlineFilter(std::string_view typed = {});
  bool IsEmpty() const { return m_words.empty(); }
  bool Fits(std::string_view text) const;

 private:
  std::vector<std::string> m_words;  ///< in lower case
};

/// By root, the indices of the items that fit. A root whose own name fits shows all of its items.
std::array<std::vector<uint32_t>, kOutlineRootCount> FilterOutline(const Outline& outline,
                                                                   const OutlineFilter& filter);

}  // namespace quill
