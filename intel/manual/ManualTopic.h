#pragma once
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "intel/outline/Outline.h"

namespace quill {

/// Where the manual explains what stands at a place of a script.
struct ManualLookup {
  /// Whether a word, in lower case, is in the manual's index.
  std::function<bool(const std::string&)> hasTopic;
  /// What the script defines; asked for only when the place alone does not tell.
  std::function<const Outline&()> outline;
};

/// The index word for the identifier at a column, or empty when the manual has none: a member of an object
/// by the object's kind, such as "panel.pos_x", or by the first kind that has such a member when the object
/// is unknown; a command or keyword; for a name that the script defines as an object, the keyword of its
/// kind.
std::string FindManualTopic(std::string_view line, int32_t column, const ManualLookup& lookup);

}  // namespace quill
