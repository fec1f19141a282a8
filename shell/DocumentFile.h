#pragma once
#include <cstdint>
#include <optional>
#include <string>

#include "base/IoResult.h"
#include "shell/DocumentPrompt.h"
#include "shell/RecoveryJournal.h"
#include "shell/ScriptBuffer.h"

namespace quill {

class LineFlagStore;
class RecoverableDocument;
class RunLog;

/// What a document tells the windows that show it.
class DocumentObserver {
 public:
  virtual ~DocumentObserver() = default;
  virtual void OnModifiedChanged(bool modified) = 0;
  /// The file was loaded or saved: every view records the path and its folder.
  virtual void OnFileRecorded(const std::string& path) = 0;
  /// Path and title are new; the path belongs in the recent-file list.
  virtual void OnPathSet(const std::string& path) = 0;
  /// `Disk` is new.
  virtual void OnDiskStateChanged() = 0;
};

/// What a document works with; all of it outlives the document, and all of it may be missing.
struct DocumentServices {
  LineFlagStore* marks = nullptr;
  const RunLog* log = nullptr;
  DocumentObserver* observer = nullptr;
  std::string recoveryFolder;  ///< empty: no journals
};

/// One script file and its text: opens, saves, reloads, and notices changes on disk. Without a window:
/// what the user is to be asked or told comes back as a `DocumentPrompt` or an `IoResult`.
class DocumentFile {
 public:
  explicit DocumentFile(const DocumentServices& services);
  DocumentFile(const DocumentFile&) = delete;
  DocumentFile& operator=(const DocumentFile&) = delete;

  /// An empty text without a file.
  void New(const std::string& title);
  /// Loads the file with its own line ends. One that cannot be opened, or fails half-way, leaves all as it
  /// was.
  IoResult Open(const std::string& path);
  /// Loads the document's file again, whatever was changed. Keeping the caret is the caller's. After a
  /// failure text, history and journal are as they were.
  IoResult Reload();
  /// Saves to the document's file, which it must have. After a failure the old file is whole, and the
  /// text still modified. With `keepBak` the old file stays under its name with ".bak" appended, unless
  /// it holds the text already: then the older ".bak" is worth more.
  IoResult Save(bool keepBak);
  /// Saves to another file, which becomes the document's; `PathForSave` is applied.
  IoResult SaveAs(const std::string& chosen, bool keepBak);
  /// Where a save under the name that the user chose goes: the first one gets ".vsl" if it has no
  /// extension.
  std::string PathForSave(const std::string& chosen) const;
  /// The name to offer when the user is asked for one.
  std::string SuggestedName() const;

  /// What became of the file while it was open, as far as the document has noticed.
  enum class DiskState {
    kAsKnown,
    kDiffers,  ///< another program has written it, and the text here was kept
    kGone,
  };
  DiskState Disk() const { return m_disk; }
  /// Looks whether the file is still there. The text of one that has gone is kept in the journal.
  void LookForFile();
  /// Asks once for each change of the file on disk that the document did not make itself.
  std::optional<DocumentPrompt> CheckOnDisk();
  /// There is text here that its file does not hold: it was changed since the file was read or written,
  /// whatever a backup copy made of the modified flag, or the file has gone, or its new contents were
  /// refused. Looks into the file when it must: for decisions, not for every key.
  bool HoldsUnsavedText() const;
  /// What is known of that without looking; errs on the side of true.
  bool MayHoldUnsavedText() const { return IsModified() || m_journal.HasChanges(); }
  /// The answer to `CheckOnDisk` was No, or the file could not be read: nobody else has the text now.
  void KeepText();
  /// The question before the user's own Reload; nothing when no changes would go.
  std::optional<DocumentPrompt> QuestionBeforeReload() const;
  /// What stands between the lines from the next save on; not while read-only. `style` is 0, 1 or 2.
  void SetLineEndStyle(int32_t style);
  /// Says so when the text became read-only.
  std::optional<DocumentPrompt> ToggleReadOnly();

  enum class CloseReason {
    kDiscarded,  ///< the user was asked and did not want the text
    kNotAsked,   ///< nothing seemed to be unsaved
  };
  /// The question before closing; nothing when its file holds the text.
  std::optional<DocumentPrompt> QuestionBeforeClose() const;
  /// The last call before the document goes. The recovery journal goes with it, unless nobody was asked
  /// and the file does not hold the text.
  void Close(CloseReason reason);

  /// Brings back what an earlier process left. A text that has a file opens that file and differs from
  /// it by one step that can be undone; one that cannot be placed in its file becomes a new document, and so
  /// does any under the title `apartAs`, if there is one.
  IoResult Recover(RecoverableDocument& lost, const std::string& apartAs = {});
  /// For a timer of one second, see RecoveryJournal::Flush.
  IoResult FlushJournal() { return m_journal.Flush(); }
  /// How often the text has changed so far.
  uint64_t ChangeCount() const { return m_journal.ChangeCount(); }
  /// For moments when nobody types.
  IoResult SyncJournal() { return m_journal.Sync(); }

  ScriptBuffer& Buffer() { return m_buffer; }
  const ScriptBuffer& Buffer() const { return m_buffer; }
  bool IsModified() const { return m_buffer.IsModified(); }
  bool HasPath() const { return !m_path.empty(); }
  /// Absolute; empty for a document without a file.
  const std::string& Path() const { return m_path; }
  /// The file's name, or what `New` was given.
  const std::string& Title() const { return m_title; }
  /// Of the file as the document knows it, in seconds since 1970.
  int64_t LastWriteTime() const { return m_lastWriteTime; }
  /// Whether the path leads to this document's file.
  bool HoldsFile(const std::string& path) const;

 private:
  IoResult Load(const std::string& path);
  IoResult SaveTo(const std::string& path, bool keepBak);
  void SetPath(const std::string& path);
  void SetDisk(DiskState state);
  void Log(std::string_view message) const;
  void BeginRecovered(const RecoverableDocument& lost, bool inItsFile);

  DocumentServices m_services;
  ScriptBuffer m_buffer;
  RecoveryJournal m_journal;
  std::string m_path;
  std::string m_title;
  int64_t m_lastWriteTime = 0;
  DiskState m_disk = DiskState::kAsKnown;
};

}  // namespace quill
