#pragma once
#include <cstddef>
#include <string_view>

namespace quill {

/// Index of the last `byte` in `bytes`, or npos. Unlike `rfind` it looks at many bytes at once.
size_t LastIndexOf(std::string_view bytes, char byte);

}  // namespace quill
