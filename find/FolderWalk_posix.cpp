#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <set>
#include <utility>

#include "find/FolderWalk.h"

namespace quill {
namespace {

class Walk {
 public:
  Walk(const std::function<bool(std::string_view)>& wanted, const std::function<bool(InputFile&)>& take)
      : m_wanted(wanted), m_take(take) {}

  int64_t Start(const std::string& directory) {
    std::error_code error;
    const std::filesystem::path full = std::filesystem::absolute(directory, error);
    m_path = error ? directory : full.string();
    while (!m_path.empty() && m_path.back() == '/') m_path.pop_back();
    const int descriptor = open(directory.c_str(), kDirectoryFlags);
    if (descriptor < 0) {
      ++m_skipped;
    } else {
      EnterFolder(descriptor);
    }
    return m_skipped;
  }

 private:
  static constexpr int kDirectoryFlags = O_RDONLY | O_DIRECTORY | O_CLOEXEC;
  /// A name that became a pipe or a terminal since it was listed must not block or be acquired.
  static constexpr int kFileFlags = O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY;

  /// Takes the descriptor over.
  void EnterFolder(int descriptor) {
    struct stat status {};
    if (fstat(descriptor, &status) != 0 || !m_entered.emplace(status.st_dev, status.st_ino).second) {
      close(descriptor);
      return;
    }
    DIR* folder = fdopendir(descriptor);
    if (folder == nullptr) {
      ++m_skipped;
      close(descriptor);
      return;
    }
    while (true) {
      errno = 0;
      const dirent* entry = readdir(folder);
      if (entry == nullptr) break;
      Visit(descriptor, *entry);
    }
    if (errno != 0) ++m_skipped;
    closedir(folder);
  }

  void Visit(int folder, const dirent& entry) {
    const std::string_view name = entry.d_name;
    if (name == "." || name == "..") return;
    const bool wanted = m_wanted(name);
    unsigned char type = entry.d_type;
    if (type == DT_LNK || type == DT_UNKNOWN) type = TypeBehind(folder, entry.d_name, wanted);
    const bool isFolder = type == DT_DIR;
    if (!isFolder && (type != DT_REG || !wanted)) return;
    const int descriptor = openat(folder, entry.d_name, isFolder ? kDirectoryFlags : kFileFlags);
    if (descriptor < 0) {
      if (errno != ENOENT) ++m_skipped;
      return;
    }
    const size_t length = m_path.size();
    m_path.append("/").append(name);
    if (isFolder) {
      EnterFolder(descriptor);
    } else {
      m_file.Adopt(descriptor, m_path);
      if (!m_take(m_file)) ++m_skipped;
      m_file.Close();
    }
    m_path.resize(length);
  }

  /// What a link leads to: directory, regular file, or DT_UNKNOWN for anything else.
  unsigned char TypeBehind(int folder, const char* name, bool wanted) {
    struct stat status {};
    if (fstatat(folder, name, &status, 0) != 0) {
      if (wanted && errno != ENOENT) ++m_skipped;
      return DT_UNKNOWN;
    }
    if (S_ISDIR(status.st_mode)) return DT_DIR;
    return S_ISREG(status.st_mode) ? DT_REG : DT_UNKNOWN;
  }

  const std::function<bool(std::string_view)>& m_wanted;
  const std::function<bool(InputFile&)>& m_take;
  std::string m_path;                           ///< of what is being visited
  InputFile m_file;                             ///< one for all, so that its path's memory serves again
  std::set<std::pair<dev_t, ino_t>> m_entered;  ///< directories
  int64_t m_skipped = 0;
};

}  // namespace

int64_t WalkFolder(const std::string& directory, const std::function<bool(std::string_view)>& wanted,
                   const std::function<bool(InputFile&)>& take) {
  return Walk(wanted, take).Start(directory);
}

}  // namespace quill
