#pragma once
#include <cstdint>
#include <string>

#include "base/IoResult.h"
#include "shell/FileIdentity.h"
#include "shell/JournalFile.h"
#include "text/buffer/BufferObserver.h"

namespace quill {

class CCrystalTextBuffer;

/// Keeps what is typed into one document and not saved, in a file of the recovery folder, so that it
/// outlives the process. Every change of the text, undo and redo included, becomes a record in memory;
/// `Flush`, called by a timer, writes them. A text up to `kSnapshotBytes` is written whole first; a
/// longer one refers to its file on disk, which stays reachable by a second link where the file system
/// allows, and is identified by size, time and a checksum of samples where it does not.
///
/// What was written stays until `Restart` or `Remove`: neither the destructor nor a backup copy, which
/// clears the modified flag, removes it.
class RecoveryJournal final : public BufferObserver {
 public:
  static constexpr size_t kSnapshotBytes = size_t{4} << 20;
  /// As many bytes wait in memory at most; more are written at once.
  static constexpr size_t kPendingBytes = size_t{2} << 20;

  /// Attaches to the buffer, which must outlive this. Nothing is kept with an empty folder.
  RecoveryJournal(CCrystalTextBuffer& buffer, std::string folder);
  RecoveryJournal(const RecoveryJournal&) = delete;
  RecoveryJournal& operator=(const RecoveryJournal&) = delete;
  ~RecoveryJournal() override;

  /// From now on the file of that path and identity (no file when the path is empty: one empty line)
  /// holds the buffer's text. What was journalled goes away.
  void Restart(const std::string& path, const std::string& title, const FileIdentity& file);
  /// The user has decided: what was journalled goes away.
  void Remove();
  /// Writes what is pending; without waiting for the disk. After a failure it is tried again at the
  /// next call.
  IoResult Flush();
  /// `Flush`, then waits for the disk: for moments when nobody types.
  IoResult Sync();
  /// The file has gone or holds something else by now: the text is to be kept though nobody changed it.
  void LoseFile();
  /// The text is not what the file held at the last `Restart` or `Remove`, as far as is known.
  bool HasChanges() const;
  /// How often the text has changed so far.
  uint64_t ChangeCount() const { return m_changeCount; }

  void OnBufferUpdate(const BufferObserver* source, const TextChange* change, uint32_t hints,
                      int32_t line) override;

 private:
  void RecordInsertion(TextRange range);
  IoResult Begin();
  IoResult WriteSnapshot();
  IoResult WriteReference(const std::string& keptName);
  IoResult AppendPending();
  bool TextExceeds(size_t bytes) const;
  bool FileIsUnchanged() const;
  bool IsOvergrown();
  void ForgetRecords();
  void NeedSnapshot();

  CCrystalTextBuffer& m_buffer;
  std::string m_folder;
  std::string m_path;
  std::string m_title;
  FileIdentity m_fileIdentity;
  int32_t m_baseStyle = 0;     ///< the buffer's style when the file held the text
  int32_t m_writtenStyle = 0;  ///< as the records so far tell it
  std::string m_pending;
  JournalFile m_file;
  uint64_t m_editBytes = 0;              ///< written since the last whole text, or since the beginning
  uint64_t m_compactAt = kPendingBytes;  ///< so many edits may outgrow the text
  uint64_t m_changeCount = 0;
  bool m_changed = false;
  bool m_needsSnapshot = false;  ///< records or their base are missing; only the whole text helps
};

}  // namespace quill
