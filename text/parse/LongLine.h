#pragma once
#include <cstdint>
#include <vector>

#include "text/buffer/BufferObserver.h"
#include "text/parse/LineScan.h"

namespace quill {

class CCrystalTextBuffer;

/// Colours parts of one very long line. Scan points every few thousand columns let it start close to the
/// wanted part, so that neither time nor memory goes by the line's length once it was walked.
class LongLine {
 public:
  /// From this length on a line is better painted in parts.
  static constexpr int32_t kWorthwhile = 1 << 16;

  /// `stride`: columns from one remembered point to the next.
  explicit LongLine(const CCrystalTextBuffer& buffer, int32_t stride = kUsualStride)
      : m_buffer(buffer), m_stride(stride) {}

  /// What the buffer told the view. Call it once for every update.
  void OnTextChange(const TextChange* change, uint32_t hints, int32_t line);
  /// The blocks of columns [from, to) of a line that starts in `state`; the first block begins at or
  /// before `from`. Valid until the next call.
  const std::vector<TextBlock>& Blocks(const WordClasses& words, int32_t line, uint32_t state, int32_t from,
                                       int32_t to);

 private:
  static constexpr int32_t kUsualStride = 1 << 14;

  const CCrystalTextBuffer& m_buffer;
  int32_t m_stride;
  int32_t m_line = -1;
  uint32_t m_state = 0;
  std::vector<ScanPoint> m_points;  ///< at columns (i + 1) * m_stride
  std::vector<TextBlock> m_blocks;
};

}  // namespace quill
