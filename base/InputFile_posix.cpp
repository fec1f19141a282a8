#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "base/InputFile.h"

#include "res/Strings.h"

namespace quill {

bool PathExists(const std::string& path) {
  struct stat info {};
  return stat(path.c_str(), &info) == 0;
}

InputFile::~InputFile() {
  Close();
}

void InputFile::Close() {
  if (m_descriptor >= 0) close(m_descriptor);
  m_descriptor = -1;
}

void InputFile::Adopt(int descriptor, const std::string& path) {
  Close();
  m_path = path;
  m_size = 0;
  m_hasWriteBit = false;
  m_descriptor = descriptor;
}

IoResult InputFile::Open(const std::string& path) {
  Adopt(-1, path);
  // Without O_NONBLOCK a pipe would hang here instead of being refused below.
  m_descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  struct stat info {};
  if (m_descriptor < 0 || fstat(m_descriptor, &info) != 0) {
    return IoResult::FromErrno(StringId::kCannotOpen, path, errno);
  }
  if (S_ISDIR(info.st_mode)) return IoResult::Refusal(StringId::kCannotOpen, path, StringId::kReasonFolder);
  if (!S_ISREG(info.st_mode)) {
    return IoResult::Refusal(StringId::kCannotOpen, path, StringId::kReasonNoRegularFile);
  }
  m_size = static_cast<uint64_t>(info.st_size);
  m_hasWriteBit = (info.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) != 0;
  return IoResult::Success();
}

bool InputFile::IsReadOnly() const {
  return !m_hasWriteBit || access(m_path.c_str(), W_OK) != 0;
}

IoResult InputFile::Read(char* target, size_t size, size_t& got) {
  got = 0;
  while (got < size) {
    const ssize_t part = read(m_descriptor, target + got, size - got);
    if (part < 0 && errno == EINTR) continue;
    if (part < 0) return IoResult::FromErrno(StringId::kCannotRead, m_path, errno);
    if (part == 0) break;
    got += static_cast<size_t>(part);
  }
  return IoResult::Success();
}

IoResult ReadWholeFile(const std::string& path, uint64_t mostBytes, std::string& text) {
  InputFile file;
  if (IoResult open = file.Open(path); !open) return open;
  if (file.Size() > mostBytes) return IoResult::Failure(FormatText(StringId::kFileTooLarge, {path}));
  text.resize(static_cast<size_t>(file.Size()));
  size_t got = 0;
  IoResult read = file.Read(text.data(), text.size(), got);
  text.resize(got);
  return read;
}

}  // namespace quill
