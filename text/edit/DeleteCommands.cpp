#include "text/edit/DeleteCommands.h"

#include "text/edit/ColumnBlock.h"
#include "text/edit/UndoStep.h"
#include "text/view/Navigation.h"

namespace quill {

TextPosition PlaceAfter(const CCrystalTextBuffer& buffer, TextPosition place) {
  if (place.character < buffer.LineLength(place.line)) return {place.line, place.character + 1};
  return place.line + 1 < buffer.LineCount() ? TextPosition{place.line + 1, 0} : place;
}

TextPosition PlaceBefore(const CCrystalTextBuffer& buffer, TextPosition place) {
  if (place.character > 0) return {place.line, place.character - 1};
  return place.line > 0 ? TextPosition{place.line - 1, buffer.LineLength(place.line - 1)} : place;
}

namespace edit {
namespace {

/// Deletes between the caret and another place, or what is selected.
bool DeleteTo(EditTarget& target, TextPosition place) {
  if (target.Buffer().IsReadOnly()) return false;
  if (target.HasSelection()) return DeleteSelection(target);
  const TextRange range = TextRange::Between(target.Caret(), place);
  UndoStep step(target, place < target.Caret() ? action::kBackspace : action::kDelete);
  step.Delete(range);
  target.PlaceCaret(range.start);
  return true;
}

}  // namespace

bool DeleteRight(EditTarget& target) {
  if (target.IsColumnSelection()) return DeleteInBlock(target, false, action::kDelete);
  return DeleteTo(target, PlaceAfter(target.Buffer(), target.Caret()));
}

bool DeleteLeft(EditTarget& target) {
  if (target.IsColumnSelection()) return DeleteInBlock(target, true, action::kBackspace);
  return DeleteTo(target, PlaceBefore(target.Buffer(), target.Caret()));
}

bool DeleteWordRight(EditTarget& target) {
  if (target.IsColumnSelection()) return DeleteRight(target);
  const TextPosition caret = target.Caret();
  const std::string_view line = target.Buffer().Line(caret.line);
  if (caret.character == static_cast<int32_t>(line.size())) return DeleteRight(target);
  return DeleteTo(target, {caret.line, NextWordStart(line, caret.character)});
}

bool DeleteWordLeft(EditTarget& target) {
  const TextPosition caret = target.Caret();
  if (target.IsColumnSelection() || caret.character == 0) return DeleteLeft(target);
  return DeleteTo(target, {caret.line, PreviousWordStart(target.Buffer().Line(caret.line), caret.character)});
}

bool DeleteSelection(EditTarget& target) {
  if (target.Buffer().IsReadOnly()) return false;
  if (target.IsColumnSelection()) return TypeIntoBlock(target, {}, action::kDeleteSelection);
  UndoStep step(target, action::kDeleteSelection);
  step.DeleteSelection();
  return true;
}

}  // namespace edit
}  // namespace quill
