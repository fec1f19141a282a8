#pragma once
#include <cstdint>

#include "text/buffer/BufferObserver.h"
#include "text/buffer/CrystalTextBuffer.h"
#include "text/view/ColumnMetrics.h"

namespace quill {

/// The width of the widest line, for the horizontal scroll bar. Measured in slices, so that opening a
/// large file does not wait for it; until the last slice the width is that of the lines seen so far.
class WidthIndex {
 public:
  WidthIndex(const CCrystalTextBuffer& buffer, const ColumnMetrics& metrics)
      : m_buffer(buffer), m_metrics(metrics) {}

  /// Forgets everything: another text or other metrics.
  void Restart();
  void OnTextChange(const TextChange& change);
  /// Measures these lines at once (those on the screen).
  void Measure(int32_t first, int32_t last);
  /// Goes on for about `budget` characters. False when nothing is left to do.
  bool Continue(int64_t budget);
  bool IsComplete() const { return m_next >= m_buffer.LineCount(); }
  /// In 1/64 pixel.
  int64_t Width() const { return m_width; }

 private:
  /// A line that cannot be wider than what is known is not read.
  void MeasureLine(int32_t line);

  const CCrystalTextBuffer& m_buffer;
  const ColumnMetrics& m_metrics;
  int64_t m_width = 0;
  int32_t m_widest = -1;  ///< the line that gave m_width
  int32_t m_next = 0;     ///< the first line not measured yet
};

}  // namespace quill
