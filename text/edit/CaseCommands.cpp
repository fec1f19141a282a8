#include "text/edit/CaseCommands.h"

#include "base/CodePage1252.h"
#include "text/edit/ColumnBlock.h"
#include "text/edit/UndoStep.h"

namespace quill::edit {
namespace {

TextRange SelectedPart(const EditTarget& target, int32_t line) {
  if (target.IsColumnSelection()) {
    return BlockOf(target).RangeOn(target.Buffer(), line, target.Settings().tabSize);
  }
  TextRange range{{line, 0}, {line, target.Buffer().LineLength(line)}};
  const TextRange selection = target.Selection();
  if (line == selection.start.line) range.start = selection.start;
  if (line == selection.end.line) range.end = selection.end;
  return range;
}

}  // namespace

bool ChangeCase(EditTarget& target, LetterCase letterCase) {
  const CCrystalTextBuffer& buffer = target.Buffer();
  if (buffer.IsReadOnly()) return false;
  const TextPosition anchor = target.Anchor();
  const TextPosition caret = target.Caret();
  const bool columns = target.IsColumnSelection();
  const BlockCorner anchorCorner = target.AnchorCorner();
  const BlockCorner caretCorner = target.CaretCorner();
  const TextRange selection = target.Selection();
  UndoStep step(target, action::kReplace);
  for (int32_t line = selection.start.line; line <= selection.end.line; ++line) {
    const TextRange part = SelectedPart(target, line);
    const auto length = static_cast<size_t>(part.end.character - part.start.character);
    const std::string_view old = buffer.Line(line).substr(static_cast<size_t>(part.start.character), length);
    const std::string changed =
        letterCase == LetterCase::kUpper ? cp1252::ToUpper(old) : cp1252::ToLower(old);
    if (changed == old) continue;
    step.ReplaceInLine(part, changed);
    // A view that follows changes has moved them.
    columns ? target.SelectBlock(anchorCorner, caretCorner) : target.Select(anchor, caret);
  }
  return true;
}

}  // namespace quill::edit
