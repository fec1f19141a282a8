#pragma once
#include <sys/resource.h>

#include <csignal>

namespace quill {

/// While it lives, no file can be written beyond so many bytes: writes fail as on a full disk.
class FileSizeLimit {
 public:
  explicit FileSizeLimit(rlim_t bytes) {
    std::signal(SIGXFSZ, SIG_IGN);
    getrlimit(RLIMIT_FSIZE, &m_before);
    const rlimit limited{bytes, m_before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limited);
  }
  FileSizeLimit(const FileSizeLimit&) = delete;
  FileSizeLimit& operator=(const FileSizeLimit&) = delete;
  ~FileSizeLimit() { setrlimit(RLIMIT_FSIZE, &m_before); }

 private:
  rlimit m_before{};
};

}  // namespace quill
