#pragma once
#include <cstdint>
#include <string>
#include <string_view>

#include "text/buffer/TextPosition.h"

namespace quill {

class CCrystalTextBuffer;

/// Whether the caret is between the brackets of a call, as the hint tip understands it: by the first "("
/// and the first ")" of the line alone. Their places are counted without the line's leading white space,
/// the caret's with it; this shift is kept. False when the line is not in the buffer.
bool IsCaretInArgumentList(const CCrystalTextBuffer& buffer, TextPosition caret);
bool IsCaretInArgumentList(std::string_view line, int32_t column);

/// The call whose brackets are open at a place.
struct OpenCall {
  std::string name;      ///< empty when there is none
  int32_t argument = 0;  ///< from 0: the number of commas before the place
};
/// Unlike the test above it knows nesting, strings and comments, and calls that began some lines before.
OpenCall OpenCallAt(const CCrystalTextBuffer& buffer, TextPosition place);

/// The part [start, end) of a parameter text "name(type a, type b)" that describes an argument, without
/// blanks around it; empty when it has no such argument.
struct TextPart {
  size_t start = 0;
  size_t end = 0;
  bool IsEmpty() const { return start == end; }
  friend bool operator==(const TextPart&, const TextPart&) = default;
};
TextPart ArgumentPart(std::string_view parameters, int32_t argument);

}  // namespace quill
