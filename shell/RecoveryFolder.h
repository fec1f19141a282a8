#pragma once
#include <cstdint>
#include <string>
#include <vector>

#include "shell/JournalFile.h"
#include "shell/JournalReplay.h"

namespace quill {

/// The text of one document that a process left behind unsaved. While it lives, no other running copy
/// is offered the same.
class RecoverableDocument {
 public:
  RecoverableDocument(JournalFile file, ReplayResult found);

  /// Of the document's file; empty for a document that never had one.
  const std::string& Path() const { return m_found.header->path; }
  /// Of a document without a file.
  const std::string& Title() const { return m_found.header->title; }
  /// When the text was last written down, in seconds since 1970.
  int64_t Time() const { return m_file.Time(); }
  RecoveredText Kind() const { return m_found.text; }
  bool CutShort() const { return m_found.cutShort; }
  /// The document's file is not as it was when the text was based on it: recovering shows its present
  /// state as what undo leads to.
  bool FileChangedSince() const;

  /// Puts the text into a buffer, whose old text is replaced.
  RecoveredText Read(CCrystalTextBuffer& text) const;
  /// Recovered and safe elsewhere, or not wanted: deletes what was kept.
  void Discard() { m_file.Remove(); }

 private:
  JournalFile m_file;
  ReplayResult m_found;
};

/// "$XDG_STATE_HOME/quill/recovery", by default under "~/.local/state"; empty when neither is known.
std::string DefaultRecoveryFolder();

/// What earlier processes left in the folder, oldest first. Journals of running copies are passed over;
/// those whose file holds the text anyhow, and those without any text, are deleted.
std::vector<RecoverableDocument> FindRecoverable(const std::string& folder);

}  // namespace quill
