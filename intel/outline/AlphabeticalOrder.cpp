#include "intel/outline/AlphabeticalOrder.h"

#include <algorithm>
#include <string>

#include "base/CodePage1252.h"

namespace quill {
namespace {

/// The first eight characters as a number that sorts like them.
uint64_t LeadingCharacters(std::string_view text) {
  uint64_t key = 0;
  for (size_t i = 0; i < 8; ++i) key = key << 8 | (i < text.size() ? static_cast<uint8_t>(text[i]) : 0u);
  return key;
}

}  // namespace

std::vector<uint32_t> AlphabeticalOrder(std::span<const std::string_view> texts) {
  struct Keyed {
    uint64_t leading;
    std::string_view lower;
    uint32_t index;
  };
  std::string lower;  // all texts in one piece: views into it must not move
  size_t length = 0;
  for (const std::string_view text : texts) length += text.size();
  lower.reserve(length);
  std::vector<Keyed> keys;
  keys.reserve(texts.size());
  for (uint32_t i = 0; i < texts.size(); ++i) {
    const size_t start = lower.size();
    for (const char c : texts[i]) lower.push_back(cp1252::ToLower(c));
    const std::string_view text = std::string_view(lower).substr(start);
    keys.push_back({LeadingCharacters(text), text, i});
  }
  std::sort(keys.begin(), keys.end(), [](const Keyed& a, const Keyed& b) {
    if (a.leading != b.leading) return a.leading < b.leading;
    const int compared = a.lower.compare(b.lower);
    return compared != 0 ? compared < 0 : a.index < b.index;
  });
  std::vector<uint32_t> order;
  order.reserve(keys.size());
  for (const Keyed& key : keys) order.push_back(key.index);
  return order;
}

}  // namespace quill
