#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "shell/AttemptMark.h"

namespace quill {

AttemptMark::AttemptMark(const std::string& path) : m_path(path) {
  std::error_code ignored;
  std::filesystem::create_directories(std::filesystem::path(path).parent_path(), ignored);
  // Not waiting: a pipe may stand there.
  m_file = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0600);
  if (m_file < 0) return;
  struct stat status {};
  const bool isMine =
      ::flock(m_file, LOCK_EX | LOCK_NB) == 0 && ::fstat(m_file, &status) == 0 && S_ISREG(status.st_mode);
  if (isMine) {
    m_failedBefore = status.st_size > 0;
    if (m_failedBefore || ::write(m_file, "1", 1) == 1) return;
  }
  ::close(m_file);
  m_file = -1;
}

AttemptMark::~AttemptMark() {
  if (m_file < 0) return;
  ::unlink(m_path.c_str());
  ::close(m_file);
}

}  // namespace quill
