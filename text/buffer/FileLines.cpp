#include "text/buffer/FileLines.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <limits>

#include "text/buffer/CrystalTextBuffer.h"

namespace quill {
namespace {

constexpr size_t kChunkBytes = 32768;
/// Blocks are not larger than this unless one line is: a wrong file size must not ask for everything.
constexpr size_t kLargestBlock = size_t{64} << 20;

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

}  // namespace

int32_t DetectLineEndStyle(std::string_view bytes) {
  const std::string_view chunk = bytes.substr(0, kChunkBytes);
  const size_t lf = chunk.find('\n');
  if (lf == std::string_view::npos) return line_end::kCrLf;
  if (lf > 0 && chunk[lf - 1] == '\r') return line_end::kCrLf;
  if (lf + 1 == chunk.size()) return line_end::kLf;
  return chunk[lf + 1] == '\r' ? line_end::kLfCr : line_end::kLf;
}

IoResult FileLines::Read(const std::string& path, int32_t style,
                         const std::function<bool(char*, int32_t)>& take) {
  IoResult tooLarge =
      IoResult::Failure("Cannot open \"" + path + "\": it is too large (2 GB a line, 2^31 lines)");
  std::string_view end;
  while (true) {
    MakeRoom();
    const ssize_t got = ReadChunk(m_descriptor, m_fill);
    if (got < 0) return IoResult::FromErrno("Cannot read", path, errno);
    if (end.empty()) {  // the first chunk
      const std::string_view chunk(m_fill, static_cast<size_t>(got));
      m_style = style == line_end::kAutomatic ? DetectLineEndStyle(chunk) : style;
      end = line_end::Bytes(m_style);
    }
    if (got == 0) break;
    char* search = m_fill;
    m_fill += got;
    m_bytesRead += static_cast<size_t>(got);
    while (search < m_fill) {
      auto* last = static_cast<char*>(std::memchr(search, end.back(), static_cast<size_t>(m_fill - search)));
      if (last == nullptr) break;
      search = last + 1;
      char* lineEnd = last - (end.size() - 1);
      if (lineEnd < m_line || *lineEnd != end.front()) continue;
      if (!take(m_line, static_cast<int32_t>(lineEnd - m_line))) return tooLarge;
      m_line = last + 1;
    }
    if (m_fill - m_line > CCrystalTextBuffer::kLongestLine) return tooLarge;
  }
  if (!take(m_line, static_cast<int32_t>(m_fill - m_line))) return tooLarge;
  m_pool.Adopt(std::move(m_block));
  return IoResult::Success();
}

/// Room for a chunk and what a scan of its last line may read beyond it; what is there of the current line
/// stays in one piece.
void FileLines::MakeRoom() {
  const auto used = static_cast<size_t>(m_fill - m_block.get());
  if (m_block != nullptr && m_blockBytes - used >= kChunkBytes + LinePool::kReadAhead) return;
  const auto pending = static_cast<size_t>(m_fill - m_line);
  const size_t expected = m_fileBytes > m_bytesRead ? m_fileBytes - m_bytesRead : 0;
  const size_t wanted = pending + std::max(pending, std::min(expected, kLargestBlock)) + 2 * kChunkBytes;
  if (m_block != nullptr && m_line == m_block.get()) {
    GrowBlock(m_block, wanted);
  } else {
    ByteBlock block;
    GrowBlock(block, wanted);
    if (pending != 0) std::memcpy(block.get(), m_line, pending);
    if (m_block != nullptr) m_pool.Adopt(std::move(m_block));
    m_block = std::move(block);
  }
  m_blockBytes = wanted;
  m_line = m_block.get();
  m_fill = m_line + pending;
}

}  // namespace quill
