#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

#include "settings/SettingsFile.h"

namespace quill::settings_file {

namespace {

constexpr mode_t kOwnerOnly = 0700;
constexpr int kMaxNames = 1000;
/// Side files of an SQLite database in write-ahead mode.
constexpr const char* kLogSuffix = "-wal";
constexpr const char* kSharedMemorySuffix = "-shm";

Identity ToIdentity(const struct stat& info) {
  return Identity{static_cast<uint64_t>(info.st_dev), static_cast<uint64_t>(info.st_ino)};
}

std::string FreeName(const std::string& path) {
  for (int n = 1; n <= kMaxNames; ++n) {
    std::string name = path + ".damaged" + (n == 1 ? "" : "-" + std::to_string(n));
    struct stat info;
    if (lstat(name.c_str(), &info) != 0) return name;
  }
  return {};
}

/// The log goes first: a log left behind would be replayed into the next file of that name.
bool RenameWithLog(const std::string& from, const std::string& to) {
  std::rename((from + kLogSuffix).c_str(), (to + kLogSuffix).c_str());
  unlink((from + kSharedMemorySuffix).c_str());
  return std::rename(from.c_str(), to.c_str()) == 0;
}

}  // namespace

std::string DefaultPath(const char* xdgConfigHome, const char* home) {
  std::string folder;
  if (xdgConfigHome != nullptr && xdgConfigHome[0] == '/') {
    folder = xdgConfigHome;
  } else if (home != nullptr && home[0] != '\0') {
    folder = std::string(home) + "/.config";
  } else {
    return {};
  }
  return folder + "/quill/settings.db";
}

void MakeFolderFor(const std::string& path) {
  for (size_t end = path.find('/', 1); end != std::string::npos; end = path.find('/', end + 1)) {
    mkdir(path.substr(0, end).c_str(), kOwnerOnly);
  }
}

std::string ResolveLinks(const std::string& path) {
  char* const resolved = realpath(path.c_str(), nullptr);
  std::string result = resolved == nullptr ? path : resolved;
  std::free(resolved);
  return result;
}

std::optional<Identity> IdentityOf(const std::string& path) {
  struct stat info;
  if (stat(path.c_str(), &info) != 0) return std::nullopt;
  return ToIdentity(info);
}

SetAsideResult SetAside(const std::string& path, const Identity& damaged) {
  const int fd = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0) return {SetAsideOutcome::kReplacedByAnother, {}};
  // The lock on the damaged file itself makes "look, then rename" one step among several copies.
  SetAsideResult result{SetAsideOutcome::kFailed, {}};
  struct stat info;
  if (flock(fd, LOCK_EX) == 0 && fstat(fd, &info) == 0) {
    if (ToIdentity(info) != damaged || IdentityOf(path) != damaged) {
      result.outcome = SetAsideOutcome::kReplacedByAnother;
    } else if (const std::string name = FreeName(path); !name.empty() && RenameWithLog(path, name)) {
      result = {SetAsideOutcome::kDone, name};
    }
  }
  close(fd);
  return result;
}

}  // namespace quill::settings_file
