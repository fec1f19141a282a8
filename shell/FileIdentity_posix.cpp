#include <sys/stat.h>

#include "shell/FileIdentity.h"

namespace quill {
namespace {

FileIdentity FromStat(const struct stat& info) {
  if (!S_ISREG(info.st_mode)) return {};
  return {true, info.st_size, info.st_mtim.tv_sec, static_cast<int32_t>(info.st_mtim.tv_nsec)};
}

}  // namespace

FileIdentity FileIdentity::Of(const std::string& path) {
  struct stat info {};
  return stat(path.c_str(), &info) == 0 ? FromStat(info) : FileIdentity{};
}

FileIdentity FileIdentity::OfDescriptor(int descriptor) {
  struct stat info {};
  return fstat(descriptor, &info) == 0 ? FromStat(info) : FileIdentity{};
}

bool IsSameFile(const std::string& a, const std::string& b) {
  struct stat first {
  }, second{};
  return stat(a.c_str(), &first) == 0 && stat(b.c_str(), &second) == 0 && first.st_dev == second.st_dev &&
         first.st_ino == second.st_ino;
}

}  // namespace quill
