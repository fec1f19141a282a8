#include "base/LocalTime.h"

namespace quill {

std::optional<std::tm> LocalTime(std::time_t time) {
  std::tm local{};
  if (localtime_r(&time, &local) == nullptr) return std::nullopt;
  return local;
}

}  // namespace quill
