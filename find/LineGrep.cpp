#include "find/LineGrep.h"

#include <algorithm>
#include <cstring>

#include "base/LastIndexOf.h"

namespace quill {
namespace {

/// Holds most scripts whole and stays in the processor's second-level cache.
constexpr size_t kBufferBytes = size_t{256} * 1024;

/// Number of pieces, one line after the other.
int64_t CountPiecesOfLines(std::string_view bytes) {
  int64_t pieces = 0;
  while (!bytes.empty()) {
    const size_t lf = bytes.find('\n');
    size_t raw = lf == std::string_view::npos ? bytes.size() : lf + 1;
    const size_t characters = raw - (lf != std::string_view::npos && lf > 0 && bytes[lf - 1] == '\r');
    pieces += static_cast<int64_t>((characters + LineGrep::kLongestLine - 1) / LineGrep::kLongestLine);
    bytes.remove_prefix(raw);
  }
  return pieces;
}

}  // namespace

LineGrep::LineGrep(std::string_view what)
    : m_searcher(what, false), m_bytes(std::make_unique<char[]>(kBufferBytes)) {}

IoResult LineGrep::ReadFile(InputFile& file, const std::function<void(const LineHit&)>& take) {
  m_line = 1;
  size_t fill = 0;
  while (true) {
    size_t got = 0;
    if (IoResult read = file.Read(m_bytes.get() + fill, kBufferBytes - fill, got); !read) return read;
    fill += got;
    const std::string_view bytes(m_bytes.get(), fill);
    if (fill < kBufferBytes) {
      Scan(bytes, take);
      return IoResult::Success();
    }
    const size_t whole = EndOfLastWholePiece(bytes);
    const size_t counted = Scan(bytes.substr(0, whole), take);
    m_line += CountPieces(bytes.substr(counted, whole - counted));
    std::memmove(m_bytes.get(), m_bytes.get() + whole, fill - whole);
    fill -= whole;
  }
}

size_t LineGrep::EndOfLastWholePiece(std::string_view bytes) {
  const size_t lineStart = LastIndexOf(bytes, '\n') + 1;  // 0 without one
  const size_t rest = bytes.size() - lineStart;
  // A piece is known to be whole when the byte behind it is here: it may be the LF of a CR LF.
  return rest == 0 ? lineStart : lineStart + (rest - 1) / kLongestLine * kLongestLine;
}

LineGrep::Piece LineGrep::PieceAt(std::string_view bytes, size_t start) {
  const std::string_view rest = bytes.substr(start);
  const size_t lf = rest.substr(0, kLongestLine).find('\n');
  size_t length = std::min(rest.size(), kLongestLine);
  const bool splitsCrLf = lf == std::string_view::npos && rest.size() > length && rest[length - 1] == '\r' &&
                          rest[length] == '\n';
  if (lf == std::string_view::npos && !splitsCrLf) return {start + length, start + length, false};
  length = splitsCrLf ? length : lf;
  const bool cr = length > 0 && rest[length - 1] == '\r';
  return {start + length + 1, start + length - (cr ? 1 : 0), true};
}

int64_t LineGrep::CountPieces(std::string_view bytes) {
  // Where each window has a line end, no line is longer than two windows less one, and each is one piece.
  constexpr size_t kWindow = (kLongestLine + 1) / 2;
  int64_t pieces = 0;
  for (size_t at = 0; at + kWindow <= bytes.size(); at += kWindow) {
    const char* window = bytes.data() + at;
    uint16_t lfs = 0;
    for (size_t i = 0; i < kWindow; ++i) lfs = static_cast<uint16_t>(lfs + (window[i] == '\n'));
    if (lfs == 0) return CountPiecesOfLines(bytes);
    pieces += lfs;
  }
  // The last line that ended in a window, and all that follow.
  const size_t windows = bytes.size() / kWindow * kWindow;
  const size_t lineStart = LastIndexOf(bytes.substr(0, windows), '\n') + 1;
  return pieces + CountPiecesOfLines(bytes.substr(lineStart));
}

size_t LineGrep::Scan(std::string_view bytes, const std::function<void(const LineHit&)>& take) {
  size_t piece = 0;  // the start of the piece whose number is m_line
  for (size_t from = 0;;) {
    const size_t distance = m_searcher.Find(bytes.substr(from));
    if (distance == ByteSearcher::kNone) break;
    const size_t at = from + distance;
    const size_t lineStart = piece + LastIndexOf(bytes.substr(piece, at - piece), '\n') + 1;
    const size_t piecesBefore = (at - lineStart) / kLongestLine;
    const size_t start = lineStart + piecesBefore * kLongestLine;
    m_line += CountPieces(bytes.substr(piece, start - piece));
    piece = start;
    const Piece found = PieceAt(bytes, piece);
    if (at + m_searcher.Length() > found.textEnd) {
      from = at + 1;
      continue;
    }
    take({m_line, bytes.substr(piece, found.textEnd - piece), at - piece, found.hasLineEnd});
    ++m_line;
    piece = from = found.end;
  }
  return piece;
}

}  // namespace quill
