#include "shell/ui/FileCommands.h"

#include <QMainWindow>
#include <algorithm>
#include <filesystem>

#include "res/ui/UiText.h"
#include "shell/RecentFiles.h"
#include "shell/ui/ActiveView.h"
#include "shell/ui/ChildFrame.h"
#include "shell/ui/CommandRouter.h"
#include "shell/ui/Documents.h"
#include "shell/ui/FileOperations.h"
#include "shell/ui/Prompts.h"
#include "shell/ui/QuillDoc.h"

namespace quill {

using enum CommandId;

void FileCommands::RegisterCommands(CommandRouter& router) {
  router.Register(kFileNew, [this] { m.files.New(); });
  router.Register(kFileOpen, [this] { m.files.OpenByDialog(); });
  RegisterSaving(router);
  const auto anyDocument = [this] {
    return CommandState::EnabledIf(m.active.Frame() != nullptr, StringId::kNoDocumentOpen);
  };
  router.Register(
      kFileClose, [this] { m.active.Frame()->close(); }, anyDocument);
  router.Register(
      kFileCloseAll, [this] { m.files.CloseAll(); }, anyDocument);
  router.Register(kFileExit, [this] { m.window.close(); });
  router.RegisterSeries(
      kRecentFileFirst, kRecentFileLast, [this](int index) { OpenRecentFile(index); },
      [this](int index) { return RecentFileState(index); });
}

void FileCommands::OnDocument(CommandRouter& router, CommandId id, const Run& run, const StateOf& state) {
  router.Register(
      id, [this, run] { run(*m.active.Document()); },
      [this, state] {
        const CQuillDoc* document = m.active.Document();
        if (document == nullptr) return CommandState::Disabled(StringId::kNoDocumentOpen);
        return state ? state(*document) : CommandState();
      });
}

void FileCommands::RegisterSaving(CommandRouter& router) {
  OnDocument(router, kFileSave, [this](CQuillDoc& document) { m.files.Save(document); });
  OnDocument(router, kFileSaveAs, [this](CQuillDoc& document) { m.files.SaveAs(document); });
  router.Register(
      kFileSaveAll, [this] { m.files.SaveAll(); },
      [this] {
        const auto& all = m.documents.All();
        const bool any = std::any_of(all.begin(), all.end(), [](const CQuillDoc* document) {
          return document->File().MayHoldUnsavedText();
        });
        return CommandState::EnabledIf(any, StringId::kNothingModified);
      });
  OnDocument(
      router, kFileReload, [this](CQuillDoc& document) { m.files.Reload(document); },
      [](const CQuillDoc& document) {
        return CommandState::EnabledIf(document.File().HasPath(), StringId::kNoFileYet);
      });
  OnDocument(
      router, kFileReadOnly, [this](CQuillDoc& document) { m.files.ToggleReadOnly(document); },
      [](const CQuillDoc& document) { return CommandState::Checked(document.Buffer().IsReadOnly()); });
}

void FileCommands::OpenRecentFile(int index) {
  const std::vector<std::string>& paths = m.recent.Paths();
  if (static_cast<size_t>(index) >= paths.size()) return;
  const std::string path = paths[static_cast<size_t>(index)];
  std::error_code ignored;
  if (std::filesystem::exists(path, ignored)) {
    m.files.Open(path);
    return;
  }
  m.recent.Remove(path);
  m.prompts.Tell(FormatText(StringId::kFileGone, {path}));
}

CommandState FileCommands::RecentFileState(int index) const {
  CommandState state;
  const std::vector<std::string>& paths = m.recent.Paths();
  state.visible = static_cast<size_t>(index) < paths.size();
  if (!state.visible) return state;
  const QString path = FromBytes(paths[static_cast<size_t>(index)]);
  state.text = u'&' + QString::number(index + 1) + u' ' + QString(path).replace(u'&', "&&");
  return state;
}

}  // namespace quill
