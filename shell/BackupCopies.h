#pragma once
#include <cstdint>
#include <span>
#include <string>

#include "shell/Clock.h"

namespace quill {

class CCrystalTextBuffer;

/// The periodic copies of open scripts in the folder "qil_backup" beside the program: one a file name,
/// so that files named alike in different folders share one and the later copy wins.
class BackupCopies {
 public:
  struct Settings {
    bool enabled = true;
    int32_t removeDays = 30;  ///< copies older than this many whole days are deleted
  };

  explicit BackupCopies(const std::string& programFolder, Clock clock = SystemTime);

  /// Saves the buffer once for each of the document's views, named by the path that the view has
  /// recorded, and prunes after each. Clears the buffer's modified flag: a document that was only
  /// backed up does not count as modified. A copy may be read by whom the file lets read it, and written by
  /// nobody; a link in its place is replaced. A copy that cannot be made is passed over silently.
  /// Throws what `Prune` throws.
  void BackUp(CCrystalTextBuffer& buffer, std::span<const std::string> viewPaths,
              const Settings& settings) const;

  /// Deletes the files in the backup folder whose age in whole days is above `removeDays`. Throws
  /// std::invalid_argument, leaving the files not yet looked at, when a file's time has no calendar date.
  void Prune(int32_t removeDays) const;

  const std::string& Folder() const { return m_folder; }

 private:
  void Copy(CCrystalTextBuffer& buffer, const std::string& path) const;

  std::string m_folder;
  Clock m_clock;
};

}  // namespace quill
