#include "text/parse/FoldDepthIndex.h"

#include <algorithm>

#include "text/buffer/CrystalTextBuffer.h"
#include "text/parse/LineStateCache.h"

namespace quill {

void FoldDepthIndex::OnTextChange(const TextChange* change, uint32_t hints, int32_t line) {
  if ((hints & hint::kReset) != 0) {
    m_depths.clear();
  } else if (change != nullptr) {
    m_depths.resize(std::min(m_depths.size(), static_cast<size_t>(std::max(line, 0) / m_stride)));
  }
}

int32_t FoldDepthIndex::DepthAfter(uint32_t lineFlags, int32_t depth) {
  if ((lineFlags & line_flag::kBlockStart) != 0) return depth + 1;
  if ((lineFlags & line_flag::kBlockEnd) != 0) return std::max(depth - 1, 0);
  return depth;
}

int32_t FoldDepthIndex::DepthBefore(int32_t line) {
  m_states.StateAt(line);
  const auto stored = std::min(m_depths.size(), static_cast<size_t>(line / m_stride));
  int32_t depth = stored == 0 ? 0 : m_depths[stored - 1];
  for (int32_t i = static_cast<int32_t>(stored) * m_stride; i < line; ++i) {
    depth = DepthAfter(m_buffer.LineFlags(i), depth);
    if ((i + 1) % m_stride == 0) m_depths.push_back(depth);
  }
  return depth;
}

}  // namespace quill
