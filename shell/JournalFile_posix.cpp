#include <fcntl.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <random>
#include <set>
#include <utility>

#include "res/Strings.h"
#include "shell/FileIdentity.h"
#include "shell/JournalFile.h"

namespace quill {
namespace {

namespace fs = std::filesystem;

constexpr const char* kJournalExtension = ".journal";
constexpr const char* kTemporaryExtension = ".tmp";
constexpr const char* kBaseExtension = ".base";

std::string Join(const std::string& folder, const std::string& file) {
  return (fs::path(folder) / file).string();
}

bool Lock(int descriptor) {
  return flock(descriptor, LOCK_EX | LOCK_NB) == 0;
}

bool IsThere(const std::string& path) {
  struct stat info {};
  return lstat(path.c_str(), &info) == 0;
}

/// Deletes a temporary file unless a running copy writes it.
void DeleteUnlessLocked(const std::string& path) {
  const int descriptor = open(path.c_str(), O_RDWR | O_CLOEXEC | O_NOFOLLOW);
  if (descriptor < 0) return;
  if (Lock(descriptor)) unlink(path.c_str());
  close(descriptor);
}

}  // namespace

MappedBytes::MappedBytes(int descriptor) {
  const FileIdentity file = FileIdentity::OfDescriptor(descriptor);
  if (!file.exists || file.size <= 0) return;
  const auto size = static_cast<size_t>(file.size);
  void* bytes = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, descriptor, 0);
  if (bytes != MAP_FAILED) m_bytes = {static_cast<const char*>(bytes), size};
}

MappedBytes::~MappedBytes() {
  if (!m_bytes.empty()) munmap(const_cast<char*>(m_bytes.data()), m_bytes.size());
}

std::string JournalFile::NewName() {
  static const char kDigits[] = "0123456789abcdef";
  std::random_device device;
  std::string name;
  for (int i = 0; i < 16; ++i) name += kDigits[device() % 16];
  return name;
}

std::string JournalFile::PathOf(const std::string& folder, const std::string& name) {
  return Join(folder, name + kJournalExtension);
}

JournalFile::JournalFile(JournalFile&& other) noexcept {
  *this = std::move(other);
}

JournalFile& JournalFile::operator=(JournalFile&& other) noexcept {
  if (this == &other) return *this;
  Close();
  m_folder = std::move(other.m_folder);
  m_name = std::move(other.m_name);
  m_descriptor = std::exchange(other.m_descriptor, -1);
  m_size = std::exchange(other.m_size, 0);
  m_published = std::exchange(other.m_published, false);
  return *this;
}

JournalFile::~JournalFile() {
  Close();
}

void JournalFile::Close() {
  if (m_descriptor < 0) return;
  if (!m_published) unlink(TemporaryPath().c_str());
  close(std::exchange(m_descriptor, -1));
  m_size = 0;
}

std::string JournalFile::TemporaryPath() const {
  return Join(m_folder, m_name + kTemporaryExtension);
}

std::string JournalFile::BasePath() const {
  return Join(m_folder, m_name + kBaseExtension);
}

IoResult JournalFile::Fail(StringId what, int errorNumber) {
  // Names are made for each attempt and tell nothing; the folder makes a failure that lasts one message.
  return IoResult::FromErrno(what, m_folder, errorNumber);
}

IoResult JournalFile::Create(const std::string& folder, const std::string& name) {
  Close();
  m_folder = folder;
  m_name = name;
  m_published = false;
  std::error_code error;
  if (fs::create_directories(folder, error)) fs::permissions(folder, fs::perms::owner_all, error);
  m_descriptor = open(TemporaryPath().c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
  if (m_descriptor < 0) return Fail(StringId::kCannotCreateJournal, errno);
  Lock(m_descriptor);  // nobody else knows the file yet; a system without locks works without them
  return IoResult::Success();
}

bool JournalFile::Adopt(const std::string& folder, const std::string& name) {
  Close();
  m_folder = folder;
  m_name = name;
  const std::string path = PathOf(folder, name);
  // Not blocking: a pipe under the name must not hold up the program.
  m_descriptor = open(path.c_str(), O_RDWR | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK);
  if (m_descriptor < 0) return false;
  m_published = true;
  struct stat ours {
  }, named{};
  // The name may have passed to a rewritten journal between the opening and the lock.
  const bool mine = Lock(m_descriptor) && fstat(m_descriptor, &ours) == 0 && S_ISREG(ours.st_mode) &&
                    stat(path.c_str(), &named) == 0 && ours.st_ino == named.st_ino &&
                    ours.st_dev == named.st_dev;
  if (!mine) {
    Close();
    return false;
  }
  m_size = static_cast<uint64_t>(ours.st_size);
  return true;
}

IoResult JournalFile::Append(std::string_view bytes) {
  size_t done = 0;
  while (done < bytes.size()) {
    const ssize_t written =
        pwrite(m_descriptor, bytes.data() + done, bytes.size() - done, static_cast<off_t>(m_size + done));
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) {
      const int error = written == 0 ? ENOSPC : errno;
      // What a later append does not overwrite ends the journal at its checksum at worst.
      [[maybe_unused]] const int ignored = ftruncate(m_descriptor, static_cast<off_t>(m_size));
      return Fail(StringId::kCannotWriteJournal, error);
    }
    done += static_cast<size_t>(written);
  }
  m_size += done;
  return IoResult::Success();
}

IoResult JournalFile::Publish() {
  if (rename(TemporaryPath().c_str(), PathOf(m_folder, m_name).c_str()) != 0) {
    return Fail(StringId::kCannotNameJournal, errno);
  }
  m_published = true;
  return IoResult::Success();
}

IoResult JournalFile::Sync() {
  if (m_descriptor >= 0 && fdatasync(m_descriptor) != 0) {
    return Fail(StringId::kCannotFlushJournal, errno);
  }
  return IoResult::Success();
}

void JournalFile::Remove() {
  if (m_descriptor < 0) return;
  if (m_published) unlink(PathOf(m_folder, m_name).c_str());
  DropBase();
  Close();
}

void JournalFile::DropBase() {
  unlink(BasePath().c_str());
}

std::string JournalFile::KeepBase(const std::string& path) {
  DropBase();
  if (linkat(AT_FDCWD, path.c_str(), AT_FDCWD, BasePath().c_str(), AT_SYMLINK_FOLLOW) != 0) return {};
  return m_name + kBaseExtension;
}

int64_t JournalFile::Time() const {
  return FileIdentity::OfDescriptor(m_descriptor).modifiedSeconds;
}

std::vector<std::string> JournalFile::ListAndClean(const std::string& folder) {
  std::error_code error;
  std::set<std::string> journals;
  std::vector<std::string> bases;
  for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
    const fs::path& path = entry->path();
    if (path.extension() == kJournalExtension) journals.insert(path.stem().string());
    if (path.extension() == kTemporaryExtension) DeleteUnlessLocked(path.string());
    if (path.extension() == kBaseExtension) bases.push_back(path.stem().string());
  }
  for (const std::string& name : bases) {
    // In this order: a temporary file that is gone has become the journal, if its writer lives.
    if (IsThere(Join(folder, name + kTemporaryExtension)) || IsThere(PathOf(folder, name))) continue;
    unlink(Join(folder, name + kBaseExtension).c_str());
  }
  return {journals.begin(), journals.end()};
}

}  // namespace quill
