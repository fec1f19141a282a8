#include "shell/FileText.h"

#include <array>
#include <cstring>
#include <fstream>

#include "base/AtomicFile.h"
#include "shell/FileIdentity.h"
#include "text/buffer/CrystalTextBuffer.h"

namespace quill {
namespace {

/// Reads a file piece by piece and says whether it goes on as expected.
class FileComparer {
 public:
  explicit FileComparer(const std::string& path) : m_file(path, std::ios::binary) {}

  bool Continues(std::string_view expected) {
    std::array<char, 4096> chunk;
    while (!expected.empty()) {
      const size_t count = std::min(expected.size(), chunk.size());
      m_file.read(chunk.data(), static_cast<std::streamsize>(count));
      if (static_cast<size_t>(m_file.gcount()) != count) return false;
      if (std::memcmp(chunk.data(), expected.data(), count) != 0) return false;
      expected.remove_prefix(count);
    }
    return true;
  }
  bool Ends() { return m_file.peek() == std::ifstream::traits_type::eof(); }

 private:
  std::ifstream m_file;
};

}  // namespace

bool FileHoldsText(const std::string& path, const CCrystalTextBuffer& buffer) {
  if (!FileIdentity::Of(path).exists) return false;
  FileComparer file(path);
  const std::string_view lineEnd = line_end::Bytes(buffer.LineEndStyle());
  const int32_t count = buffer.LineCount();
  for (int32_t line = 0; line < count; ++line) {
    if (!file.Continues(buffer.Line(line))) return false;
    if (line + 1 < count && !file.Continues(lineEnd)) return false;
  }
  return file.Ends();
}

IoResult CreateEmptyFile(const std::string& path) {
  AtomicFile file(path);
  if (IoResult opened = file.Open(); !opened) return opened;
  return file.Commit("");
}

}  // namespace quill
