#include <QMainWindow>
#include <filesystem>

#include "res/ui/UiText.h"
#include "shell/RecentFiles.h"
#include "shell/ui/AppServices.h"
#include "shell/ui/ChildFrame.h"
#include "shell/ui/CommandRouter.h"
#include "shell/ui/Documents.h"
#include "shell/ui/FileOperations.h"
#include "shell/ui/Prompts.h"
#include "shell/ui/QuillDoc.h"
#include "shell/ui/ShellParts.h"
#include "shell/ui/Workspace.h"

namespace quill {
namespace {

using enum CommandId;

/// Registers a command on the active document, disabled while there is none.
void OnDocument(const ShellParts& parts, CommandId id, const std::function<void(CQuillDoc&)>& run,
                const std::function<CommandState(const CQuillDoc&)>& state = {}) {
  parts.router.Register(
      id, [&workspace = parts.workspace, run] { run(*workspace.ActiveDocument()); },
      [&workspace = parts.workspace, state] {
        const CQuillDoc* document = workspace.ActiveDocument();
        if (document == nullptr) return CommandState::Disabled(StringId::kNoDocumentOpen);
        return state ? state(*document) : CommandState();
      });
}

void RegisterSaving(const ShellParts& parts) {
  FileOperations& files = parts.files;
  OnDocument(
      parts, kFileSave, [&files](CQuillDoc& document) { files.Save(document); },
      [](const CQuillDoc& document) {
        return CommandState::EnabledIf(document.File().IsModified() || !document.File().HasPath(),
                                       StringId::kNotModified);
      });
  OnDocument(parts, kFileSaveAs, [&files](CQuillDoc& document) { files.SaveAs(document); });
  parts.router.Register(
      kFileSaveAll, [&files] { files.SaveAll(); },
      [&documents = parts.documents] {
        return CommandState::EnabledIf(!documents.Modified().empty(), StringId::kNothingModified);
      });
  OnDocument(
      parts, kFileReload, [&files](CQuillDoc& document) { files.Reload(document); },
      [](const CQuillDoc& document) {
        return CommandState::EnabledIf(document.File().HasPath(), StringId::kNoFileYet);
      });
  OnDocument(
      parts, kFileReadOnly, [&files](CQuillDoc& document) { files.ToggleReadOnly(document); },
      [](const CQuillDoc& document) { return CommandState::Checked(document.Buffer().IsReadOnly()); });
}

void OpenRecentFile(const ShellParts& parts, int index) {
  const std::vector<std::string>& paths = parts.recentFiles.Paths();
  if (static_cast<size_t>(index) >= paths.size()) return;
  const std::string path = paths[static_cast<size_t>(index)];
  std::error_code ignored;
  if (std::filesystem::exists(path, ignored)) {
    parts.files.Open(path);
    return;
  }
  parts.recentFiles.Remove(path);
  parts.services.prompts.Tell(FormatText(StringId::kFileGone, {path}));
}

CommandState RecentFileState(const RecentFiles& recent, int index) {
  CommandState state;
  const std::vector<std::string>& paths = recent.Paths();
  state.visible = static_cast<size_t>(index) < paths.size();
  if (!state.visible) return state;
  const QString path = FromBytes(paths[static_cast<size_t>(index)]);
  state.text = u'&' + QString::number(index + 1) + u' ' + QString(path).replace(u'&', "&&");
  return state;
}

}  // namespace

void RegisterFileCommands(const ShellParts& parts) {
  FileOperations& files = parts.files;
  parts.router.Register(kFileNew, [&files] { files.New(); });
  parts.router.Register(kFileOpen, [&files] { files.OpenByDialog(); });
  RegisterSaving(parts);
  const auto anyDocument = [&workspace = parts.workspace] {
    return CommandState::EnabledIf(workspace.ActiveFrame() != nullptr, StringId::kNoDocumentOpen);
  };
  parts.router.Register(
      kFileClose, [&workspace = parts.workspace] { workspace.ActiveFrame()->close(); }, anyDocument);
  parts.router.Register(
      kFileCloseAll, [&files] { files.CloseAll(); }, anyDocument);
  parts.router.Register(kFileExit, [&window = parts.window] { window.close(); });
  parts.router.RegisterSeries(
      kRecentFileFirst, kRecentFileLast, [parts](int index) { OpenRecentFile(parts, index); },
      [&recent = parts.recentFiles](int index) { return RecentFileState(recent, index); });
}

}  // namespace quill
