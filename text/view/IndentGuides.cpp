#include "text/view/IndentGuides.h"

#include <algorithm>
#include <string_view>

#include "base/CodePage1252.h"
#include "text/buffer/CrystalTextBuffer.h"

namespace quill {
namespace {

/// How far a blank line looks for text above and below it.
constexpr int32_t kLookAround = 200;

/// The indentation of the nearest line with text in one direction; 0 when none is near.
int32_t NearestIndent(const CCrystalTextBuffer& buffer, int32_t line, int32_t step, int32_t tabSize,
                      int32_t limit) {
  for (int32_t i = 1; i <= kLookAround; ++i) {
    const int32_t other = line + i * step;
    if (other < 0 || other >= buffer.LineCount()) return 0;
    const int32_t width = IndentWidth(buffer, other, tabSize, limit);
    if (width >= 0) return width;
  }
  return 0;
}

}  // namespace

int32_t IndentWidth(const CCrystalTextBuffer& buffer, int32_t line, int32_t tabSize, int32_t limit) {
  int32_t width = 0;
  for (const char c : buffer.Line(line)) {
    if (c == '\t') {
      width += tabSize - width % tabSize;
    } else if (c == ' ') {
      ++width;
    } else if (!cp1252::IsSpace(c)) {
      return width;
    }
    if (width >= limit) return limit;
  }
  return -1;
}

void IndentGuideColumns(const CCrystalTextBuffer& buffer, int32_t line, int32_t tabSize, int32_t limit,
                        std::vector<int32_t>& columns) {
  columns.clear();
  int32_t width = IndentWidth(buffer, line, tabSize, limit);
  if (width < 0) {
    width = NearestIndent(buffer, line, -1, tabSize, limit);
    if (width > 0) width = std::min(width, NearestIndent(buffer, line, 1, tabSize, limit));
  }
  for (int32_t column = tabSize; column < width; column += tabSize) columns.push_back(column);
}

}  // namespace quill
