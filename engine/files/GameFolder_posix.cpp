#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>

#include "engine/files/GameFolder.h"
#include "engine/memory/Undisturbed_posix.h"

namespace korvel {
namespace {

constexpr size_t kLargestScript = size_t{48} << 20;
constexpr size_t kLargestMedia = size_t{64} << 20;
constexpr int kMostFiles = 32;
constexpr char kErrorFile[] = "OUIETERR.TXT";

struct Directory {
  uint64_t inode;
  int64_t offset;
  uint16_t length;
  uint8_t type;
  char name[1];
};

// The entry of a folder whose name is this one, by its case or else whatever its case.
bool FindEntry(int folder, std::string_view name, char (&found)[256]) {
  alignas(Directory) char buffer[8192];
  bool any = false;
  lseek(folder, 0, SEEK_SET);
  for (;;) {
    const long count = syscall(SYS_getdents64, folder, buffer, sizeof buffer);
    if (count <= 0) return any;
    for (long at = 0; at < count;) {
      const auto* entry = reinterpret_cast<const Directory*>(buffer + at);
      const char* text = buffer + at + offsetof(Directory, name);
      if (name.size() < sizeof found && SameWord(text, name)) {
        const bool exact = name == text;
        if (exact || !any) std::memcpy(found, text, name.size() + 1);
        any = true;
        if (exact) return true;
      }
      at += entry->length;
    }
  }
}

bool IsSeparator(char c) {
  return c == '/' || c == '\\';
}

// The next part of a path, without its separators; empty at the end.
std::string_view NextPart(std::string_view& rest) {
  while (!rest.empty() && IsSeparator(rest.front())) rest.remove_prefix(1);
  size_t length = 0;
  while (length < rest.size() && !IsSeparator(rest[length])) ++length;
  const std::string_view part = rest.substr(0, length);
  rest.remove_prefix(length);
  return part;
}

bool IsPlainFile(int descriptor) {
  struct stat facts;
  return fstat(descriptor, &facts) == 0 && S_ISREG(facts.st_mode);
}

bool WriteAll(int descriptor, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t count = write(descriptor, bytes.data(), bytes.size());
    if (count <= 0) return false;
    bytes.remove_prefix(static_cast<size_t>(count));
  }
  return true;
}

}  // namespace

GameFolder::GameFolder(Arena& arena, OpenDescriptors& descriptors)
    : arena_(arena), descriptors_(descriptors), paths_(arena) {
  for (int i = 0; i < descriptors_.count; ++i) close(descriptors_.numbers[i]);
  descriptors_.count = 0;
  files_ = static_cast<GameFile*>(arena.Allocate(sizeof(GameFile) * kMostFiles));
}

void GameFolder::Keep(int descriptor) {
  if (descriptors_.count < OpenDescriptors::kMost) descriptors_.numbers[descriptors_.count++] = descriptor;
}

void GameFolder::CloseKept(int descriptor) {
  for (int i = 0; i < descriptors_.count; ++i) {
    if (descriptors_.numbers[i] == descriptor) {
      descriptors_.numbers[i] = descriptors_.numbers[--descriptors_.count];
      break;
    }
  }
  close(descriptor);
}

const SourceFile* GameFolder::OpenMain(std::string_view path, bool* too_large) {
  char whole[kLongestPath];
  const size_t slash = path.find_last_of("/\\");
  const std::string_view folder =
      slash == std::string_view::npos ? std::string_view() : path.substr(0, slash + 1);
  folder_ = CopyText(arena_, folder);
  for (char* c = const_cast<char*>(folder_); *c != 0; ++c) *c = *c == '\\' ? '/' : *c;
  if (!FindIn(folder_, path.substr(folder.size()), whole)) return nullptr;
  return ReadScript(whole, too_large);
}

// Walks from a folder along a name, part by part.
bool GameFolder::FindIn(std::string_view base, std::string_view name, char (&path)[kLongestPath]) {
  const Undisturbed undisturbed;
  if (name.empty() || base.size() + name.size() + 2 >= kLongestPath) return false;
  size_t length = base.size();
  if (IsSeparator(name.front())) {
    length = 1;
    path[0] = '/';
  } else {
    std::memcpy(path, base.data(), length);
  }
  path[length] = 0;
  std::string_view rest = name;
  for (std::string_view part = NextPart(rest); !part.empty(); part = NextPart(rest)) {
    if (length > 0 && path[length - 1] != '/') path[length++] = '/';
    path[length] = 0;
    char found[256] = "";
    if (part == "." || part == "..") {
      std::snprintf(found, sizeof found, "%.*s", static_cast<int>(part.size()), part.data());
    } else {
      const int folder = open(length == 0 ? "." : path, O_RDONLY | O_DIRECTORY | O_CLOEXEC);
      if (folder < 0) return false;
      const bool there = FindEntry(folder, part, found);
      close(folder);
      if (!there) return false;
    }
    const size_t count = std::strlen(found);
    if (length + count + 2 >= kLongestPath) return false;
    std::memcpy(path + length, found, count + 1);
    length += count;
  }
  return access(path, R_OK) == 0;
}

