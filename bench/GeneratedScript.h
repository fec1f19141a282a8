#pragma once
#include <cstddef>
#include <string>

#include "bench/ScriptGenerator.h"

namespace quill::bench {

/// A generated script of about `bytes` bytes.
inline std::string GeneratedScript(size_t bytes) {
  constexpr size_t kBytesPerLine = 34;
  return GenerateScript({.lines = static_cast<int64_t>(bytes / kBytesPerLine)});
}

}  // namespace quill::bench
