#include <cstring>

#include "base/LastIndexOf.h"

namespace quill {

size_t LastIndexOf(std::string_view bytes, char byte) {
  const void* found = bytes.empty() ? nullptr : memrchr(bytes.data(), byte, bytes.size());
  if (found == nullptr) return std::string_view::npos;
  return static_cast<size_t>(static_cast<const char*>(found) - bytes.data());
}

}  // namespace quill
