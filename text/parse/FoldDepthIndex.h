#pragma once
#include <cstdint>
#include <vector>

#include "text/buffer/BufferObserver.h"

namespace quill {

class CCrystalTextBuffer;
class LineStateCache;

/// How many blocks are open before a line, for the block lines in the margin. A block end without a
/// start counts for nothing. Depths are remembered every few thousand lines up to the first edit.
class FoldDepthIndex {
 public:
  /// `stride`: lines from one remembered depth to the next.
  FoldDepthIndex(const CCrystalTextBuffer& buffer, LineStateCache& states, int32_t stride = kUsualStride)
      : m_buffer(buffer), m_states(states), m_stride(stride) {}

  /// What the buffer tells. Call it once for every update.
  void OnTextChange(const TextChange* change, uint32_t hints, int32_t line);
  /// Open blocks before `line` (0 to the line count). Parses the lines before it.
  int32_t DepthBefore(int32_t line);
  /// The depth after `line` when it was `depth` before it.
  static int32_t DepthAfter(uint32_t lineFlags, int32_t depth);

 private:
  static constexpr int32_t kUsualStride = 4096;

  const CCrystalTextBuffer& m_buffer;
  LineStateCache& m_states;
  int32_t m_stride;
  std::vector<int32_t> m_depths;  ///< before line (i + 1) * m_stride
};

}  // namespace quill
