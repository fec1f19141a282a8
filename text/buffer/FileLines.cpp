#include "text/buffer/FileLines.h"

#include <algorithm>
#include <cstring>
#include <limits>

#include "res/Strings.h"
#include "text/buffer/CrystalTextBuffer.h"

namespace quill {
namespace {

constexpr size_t kChunkBytes = 32768;
/// Blocks are not larger than this unless one line is: a wrong file size must not ask for everything.
constexpr size_t kLargestBlock = size_t{64} << 20;

}  // namespace

int32_t DetectLineEndStyle(std::string_view bytes) {
  const std::string_view chunk = bytes.substr(0, kChunkBytes);
  const size_t lf = chunk.find('\n');
  if (lf == std::string_view::npos) return line_end::kCrLf;
  if (lf > 0 && chunk[lf - 1] == '\r') return line_end::kCrLf;
  if (lf + 1 == chunk.size()) return line_end::kLf;
  return chunk[lf + 1] == '\r' ? line_end::kLfCr : line_end::kLf;
}

IoResult FileLines::Read(int32_t style, const std::function<bool(char*, int32_t)>& take) {
  IoResult tooLarge = IoResult::Refusal(StringId::kCannotOpen, m_file.Path(), StringId::kReasonTooLarge);
  std::string_view end;
  while (true) {
    MakeRoom();
    size_t got = 0;
    if (IoResult read = m_file.Read(m_fill, kChunkBytes, got); !read) return read;
    if (end.empty()) {  // the first chunk
      const std::string_view chunk(m_fill, got);
      m_style = style == line_end::kAutomatic ? DetectLineEndStyle(chunk) : style;
      end = line_end::Bytes(m_style);
    }
    if (got == 0) break;
    char* search = m_fill;
    m_fill += got;
    m_bytesRead += got;
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
  const auto fileBytes = static_cast<size_t>(m_file.Size());
  const size_t expected = fileBytes > m_bytesRead ? fileBytes - m_bytesRead : 0;
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
