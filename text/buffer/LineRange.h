#pragma once
#include <cstdint>

namespace quill {

/// Lines first to last, both included; first is not after last.
struct LineRange {
  int32_t first = 0;
  int32_t last = 0;
  friend constexpr bool operator==(const LineRange&, const LineRange&) = default;
};

}  // namespace quill
