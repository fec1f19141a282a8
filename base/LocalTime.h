#pragma once
#include <ctime>
#include <optional>

namespace quill {

/// Calendar date and time of day in the user's time zone; nothing for a time whose year has no number.
std::optional<std::tm> LocalTime(std::time_t time);

}  // namespace quill
