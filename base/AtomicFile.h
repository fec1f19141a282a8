#pragma once
#include <string>
#include <string_view>

#include "base/IoResult.h"

struct stat;

namespace quill {

/// Writes a file so that its old contents stay whole until the new ones are safe on the disk: a
/// temporary file in the same folder (name prefix "CRE"), flushed, then renamed over the target.
/// A symbolic link is followed to its file; an existing target's permissions and, where the system
/// allows, its owner, extended attributes and access lists are kept. Whatever is not committed leaves no
/// trace.
///
/// A target that has other names (hard links), or may be written but not replaced (a folder that is
/// read-only, or sticky and of somebody else), is written in place instead: the temporary file, which then
/// lies in the state folder where the target's refuses it, is whole and flushed before, and stays if that
/// fails half-way.
class AtomicFile {
 public:
  explicit AtomicFile(std::string path);
  AtomicFile(const AtomicFile&) = delete;
  AtomicFile& operator=(const AtomicFile&) = delete;
  ~AtomicFile();

  /// Refuses a target that is not a regular file or may not be written.
  IoResult Open();
  IoResult Write(std::string_view bytes);
  /// With `backupSuffix` not empty, an existing target stays under its name with the suffix appended, unless
  /// that name would be too long for the system or its folder takes no new file.
  IoResult Commit(const std::string& backupSuffix = {});

 private:
  IoResult FlushBuffer();
  IoResult WriteOut(std::string_view bytes);
  /// Creates the temporary file with these permissions at most; false leaves `errno`.
  bool CreateIn(const std::string& folder, unsigned mode);
  bool CreateInStateFolder();
  void TakeOver(const struct stat& old);
  IoResult KeepBackup(const std::string& backupPath);
  IoResult KeepCopy(const std::string& backupPath);
  IoResult Replace();
  IoResult WriteInPlace();
  IoResult Fail(StringId what, int errorNumber);
  void Abandon();

  std::string m_asked;   ///< as named by the caller, for messages
  std::string m_target;  ///< with links resolved
  std::string m_temporary;
  std::string m_buffer;
  int m_descriptor = -1;
  bool m_targetExists = false;
  bool m_inPlace = false;
};

}  // namespace quill
