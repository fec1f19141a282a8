#include "res/ui/UiText.h"
#include "shell/ui/AppServices.h"
#include "shell/ui/ViewHandlers.h"
#include "text/edit/CaseCommands.h"
#include "text/edit/DeleteCommands.h"
#include "text/edit/IndentAll.h"
#include "text/edit/Indentation.h"
#include "text/edit/InsertCommands.h"
#include "text/edit/LineCommands.h"

namespace quill {
namespace {

using enum CommandId;

/// The menu text of undo or redo, with the action's name where there is one.
QString HistoryText(bool named, const std::string& label, StringId withName, StringId plain) {
  return named ? UiText(withName, {FromBytes(label)}) : UiText(plain);
}

CommandState UndoState(const CQuillView& view) {
  std::string label;
  const bool named = view.CanUndo() && view.Buffer()->UndoLabel(label);
  CommandState state = CommandState::EnabledIf(view.CanUndo(), StringId::kNothingToUndo);
  state.text = HistoryText(named, label, StringId::kUndoAction, StringId::kUndoPlain);
  return state;
}

CommandState RedoState(const CQuillView& view) {
  std::string label;
  const bool named = view.CanRedo() && view.Buffer()->RedoLabel(label);
  CommandState state = CommandState::EnabledIf(view.CanRedo(), StringId::kNothingToRedo);
  state.text = HistoryText(named, label, StringId::kRedoAction, StringId::kRedoPlain);
  return state;
}

CommandState NeedsSelection(const CQuillView& view) {
  return CommandState::EnabledIf(view.Model().HasSelection(), StringId::kNoTextSelected);
}

CommandState NeedsWritableSelection(const CQuillView& view) {
  return view.CanEdit() ? NeedsSelection(view) : NeedsWriting(view);
}

/// A change of case works on what is selected.
void RegisterCase(const ShellParts& parts, CommandId id, edit::LetterCase letterCase) {
  OnView(
      parts, id,
      [letterCase](CQuillView& view) {
        view.Edit([letterCase](EditTarget& target) { return edit::ChangeCase(target, letterCase); });
      },
      NeedsWritableSelection);
}

}  // namespace

void RegisterEditCommands(const ShellParts& parts) {
  OnView(
      parts, kEditUndo, [](CQuillView& view) { view.Undo(); }, UndoState);
  OnView(
      parts, kEditRedo, [](CQuillView& view) { view.Redo(); }, RedoState);
  OnView(
      parts, kEditCut, [](CQuillView& view) { view.Cut(); }, NeedsWritableSelection);
  OnView(
      parts, kEditCopy, [](CQuillView& view) { view.Copy(); }, NeedsSelection);
  OnView(
      parts, kEditPaste, [](CQuillView& view) { view.Paste(); }, NeedsWriting);
  OnWritableView(parts, kEditDelete, edit::DeleteRight);
  OnView(parts, kEditSelectAll, [](CQuillView& view) { view.SelectAll(); });
  OnWritableView(parts, kEditInsertDate, [clock = parts.services.clock](EditTarget& target) {
    return edit::InsertDate(target, static_cast<std::time_t>(clock()));
  });
  OnView(
      parts, kEditOverwrite, [](CQuillView& view) { view.ToggleOverwriteMode(); },
      [](const CQuillView& view) { return CommandState::Checked(view.OverwriteMode()); });
  OnView(
      parts, kEditColumnSelection,
      [](CQuillView& view) {
        view.Model().SetColumnSelection(!view.Model().IsColumnSelection());
        view.ApplyDamage();
      },
      [](const CQuillView& view) { return CommandState::Checked(view.Model().IsColumnSelection()); });
}

void RegisterLineCommands(const ShellParts& parts) {
  OnWritableView(parts, kEditDeleteLine, edit::DeleteLines);
  OnWritableView(parts, kEditDuplicateLine, edit::DuplicateLines);
  OnWritableView(parts, kEditMoveLineUp, edit::MoveLinesUp);
  OnWritableView(parts, kEditMoveLineDown, edit::MoveLinesDown);
  OnWritableView(parts, kEditIndent, edit::IndentLines);
  OnWritableView(parts, kEditUnindent, edit::UnindentLines);
  OnWritableView(parts, kEditIndentAll, edit::IndentAll);
  OnWritableView(parts, kEditCommentLine, edit::CommentLines);
  OnWritableView(parts, kEditUncommentLine, edit::UncommentLines);
  RegisterCase(parts, kEditUpperCase, edit::LetterCase::kUpper);
  RegisterCase(parts, kEditLowerCase, edit::LetterCase::kLower);
}

}  // namespace quill
