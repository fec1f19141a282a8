#include "intel/ui/ScriptToolbox.h"

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

using enum CommandId;

void ScriptToolbox::RegisterCommands(CommandRouter& router) {
  const ViewHandlers views(router, m_active);
  views.Add(
      kToolAddComment, [this](CQuillView& view) { AddComment(view); }, NeedsWriting);
  views.Add(
      kToolInsertImage, [this](CQuillView& view) { InsertImage(view); }, NeedsWriting);
  views.Add(
      kToolInsertVariable, [this](CQuillView& view) { InsertVariable(view); }, NeedsWriting);
  router.Register(kToolToDoList, [this] { ShowToDoList(); });
}

void ScriptToolbox::AddComment(CQuillView& view) {
  const QPointer<CQuillView> asked(&view);
  const auto comment =
      m_services.prompts.AskForScriptLine(StringId::kAddCommentTitle, StringId::kAddCommentPrompt);
  if (comment && asked != nullptr) asked->ReplaceSelectedText(CommentBanner(*comment));
}

void ScriptToolbox::InsertImage(CQuillView& view) {
  const QPointer<CQuillView> asked(&view);
  const std::string path = m_services.prompts.ChooseImage(m_files.Folder());
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

void ScriptToolbox::InsertVariable(CQuillView& view) {
  auto* dialog = new CVariableDlg(view, m_variableType, &m_window);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  QObject::connect(dialog, &QDialog::accepted, &view, [this, dialog, &view] {
    const VariableDraft draft = dialog->Draft();
    m_variableType = draft.type;
    view.ReplaceSelectedText(VariableDefinition(draft));
  });
  dialog->open();
}

void ScriptToolbox::ShowToDoList() {
  auto* dialog = new ToDoDialog(m_services.programFolder, m_services.Profile(), &m_window);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->open();
}

}  // namespace quill
