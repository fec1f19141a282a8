#include "shell/DocumentFile.h"

#include <filesystem>
#include <stdexcept>

#include "res/Strings.h"
#include "shell/FileText.h"
#include "shell/LineMarks.h"
#include "shell/RecoveryFolder.h"
#include "shell/RunLog.h"
#include "shell/TextDifference.h"

namespace quill {
namespace {

namespace fs = std::filesystem;

std::string FileName(const std::string& path) {
  return fs::path(path).filename().string();
}

std::string FullPath(const std::string& path) {
  std::error_code ignored;
  const fs::path full = fs::absolute(path, ignored);
  return full.empty() ? path : full.lexically_normal().string();
}

std::string WithScriptExtension(const std::string& path) {
  return fs::path(path).has_extension() ? path : path + std::string(Text(StringId::kScriptExtension));
}

}  // namespace

DocumentFile::DocumentFile(const DocumentServices& services)
    : m_services(services), m_buffer(services.marks), m_journal(m_buffer, services.recoveryFolder) {
  m_buffer.OnModifiedChanged([this](bool modified) {
    if (m_services.observer != nullptr) m_services.observer->OnModifiedChanged(modified);
  });
}

void DocumentFile::Log(std::string_view message) const {
  if (m_services.log != nullptr) m_services.log->Line(message);
}

// Opening

void DocumentFile::New(const std::string& title) {
  m_buffer.NewBuffer();
  m_path.clear();
  m_title = title;
  m_lastWriteTime = 0;
  SetDisk(DiskState::kAsKnown);
  m_journal.Restart({}, title, {});
}

IoResult DocumentFile::Open(const std::string& path) {
  const std::string full = FullPath(path);
  if (IoResult loaded = Load(full); !loaded) return loaded;
  SetPath(full);
  return IoResult::Success();
}

IoResult DocumentFile::Reload() {
  if (!HasPath()) throw std::invalid_argument("a document without a file cannot be reloaded");
  return Load(m_path);
}

IoResult DocumentFile::Load(const std::string& path) {
  const FileIdentity file = FileIdentity::Of(path);
  CCrystalTextBuffer fresh;
  if (IoResult loaded = fresh.LoadFile(path); !loaded) return loaded;
  m_buffer.TakeLoaded(fresh);
  if (m_services.marks != nullptr) line_marks::Restore(m_buffer, path, *m_services.marks);
  m_lastWriteTime = file.modifiedSeconds;
  SetDisk(DiskState::kAsKnown);
  m_journal.Restart(path, FileName(path), file);
  Log(FormatText(StringId::kLogLoadingFile, {path}));
  if (m_services.observer != nullptr) m_services.observer->OnFileRecorded(path);
  Log(Text(StringId::kLogPathSet));
  return IoResult::Success();
}

void DocumentFile::SetPath(const std::string& path) {
  m_path = path;
  m_title = FileName(path);
  if (m_services.observer != nullptr) m_services.observer->OnPathSet(path);
}

bool DocumentFile::HoldsFile(const std::string& path) const {
  return HasPath() && (FullPath(path) == m_path || IsSameFile(path, m_path));
}

// Saving

IoResult DocumentFile::Save(bool keepBak) {
  if (!HasPath()) throw std::invalid_argument("a document without a file needs a path to be saved");
  return SaveTo(m_path, keepBak);
}

IoResult DocumentFile::SaveAs(const std::string& chosen, bool keepBak) {
  return SaveTo(PathForSave(chosen), keepBak);
}

std::string DocumentFile::PathForSave(const std::string& chosen) const {
  return FullPath(HasPath() ? chosen : WithScriptExtension(chosen));
}

std::string DocumentFile::SuggestedName() const {
  return HasPath() ? m_path : WithScriptExtension(m_title);
}

IoResult DocumentFile::SaveTo(const std::string& path, bool keepBak) {
  m_buffer.SetCreateBackup(keepBak && !FileHoldsText(path, m_buffer));
  if (IoResult saved = m_buffer.SaveFile(path); !saved) return saved;
  const FileIdentity file = FileIdentity::Of(path);
  m_lastWriteTime = file.modifiedSeconds;
  SetDisk(DiskState::kAsKnown);
  SetPath(path);
  m_journal.Restart(path, m_title, file);
  m_buffer.SetProfileSection(path);
  if (m_services.marks != nullptr) line_marks::Save(m_buffer, path, *m_services.marks);
  if (m_services.observer != nullptr) m_services.observer->OnFileRecorded(path);
  return IoResult::Success();
}

// The file on disk

void DocumentFile::SetDisk(DiskState state) {
  if (state == m_disk) return;
  m_disk = state;
  // Nobody else has the text then. Who takes it from the file, or puts it there, restarts the journal.
  if (state != DiskState::kAsKnown) m_journal.LoseFile();
  if (m_services.observer != nullptr) m_services.observer->OnDiskStateChanged();
}

void DocumentFile::LookForFile() {
  if (!HasPath()) return;
  if (!FileIdentity::Of(m_path).exists) {
    SetDisk(DiskState::kGone);
  } else if (m_disk == DiskState::kGone) {
    SetDisk(FileHoldsText(m_path, m_buffer) ? DiskState::kAsKnown : DiskState::kDiffers);
  }
}

bool DocumentFile::HoldsUnsavedText() const {
  const bool empty = m_buffer.EndOfText() == TextPosition{};
  if (!HasPath()) return IsModified() || (m_journal.HasChanges() && !empty);
  if (!FileIdentity::Of(m_path).exists) return !empty;
  return MayHoldUnsavedText() && !FileHoldsText(m_path, m_buffer);
}

// Questions

std::optional<DocumentPrompt> DocumentFile::CheckOnDisk() {
  if (!HasPath()) return {};
  LookForFile();
  const FileIdentity file = FileIdentity::Of(m_path);
  if (!file.exists || file.modifiedSeconds == m_lastWriteTime) return {};
  m_lastWriteTime = file.modifiedSeconds;  // first, so that No is not asked again
  return DocumentPrompt::ModifiedOnDisk(MayHoldUnsavedText());
}

void DocumentFile::KeepText() {
  if (HasPath() && !FileHoldsText(m_path, m_buffer)) SetDisk(DiskState::kDiffers);
}

std::optional<DocumentPrompt> DocumentFile::QuestionBeforeReload() const {
  if (!FileIdentity::Of(m_path).exists || !HoldsUnsavedText()) return {};
  return DocumentPrompt::ReloadLosesChanges(m_title);
}

void DocumentFile::SetLineEndStyle(int32_t style) {
  if (m_buffer.IsReadOnly() || style == m_buffer.LineEndStyle()) return;
  m_buffer.SetLineEndStyle(style);
  m_buffer.SetModified(true);
}

std::optional<DocumentPrompt> DocumentFile::ToggleReadOnly() {
  m_buffer.SetReadOnly(!m_buffer.IsReadOnly());
  if (!m_buffer.IsReadOnly()) return {};
  return DocumentPrompt::NowReadOnly();
}

// Closing and recovery

std::optional<DocumentPrompt> DocumentFile::QuestionBeforeClose() const {
  if (!HoldsUnsavedText()) return {};
  StringId hint = StringId::kSaveChangesHint;
  if (HasPath() && !FileIdentity::Of(m_path).exists) {
    hint = StringId::kFileDeletedHint;
  } else if (m_disk == DiskState::kDiffers) {
    hint = StringId::kFileDiffersHint;
  }
  return DocumentPrompt::SaveChanges(m_title, hint);
}

void DocumentFile::Close(CloseReason reason) {
  const bool discarded = reason == CloseReason::kDiscarded;
  const bool unsaved = discarded || HoldsUnsavedText();
  if (HasPath() && !unsaved && m_services.marks != nullptr) {
    line_marks::Save(m_buffer, m_path, *m_services.marks);
  }
  const bool emptyAndUnnamed = !HasPath() && m_buffer.EndOfText() == TextPosition{};
  if (!unsaved || discarded || emptyAndUnnamed) m_journal.Remove();
}

void DocumentFile::BeginRecovered(const RecoverableDocument& lost, bool inItsFile) {
  if (inItsFile && Open(lost.Path())) return;
  New(lost.Path().empty() ? lost.Title() : FileName(lost.Path()));
  if (!inItsFile) return;
  SetPath(lost.Path());  // the file has gone or cannot be read: a save puts it there again
  m_journal.Restart(m_path, m_title, {});
  SetDisk(DiskState::kGone);
}

IoResult DocumentFile::Recover(RecoverableDocument& lost, const std::string& apartAs) {
  CCrystalTextBuffer text;
  const RecoveredText kind = lost.Read(text);
  if (kind == RecoveredText::kNothing) {
    const std::string& name = lost.Path().empty() ? lost.Title() : lost.Path();
    return IoResult::Failure(FormatText(StringId::kJournalUnreadable, {name}));
  }
  if (apartAs.empty()) {
    BeginRecovered(lost, kind == RecoveredText::kWhole && !lost.Path().empty());
  } else {
    New(apartAs);
  }
  m_buffer.SetReadOnly(false);
  const bool styleDiffers = m_buffer.LineEndStyle() != text.LineEndStyle();
  m_buffer.SetLineEndStyle(text.LineEndStyle());
  if (!ReplaceDifference(m_buffer, text) && styleDiffers) m_buffer.SetModified(true);
  // The old journal stays until the text is safe in the new one.
  if (m_journal.Sync()) lost.Discard();
  return IoResult::Success();
}

}  // namespace quill
