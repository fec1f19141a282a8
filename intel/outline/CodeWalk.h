#pragma once
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/CodePage1252.h"
#include "text/parse/ScriptColouring.h"

namespace quill {

/// Calls `visit(column, character)` for each character of a line that is code: no comment, no string, no
/// character literal and no preprocessor line, and neither are their delimiters, but for the first "/" of
/// a comment. `state` holds the parse_state bits at the line's start; returns those at its end.
template <class Visit>
uint32_t WalkCode(std::string_view line, uint32_t state, Visit visit) {
  using namespace parse_state;
  bool onlySpace = state == 0;
  for (size_t i = 0; i < line.size(); ++i) {
    const char c = line[i];
    const char previous = i > 0 ? line[i - 1] : '\0';
    if ((state & kString) != 0) {
      if (c == '"') state &= ~kString;  // there are no escapes
    } else if ((state & kCharLiteral) != 0) {
      if (c == '\'' && previous != '\\') state &= ~kCharLiteral;
    } else if ((state & kBlockComment) != 0) {
      if (c == '/' && previous == '*') state &= ~kBlockComment;
    } else if (c == '/' && previous == '/') {
      break;
    } else if (c == '*' && previous == '/') {
      state |= kBlockComment;
    } else if ((state & kPreprocessor) != 0) {
      continue;
    } else if (c == '"') {
      state |= kString;
    } else if (c == '\'') {
      state |= kCharLiteral;
    } else if (c == '#' && onlySpace) {
      state |= kPreprocessor;
    } else {
      onlySpace = onlySpace && cp1252::IsSpace(c);
      visit(i, c);
    }
  }
  return state & kAcrossLines;
}

/// Whether what is typed behind the line's last character is code, see `WalkCode`.
inline bool EndsInCode(std::string_view line, uint32_t state) {
  bool seen = false;
  std::string probe(line);
  probe += ' ';  // visited exactly when it is code
  WalkCode(probe, state, [&seen, &line](size_t column, char) { seen = column == line.size(); });
  return seen;
}

}  // namespace quill
