#pragma once
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace quill {

/// The positions of the texts in alphabetical order, ignoring case; equal ones stay in their order.
std::vector<uint32_t> AlphabeticalOrder(std::span<const std::string_view> texts);

}  // namespace quill
