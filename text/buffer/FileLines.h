#pragma once
#include <cstdint>
#include <functional>
#include <string_view>

#include "base/InputFile.h"
#include "text/buffer/LinePool.h"

namespace quill {

/// Reads a file in chunks of 32,768 bytes and cuts it at the line ends of one style. The lines stay where
/// they were read, side by side in large blocks, so that loading copies (almost) no text.
class FileLines {
 public:
  /// `pool` keeps the blocks. The file's size is what is expected; a wrong one costs time, nothing else.
  FileLines(LinePool& pool, InputFile& file) : m_pool(pool), m_file(file) {}

  /// `style`: 0 to 2, or automatic: what the first chunk shows.
  /// `take` gets each line in order, without its line end; the byte after a line may be written. It
  /// returns false to stop. May throw `std::bad_alloc`.
  IoResult Read(int32_t style, const std::function<bool(char*, int32_t)>& take);
  /// The style that was asked or found.
  int32_t Style() const { return m_style; }

 private:
  void MakeRoom();

  LinePool& m_pool;
  InputFile& m_file;
  size_t m_bytesRead = 0;
  int32_t m_style = 0;
  ByteBlock m_block;
  size_t m_blockBytes = 0;
  char* m_line = nullptr;  ///< the line that is being read
  char* m_fill = nullptr;  ///< where the next chunk goes
};

/// The line-end style that the first chunk of a file's bytes shows.
int32_t DetectLineEndStyle(std::string_view bytes);

}  // namespace quill
