#pragma once
#include <cstddef>
#include <cstdint>
#include <optional>
#include <utility>

#include "intel/outline/Outline.h"

namespace quill {

class CCrystalTextBuffer;

/// The functions, actions and starters of a script by their lines, to tell in which one the caret is.
class EnclosingFunction {
 public:
  struct Entry {
    OutlineRoot root = OutlineRoot::kFunctions;
    size_t index = 0;  ///< among the root's items
    TextPosition at;
    friend bool operator==(const Entry&, const Entry&) = default;
  };

  EnclosingFunction() = default;
  /// Those of included files are left out.
  explicit EnclosingFunction(Outline outline) : m_outline(std::move(outline)) {}

  /// The function whose definition or body has a part in `line`; none between functions, and where the end
  /// of a function is not found within a megabyte. Lines that moved since the outline was read give an
  /// answer that is off by as much.
  std::optional<Entry> Around(const CCrystalTextBuffer& buffer, int32_t line) const;

 private:
  /// The last one that begins in the line or above it.
  std::optional<OutlineRef> LastFrom(int32_t line) const;

  Outline m_outline;
};

}  // namespace quill
