#pragma once
#include <cstdint>
#include <vector>

#include "text/ui/LinePainter.h"

namespace quill {

/// Marks text softly in the lines that a view shows.
class LineDecoration {
 public:
  /// Appends the stretches of a line that are marked, in ascending order; those outside of the columns that
  /// are shown need not be among them. Asked for every line that is painted.
  virtual void MarksOf(int32_t line, ColumnRange visible, std::vector<ColumnRange>& marks) const = 0;

 protected:
  ~LineDecoration() = default;
};

}  // namespace quill
