#pragma once
#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/FrontQueue.h"
#include "text/buffer/TextPosition.h"

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

/// The flag word of a line that came or went with an edit. The lines are counted from the first of them.
struct LineWord {
  int32_t line = 0;
  uint32_t flags = 0;
};

/// One insertion or deletion.
struct UndoRecord {
  static constexpr uint32_t kInsert = 0x0001;  ///< else a deletion
  /// The lines came or went as whole ones, and those that stayed kept their flag words.
  static constexpr uint32_t kWholeLines = 0x0002;
  static constexpr uint32_t kGroupStart = 0x0100;

  uint32_t flags = 0;
  int32_t action = action::kUnknown;
  TextRange range;        ///< of the text: after the insertion, or before the deletion
  std::string_view text;  ///< lines joined with CR LF
  /// Of text whose lines held CR characters: the length of each line's piece, since the text alone
  /// does not tell a line end from such a character. Else null.
  const std::vector<int32_t>* pieceLengths = nullptr;
  /// Of the lines that are in the history now and not in the text; null for none.
  const std::vector<LineWord>* words = nullptr;

  bool HasWholeLines() const { return (flags & kWholeLines) != 0; }
  bool IsInsert() const { return (flags & kInsert) != 0; }
  bool StartsGroup() const { return (flags & kGroupStart) != 0; }
};

/// What a record points to.
struct RecordText {
  std::string text;
  std::unique_ptr<std::vector<int32_t>> pieceLengths;
};

/// The edits of a buffer, in groups that are undone and redone as one step. Limited in the number of
/// records; whole groups leave at the front, and a group that is longer than the limit stays whole.
///
/// A step may have 200,000 records with a few characters each. Most of the time that these take goes into
/// touching fresh memory, and so they are small, lie side by side, and share texts that come again.
class UndoHistory {
 public:
  static constexpr size_t kDefaultLimit = 1024;

  void Clear(size_t limit = kDefaultLimit);
  /// Appends after the undo position; what could have been redone is gone.
  void Add(uint32_t flags, int32_t action, TextRange range, RecordText&& text);

  size_t Count() const { return m_records.Size(); }
  /// Index of the next record to be redone.
  size_t Position() const { return m_position; }
  /// What the record points to is valid until the history changes.
  UndoRecord At(size_t index) const;
  /// The record before the undo position; nothing at the start.
  std::optional<UndoRecord> Last() const {
    return m_position == 0 ? std::nullopt : std::optional(At(m_position - 1));
  }
  std::optional<UndoRecord> Next() const {
    return m_position == Count() ? std::nullopt : std::optional(At(m_position));
  }
  /// Keeps flag words with a record in place of those that it has.
  void KeepWords(size_t index, std::vector<LineWord>&& words);
  /// Makes one record of the last two when they are of one group, kind and action and their texts lie side
  /// by side, as those of keys that are held down. Not across the place of the saved text.
  void JoinLast();
  void StepBack() { --m_position; }
  void StepForward() { ++m_position; }

  void MarkSaved() { m_saved = static_cast<int64_t>(m_position); }
  bool IsAtSaved() const { return m_saved == static_cast<int64_t>(m_position); }

 private:
  static constexpr int64_t kSavedTextIsGone = -1;
  static constexpr size_t kLongestPacked = 4095;

  struct Apart {
    RecordText text;
    int32_t action;
  };
  struct PackedRecord {
    TextRange range;
    uint32_t textStart;  ///< counted from the first character that was ever packed, modulo 2^32
    uint16_t bits;       ///< packed_bit, and the length of the text
    uint16_t action;
  };

  std::string_view TextOf(const PackedRecord& packed) const;
  /// Behind the text of the last record of the first `count`, as an index of m_texts.
  size_t TextsEnd(size_t count) const;
  void PackText(std::string_view text, PackedRecord& packed);
  void DropRedo();
  void DropOldestGroup();

  FrontQueue<PackedRecord> m_records;
  FrontQueue<char> m_texts;  ///< of the records that share none, in their order
  /// Long texts, whose memory is to go with their records, and what else a packed record has no room for;
  /// by the record's serial number.
  std::map<uint64_t, Apart> m_apart;
  std::map<uint64_t, std::vector<LineWord>> m_words;  ///< by the record's serial number
  std::deque<uint64_t> m_groupStarts;                 ///< serial numbers of the records that begin a group
  uint64_t m_firstSerial = 0;                         ///< serial number of the first record
  uint32_t m_textStart = 0;  ///< number of the first character of m_texts, modulo 2^32
  size_t m_position = 0;
  int64_t m_saved = 0;
  size_t m_limit = kDefaultLimit;
};

}  // namespace quill
