#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quill {

/// Where a window was, as the profile keeps it ("MainWndPos", "WP"): 11 little-endian 32-bit integers, the
/// first of them the record's length.
struct WindowPlacement {
  /// Show states that a restore looks at, by the platform's numbers.
  enum ShowState : uint32_t { kNormal = 1, kMinimised = 2, kMaximised = 3 };
  static constexpr size_t kBytes = 44;

  uint32_t flags = 0;
  uint32_t showState = kNormal;
  int32_t minimisedX = -1, minimisedY = -1;
  int32_t maximisedX = -1, maximisedY = -1;
  int32_t left = 0, top = 0, right = 0, bottom = 0;  ///< normal rectangle, in screen pixels

  std::string ToBytes() const;
  /// Nothing unless there are 44 bytes that give 44 as their length.
  static std::optional<WindowPlacement> FromBytes(std::string_view bytes);
  bool operator==(const WindowPlacement&) const = default;
};

}  // namespace quill
