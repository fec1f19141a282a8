#include "shell/ui/FileOperations.h"

#include <QApplication>
#include <algorithm>
#include <filesystem>
#include <iterator>
#include <stdexcept>

#include "res/Strings.h"
#include "settings/Settings.h"
#include "shell/BackupCopies.h"
#include "shell/FileText.h"
#include "shell/RecoveryFolder.h"
#include "shell/ui/AppServices.h"
#include "shell/ui/ChildFrame.h"
#include "shell/ui/Documents.h"
#include "shell/ui/Prompts.h"
#include "shell/ui/QuillDoc.h"
#include "shell/ui/QuillView.h"
#include "shell/ui/Workspace.h"

namespace quill {
namespace {

namespace fs = std::filesystem;

/// While it lives, changes of the window's file on disk are not asked about.
class NoReloadScope {
 public:
  explicit NoReloadScope(CChildFrame& frame) : m_frame(&frame) { frame.SetNoReload(true); }
  NoReloadScope(const NoReloadScope&) = delete;
  NoReloadScope& operator=(const NoReloadScope&) = delete;
  ~NoReloadScope() { m_frame->SetNoReload(false); }

 private:
  CChildFrame* m_frame;
};

/// Something is open that a box would cover, and whose keys it would take.
bool IsDialogOrMenuOpen() {
  return QApplication::activeModalWidget() != nullptr || QApplication::activePopupWidget() != nullptr;
}

std::string NameOf(const CQuillDoc& document) {
  return document.File().HasPath() ? document.File().Path() : document.File().Title();
}

}  // namespace

FileOperations::FileOperations(AppServices& services, Documents& documents, Workspace& workspace,
                               QObject* parent)
    : QObject(parent), m_services(services), m_documents(documents), m_workspace(workspace) {
  workspace.SetCloseGuard([this](CChildFrame& frame) { return MayClose(frame); });
  connect(&workspace, &Workspace::WindowClosed, this, &FileOperations::OnWindowClosed);
  connect(&documents, &Documents::JournalsFail, this, &FileOperations::TellOfJournals);
}

// Opening

CQuillDoc& FileOperations::New() {
  CQuillDoc& document = m_documents.Create();
  m_documents.MakeNew(document);
  m_workspace.AddWindow(document);
  return document;
}

CQuillDoc* FileOperations::Open(const std::string& path, int32_t line) {
  CQuillDoc* document = m_documents.Find(path);
  if (document != nullptr) {
    m_workspace.ActivateDocument(*document);
  } else {
    CQuillDoc* pristine = PristineDocument();
    document = &m_documents.Create();
    if (const IoResult opened = document->File().Open(path); !opened) {
      m_documents.Remove(*document);
      m_services.prompts.Ask(DocumentPrompt::OpenFailed(opened));
      return nullptr;
    }
    ShowInPlaceOf(pristine, *document);
  }
  m_lastFolder = fs::path(document->File().Path()).parent_path().string();
  if (line > 0) m_workspace.ActiveView()->GotoLine(std::min(line, document->Buffer().LineCount()) - 1);
  return document;
}

CQuillDoc* FileOperations::OpenOrCreate(const std::string& path, int32_t line) {
  std::error_code error;
  if (!fs::exists(path, error) && !error) {
    const std::string full = fs::absolute(path, error).lexically_normal().string();
    if (m_services.prompts.Ask(DocumentPrompt::CreateMissing(full)) != Prompts::Answer::kYes) return nullptr;
    if (const IoResult created = CreateEmptyFile(full); !created) {
      m_services.prompts.Ask(DocumentPrompt::OpenFailed(created));
      return nullptr;
    }
  }
  return Open(path, line);
}

CQuillDoc* FileOperations::PristineDocument() const {
  const auto& all = m_documents.All();
  const bool alone = all.size() == 1 && all.front()->Views().size() == 1;
  return alone && all.front()->IsPristine() ? all.front() : nullptr;
}

void FileOperations::ShowInPlaceOf(CQuillDoc* pristine, CQuillDoc& document) {
  m_workspace.AddWindow(document);
  if (pristine != nullptr) Close(*pristine);
}

void FileOperations::OpenByDialog() {
  for (const std::string& path : m_services.prompts.ChooseFilesToOpen(Folder())) Open(path);
}

std::string FileOperations::Folder() const {
  const CQuillDoc* active = m_workspace.ActiveDocument();
  if (active != nullptr && active->File().HasPath()) {
    return fs::path(active->File().Path()).parent_path().string();
  }
  return m_lastFolder;
}

// Saving

bool FileOperations::KeepsBak() const {
  return ReadFlag(m_services.settings, settings::kEnableBackups);
}

bool FileOperations::Report(const IoResult& saved) {
  if (!saved) m_services.prompts.Ask(DocumentPrompt::SaveFailed(saved));
  return static_cast<bool>(saved);
}

bool FileOperations::Save(CQuillDoc& document) {
  return document.File().HasPath() ? Report(document.File().Save(KeepsBak())) : SaveAs(document);
}

bool FileOperations::SaveAs(CQuillDoc& document) {
  const fs::path name = document.File().SuggestedName();
  const std::string suggested = name.is_absolute() ? name.string() : (fs::path(Folder()) / name).string();
  std::string chosen;
  CQuillDoc* replaced = nullptr;
  do {
    chosen = m_services.prompts.ChooseFileToSave(suggested);
    if (chosen.empty()) return false;
    replaced = m_documents.Find(document.File().PathForSave(chosen));
    if (replaced == &document) replaced = nullptr;
  } while (!AgreeToReplace(document, chosen, replaced));
  // The text in the other window is let go when this one is safe in the file.
  if (!Report(document.File().SaveAs(chosen, KeepsBak()))) return false;
  if (replaced != nullptr) CloseAs(*replaced, DocumentFile::CloseReason::kDiscarded);
  m_lastFolder = fs::path(document.File().Path()).parent_path().string();
  return true;
}

bool FileOperations::AgreeToReplace(const CQuillDoc& document, const std::string& chosen,
                                    const CQuillDoc* openOnIt) {
  const std::string path = document.File().PathForSave(chosen);
  std::optional<DocumentPrompt> question;
  std::error_code ignored;
  if (openOnIt != nullptr) {
    question = DocumentPrompt::ReplaceOpenFile(path, openOnIt->File().HoldsUnsavedText());
  } else if (fs::path(path).filename() != fs::path(chosen).filename() && fs::exists(path, ignored)) {
    // The dialog has asked about the name that was chosen, not about the one with the extension.
    question = DocumentPrompt::ReplaceExisting(path);
  }
  return !question || m_services.prompts.Ask(*question) == Prompts::Answer::kYes;
}

bool FileOperations::SaveAll() {
  std::vector<CQuillDoc*> documents;
  for (CQuillDoc* document : m_documents.All()) {
    if (document->File().IsModified() || document->File().HoldsUnsavedText()) documents.push_back(document);
  }
  return SaveEach(documents);
}

bool FileOperations::SaveEach(const std::vector<CQuillDoc*>& documents) {
  return std::all_of(documents.begin(), documents.end(),
                     [this](CQuillDoc* document) { return !IsOpen(document) || Save(*document); });
}

bool FileOperations::IsOpen(const CQuillDoc* document) const {
  const auto& all = m_documents.All();
  return std::find(all.begin(), all.end(), document) != all.end();
}

void FileOperations::Reload(CQuillDoc& document) {
  const std::optional<DocumentPrompt> question = document.File().QuestionBeforeReload();
  if (question && m_services.prompts.Ask(*question) != Prompts::Answer::kYes) return;
  if (const IoResult reloaded = document.Reload(); !reloaded) {
    m_services.prompts.Ask(DocumentPrompt::OpenFailed(reloaded));
  }
}

void FileOperations::ToggleReadOnly(CQuillDoc& document) {
  if (const auto message = document.ToggleReadOnly()) m_services.prompts.Ask(*message);
}

// Closing

bool FileOperations::AgreeToClose(std::vector<CQuillDoc*> documents) {
  std::vector<CQuillDoc*> unsaved;
  std::ranges::copy_if(documents, std::back_inserter(unsaved),
                       [](const CQuillDoc* document) { return document->File().HoldsUnsavedText(); });
  const auto toSave = ChooseWhatToSave(unsaved);
  if (!toSave || !SaveEach(*toSave)) return false;
  // A save may have closed one that was open on the same file.
  std::erase_if(documents, [this](const CQuillDoc* document) { return !IsOpen(document); });
  for (CQuillDoc* document : documents) {
    const bool discarded = std::ranges::find(unsaved, document) != unsaved.end() &&
                           std::ranges::find(*toSave, document) == toSave->end();
    m_agreed[document] =
        discarded ? DocumentFile::CloseReason::kDiscarded : DocumentFile::CloseReason::kNotAsked;
  }
  return true;
}

std::optional<std::vector<CQuillDoc*>> FileOperations::ChooseWhatToSave(
    const std::vector<CQuillDoc*>& unsaved) {
  std::vector<CQuillDoc*> chosen;
  if (unsaved.size() > 1) {
    std::vector<std::string> names;
    std::ranges::transform(unsaved, std::back_inserter(names),
                           [](const CQuillDoc* document) { return NameOf(*document); });
    const auto indices = m_services.prompts.ChooseWhatToSave(names);
    if (!indices) return std::nullopt;
    for (size_t index : *indices) chosen.push_back(unsaved.at(index));
  } else if (unsaved.size() == 1) {
    m_workspace.ActivateDocument(*unsaved.front());
    const auto question = unsaved.front()->File().QuestionBeforeClose();
    const Prompts::Answer answer = question ? m_services.prompts.Ask(*question) : Prompts::Answer::kSave;
    if (answer == Prompts::Answer::kCancel) return std::nullopt;
    if (answer == Prompts::Answer::kSave) chosen = unsaved;
  }
  return chosen;
}

bool FileOperations::MayClose(CChildFrame& frame) {
  CQuillDoc& document = frame.Document();
  if (document.Views().size() > 1 || m_agreed.contains(&document)) return true;
  return AgreeToClose({&document});
}

void FileOperations::OnWindowClosed(CChildFrame* frame) {
  CQuillDoc& document = frame->Document();
  if (!document.Views().empty()) return;
  const auto agreed = m_agreed.extract(&document);
  document.File().Close(agreed.empty() ? DocumentFile::CloseReason::kNotAsked : agreed.mapped());
  m_documents.Remove(document);
}

bool FileOperations::Close(CQuillDoc& document) {
  if (!AgreeToClose({&document})) return false;
  CloseAs(document, m_agreed.at(&document));
  return true;
}

void FileOperations::CloseAs(CQuillDoc& document, DocumentFile::CloseReason reason) {
  m_agreed[&document] = reason;
  for (CChildFrame* frame : m_workspace.Frames()) {
    if (&frame->Document() == &document) frame->close();
  }
}

bool FileOperations::CloseWindows(const std::vector<CChildFrame*>& frames) {
  std::map<const CQuillDoc*, size_t> closing;
  for (const CChildFrame* frame : frames) ++closing[&frame->Document()];
  std::vector<CQuillDoc*> going;
  for (CQuillDoc* document : m_documents.All()) {
    if (closing.contains(document) && closing[document] == document->Views().size())
      going.push_back(document);
  }
  if (!AgreeToClose(going)) return false;
  for (CChildFrame* frame : frames) frame->close();
  return true;
}

bool FileOperations::CloseAll() {
  if (!AgreeToClose(m_documents.All())) return false;
  for (CChildFrame* frame : m_workspace.Frames()) frame->close();
  return true;
}

// In the background

void FileOperations::CheckOnDisk(CChildFrame& frame) {
  // What is open gives the focus back, and that asks again.
  if (frame.NoReload() || IsDialogOrMenuOpen() || !frame.View().hasFocus()) return;
  for (CQuillDoc* document : m_documents.All()) document->File().LookForFile();
  const NoReloadScope noReload(frame);
  DocumentFile& file = frame.Document().File();
  const auto question = file.CheckOnDisk();
  if (!question) return;
  if (m_services.prompts.Ask(*question) != Prompts::Answer::kYes) {
    file.KeepText();
    return;
  }
  if (const IoResult reloaded = frame.Document().Reload(); !reloaded) {
    file.KeepText();
    m_services.prompts.Ask(DocumentPrompt::OpenFailed(reloaded));
  }
  frame.View().viewport()->repaint();
}

void FileOperations::BackUpActiveDocument() {
  CQuillDoc* document = m_workspace.ActiveDocument();
  if (document == nullptr) return;
  const BackupCopies::Settings settings{ReadFlag(m_services.settings, settings::kEnableBackups),
                                        ReadInt(m_services.settings, settings::kBackupRemoveDays)};
  try {
    BackupCopies(m_services.programFolder, m_services.clock)
        .BackUp(document->Buffer(), document->ViewPaths(), settings);
  } catch (const std::invalid_argument& error) {
    m_services.log.Line(error.what());
  }
}

void FileOperations::TellOfJournals(const std::string& why) {
  if (m_toldOfJournals || IsDialogOrMenuOpen()) return;
  m_toldOfJournals = true;
  m_services.prompts.Tell(std::string(Text(StringId::kJournalsFail)), why + ".");
}

bool FileOperations::HasRecoverable() const {
  return !FindRecoverable(m_services.recoveryFolder).empty();
}

void FileOperations::OfferRecovery() {
  std::vector<RecoverableDocument> found = FindRecoverable(m_services.recoveryFolder);
  if (found.empty()) return;
  const Prompts::RecoveryChoice choice = m_services.prompts.ChooseRecovery(found);
  if (choice.action == Prompts::RecoveryAction::kLater) return;
  for (size_t index : choice.chosen) {
    if (choice.action == Prompts::RecoveryAction::kDiscard) {
      found.at(index).Discard();
    } else {
      Recover(found.at(index));
    }
  }
}

/// For another text of a file that is open: "main.vsl (recovered 2)".
std::string FileOperations::TitleOfRecovered(const std::string& path) const {
  const std::string name = std::filesystem::path(path).filename().string();
  for (int number = 2;; ++number) {
    std::string title = FormatText(StringId::kRecoveredTitle, {name, std::to_string(number)});
    const auto isTaken = [&](const CQuillDoc* document) { return document->File().Title() == title; };
    if (std::ranges::none_of(m_documents.All(), isTaken)) return title;
  }
}

void FileOperations::Recover(RecoverableDocument& lost) {
  CQuillDoc* pristine = PristineDocument();
  CQuillDoc* open = lost.Path().empty() ? nullptr : m_documents.Find(lost.Path());
  // What the open one holds is nowhere else.
  const bool apart = open != nullptr && open->File().HoldsUnsavedText();
  if (apart) open = nullptr;
  CQuillDoc& document = open == nullptr ? m_documents.Create() : *open;
  const std::string apartAs = apart ? TitleOfRecovered(lost.Path()) : std::string();
  if (const IoResult recovered = document.File().Recover(lost, apartAs); !recovered) {
    if (open == nullptr) m_documents.Remove(document);
    m_services.prompts.Tell(std::string(Text(StringId::kRecoverFailed)), recovered.Message() + ".");
    return;
  }
  if (open == nullptr) ShowInPlaceOf(pristine, document);
}

}  // namespace quill
