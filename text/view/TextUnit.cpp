#include "text/view/TextUnit.h"

#include "text/buffer/CrystalTextBuffer.h"
#include "text/view/Navigation.h"

namespace quill {

TextRange UnitAt(const CCrystalTextBuffer& buffer, TextPosition at, TextUnit unit) {
  const TextPosition end = buffer.EndOfText();
  if (unit == TextUnit::kText) return {{}, end};
  const TextPosition nextLine = at.line < end.line ? TextPosition{at.line + 1, 0} : end;
  if (unit == TextUnit::kLine) return {{at.line, 0}, nextLine};
  if (at.character == buffer.LineLength(at.line)) return {at, nextLine};
  if (unit == TextUnit::kCharacter) return {at, {at.line, at.character + 1}};
  const WordRange word = RunAt(buffer.Line(at.line), at.character);
  return {{at.line, word.start}, {at.line, word.end}};
}

std::optional<TextRange> UnitBefore(const CCrystalTextBuffer& buffer, TextPosition at, TextUnit unit) {
  const TextPosition start = UnitAt(buffer, at, unit).start;
  if (start == TextPosition{}) return std::nullopt;
  const TextPosition before = start.character > 0
                                  ? TextPosition{start.line, start.character - 1}
                                  : TextPosition{start.line - 1, buffer.LineLength(start.line - 1)};
  return UnitAt(buffer, before, unit);
}

std::optional<TextRange> UnitAfter(const CCrystalTextBuffer& buffer, TextPosition at, TextUnit unit) {
  const TextRange here = UnitAt(buffer, at, unit);
  // The last line is empty when the text ends with a line end.
  const bool another = unit == TextUnit::kLine ? here.end.line > at.line : here.end < buffer.EndOfText();
  if (!another) return std::nullopt;
  return UnitAt(buffer, here.end, unit);
}

}  // namespace quill
