#include "text/parse/ScriptColouring.h"

#include "text/buffer/CrystalTextBuffer.h"
#include "text/parse/Folding.h"
#include "text/parse/LineScan.h"

namespace quill {
namespace {

/// The line starts inside a collapsed block: a block start above it that is hidden as well is open.
bool IsInsideCollapsed(const CCrystalTextBuffer& buffer, int32_t line) {
  int32_t depth = 0;
  for (int32_t i = line - 1; i >= 0; --i) {
    const uint32_t flags = buffer.LineFlags(i);
    if ((flags & line_flag::kHidden) == 0) return false;
    if ((flags & line_flag::kBlockEnd) != 0) ++depth;
    if ((flags & line_flag::kBlockStart) != 0 && depth-- == 0) return true;
  }
  return false;
}

void ChangeMarks(CCrystalTextBuffer& buffer, int32_t line, uint32_t marks) {
  const uint32_t flags = buffer.LineFlags(line);
  if ((flags & line_flag::kHidden) == 0) {
    buffer.SetBlockMarks(line, marks);
    return;
  }
  const bool losesStart = (flags & ~marks & line_flag::kBlockStart) != 0;
  if (losesStart && !IsInsideCollapsed(buffer, line)) ExpandHead(buffer, line);
  buffer.SetBlockMarks(line, marks);
  buffer.NotifyViews(nullptr, nullptr, hint::kLineFlags, line);
}

inline void ApplyMarks(CCrystalTextBuffer& buffer, int32_t line, uint32_t marks) {
  if ((buffer.LineFlags(line) & line_flag::kBlockMarks) != marks) ChangeMarks(buffer, line, marks);
}

}  // namespace

uint32_t ColourLine(CCrystalTextBuffer& buffer, const WordClasses& words, uint32_t state, int32_t line,
                    TextBlock* blocks, int32_t* count) {
  const std::string_view text = buffer.Line(line);
  if (blocks == nullptr || text.empty()) {
    const ParsedLine parsed = ParseLine(text, state);
    ApplyMarks(buffer, line, parsed.marks);
    return parsed.stateAfter;
  }
  const auto length = static_cast<int32_t>(text.size());
  ScanPoint point = StartOfLine(state);
  ColourColumns(text, words, point, length, blocks, count);
  ApplyMarks(buffer, line, BlockMarksOf(text, point));
  return point.state & parse_state::kAcrossLines;
}

ParsedLine ParseLine(std::string_view text, uint32_t state) {
  if (text.empty()) return {state, 0};
  const ScanPoint end = Skim(text.data(), StartOfLine(state), static_cast<int32_t>(text.size()));
  return {end.state & parse_state::kAcrossLines, BlockMarksOf(text, end)};
}

}  // namespace quill
