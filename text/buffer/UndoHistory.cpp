#include "text/buffer/UndoHistory.h"

#include <limits>
#include <utility>

#include "res/Strings.h"

namespace quill {
namespace {

namespace packed_bit {
inline constexpr uint16_t kTextLength = 0x0FFF;  ///< up to kLongestPacked
inline constexpr uint16_t kWholeLines = 0x1000;
inline constexpr uint16_t kSharesText = 0x2000;  ///< with the last record but one
inline constexpr uint16_t kInsert = 0x4000;
inline constexpr uint16_t kGroupStart = 0x8000;
}  // namespace packed_bit

/// Stands for a record that is kept apart.
constexpr uint16_t kActionApart = 0xFFFF;

}  // namespace

const char* action::Description(int32_t code) {
  const auto text = UndoActionText(code);
  return text ? text->data() : nullptr;
}

void UndoHistory::Clear(size_t limit) {
  m_records.Clear();
  m_texts.Clear();
  m_apart.clear();
  m_words.clear();
  m_groupStarts.clear();
  m_firstSerial = 0;
  m_textStart = 0;
  m_position = 0;
  m_saved = 0;
  m_limit = limit;
}

std::string_view UndoHistory::TextOf(const PackedRecord& packed) const {
  return {m_texts.Data() + (packed.textStart - m_textStart), size_t{packed.bits} & packed_bit::kTextLength};
}

size_t UndoHistory::TextsEnd(size_t count) const {
  while (count > 0 && (m_records[count - 1].bits & packed_bit::kSharesText) != 0) --count;
  if (count == 0) return 0;
  const PackedRecord& last = m_records[count - 1];
  return (last.textStart - m_textStart) + (size_t{last.bits} & packed_bit::kTextLength);
}

UndoRecord UndoHistory::At(size_t index) const {
  const PackedRecord& packed = m_records[index];
  UndoRecord record;
  if ((packed.bits & packed_bit::kInsert) != 0) record.flags |= UndoRecord::kInsert;
  if ((packed.bits & packed_bit::kGroupStart) != 0) record.flags |= UndoRecord::kGroupStart;
  if ((packed.bits & packed_bit::kWholeLines) != 0) record.flags |= UndoRecord::kWholeLines;
  record.range = packed.range;
  if (packed.action == kActionApart) {
    const Apart& apart = m_apart.at(m_firstSerial + index);
    record.action = apart.action;
    record.text = apart.text.text;
    record.pieceLengths = apart.text.pieceLengths.get();
  } else {
    record.action = packed.action;
    record.text = TextOf(packed);
  }
  if (!m_words.empty()) {
    const auto words = m_words.find(m_firstSerial + index);
    if (words != m_words.end()) record.words = &words->second;
  }
  return record;
}

void UndoHistory::KeepWords(size_t index, std::vector<LineWord>&& words) {
  if (words.empty()) {
    m_words.erase(m_firstSerial + index);
  } else {
    m_words.insert_or_assign(m_firstSerial + index, std::move(words));
  }
}

void UndoHistory::JoinLast() {
  if (m_position < 2 || m_position != Count()) return;
  const UndoRecord first = At(m_position - 2);
  const UndoRecord second = At(m_position - 1);
  const uint32_t kind = first.flags & ~UndoRecord::kGroupStart;
  const bool plain = first.pieceLengths == nullptr && second.pieceLengths == nullptr &&
                     first.words == nullptr && second.words == nullptr && !first.HasWholeLines();
  if (second.flags != kind || first.action != second.action || !plain) return;
  if (first.text.size() + second.text.size() > kLongestPacked) return;
  if (m_saved + 1 >= static_cast<int64_t>(m_position)) return;
  TextRange range;
  std::string text;
  if (first.IsInsert() ? second.range.start == first.range.end : second.range.start == first.range.start) {
    range = {first.range.start,
             first.IsInsert() ? second.range.end : PositionAfterInsert(second.range.end, first.range)};
    text.append(first.text).append(second.text);
  } else if (!first.IsInsert() && second.range.end == first.range.start) {
    range = {second.range.start, first.range.end};
    text.append(second.text).append(first.text);
  } else {
    return;
  }
  m_position -= 2;
  Add(first.flags, first.action, range, {std::move(text), nullptr});
}

void UndoHistory::Add(uint32_t flags, int32_t action, TextRange range, RecordText&& text) {
  DropRedo();
  if (Count() >= m_limit) DropOldestGroup();
  const uint64_t serial = m_firstSerial + Count();
  const bool startsGroup = (flags & UndoRecord::kGroupStart) != 0;
  m_records.Reserve(1);  // so that no failure leaves a text without a record
  if (startsGroup) m_groupStarts.push_back(serial);
  PackedRecord packed{range, m_textStart + static_cast<uint32_t>(m_texts.Size()), 0, kActionApart};
  if ((flags & UndoRecord::kInsert) != 0) packed.bits |= packed_bit::kInsert;
  if (startsGroup) packed.bits |= packed_bit::kGroupStart;
  if ((flags & UndoRecord::kWholeLines) != 0) packed.bits |= packed_bit::kWholeLines;
  const bool hasRoom = text.text.size() <= kLongestPacked &&
                       m_texts.Size() <= std::numeric_limits<uint32_t>::max() - kLongestPacked;
  if (hasRoom && text.pieceLengths == nullptr && action >= 0 && action < kActionApart) {
    packed.action = static_cast<uint16_t>(action);
    PackText(text.text, packed);
  } else {
    m_apart.insert_or_assign(serial, Apart{std::move(text), action});
  }
  m_records.PushBack(packed);
  m_position = Count();
}

void UndoHistory::PackText(std::string_view text, PackedRecord& packed) {
  packed.bits |= static_cast<uint16_t>(text.size());
  const uint64_t groupStart = m_groupStarts.empty() ? m_firstSerial : m_groupStarts.back();
  // Replacing is deleting and inserting in turn. Groups share nothing, since each goes by itself.
  if (!text.empty() && m_firstSerial + Count() >= groupStart + 2) {
    const PackedRecord& lastButOne = m_records[Count() - 2];
    if (TextOf(lastButOne) == text) {
      packed.textStart = lastButOne.textStart;
      packed.bits |= packed_bit::kSharesText;
      return;
    }
  }
  m_texts.Append(text.data(), text.size());
}

void UndoHistory::DropRedo() {
  if (m_position == Count()) return;
  const uint64_t end = m_firstSerial + m_position;
  while (!m_groupStarts.empty() && m_groupStarts.back() >= end) m_groupStarts.pop_back();
  m_apart.erase(m_apart.lower_bound(end), m_apart.end());
  m_words.erase(m_words.lower_bound(end), m_words.end());
  m_texts.DropBack(m_texts.Size() - TextsEnd(m_position));
  m_records.DropBack(Count() - m_position);
  if (m_saved > static_cast<int64_t>(m_position)) m_saved = kSavedTextIsGone;
}

void UndoHistory::DropOldestGroup() {
  if (!m_groupStarts.empty() && m_groupStarts.front() == m_firstSerial) {
    if (m_groupStarts.size() == 1) return;  // the only group: it stays whole, however long
    m_groupStarts.pop_front();
  }
  if (m_groupStarts.empty()) return;
  const auto removed = static_cast<size_t>(m_groupStarts.front() - m_firstSerial);
  const uint32_t textStart = m_records[removed].textStart;
  m_texts.DropFront(textStart - m_textStart);
  m_textStart = textStart;
  m_apart.erase(m_apart.begin(), m_apart.lower_bound(m_groupStarts.front()));
  m_words.erase(m_words.begin(), m_words.lower_bound(m_groupStarts.front()));
  m_records.DropFront(removed);
  m_firstSerial += removed;
  m_position -= removed;
  m_saved =
      m_saved < static_cast<int64_t>(removed) ? kSavedTextIsGone : m_saved - static_cast<int64_t>(removed);
}

}  // namespace quill
