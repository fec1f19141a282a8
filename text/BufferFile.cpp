// Loading and saving of CCrystalTextBuffer.

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <limits>
#include <memory>
#include <new>

#include "base/AtomicFile.h"
#include "text/CrystalTextBuffer.h"
#include "text/LineFlagStore.h"

namespace quill {
namespace {

constexpr size_t kChunkBytes = 32768;
constexpr size_t kLongestLine = std::numeric_limits<int32_t>::max() - 2 * LinePool::kStep;
constexpr size_t kMostLines = std::numeric_limits<int32_t>::max();

class Descriptor {
 public:
  explicit Descriptor(int number) : m_number(number) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() {
    if (m_number >= 0) close(m_number);
  }
  int Number() const { return m_number; }

 private:
  int m_number;
};

/// Fills the chunk unless the file ends first; -1 after an error.
ssize_t ReadChunk(int descriptor, char* chunk) {
  size_t filled = 0;
  while (filled < kChunkBytes) {
    const ssize_t got = read(descriptor, chunk + filled, kChunkBytes - filled);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return -1;
    if (got == 0) break;
    filled += static_cast<size_t>(got);
  }
  return static_cast<ssize_t>(filled);
}

/// The style that a file's first chunk shows.
int32_t DetectStyle(std::string_view chunk) {
  const size_t lf = chunk.find('\n');
  if (lf == std::string_view::npos) return line_end::kCrLf;
  if (lf > 0 && chunk[lf - 1] == '\r') return line_end::kCrLf;
  if (lf + 1 == chunk.size()) return line_end::kLf;
  return chunk[lf + 1] == '\r' ? line_end::kLfCr : line_end::kLf;
}

}  // namespace

IoResult CCrystalTextBuffer::LoadFile(const std::string& path, int32_t style) {
  ClearBuffer();
  const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  if (file.Number() < 0) return IoResult::FromErrno("Cannot open", path, errno);
  struct stat info {};
  if (fstat(file.Number(), &info) != 0) return IoResult::FromErrno("Cannot open", path, errno);
  if (S_ISDIR(info.st_mode)) return IoResult::Failure("Cannot open \"" + path + "\": it is a folder");
  if (!S_ISREG(info.st_mode)) {
    return IoResult::Failure("Cannot open \"" + path + "\": it is not a regular file");
  }
  IoResult read = IoResult::Success();
  try {
    read = ReadLines(file.Number(), path, style);
  } catch (const std::bad_alloc&) {
    read = IoResult::Failure("Cannot open \"" + path + "\": not enough memory");
  }
  if (!read) {
    ClearBuffer();
    return read;
  }
  m_profileSection = path;
  RestoreStoredFlags();
  m_initialised = true;
  m_readOnly = (info.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0 || access(path.c_str(), W_OK) != 0;
  SetModified(false);
  NotifyViews(nullptr, nullptr, hint::kReset, -1);
  return IoResult::Success();
}

IoResult CCrystalTextBuffer::ReadLines(int descriptor, const std::string& path, int32_t style) {
  const auto chunk = std::make_unique<char[]>(kChunkBytes);
  std::string pending;  // the part of a line that earlier chunks held
  bool firstChunk = true;
  std::string_view end;
  while (true) {
    const ssize_t got = ReadChunk(descriptor, chunk.get());
    if (got < 0) return IoResult::FromErrno("Cannot read", path, errno);
    std::string_view rest(chunk.get(), static_cast<size_t>(got));
    if (firstChunk) {
      m_style = style == line_end::kAutomatic ? DetectStyle(rest) : style;
      end = line_end::Bytes(m_style);
      firstChunk = false;
    }
    if (rest.empty()) break;
    size_t searchFrom = 0;
    while (true) {
      const size_t last = rest.find(end.back(), searchFrom);
      if (last == std::string_view::npos) break;
      const bool whole = end.size() == 1 || (last > 0 ? rest[last - 1] == end.front()
                                                      : !pending.empty() && pending.back() == end.front());
      searchFrom = last + 1;
      if (!whole) continue;
      if (m_lines.Size() + 1 >= kMostLines || pending.size() + last > kLongestLine) break;
      std::string_view tail = rest.substr(0, last);
      if (end.size() == 2) {
        if (tail.empty()) {
          pending.pop_back();
        } else {
          tail.remove_suffix(1);
        }
      }
      m_lines.PushBack(MakeLine(pending, tail));
      pending.clear();
      rest.remove_prefix(last + 1);
      searchFrom = 0;
    }
    pending.append(rest);
    if (pending.size() > kLongestLine || m_lines.Size() + 1 >= kMostLines) {
      return IoResult::Failure("Cannot open \"" + path + "\": it is too large (2 GB a line, 2^31 lines)");
    }
  }
  m_lines.PushBack(MakeLine(pending));
  return IoResult::Success();
}

void CCrystalTextBuffer::RestoreStoredFlags() {
  if (m_store == nullptr) return;
  for (const auto& [line, flags] : m_store->ReadAll(m_profileSection)) {
    if (line >= 0 && line < LineCount()) Record(line).flags = flags;
  }
}

IoResult CCrystalTextBuffer::SaveFile(const std::string& path, int32_t style, bool clearModified) {
  const std::string_view end = line_end::Bytes(style == line_end::kAutomatic ? m_style : style);
  AtomicFile file(path);
  if (IoResult opened = file.Open(); !opened) return opened;
  const int32_t count = LineCount();
  for (int32_t line = 0; line < count; ++line) {
    if (IoResult written = file.Write(Line(line)); !written) return written;
    if (line + 1 == count) break;
    if (IoResult written = file.Write(end); !written) return written;
  }
  if (IoResult committed = file.Commit(m_createBackup ? ".bak" : ""); !committed) return committed;
  if (clearModified) {
    m_history.MarkSaved();
    SetModified(false);
  }
  return IoResult::Success();
}

}  // namespace quill
