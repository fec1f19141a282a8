#pragma once
#include <cstddef>
#include <cstdint>
#include <string>

#include "base/IoResult.h"

namespace quill {

/// True when the attributes of `path` can be read, whatever it is.
bool PathExists(const std::string& path);

/// A regular file that is read from front to back.
class InputFile {
 public:
  InputFile() = default;
  InputFile(const InputFile&) = delete;
  InputFile& operator=(const InputFile&) = delete;
  ~InputFile();

  /// Refuses folders, pipes and devices.
  IoResult Open(const std::string& path);
  /// Takes over the descriptor of a regular file that is open for reading; `Size` stays 0.
  void Adopt(int descriptor, const std::string& path);
  void Close();

  const std::string& Path() const { return m_path; }
  /// Size in bytes when the file was opened.
  uint64_t Size() const { return m_size; }
  /// When the file was opened it had no write bit at all, or this process may not write it.
  bool IsReadOnly() const;
  /// Reads up to `size` bytes; `got` is smaller than `size` only at the end of the file.
  IoResult Read(char* target, size_t size, size_t& got);

 private:
  std::string m_path;
  uint64_t m_size = 0;
  bool m_hasWriteBit = false;
  int m_descriptor = -1;
};

/// Reads a file whole into `text`. Refuses one of more than `mostBytes` before memory is taken.
IoResult ReadWholeFile(const std::string& path, uint64_t mostBytes, std::string& text);

}  // namespace quill
