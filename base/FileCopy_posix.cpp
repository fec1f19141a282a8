#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <string_view>
#include <utility>
#include <vector>

#include "base/FileCopy.h"

namespace quill::file_copy {
namespace {

constexpr size_t kChunkBytes = size_t{256} << 10;

/// Closes itself; -1 when opening failed.
class Descriptor {
 public:
  Descriptor(const std::string& path, int flags) : m_descriptor(open(path.c_str(), flags | O_CLOEXEC)) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() { Close(); }
  int Get() const { return m_descriptor; }
  /// 0, or the error number.
  int Close() {
    const int descriptor = std::exchange(m_descriptor, -1);
    return descriptor < 0 || close(descriptor) == 0 ? 0 : errno;
  }

 private:
  int m_descriptor;
};

int WriteAll(int descriptor, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = write(descriptor, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return written == 0 ? ENOSPC : errno;
    bytes.remove_prefix(static_cast<size_t>(written));
  }
  return 0;
}

/// A file system that knows no reserving is written to as it is.
int MakeRoom(int descriptor, off_t before, off_t wanted) {
  if (wanted <= before) return 0;
  const int error = posix_fallocate(descriptor, before, wanted - before);
  if (error == 0 || error == EOPNOTSUPP || error == EINVAL || error == ENOSYS) return 0;
  [[maybe_unused]] const int ignored = ftruncate(descriptor, before);
  return error;
}

}  // namespace

int InPlace(const std::string& from, const std::string& to, bool& untouched) {
  untouched = true;
  Descriptor source(from, O_RDONLY);
  if (source.Get() < 0) return errno;
  Descriptor target(to, O_WRONLY);
  if (target.Get() < 0) return errno;
  struct stat wanted {};
  struct stat before {};
  if (fstat(source.Get(), &wanted) != 0 || fstat(target.Get(), &before) != 0) return errno;
  if (const int error = MakeRoom(target.Get(), before.st_size, wanted.st_size); error != 0) return error;
  untouched = false;
  std::vector<char> chunk(kChunkBytes);
  for (;;) {
    const ssize_t count = read(source.Get(), chunk.data(), chunk.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return errno;
    if (count == 0) break;
    if (const int error = WriteAll(target.Get(), {chunk.data(), static_cast<size_t>(count)}); error != 0) {
      return error;
    }
  }
  if (ftruncate(target.Get(), wanted.st_size) != 0 || fsync(target.Get()) != 0) return errno;
  return target.Close();
}

void Attributes(const std::string& from, int toDescriptor) {
  const ssize_t size = listxattr(from.c_str(), nullptr, 0);
  if (size <= 0) return;
  std::string names(static_cast<size_t>(size), '\0');
  const ssize_t length = listxattr(from.c_str(), names.data(), names.size());
  if (length <= 0) return;
  names.resize(static_cast<size_t>(length));
  std::string value;
  for (size_t at = 0; at < names.size(); at = names.find('\0', at) + 1) {
    const char* name = names.c_str() + at;
    const ssize_t bytes = getxattr(from.c_str(), name, nullptr, 0);
    if (bytes < 0) continue;
    value.resize(static_cast<size_t>(bytes));
    const ssize_t read = getxattr(from.c_str(), name, value.data(), value.size());
    if (read >= 0) {
      [[maybe_unused]] const int ignored =
          fsetxattr(toDescriptor, name, value.data(), static_cast<size_t>(read), 0);
    }
  }
}

}  // namespace quill::file_copy
