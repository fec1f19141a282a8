#include "text/edit/InsertCommands.h"

#include "base/LocalTime.h"
#include "text/edit/ClipboardText.h"
#include "text/edit/ColumnBlock.h"
#include "text/edit/UndoStep.h"

namespace quill::edit {

bool ReplaceSelectedText(EditTarget& target, std::string_view text) {
  if (target.Buffer().IsReadOnly()) return false;
  UndoStep step(target, action::kReplace);
  step.DeleteSelection();
  target.PlaceCaret(step.Insert(target.Caret(), text));
  return true;
}

bool InsertDate(EditTarget& target, std::time_t now) {
  constexpr size_t kLongestDate = 128;
  const std::optional<std::tm> local = LocalTime(now);
  if (!local) return false;
  char date[kLongestDate];
  const size_t length = std::strftime(date, sizeof date, "%Y-%m-%d", &*local);
  return ReplaceSelectedText(target, {date, length});
}

bool DropText(EditTarget& target, TextPosition at, std::string_view text) {
  if (target.Buffer().IsReadOnly()) return false;
  UndoStep step(target, action::kDragAndDrop);
  const TextPosition end = step.Insert(at, WithCrLf(text));
  target.SetColumnSelection(false);
  target.Select(at, end);
  return true;
}

bool MoveText(EditTarget& target, TextRange from, TextPosition to, bool copy) {
  const CCrystalTextBuffer& buffer = target.Buffer();
  if (buffer.IsReadOnly()) return false;
  if (from.IsEmpty() || (!copy && from.start <= to && to <= from.end)) return true;
  const std::vector<std::string> pieces = CopyPieces(buffer, from);
  UndoStep step(target, action::kDragAndDrop);
  if (!copy) {
    step.Delete(from);
    to = PositionAfterDelete(to, from);
  }
  const TextPosition end = step.InsertPieces(to, ViewsOf(pieces));
  target.SetColumnSelection(false);
  target.Select(to, end);
  return true;
}

bool RemoveDraggedText(EditTarget& target, TextRange range) {
  if (target.Buffer().IsReadOnly()) return false;
  UndoStep step(target, action::kDragAndDrop);
  step.Delete(range);
  target.PlaceCaret(range.start);
  return true;
}

bool RemoveDraggedSelection(EditTarget& target) {
  if (target.IsColumnSelection()) return TypeIntoBlock(target, {}, action::kDragAndDrop);
  return RemoveDraggedText(target, target.Selection());
}

}  // namespace quill::edit
