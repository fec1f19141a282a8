#pragma once
#include <cstdint>
#include <ctime>
#include <functional>

namespace quill {

/// Tells the time in seconds since 1970, UTC. Handed in, so that a test hands in its own.
using Clock = std::function<int64_t()>;

inline int64_t SystemTime() {
  return std::time(nullptr);
}

}  // namespace quill
