#pragma once
#include <atomic>

#include "intel/outline/Outline.h"

namespace quill {

/// An outline of groups. What `previous` has sorted of the same groups in the same slots is taken over; when
/// no group is new or gone, so are the orders as they are. `stop`, which another thread may set, makes it end
/// early with an empty outline.
Outline MakeOutline(OutlineParts parts, const Outline& previous = {},
                    const std::atomic<bool>* stop = nullptr);

}  // namespace quill
