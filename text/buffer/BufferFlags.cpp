// Flag words of CCrystalTextBuffer's lines that go and come back.
#include "base/UiThread.h"
#include "text/buffer/CrystalTextBuffer.h"
#include "text/buffer/LineFlagStore.h"

namespace quill {

void CCrystalTextBuffer::ReplaceFlags(std::span<const LineWord> words) {
  AssertUiThread();
  std::vector<LineFlagStore::Word> changed;
  for (const auto& [line, flags] : words) {
    uint32_t& word = Record(line).flags;
    if (word != flags) changed.emplace_back(line, flags);
    word = flags;
  }
  if (changed.empty()) return;
  if (m_store != nullptr && !m_profileSection.empty()) m_store->Write(m_profileSection, changed);
  NotifyViews(nullptr, nullptr, hint::kFlagsOnly, -1);
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
  ApplyDelete(source, range);
  if (wholeLines) {
    const LineWord survivor[] = {{range.start.line, below}};
    ReplaceFlags(survivor);
  }
  return words;
}

void CCrystalTextBuffer::PutBackWords(TextRange range, bool wholeLines, uint32_t firstLineFlags,
                                      std::span<const LineWord> words) {
  const int32_t first = range.start.line + (wholeLines ? 0 : 1);
  std::vector<LineWord> wanted;
  if (wholeLines) wanted = {{range.start.line, 0}, {range.end.line, firstLineFlags}};
  bool underHidden = first > 0 && (LineFlags(first - 1) & line_flag::kHidden) != 0;
  int32_t next = first;
  for (LineWord word : words) {
    word.line += first;
    underHidden = underHidden && word.line == next;
    // What hid the line may be shown by now, and a numbered bookmark stand elsewhere.
    const bool heads = (word.flags & line_flag::kBlockStart) != 0;
    if (!heads && !underHidden) word.flags &= ~line_flag::kHidden;
    underHidden = (word.flags & line_flag::kHidden) != 0;
    next = word.line + 1;
    const uint32_t numbers = word.flags & line_flag::kNumberedBookmarks;
    for (uint32_t number = 1; number <= numbers; number <<= 1) {
      if ((numbers & number) != 0 && FirstLineWithFlag(number) >= 0) word.flags &= ~number;
    }
    wanted.push_back(word);
  }
  ReplaceFlags(wanted);
}

}  // namespace quill
