#pragma once
#include <cstdint>
#include <optional>

#include "text/buffer/TextPosition.h"

namespace quill {

class CCrystalTextBuffer;

/// What a text is read out by. The units of a kind follow one another without a gap, a line end being a
/// character of its line and a word of its own.
enum class TextUnit : uint8_t {
  kCharacter,
  kWord,  ///< a run of word characters, of white space or of others
  kLine,
  kText,
};

/// The unit that the character at a place belongs to; behind the last character only the last line is not
/// empty. The place is in the text.
TextRange UnitAt(const CCrystalTextBuffer& buffer, TextPosition at, TextUnit unit);
/// The unit that ends where the one at the place begins; nothing at the text's beginning.
std::optional<TextRange> UnitBefore(const CCrystalTextBuffer& buffer, TextPosition at, TextUnit unit);
/// The unit that begins where the one at the place ends; nothing at the text's end.
std::optional<TextRange> UnitAfter(const CCrystalTextBuffer& buffer, TextPosition at, TextUnit unit);

}  // namespace quill
