#include "text/UndoHistory.h"

#include <utility>

namespace quill {

const char* action::Description(int32_t code) {
  static const char* const kTexts[] = {"Unknown", "Paste",     "Delete Selection", "Cut",
                                       "Typing",  "Backspace", "Indent",           "Drag And Drop",
                                       "Replace", "Delete",    "Auto Indent"};
  return code >= kUnknown && code <= kAutoIndent ? kTexts[code] : nullptr;
}

void UndoHistory::Clear(size_t limit) {
  m_records.clear();
  m_groupStarts.clear();
  m_firstSerial = 0;
  m_position = 0;
  m_saved = 0;
  m_limit = limit;
}

void UndoHistory::Add(UndoRecord&& record) {
  DropRedo();
  if (m_records.size() >= m_limit) DropOldestGroup();
  if (record.StartsGroup()) m_groupStarts.push_back(m_firstSerial + m_records.size());
  m_records.push_back(std::move(record));
  m_position = m_records.size();
}

void UndoHistory::DropRedo() {
  while (m_records.size() > m_position) {
    if (m_records.back().StartsGroup()) m_groupStarts.pop_back();
    m_records.pop_back();
  }
  if (m_saved > static_cast<int64_t>(m_position)) m_saved = kSavedTextIsGone;
}

void UndoHistory::DropOldestGroup() {
  if (!m_groupStarts.empty() && m_groupStarts.front() == m_firstSerial) {
    if (m_groupStarts.size() == 1) return;  // the only group: it stays whole, however long
    m_groupStarts.pop_front();
  }
  if (m_groupStarts.empty()) return;
  const auto removed = static_cast<size_t>(m_groupStarts.front() - m_firstSerial);
  m_records.erase(m_records.begin(), m_records.begin() + static_cast<std::ptrdiff_t>(removed));
  m_firstSerial += removed;
  m_position -= removed;
  m_saved =
      m_saved < static_cast<int64_t>(removed) ? kSavedTextIsGone : m_saved - static_cast<int64_t>(removed);
}

}  // namespace quill
