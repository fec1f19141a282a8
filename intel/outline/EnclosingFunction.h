#pragma once
#include <cstddef>
#include <cstdint>
#include <vector>

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
  explicit EnclosingFunction(const Outline& outline);

  /// The function whose definition or body has a part in `line`; null between functions, and where the end
  /// of a function is not found within a megabyte. Valid as long as this object. Lines that moved since the
  /// outline was read give an answer that is off by as much.
  const Entry* Around(const CCrystalTextBuffer& buffer, int32_t line) const;

 private:
  std::vector<Entry> m_entries;
};

}  // namespace quill
