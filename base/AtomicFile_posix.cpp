#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <random>
#include <system_error>
#include <utility>

#include "base/AtomicFile.h"
#include "base/FileCopy.h"
#include "base/StateFolder.h"
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

/// Whether the system lets nobody but others rename over the file.
bool IsStickyForeign(const std::string& folder, const struct stat& file) {
  struct stat info {};
  const uid_t user = geteuid();
  return user != 0 && file.st_uid != user && stat(folder.c_str(), &info) == 0 &&
         (info.st_mode & S_ISVTX) != 0 && info.st_uid != user;
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

bool AtomicFile::CreateIn(const std::string& folder, unsigned mode) {
  for (int attempt = 0; attempt < kNameAttempts; ++attempt) {
    std::string name = folder + "/CRE" + RandomSuffix() + ".tmp";
    m_descriptor = open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
    if (m_descriptor >= 0) m_temporary = std::move(name);
    if (m_descriptor >= 0 || errno != EEXIST) break;
  }
  return m_descriptor >= 0;
}

bool AtomicFile::CreateInStateFolder() {
  const std::string folder = StateFolder();
  std::error_code failed;
  if (!folder.empty()) std::filesystem::create_directories(folder, failed);
  return !folder.empty() && CreateIn(folder, S_IRUSR | S_IWUSR);
}

/// Owner, permissions and attributes of the old file, as far as the system lets us: some file systems know
/// none.
void AtomicFile::TakeOver(const struct stat& old) {
  // The owner may only be given away by root; keeping the group is still worth the attempt.
  if (fchown(m_descriptor, old.st_uid, old.st_gid) != 0) {
    [[maybe_unused]] const int ignored = fchown(m_descriptor, static_cast<uid_t>(-1), old.st_gid);
  }
  file_copy::Attributes(m_target, m_descriptor);
  [[maybe_unused]] const int ignored = fchmod(m_descriptor, old.st_mode & 07777);
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
  m_inPlace = m_targetExists && (info.st_nlink > 1 || IsStickyForeign(folder, info));
  // Nobody may read the new text who may not read the old one.
  const unsigned mode = m_targetExists ? info.st_mode & 0777 : 0666;
  if (!CreateIn(folder, mode | S_IWUSR)) {
    const int error = errno;
    m_inPlace = m_targetExists && (error == EACCES || error == EPERM);
    if (!m_inPlace || !CreateInStateFolder()) return Fail(StringId::kCannotCreateBeside, error);
  }
  if (m_targetExists && !m_inPlace) TakeOver(info);
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
  if (m_inPlace) return KeepCopy(backupPath);
  // A second link first, so that the target never goes missing; plain renaming where links are unknown.
  const std::string link = m_temporary + ".bak";
  if (::link(m_target.c_str(), link.c_str()) == 0) {
    const bool kept = rename(link.c_str(), backupPath.c_str()) == 0;
    const int error = errno;
    unlink(link.c_str());  // still there when both names already were the same file
    return kept || error == ENAMETOOLONG ? IoResult::Success() : Fail(StringId::kCannotKeepBackup, error);
  }
  if (rename(m_target.c_str(), backupPath.c_str()) != 0 && errno != ENAMETOOLONG) {
    return Fail(StringId::kCannotKeepBackup, errno);
  }
  return IoResult::Success();
}

/// Of a target that keeps its names.
IoResult AtomicFile::KeepCopy(const std::string& backupPath) {
  AtomicFile copy(backupPath);
  struct stat info {};
  const bool readable = stat(m_target.c_str(), &info) == 0;
  if (!readable || !copy.CreateIn(FolderOf(m_target), (info.st_mode & 0777) | S_IWUSR)) {
    return IoResult::Success();  // the folder takes none
  }
  bool untouched = false;
  const int error = file_copy::InPlace(m_target, copy.m_temporary, untouched);
  if (error != 0) return Fail(StringId::kCannotKeepBackup, error);
  if (rename(copy.m_temporary.c_str(), backupPath.c_str()) == 0) {
    copy.m_temporary.clear();
    return IoResult::Success();
  }
  return errno == ENAMETOOLONG ? IoResult::Success() : Fail(StringId::kCannotKeepBackup, errno);
}

IoResult AtomicFile::Commit(const std::string& backupSuffix) {
  if (IoResult flushed = FlushBuffer(); !flushed) return flushed;
  if (fsync(m_descriptor) != 0) return Fail(StringId::kCannotFlush, errno);
  const int closed = close(m_descriptor);
  m_descriptor = -1;
  if (closed != 0) return Fail(StringId::kCannotWrite, errno);
  const std::string backupPath = m_target + backupSuffix;
  if (m_targetExists && !backupSuffix.empty()) {
    if (IoResult kept = KeepBackup(backupPath); !kept) return kept;
  }
  IoResult done = m_inPlace ? WriteInPlace() : Replace();
  // Nothing but the backup has the old text, where links are unknown.
  if (!done && !backupSuffix.empty() && access(m_target.c_str(), F_OK) != 0) {
    rename(backupPath.c_str(), m_target.c_str());
  }
  return done;
}

IoResult AtomicFile::Replace() {
  if (rename(m_temporary.c_str(), m_target.c_str()) != 0) {
    const int error = errno;
    // A file that is mounted by itself can be written only.
    const bool canBeWritten = m_targetExists && (error == EBUSY || error == EPERM || error == EACCES) &&
                              access(m_target.c_str(), W_OK) == 0;
    return canBeWritten ? WriteInPlace() : Fail(StringId::kCannotReplace, error);
  }
  m_temporary.clear();
  const int folder = open(FolderOf(m_target).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (folder >= 0) {
    fsync(folder);
    close(folder);
  }
  return IoResult::Success();
}

IoResult AtomicFile::WriteInPlace() {
  bool untouched = false;
  const int error = file_copy::InPlace(m_temporary, m_target, untouched);
  if (error != 0 && !untouched) {
    const std::string kept = std::exchange(m_temporary, {});
    const std::string reason = std::generic_category().message(error);
    return IoResult::Failure(FormatText(StringId::kWrittenInPart, {m_asked, reason, kept}));
  }
  if (error != 0) return Fail(StringId::kCannotWrite, error);
  unlink(m_temporary.c_str());
  m_temporary.clear();
  return IoResult::Success();
}

}  // namespace quill
