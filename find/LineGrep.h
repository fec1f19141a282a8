#pragma once
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>

#include "base/ByteSearcher.h"
#include "base/InputFile.h"

namespace quill {

/// One line that holds the searched text.
struct LineHit {
  int64_t line = 0;       ///< from 1
  std::string_view text;  ///< without its line end; valid in the call
  size_t column = 0;      ///< of the first occurrence
  bool hasLineEnd = false;
};

/// Finds the lines of files that hold a text, whatever its case.
///
/// A line ends with LF, or with CR LF, which counts as one character. At most 1023 characters are read as
/// one line: each further piece of a longer line, even the bare line end behind exactly 1023 characters,
/// is a line of its own, counted as one, and an occurrence that lies in two pieces is not found.
class LineGrep {
 public:
  static constexpr size_t kLongestLine = 1023;

  explicit LineGrep(std::string_view what);

  /// Reads from an open file to its end. `take` gets the lines in order. After a read error the lines of
  /// earlier blocks have been handed over.
  IoResult ReadFile(InputFile& file, const std::function<void(const LineHit&)>& take);

 private:
  struct Piece {
    size_t end = 0;      ///< behind its last byte, the line end included
    size_t textEnd = 0;  ///< behind its last character but for the line end
    bool hasLineEnd = false;
  };

  static size_t EndOfLastWholePiece(std::string_view bytes);
  static Piece PieceAt(std::string_view bytes, size_t start);
  /// Number of pieces in `bytes`, which begin and end where a piece does.
  static int64_t CountPieces(std::string_view bytes);
  /// `bytes` begin and end where a piece does. Returns the start of the first piece that is not counted.
  size_t Scan(std::string_view bytes, const std::function<void(const LineHit&)>& take);

  ByteSearcher m_searcher;
  std::unique_ptr<char[]> m_bytes;  ///< one buffer for all files
  int64_t m_line = 1;               ///< number of the piece that comes next
};

}  // namespace quill