const SourceFile* GameFolder::ReadScript(const char* path, bool* too_large) {
  const Undisturbed undisturbed;
  const int descriptor = open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (descriptor < 0) return nullptr;
  struct stat facts;
  if (fstat(descriptor, &facts) != 0 || !S_ISREG(facts.st_mode)) {
    close(descriptor);
    return nullptr;
  }
  const auto size = static_cast<size_t>(facts.st_size);
  if (size + source_bytes_ > kLargestScript) {
    *too_large = true;
    close(descriptor);
    return nullptr;
  }
  char* text = static_cast<char*>(arena_.Allocate(size + 1));
  size_t length = 0;
  while (length < size) {
    const ssize_t count = read(descriptor, text + length, size - length);
    if (count <= 0) break;
    length += static_cast<size_t>(count);
  }
  close(descriptor);
  source_bytes_ += length;
  auto* file = arena_.New<SourceFile>();
  const std::string_view whole = path;
  const size_t slash = whole.find_last_of('/');
  const size_t folder = slash == std::string_view::npos ? 0 : slash + 1;
  file->folder = CopyText(arena_, whole.substr(0, folder));
  file->name = CopyText(arena_, whole.substr(folder));
  file->text = {text, length};
  file->index = source_count_++;
  return file;
}

const SourceFile* GameFolder::OpenScript(std::string_view name, const char* folder, bool* too_large) {
  char path[kLongestPath];
  return FindMedia(name, folder, path) ? ReadScript(path, too_large) : nullptr;
}

void GameFolder::AddPath(std::string_view folder) {
  char path[kLongestPath];
  if (paths_.size() >= 100 || !FindIn(folder_, folder, path)) return;
  const size_t length = std::strlen(path);
  path[length] = '/';
  paths_.Add(CopyText(arena_, {path, length + 1}));
}

bool GameFolder::FindMedia(std::string_view name, const char* folder, char (&path)[kLongestPath]) {
  if (name.find('\0') != std::string_view::npos) return false;
  // A path that was found before is found again as it stands.
  if (name.size() < sizeof path && name.substr(0, std::strlen(folder_)) == folder_ && !name.empty()) {
    std::memcpy(path, name.data(), name.size());
    path[name.size()] = 0;
    if (*folder_ != 0 && access(path, R_OK) == 0) return true;
  }
  if (*folder != 0 && FindIn(folder, name, path)) return true;
  if (FindIn(folder_, name, path)) return true;
  for (const char* other : paths_) {
    if (FindIn(other, name, path)) return true;
  }
  return false;
}

std::string_view GameFolder::ReadWhole(const char* path, Arena& arena) {
  const Undisturbed undisturbed;
  const int descriptor = open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (descriptor < 0) return {};
  struct stat facts;
  char* bytes = nullptr;
  size_t length = 0;
  if (fstat(descriptor, &facts) == 0 && S_ISREG(facts.st_mode) && facts.st_size > 0 &&
      static_cast<size_t>(facts.st_size) <= kLargestMedia) {
    const auto size = static_cast<size_t>(facts.st_size);
    bytes = static_cast<char*>(arena.TryAllocate(size));
    while (bytes != nullptr && length < size) {
      const ssize_t count = read(descriptor, bytes + length, size - length);
      if (count <= 0) break;
      length += static_cast<size_t>(count);
    }
    if (bytes != nullptr && length < size) {
      arena.Free(bytes, size);
      bytes = nullptr;
    }
  }
  close(descriptor);
  return bytes == nullptr ? std::string_view() : std::string_view(bytes, length);
}

void GameFolder::GiveBack(std::string_view bytes, Arena& arena) {
  arena.Free(const_cast<char*>(bytes.data()), bytes.size());
}

size_t GameFolder::ReadBegin(const char* path, char* to, size_t size) {
  const Undisturbed undisturbed;
  const int descriptor = open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (descriptor < 0) return 0;
  const ssize_t count = IsPlainFile(descriptor) ? read(descriptor, to, size) : 0;
  close(descriptor);
  return count > 0 ? static_cast<size_t>(count) : 0;
}

