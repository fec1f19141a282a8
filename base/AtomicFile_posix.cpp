#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <random>

#include "base/AtomicFile.h"

#include "res/Strings.h"

namespace quill {
namespace {

constexpr size_t kBufferBytes = size_t{256} << 10;
constexpr int kNameAttempts = 100;

std::string FolderOf(const std::string& path) {
  const size_t slash = path.rfind('/');
  if (slash == std::string::npos) return ".";
  return slash == 0 ? "/" : path.substr(0, slash);
}

/// The file a chain of links ends at, also when that file does not exist yet.
std::string ResolveLinks(std::string path) {
  constexpr int kDeepestChain = 40;
  for (int i = 0; i < kDeepestChain; ++i) {
    char target[4096];
    const ssize_t length = readlink(path.c_str(), target, sizeof target);
    if (length <= 0 || length == static_cast<ssize_t>(sizeof target)) break;
    const std::string next(target, static_cast<size_t>(length));
    path = next.front() == '/' ? next : FolderOf(path) + "/" + next;
  }
  return path;
}

std::string RandomSuffix() {
  static const char kDigits[] = "0123456789abcdef";
  std::random_device device;
  std::string suffix;
  for (int i = 0; i < 8; ++i) suffix += kDigits[device() % 16];
  return suffix;
}

}  // namespace

AtomicFile::AtomicFile(std::string path) : m_asked(std::move(path)) {}

AtomicFile::~AtomicFile() {
  Abandon();
}

void AtomicFile::Abandon() {
  if (m_descriptor >= 0) close(m_descriptor);
  m_descriptor = -1;
  if (!m_temporary.empty()) unlink(m_temporary.c_str());
  m_temporary.clear();
}

IoResult AtomicFile::Fail(StringId what, int errorNumber) {
  Abandon();
  return IoResult::FromErrno(what, m_asked, errorNumber);
}

IoResult AtomicFile::Open() {
  m_target = ResolveLinks(m_asked);
  struct stat info {};
  m_targetExists = stat(m_target.c_str(), &info) == 0;
  if (!m_targetExists && errno != ENOENT) return Fail(StringId::kCannotWrite, errno);
  if (m_targetExists && S_ISDIR(info.st_mode)) return Fail(StringId::kCannotWrite, EISDIR);
  if (m_targetExists && !S_ISREG(info.st_mode)) {
    return IoResult::Refusal(StringId::kCannotWrite, m_asked, StringId::kReasonNoRegularFile);
  }
  if (m_targetExists && access(m_target.c_str(), W_OK) != 0) return Fail(StringId::kCannotWrite, errno);
  const std::string folder = FolderOf(m_target);
  for (int attempt = 0; attempt < kNameAttempts && m_descriptor < 0; ++attempt) {
    std::string name = folder + "/CRE" + RandomSuffix() + ".tmp";
    m_descriptor = open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (m_descriptor >= 0) m_temporary = std::move(name);
    if (m_descriptor < 0 && errno != EEXIST) break;
  }
  if (m_descriptor < 0) return Fail(StringId::kCannotCreateBeside, errno);
  if (m_targetExists) {
    // The owner may only be given away by root; keeping the group is still worth the attempt.
    if (fchown(m_descriptor, info.st_uid, info.st_gid) != 0) {
      [[maybe_unused]] const int ignored = fchown(m_descriptor, static_cast<uid_t>(-1), info.st_gid);
    }
    if (fchmod(m_descriptor, info.st_mode & 07777) != 0) return Fail(StringId::kCannotSetPermissions, errno);
  }
  m_buffer.reserve(kBufferBytes);
  return IoResult::Success();
}

IoResult AtomicFile::Write(std::string_view bytes) {
  if (m_buffer.size() + bytes.size() > kBufferBytes) {
    if (IoResult flushed = FlushBuffer(); !flushed) return flushed;
    if (bytes.size() >= kBufferBytes) return WriteOut(bytes);
  }
  m_buffer.append(bytes);
  return IoResult::Success();
}

IoResult AtomicFile::FlushBuffer() {
  IoResult written = WriteOut(m_buffer);
  m_buffer.clear();
  return written;
}

IoResult AtomicFile::WriteOut(std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = write(m_descriptor, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return Fail(StringId::kCannotWrite, written == 0 ? ENOSPC : errno);
    bytes.remove_prefix(static_cast<size_t>(written));
  }
  return IoResult::Success();
}

IoResult AtomicFile::KeepBackup(const std::string& backupPath) {
  // A second link first, so that the target never goes missing; plain renaming where links are unknown.
  const std::string link = m_temporary + ".bak";
  if (::link(m_target.c_str(), link.c_str()) == 0) {
    const bool kept = rename(link.c_str(), backupPath.c_str()) == 0;
    const int error = errno;
    unlink(link.c_str());  // still there when both names already were the same file
    return kept ? IoResult::Success() : Fail(StringId::kCannotKeepBackup, error);
  }
  if (rename(m_target.c_str(), backupPath.c_str()) != 0) return Fail(StringId::kCannotKeepBackup, errno);
  return IoResult::Success();
}

IoResult AtomicFile::Commit(const std::string& backupSuffix) {
  if (IoResult flushed = FlushBuffer(); !flushed) return flushed;
  if (fsync(m_descriptor) != 0) return Fail(StringId::kCannotFlush, errno);
  const int closed = close(m_descriptor);
  m_descriptor = -1;
  if (closed != 0) return Fail(StringId::kCannotWrite, errno);
  const bool backup = m_targetExists && !backupSuffix.empty();
  const std::string backupPath = m_target + backupSuffix;
  if (backup) {
    if (IoResult kept = KeepBackup(backupPath); !kept) return kept;
  }
  if (rename(m_temporary.c_str(), m_target.c_str()) != 0) {
    const int error = errno;
    if (backup && access(m_target.c_str(), F_OK) != 0) rename(backupPath.c_str(), m_target.c_str());
    return Fail(StringId::kCannotReplace, error);
  }
  m_temporary.clear();
  const int folder = open(FolderOf(m_target).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (folder >= 0) {
    fsync(folder);
    close(folder);
  }
  return IoResult::Success();
}

}  // namespace quill
