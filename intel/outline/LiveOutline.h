#pragma once
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "intel/outline/OutlineScanner.h"
#include "text/buffer/BufferObserver.h"

namespace quill {

class CCrystalTextBuffer;

/// Reads the definitions of a text that is being edited, group of lines by group, and again only those groups
/// whose lines changed. It is told of each change; whoever has it calls `ReadSome` while nothing is more
/// urgent. Belongs to the thread of the text, which must outlive it.
class LiveOutline {
 public:
  /// `onlyElements` is explained at `OutlineScanner`.
  LiveOutline(const CCrystalTextBuffer& buffer, std::string_view onlyElements);

  const std::string& OnlyElements() const { return m_scanner.OnlyElements(); }
  /// To be told at once, before the next change.
  void OnTextChange(const TextChange& change);
  /// Everything is to be read: another text is there.
  void Restart();

  bool IsRead() const { return m_unread == 0; }
  int32_t UnreadLines() const { return m_unread; }
  /// Reads the first group that has not been read, if there is one: at most `OutlineGroup::kMostLines` lines.
  void ReadSome();
  /// What was read so far; of a group that changed since, what it was.
  OutlineParts Parts() const;

 private:
  struct Row {
    std::shared_ptr<const OutlineGroup> group;  ///< null until it was read once
    int32_t lines = 0;
    uint32_t slot = 0;
    bool isRead = false;
  };
  /// A row and its first line.
  struct Place {
    size_t row = 0;
    int32_t line = 0;
  };

  /// The row that has a line. Changes stand beside one another: it is looked for from the last place on.
  Place PlaceOf(int32_t line);
  void MarkUnread(size_t row);
  /// Takes the rows [first, last) out.
  void Remove(size_t first, size_t last);
  void Insert(size_t row, int32_t lines);
  /// Gives a row that is to be read a good size.
  void Divide(size_t row);

  const CCrystalTextBuffer& m_buffer;
  OutlineScanner m_scanner;
  std::vector<Row> m_rows;   ///< all lines of the text
  int32_t m_lines = 0;       ///< of all rows
  int32_t m_unread = 0;      ///< lines
  size_t m_firstUnread = 0;  ///< before this row all are read
  Place m_place;
  std::vector<uint32_t> m_freeSlots;
  uint32_t m_slots = 0;
};

}  // namespace quill
