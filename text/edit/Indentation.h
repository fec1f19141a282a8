#pragma once
#include <cstdint>
#include <string>
#include <string_view>

#include "text/edit/EditTarget.h"

namespace quill {

/// One indentation step: a tab character, or blanks.
std::string IndentStep(const EditSettings& settings);
/// White space of a width in columns: tab characters and then blanks, or blanks only.
std::string IndentOfWidth(int32_t columns, const EditSettings& settings);
/// The characters of exactly one step at the start of a line, 0 when it does not begin with one: a tab
/// character, or as many blanks as a tab is wide with `keepSpaces`.
int32_t LeadingStep(std::string_view line, const EditSettings& settings);
/// The number of leading tabs and blanks.
int32_t LeadingWhiteSpace(std::string_view line);

namespace edit {

/// Shifts the selected lines one step to the right or left; without a selection, the caret line. A last
/// line in which nothing is selected is left alone, and so are empty lines when indenting. To the left,
/// a line loses what it has up to the width of a step. The selection stays on its text.
bool IndentLines(EditTarget& target);
bool UnindentLines(EditTarget& target);

/// The Tab key: indents selected lines, else inserts a tab character, or blanks up to the next stop.
bool TypeTab(EditTarget& target);
/// Shift and Tab.
inline bool TypeBackTab(EditTarget& target) {
  return UnindentLines(target);
}

}  // namespace edit
}  // namespace quill
