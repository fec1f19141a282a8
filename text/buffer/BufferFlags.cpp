// Flag words of CCrystalTextBuffer's lines that go and come back.
#include "base/UiThread.h"
#include "text/buffer/CrystalTextBuffer.h"
#include "text/buffer/LineFlagStore.h"

namespace quill {

namespace {

using line_flag::kHidden;

}  // namespace

void CCrystalTextBuffer::ReplaceFlags(std::span<const LineWord> words) {
  AssertUiThread();
  if (SetWords(words)) NotifyViews(nullptr, nullptr, hint::kFlagsOnly, -1);
}

bool CCrystalTextBuffer::SetWords(std::span<const LineWord> words) {
  std::vector<LineFlagStore::Word> changed;
  for (const auto& [line, flags] : words) {
    uint32_t& word = Record(line).flags;
    if (word != flags) changed.emplace_back(line, flags);
    word = flags;
  }
  if (changed.empty()) return false;
  if (m_store != nullptr && !m_profileSection.empty()) m_store->Write(m_profileSection, changed);
  return true;
}

std::vector<LineWord> CCrystalTextBuffer::TakeOut(const BufferObserver* source, TextRange range,
                                                  bool wholeLines) {
  const int32_t first = range.start.line + (wholeLines ? 0 : 1);
  const int32_t last = range.end.line - (wholeLines ? 1 : 0);
  std::vector<LineWord> words;
  for (int32_t line = first; line <= last; ++line) {
    const uint32_t flags = LineFlags(line);
    // Block marks alone follow from the text.
    if ((flags & ~line_flag::kBlockMarks) != 0) words.push_back({line - first, flags});
  }
  const uint32_t below = LineFlags(range.end.line);
  CutOut(range);
  const LineWord survivor[] = {{range.start.line, below}};
  if (wholeLines) SetWords(survivor);
  TextChanged(source, {false, range}, range.start);
  return words;
}

bool CCrystalTextBuffer::CameIntoCollapsed(TextRange range, bool wholeLines) const {
  // What was written stands between these two lines of before; the flags of both are still as they were.
  const int32_t above = wholeLines ? range.start.line - 1 : range.start.line;
  const int32_t below = wholeLines ? range.start.line : range.end.line + 1;
  if (above < 0 || (LineFlags(above) & kHidden) == 0) return false;
  const uint32_t flagsAbove = LineFlags(above);
  if (below < LineCount() && (LineFlags(below) & kHidden) != 0) {
    const bool meets =
        (flagsAbove & line_flag::kBlockEnd) != 0 && (LineFlags(below) & line_flag::kBlockStart) != 0;
    if (!meets) return true;
    // One block's end and another one's start: do both stand in a third one?
    int32_t depth = 0;
    for (int32_t line = above; line >= 0 && (LineFlags(line) & kHidden) != 0; --line) {
      if ((LineFlags(line) & line_flag::kBlockEnd) != 0) ++depth;
      if ((LineFlags(line) & line_flag::kBlockStart) != 0 && depth-- == 0) return true;
    }
  }
  // A hidden line was split: its second part was hidden, too.
  const bool headed = (flagsAbove & line_flag::kBlockStart) != 0;
  return !wholeLines && !headed && LineLength(range.end.line) > range.end.character;
}

void CCrystalTextBuffer::GiveWords(TextRange range, bool wholeLines, std::span<const LineWord> words) {
  if (range.start.line == range.end.line) return;
  const int32_t first = range.start.line + (wholeLines ? 0 : 1);
  const int32_t last = range.end.line - (wholeLines ? 1 : 0);
  const uint32_t inherited = CameIntoCollapsed(range, wholeLines) ? kHidden : 0;
  std::vector<LineWord> wanted;
  if (wholeLines) wanted = {{first, inherited}, {range.end.line, LineFlags(range.start.line)}};
  for (int32_t line = first; inherited != 0 && line <= last; ++line) wanted.push_back({line, inherited});
  bool underHidden = first > 0 && (LineFlags(first - 1) & kHidden) != 0;
  int32_t next = first;
  for (LineWord word : words) {
    word.line += first;
    underHidden = underHidden && word.line == next;
    // What hid the line may be shown by now, and a numbered bookmark stand elsewhere.
    const bool heads = (word.flags & line_flag::kBlockStart) != 0;
    if (!heads && !underHidden) word.flags &= ~kHidden;
    word.flags |= inherited;
    underHidden = (word.flags & kHidden) != 0;
    next = word.line + 1;
    const uint32_t numbers = word.flags & line_flag::kNumberedBookmarks;
    for (uint32_t number = 1; number <= numbers; number <<= 1) {
      if ((numbers & number) != 0 && FirstLineWithFlag(number) >= 0) word.flags &= ~number;
    }
    wanted.push_back(word);
  }
  SetWords(wanted);
}

}  // namespace quill
