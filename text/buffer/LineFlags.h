#pragma once
#include <cstdint>

namespace quill {

/// Bits of a line's flag word; all others are free. Persisted per file, so the values are fixed.
namespace line_flag {
inline constexpr uint32_t kNumberedBookmarks = 0x000003FF;  ///< bit n for numbered bookmark n, 0 to 9
inline constexpr uint32_t kBreakpoint = 0x00020000;
inline constexpr uint32_t kBookmark = 0x00080000;
inline constexpr uint32_t kBlockStart = 0x01000000;  ///< first line of a foldable block
inline constexpr uint32_t kBlockEnd = 0x02000000;    ///< last line of a foldable block
inline constexpr uint32_t kHidden = 0x04000000;      ///< inside a collapsed block, its first line included
inline constexpr uint32_t kBlockMarks = kBlockStart | kBlockEnd;
/// `n` from 0 to 9.
constexpr uint32_t NumberedBookmark(int n) {
  return 1u << n;
}
}  // namespace line_flag

}  // namespace quill
