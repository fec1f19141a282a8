#pragma once
#include <string>
#include <string_view>

#include "base/IoResult.h"

namespace quill {

/// Writes a file so that its old contents stay whole until the new ones are safe on the disk: a
/// temporary file in the same folder (name prefix "CRE"), flushed, then renamed over the target.
/// A symbolic link is followed to its file; an existing target's permissions and, where the system
/// allows, its owner are kept. Whatever is not committed leaves no trace.
class AtomicFile {
 public:
  explicit AtomicFile(std::string path);
  AtomicFile(const AtomicFile&) = delete;
  AtomicFile& operator=(const AtomicFile&) = delete;
  ~AtomicFile();

  /// Refuses a target that is not a regular file or may not be written.
  IoResult Open();
  IoResult Write(std::string_view bytes);
  /// With `backupSuffix` not empty, an existing target stays under its name with the suffix appended.
  IoResult Commit(const std::string& backupSuffix = {});

 private:
  IoResult FlushBuffer();
  IoResult WriteOut(std::string_view bytes);
  IoResult KeepBackup(const std::string& backupPath);
  IoResult Fail(StringId what, int errorNumber);
  void Abandon();

  std::string m_asked;   ///< as named by the caller, for messages
  std::string m_target;  ///< with links resolved
  std::string m_temporary;
  std::string m_buffer;
  int m_descriptor = -1;
  bool m_targetExists = false;
};

}  // namespace quill
