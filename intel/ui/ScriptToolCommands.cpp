// What the script tools write at the caret, and the to-do list.
#include <QMainWindow>
#include <QPointer>
#include <QRegularExpression>

#include "intel/ui/ToDoDialog.h"
#include "intel/ui/VariableDlg.h"
#include "intel/writing/ScriptTools.h"
#include "res/ui/UiText.h"
#include "shell/ui/AppServices.h"
#include "shell/ui/FileOperations.h"
#include "shell/ui/Prompts.h"
#include "shell/ui/ViewHandlers.h"
#include "text/ui/ClipboardData.h"

namespace quill {
namespace {

using enum CommandId;

void AddComment(Prompts& prompts, CQuillView& view) {
  const QPointer<CQuillView> asked(&view);
  const auto comment = prompts.AskForScriptLine(StringId::kAddCommentTitle, StringId::kAddCommentPrompt);
  if (comment && asked != nullptr) asked->ReplaceSelectedText(CommentBanner(*comment));
}

void InsertImage(const ShellParts& parts, CQuillView& view) {
  const QPointer<CQuillView> asked(&view);
  const std::string path = parts.services.prompts.ChooseImage(parts.files.Folder());
  if (path.empty() || asked == nullptr) return;
  // A file's name may hold what no script can: such characters are treated as in a pasted text.
  static const QRegularExpression control(QStringLiteral("[\\x00-\\x1f]"));
  int replaced = 0;
  const std::string name = clipboard_data::FromUnicode(
      FromBytes(path).replace(control, QString(QChar::ReplacementCharacter)), replaced);
  if (asked->ReplaceSelectedText(ImageDefinition(name)) && replaced > 0) {
    Q_EMIT asked->Hint(UiText(StringId::kReplacedCharactersHint, {QString::number(replaced)}));
  }
}

/// `type` is the one used last; empty before the first time.
void InsertVariable(const ShellParts& parts, CQuillView& view, std::string& type) {
  auto* dialog = new CVariableDlg(view, type, &parts.window);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  QObject::connect(dialog, &QDialog::accepted, &view, [dialog, &view, &type] {
    const VariableDraft draft = dialog->Draft();
    type = draft.type;
    view.ReplaceSelectedText(VariableDefinition(draft));
  });
  dialog->open();
}

void ShowToDoList(const ShellParts& parts) {
  auto* dialog = new ToDoDialog(parts.services.programFolder, parts.services.Profile(), &parts.window);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->open();
}

}  // namespace

void RegisterScriptTools(const ShellParts& parts) {
  OnView(
      parts, kToolAddComment,
      [&prompts = parts.services.prompts](CQuillView& view) { AddComment(prompts, view); }, NeedsWriting);
  OnView(
      parts, kToolInsertImage, [&parts](CQuillView& view) { InsertImage(parts, view); }, NeedsWriting);
  OnView(
      parts, kToolInsertVariable,
      [&parts, type = std::make_shared<std::string>()](CQuillView& view) {
        InsertVariable(parts, view, *type);
      },
      NeedsWriting);
  parts.router.Register(kToolToDoList, [&parts] { ShowToDoList(parts); });
}

}  // namespace quill
