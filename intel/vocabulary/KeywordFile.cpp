#include "intel/vocabulary/KeywordFile.h"

#include <array>
#include <utility>

#include "base/AtomicFile.h"
#include "base/InputFile.h"
#include "res/Strings.h"

namespace quill {
namespace {

constexpr size_t kLongestPiece = 1023;
constexpr size_t kChunkBytes = 4096;

/// Cuts the bytes of a text file into pieces; CR LF arrives as one line feed.
class PieceCutter {
 public:
  explicit PieceCutter(const std::function<void(std::string)>& add) : m_add(add) {}

  void Feed(char c) {
    if (std::exchange(m_heldReturn, false) && c != '\n') Append('\r');
    if (c == '\r') {
      m_heldReturn = true;
    } else {
      Append(c);
    }
  }
  void Finish() {
    if (m_heldReturn) Append('\r');
    if (!m_piece.empty()) Emit();
  }

 private:
  void Append(char c) {
    m_piece += c;
    if (c == '\n' || m_piece.size() == kLongestPiece) Emit();
  }
  void Emit() {
    m_piece.pop_back();
    m_add(std::exchange(m_piece, std::string()));
  }

  const std::function<void(std::string)>& m_add;
  std::string m_piece;
  bool m_heldReturn = false;
};

}  // namespace

DatabaseResult ReadKeywordFile(const std::string& path, const std::function<void(std::string)>& add) {
  if (!PathExists(path))
    return {DatabaseResult::State::kMissing, std::string(Text(StringId::kKeywordsMissing))};
  InputFile file;
  if (const IoResult open = file.Open(path); !open) {
    return {DatabaseResult::State::kUnreadable, open.Message()};
  }
  PieceCutter cutter(add);
  std::array<char, kChunkBytes> chunk;
  size_t got = 0;
  do {
    if (const IoResult read = file.Read(chunk.data(), chunk.size(), got); !read) {
      return {DatabaseResult::State::kUnreadable, read.Message()};
    }
    for (size_t i = 0; i < got; ++i) cutter.Feed(chunk[i]);
  } while (got == chunk.size());
  cutter.Finish();
  return {};
}

IoResult WriteKeywordFile(const std::string& path, std::span<const std::string> entries) {
  AtomicFile file(path);
  if (IoResult open = file.Open(); !open) return open;
  for (const std::string& entry : entries) {
    if (IoResult write = file.Write(entry + "\r\n"); !write) return write;
  }
  return file.Commit();
}

}  // namespace quill
