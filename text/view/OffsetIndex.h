#pragma once
#include <cstddef>
#include <cstdint>
#include <vector>

#include "text/buffer/BufferObserver.h"

namespace quill {

class CCrystalTextBuffer;

/// Places of a text counted in characters from its beginning, a line end being one, as assistive technology
/// counts them. Lines are summed up in blocks, so that neither a question nor a change walks over the whole
/// text.
class OffsetIndex {
 public:
  /// `stride`: lines of a block; some have up to twice as many.
  explicit OffsetIndex(const CCrystalTextBuffer& buffer, int32_t stride = kUsualStride);

  /// What the buffer told the view; not to be called for a reset, which needs a new index.
  void OnTextChange(const TextChange& change);

  /// Characters of the whole text.
  int64_t Length() const;
  /// `position` is in the text.
  int64_t OffsetOf(TextPosition position) const;
  /// An offset outside the text stands for its beginning or end.
  TextPosition PositionAt(int64_t offset) const;

 private:
  static constexpr int32_t kUsualStride = 2048;

  struct Block {
    int32_t lines;
    int64_t characters;  ///< the lines' ends included, also behind the last line of the text
  };
  struct Place {
    size_t block;
    int32_t firstLine;
    int64_t offset;  ///< of that line
  };
  /// The block of a line.
  Place Find(int32_t line) const;
  /// Measures the lines from `first` on and puts as many blocks as they need in before `at`.
  void InsertBlocks(size_t at, int32_t first, int32_t lines);
  int64_t SizeOf(int32_t line) const;

  const CCrystalTextBuffer& m_buffer;
  int32_t m_stride;
  std::vector<Block> m_blocks;
};

}  // namespace quill
