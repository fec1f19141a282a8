#include "shell/ui/EditCommands.h"

#include "res/ui/UiText.h"
#include "shell/ui/ViewHandlers.h"
#include "text/edit/CaseCommands.h"
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
void AddCase(const ViewHandlers& views, CommandId id, edit::LetterCase letterCase) {
  views.Add(
      id,
      [letterCase](CQuillView& view) {
        view.Edit([letterCase](EditTarget& target) { return edit::ChangeCase(target, letterCase); });
      },
      NeedsWritableSelection);
}

void AddHistoryAndClipboard(const ViewHandlers& views) {
  views.Add(
      kEditUndo, [](CQuillView& view) { view.Undo(); }, UndoState);
  views.Add(
      kEditRedo, [](CQuillView& view) { view.Redo(); }, RedoState);
  views.Add(
      kEditCut, [](CQuillView& view) { view.Cut(); }, NeedsWritableSelection);
  views.Add(
      kEditCopy, [](CQuillView& view) { view.Copy(); }, NeedsSelection);
  views.Add(
      kEditPaste, [](CQuillView& view) { view.Paste(); }, NeedsWriting);
  views.Add(
      kEditDelete, [](CQuillView& view) { view.DeleteRight(); }, NeedsWriting);
  views.Add(kEditSelectAll, [](CQuillView& view) { view.SelectAll(); });
  views.Add(
      kEditOverwrite, [](CQuillView& view) { view.ToggleOverwriteMode(); },
      [](const CQuillView& view) { return CommandState::Checked(view.OverwriteMode()); });
  views.Add(
      kEditColumnSelection,
      [](CQuillView& view) {
        view.Model().SetColumnSelection(!view.Model().IsColumnSelection());
        view.ApplyDamage();
      },
      [](const CQuillView& view) { return CommandState::Checked(view.Model().IsColumnSelection()); });
}

void AddLineCommands(const ViewHandlers& views) {
  views.AddEdit(kEditDeleteLine, edit::DeleteLines);
  views.AddEdit(kEditDuplicateLine, edit::DuplicateLines);
  views.AddEdit(kEditMoveLineUp, edit::MoveLinesUp);
  views.AddEdit(kEditMoveLineDown, edit::MoveLinesDown);
  views.AddEdit(kEditIndent, edit::IndentLines);
  views.AddEdit(kEditUnindent, edit::UnindentLines);
  views.AddEdit(kEditIndentAll, edit::IndentAll);
  views.AddEdit(kEditCommentLine, edit::CommentLines);
  views.AddEdit(kEditUncommentLine, edit::UncommentLines);
  AddCase(views, kEditUpperCase, edit::LetterCase::kUpper);
  AddCase(views, kEditLowerCase, edit::LetterCase::kLower);
}

}  // namespace

void EditCommands::RegisterCommands(CommandRouter& router) {
  const ViewHandlers views(router, m_active);
  AddHistoryAndClipboard(views);
  AddLineCommands(views);
  views.AddEdit(kEditInsertDate, [clock = m_clock](EditTarget& target) {
    return edit::InsertDate(target, static_cast<std::time_t>(clock()));
  });
}

}  // namespace quill
