#pragma once
#include <cstdint>

#include "text/buffer/TextPosition.h"

namespace quill {

/// Bits that tell what changed. The combinations in use have names.
namespace hint {
inline constexpr uint32_t kHorizontalRange = 0x0001;
inline constexpr uint32_t kVerticalRange = 0x0002;  ///< lines were inserted or removed
inline constexpr uint32_t kSingleLine = 0x0100;     ///< only the given line
inline constexpr uint32_t kFlagsOnly = 0x0200;
inline constexpr uint32_t kReset = 0x1000;  ///< everything: after load and new
inline constexpr uint32_t kLineChanged = kSingleLine | kHorizontalRange;
inline constexpr uint32_t kLinesChanged = kHorizontalRange | kVerticalRange;
inline constexpr uint32_t kLineFlags = kSingleLine | kFlagsOnly;
}  // namespace hint

/// What a text change did, so that a view can move its caret and selection along.
struct TextChange {
  bool inserted = true;  ///< else deleted
  TextRange range;       ///< the text's place: after the insertion, or before the deletion
};

/// Told of every change of a buffer that it was added to. It may leave in the call, or make others leave or
/// come.
class BufferObserver {
 public:
  virtual ~BufferObserver() = default;
  /// The text of `range` is about to go, and can be read for the last time; the update follows.
  virtual void OnDeleting(TextRange) {}
  /// `source` made the change (null when no observer did) and serves to be compared only; `change` is null
  /// unless text changed; `line` is the first affected line, -1 with a reset or a range flag change.
  virtual void OnBufferUpdate(const BufferObserver* source, const TextChange* change, uint32_t hints,
                              int32_t line) = 0;
};

}  // namespace quill
