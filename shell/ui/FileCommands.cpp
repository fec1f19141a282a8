#include "shell/ui/FileCommands.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMainWindow>
#include <algorithm>
#include <filesystem>

#include "res/ui/UiText.h"
#include "shell/RecentFiles.h"
#include "shell/SampleGame.h"
#include "shell/ui/ActiveView.h"
#include "shell/ui/AppServices.h"
#include "shell/ui/ChildFrame.h"
#include "shell/ui/CommandRouter.h"
#include "shell/ui/Documents.h"
#include "shell/ui/FileOperations.h"
#include "shell/ui/Prompts.h"
#include "shell/ui/QuillDoc.h"
#include "widgets/PlainNames.h"

namespace quill {

using enum CommandId;

void FileCommands::RegisterCommands(CommandRouter& router) {
  router.Register(kFileNew, [this] { m.files.New(); });
  router.Register(kFileOpen, [this] { m.files.OpenByDialog(); });
  RegisterSaving(router);
  RegisterFile(router);
  RegisterLineEnds(router);
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

void FileCommands::RegisterFile(CommandRouter& router) {
  const auto hasFile = [](const CQuillDoc& document) {
    return CommandState::EnabledIf(document.File().HasPath(), StringId::kNoFileYet);
  };
  OnDocument(
      router, kFileCopyPath,
      [](CQuillDoc& document) { QGuiApplication::clipboard()->setText(FromBytes(document.File().Path())); },
      hasFile);
  OnDocument(
      router, kFileOpenFolder, [this](CQuillDoc& document) { ShowFolder(document); }, hasFile);
  router.Register(kFileRecover, [this] {
    if (m.files.HasRecoverable()) {
      m.files.OfferRecovery();
    } else {
      m.services.prompts.Tell(std::string(Text(StringId::kNothingToRecover)), {},
                              DocumentPrompt::Icon::kInformation);
    }
  });
  router.Register(
      kHelpSample, [this] { OpenSample(); },
      [installed = !SampleGame(m.services.programFolder).empty()] {
        return CommandState::EnabledIf(installed, StringId::kSampleMissing);
      });
}

void FileCommands::RegisterLineEnds(CommandRouter& router) {
  for (int32_t style = line_end::kCrLf; style <= line_end::kLf; ++style) {
    OnDocument(
        router, kFileLineEndDos + style, [style](CQuillDoc& document) { document.SetLineEndStyle(style); },
        [style](const CQuillDoc& document) {
          CommandState state =
              CommandState::EnabledIf(!document.Buffer().IsReadOnly(), StringId::kDocumentIsReadOnly);
          state.checked = document.Buffer().LineEndStyle() == style;
          return state;
        });
  }
}

void FileCommands::ShowFolder(const CQuillDoc& document) {
  const std::string folder = std::filesystem::path(document.File().Path()).parent_path().string();
  if (m.services.showFolder && m.services.showFolder(folder)) return;
  m.services.prompts.Tell(FormatText(StringId::kFolderNotShown, {folder}));
}

void FileCommands::OpenSample() {
  m.files.Open(SampleGame(m.services.programFolder));
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
  m.services.prompts.Tell(FormatText(StringId::kFileGone, {path}));
}

CommandState FileCommands::RecentFileState(int index) const {
  CommandState state;
  const std::vector<std::string>& paths = m.recent.Paths();
  state.visible = static_cast<size_t>(index) < paths.size();
  if (!state.visible) return state;
  const QString path = FromBytes(paths[static_cast<size_t>(index)]);
  state.text = u'&' + QString::number(index + 1) + u' ' + plain_names::ForMenu(path);
  return state;
}

}  // namespace quill