// Opens the folder of a name that must stay inside, following no links; `last` gets the file's name as the
// folder has it, or as it was asked for.
int GameFolder::OpenParent(std::string_view name, char (&last)[256]) {
  if (name.empty() || name.size() > 1000 || IsSeparator(name.front()) ||
      name.find('\0') != std::string_view::npos || name.find(':') != std::string_view::npos) {
    return -1;
  }
  int folder = open(*folder_ == 0 ? "." : folder_, O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  std::string_view rest = name;
  std::string_view part = NextPart(rest);
  while (folder >= 0) {
    if (part.empty() || part == ".." || part == "." || part.size() >= sizeof last) break;
    const std::string_view next = NextPart(rest);
    if (!FindEntry(folder, part, last))
      std::snprintf(last, sizeof last, "%.*s", static_cast<int>(part.size()), part.data());
    if (next.empty()) return folder;
    const int inner = openat(folder, last, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    close(folder);
    folder = inner;
    part = next;
  }
  if (folder >= 0) close(folder);
  return -1;
}

int GameFolder::OpenInside(std::string_view name, Access access, bool* is_file) {
  char last[256];
  const int folder = OpenParent(name, last);
  if (folder < 0) return -1;
  const int how = access == Access::kRead    ? O_RDONLY
                  : access == Access::kWrite ? O_WRONLY | O_CREAT
                                             : O_WRONLY | O_CREAT | O_APPEND;
  const int descriptor = openat(folder, last, how | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK, 0644);
  close(folder);
  if (descriptor < 0) return -1;
  struct stat facts;
  // A second name of a file elsewhere would let a script change what is not in its folder.
  const bool plain = fstat(descriptor, &facts) == 0 && S_ISREG(facts.st_mode) &&
                     (access == Access::kRead || facts.st_nlink <= 1);
  if (is_file != nullptr) *is_file = plain;
  if (!plain || (access == Access::kWrite && ftruncate(descriptor, 0) != 0)) {
    close(descriptor);
    return -1;
  }
  return descriptor;
}

int32_t GameFolder::Open(std::string_view name, Access access) {
  const Undisturbed undisturbed;
  GameFile* free = nullptr;
  for (int i = 0; i < kMostFiles && free == nullptr; ++i) {
    if (files_[i].handle == 0) free = &files_[i];
  }
  if (free == nullptr || next_handle_ >= 2'000'000) return 0;
  const int descriptor = OpenInside(name, access, nullptr);
  if (descriptor < 0) return 0;
  Keep(descriptor);
  free->descriptor = descriptor;
  free->handle = next_handle_++;
  free->writes = access != Access::kRead;
  free->at_end = false;
  free->begin = free->end = 0;
  return free->handle;
}

GameFile* GameFolder::Find(int32_t handle) {
  for (int i = 0; handle != 0 && i < kMostFiles; ++i) {
    if (files_[i].handle == handle) return &files_[i];
  }
  return nullptr;
}

void GameFolder::Close(int32_t handle) {
  const Undisturbed undisturbed;
  GameFile* file = Find(handle);
  if (file == nullptr) return;
  CloseKept(file->descriptor);
  file->handle = 0;
}

int GameFolder::Peek(GameFile& file) {
  if (file.begin == file.end) {
    if (file.writes || file.at_end) return -1;
    const ssize_t count = read(file.descriptor, file.buffer, sizeof file.buffer);
    if (count <= 0) {
      file.at_end = true;
      return -1;
    }
    file.begin = 0;
    file.end = static_cast<uint32_t>(count);
  }
  return static_cast<uint8_t>(file.buffer[file.begin]);
}

int GameFolder::Next(GameFile& file) {
  const int byte = Peek(file);
  if (byte >= 0) ++file.begin;
  return byte;
}

bool GameFolder::Write(GameFile& file, std::string_view bytes) {
  return file.writes && WriteAll(file.descriptor, bytes);
}

bool GameFolder::Exists(std::string_view name) {
  const Undisturbed undisturbed;
  const int descriptor = OpenInside(name, Access::kRead, nullptr);
  if (descriptor < 0) return false;
  close(descriptor);
  return true;
}

bool GameFolder::Remove(std::string_view name) {
  const Undisturbed undisturbed;
  char last[256];
  const int folder = OpenParent(name, last);
  if (folder < 0) return false;
  struct stat facts;
  bool gone = fstatat(folder, last, &facts, AT_SYMLINK_NOFOLLOW) != 0;
  if (!gone && S_ISREG(facts.st_mode)) gone = unlinkat(folder, last, 0) == 0;
  close(folder);
  return gone;
}

void GameFolder::RemoveErrorFile() {
  Remove(kErrorFile);
}

void GameFolder::TakeEntry(std::string_view entry) {
  const Undisturbed undisturbed;
  const int descriptor = OpenInside(kErrorFile, Access::kAppend, nullptr);
  if (descriptor < 0) return;
  char lines[1600];
  const int length = std::snprintf(lines, sizeof lines, "<%u>\n%.*s\n", ++entries_,
                                   static_cast<int>(entry.size()), entry.data());
  WriteAll(descriptor, {lines, static_cast<size_t>(std::min<int>(length, sizeof lines - 1))});
  close(descriptor);
}

}  // namespace korvel
