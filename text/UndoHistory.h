#pragma once
#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <vector>

#include "text/TextPosition.h"

namespace quill {

/// What an edit was, for the descriptions of undo and redo.
namespace action {
enum Code : int32_t {
  kUnknown = 0,
  kPaste = 1,
  kDeleteSelection = 2,
  kCut = 3,
  kTyping = 4,
  kBackspace = 5,
  kIndent = 6,
  kDragAndDrop = 7,
  kReplace = 8,
  kDelete = 9,
  kAutoIndent = 10,
};
/// Null for a code outside 0 to 10.
const char* Description(int32_t code);
}  // namespace action

/// One insertion or deletion.
struct UndoRecord {
  static constexpr uint32_t kInsert = 0x0001;  ///< else a deletion
  static constexpr uint32_t kGroupStart = 0x0100;

  uint32_t flags = 0;
  int32_t action = action::kUnknown;
  TextRange range;   ///< of the text: after the insertion, or before the deletion
  std::string text;  ///< lines joined with CR LF
  /// Of text whose lines held CR characters: the length of each line's piece, since the text alone
  /// does not tell a line end from such a character. Else null: a step may have 200,000 records.
  std::unique_ptr<std::vector<int32_t>> pieceLengths;

  bool IsInsert() const { return (flags & kInsert) != 0; }
  bool StartsGroup() const { return (flags & kGroupStart) != 0; }
};

/// The edits of a buffer, in groups that are undone and redone as one step. Limited in the number of
/// records; whole groups leave at the front, and a group that is longer than the limit stays whole.
class UndoHistory {
 public:
  static constexpr size_t kDefaultLimit = 1024;

  void Clear(size_t limit = kDefaultLimit);
  /// Appends after the undo position; what could have been redone is gone.
  void Add(UndoRecord&& record);

  size_t Count() const { return m_records.size(); }
  /// Index of the next record to be redone.
  size_t Position() const { return m_position; }
  const UndoRecord& At(size_t index) const { return m_records[index]; }
  /// The record before the undo position; null at the start.
  const UndoRecord* Last() const { return m_position == 0 ? nullptr : &m_records[m_position - 1]; }
  const UndoRecord* Next() const { return m_position == m_records.size() ? nullptr : &m_records[m_position]; }
  void StepBack() { --m_position; }
  void StepForward() { ++m_position; }

  void MarkSaved() { m_saved = static_cast<int64_t>(m_position); }
  bool IsAtSaved() const { return m_saved == static_cast<int64_t>(m_position); }

 private:
  static constexpr int64_t kSavedTextIsGone = -1;
  void DropRedo();
  void DropOldestGroup();

  std::deque<UndoRecord> m_records;
  std::deque<uint64_t> m_groupStarts;  ///< serial numbers of the records that begin a group
  uint64_t m_firstSerial = 0;          ///< serial number of m_records.front()
  size_t m_position = 0;
  int64_t m_saved = 0;
  size_t m_limit = kDefaultLimit;
};

}  // namespace quill
