#pragma once
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "base/GapVector.h"
#include "base/IoResult.h"
#include "text/buffer/EditSource.h"
#include "text/buffer/LineFlags.h"
#include "text/buffer/LinePool.h"
#include "text/buffer/LineRange.h"
#include "text/buffer/TextPosition.h"
#include "text/buffer/UndoHistory.h"

namespace quill {

class LineFlagStore;

/// What stands between the lines of a file. Recovery journals hold the numbers: they stay as they are.
namespace line_end {
enum Style : int32_t {
  kAutomatic = -1,  ///< load: detect; save: the buffer's own
  kCrLf = 0,
  kLfCr = 1,  ///< LF followed by CR, in this order
  kLf = 2,
};
/// The bytes of a style from 0 to 2.
std::string_view Bytes(int32_t style);
}  // namespace line_end

/// Whose flag word the first line has after an edit that begins and ends in column 0.
enum class FlagsFollow : uint8_t {
  kLine,  ///< the one that it had, whatever its text is now
  kText,  ///< that of its text: whole lines come or go with theirs
};

/// The text of one open script: an array of lines, each with a flag word, and the history of its edits.
/// It alone owns the text; views change it through `InsertTextAt` and `DeleteRange` and are told what
/// changed. A line or column outside the text throws `std::invalid_argument`.
class CCrystalTextBuffer {
 public:
  /// Bytes; keeps a line's capacity within 32 bits.
  static constexpr int64_t kLongestLine = std::numeric_limits<int32_t>::max() - 2 * LinePool::kStep;

  /// `store` keeps the flag words of the lines between runs; without one they are not kept.
  explicit CCrystalTextBuffer(LineFlagStore* store = nullptr) : m_store(store) {}
  CCrystalTextBuffer(const CCrystalTextBuffer&) = delete;
  CCrystalTextBuffer& operator=(const CCrystalTextBuffer&) = delete;
  virtual ~CCrystalTextBuffer();

  /// A text without a name and with nothing to undo: one empty line, or the lines of `text`, between which
  /// stands "\n".
  void NewBuffer(int32_t style = line_end::kCrLf, std::string_view text = {});
  /// Reads a file of any bytes. After a failure the buffer is uninitialised and has no line at all; the
  /// views get the reset hint then, too.
  IoResult LoadFile(const std::string& path, int32_t style = line_end::kAutomatic);
  /// Becomes the text that another buffer has just loaded, as if this one had, and leaves that one empty. So
  /// a file can be read without giving up a text before it is known to be readable.
  void TakeLoaded(CCrystalTextBuffer& other);
  /// Writes a temporary file beside the target and renames it: a failure leaves the old file whole.
  /// Follows a symbolic link and keeps the target's permissions. With backup creation on, the old file
  /// stays under the name with ".bak" appended. An uninitialised buffer is not written.
  IoResult SaveFile(const std::string& path, int32_t style = line_end::kAutomatic, bool clearModified = true);
  void ClearBuffer();
  bool IsInitialised() const { return m_initialised; }

  int32_t LineCount() const { return static_cast<int32_t>(m_lines.Size()); }
  int32_t LineLength(int32_t line) const { return Record(line).length; }
  /// Not zero-terminated; 16 characters after the last one may be read, and the first byte after the last
  /// character is always the buffer's to write. Valid until the next edit.
  const char* LineText(int32_t line) const { return Record(line).text; }
  std::string_view Line(int32_t line) const {
    const LineRecord& r = Record(line);
    return {r.text, static_cast<size_t>(r.length)};
  }
  /// What a range takes of one of its lines.
  std::string_view PieceOf(TextRange range, int32_t line) const {
    std::string_view piece = Line(line);
    if (line == range.end.line) piece = piece.substr(0, static_cast<size_t>(range.end.character));
    if (line == range.start.line) piece.remove_prefix(static_cast<size_t>(range.start.character));
    return piece;
  }
  uint32_t LineFlags(int32_t line) const { return Record(line).flags; }
  /// False, and an empty string, for an empty line.
  bool CopyLine(int32_t line, std::string& text) const;
  /// Copies the leading tabs and blanks of a line; returns their number.
  int32_t CopyLeadingWhiteSpace(int32_t line, std::string& text) const;
  void CopyRange(TextRange range, std::string& text, std::string_view lineEnd = "\r\n") const;
  void CopyRange(int32_t startLine, int32_t startChar, int32_t endLine, int32_t endChar, std::string& text,
                 std::string_view lineEnd = "\r\n") const {
    CopyRange({{startLine, startChar}, {endLine, endChar}}, text, lineEnd);
  }
  TextPosition EndOfText() const;
  /// Throws unless the place is in the text.
  void CheckPosition(TextPosition position) const;

  /// `mask` must have one bit. Line -1 stands for the first line that has the flag. With
  /// `removeFromPreviousLine` a flag that is set first leaves the line that has it.
  void SetFlagOnLine(int32_t line, uint32_t mask, bool set, bool removeFromPreviousLine = false);
  /// -1 when no line shares a bit with `mask`.
  int32_t FirstLineWithAnyFlag(uint32_t mask) const;
  /// The same, but -1 also unless `mask` has exactly one bit.
  int32_t FirstLineWithFlag(uint32_t mask) const;
  void ChangeFlagsOnLines(int32_t first, int32_t last, uint32_t setMask, uint32_t clearMask);
  /// The same for many ranges in one go: only words that change are kept anew, the views are told once.
  /// False when nothing changed.
  bool ChangeFlagsOnRanges(std::span<const LineRange> ranges, uint32_t setMask, uint32_t clearMask);
  /// Clears the hidden flag, silently: whoever parses a text tells the views. False when nothing changed.
  bool ShowLines(std::span<const LineRange> ranges);
  /// Replaces flag words, the views being told once.
  void ReplaceFlags(std::span<const LineWord> words);
  /// Sets the block marks of a line as its text asks for. Silent: whoever parses a line paints it, and
  /// marks that follow from the text need not be kept.
  void SetBlockMarks(int32_t line, uint32_t marks);
  /// Replaces a line's flag word, silently; for restoring kept marks.
  void RestoreFlags(int32_t line, uint32_t flags) { Record(line).flags = flags; }

  /// `end` receives the place after the text. CR and CR LF split lines, a lone LF does not. False when
  /// read-only; throws when a line would exceed `kLongestLine`.
  bool InsertTextAt(EditSource source, TextPosition at, std::string_view text, TextPosition& end,
                    int32_t actionCode = action::kUnknown);
  bool InsertTextAt(EditSource source, int32_t line, int32_t character, std::string_view text,
                    int32_t& outEndLine, int32_t& outEndChar, int32_t actionCode = action::kUnknown);
  /// Inserts lines that are known as such: a CR within one stays a character. Not empty; the first one
  /// joins the line at `at`. For putting back text that once was loaded.
  bool InsertLinesAt(EditSource source, TextPosition at, const std::vector<std::string_view>& lines,
                     TextPosition& end, int32_t actionCode = action::kUnknown,
                     FlagsFollow follow = FlagsFollow::kLine);
  /// The flag words of lines that go come back with them.
  bool DeleteRange(EditSource source, TextRange range, int32_t actionCode = action::kUnknown,
                   FlagsFollow follow = FlagsFollow::kLine);
  bool DeleteRange(EditSource source, int32_t startLine, int32_t startChar, int32_t endLine, int32_t endChar,
                   int32_t actionCode = action::kUnknown) {
    return DeleteRange(source, {{startLine, startChar}, {endLine, endChar}}, actionCode);
  }

  /// Groups nest: only the outermost opens and closes.
  void OpenUndoGroup(bool mergeWithPrevious = false);
  /// Tells `hook` the last record of the history, when both are there.
  void CloseUndoGroup(EditHook* hook = nullptr);
  bool CanUndo() const { return !m_readOnly && m_history.Position() != 0; }
  bool CanRedo() const { return !m_readOnly && m_history.Position() != m_history.Count(); }
  /// `position` receives the place of the last change.
  bool Undo(TextPosition& position);
  bool Redo(TextPosition& position);
  /// False when there is nothing to describe.
  bool UndoLabel(std::string& label) const;
  bool RedoLabel(std::string& label) const;
  const UndoHistory& History() const { return m_history; }
  /// See the history's function of this name.
  void JoinLastRecords() { m_history.JoinLast(); }
  /// Grows with each change of the text, by undo and redo, too.
  uint64_t ChangeCount() const { return m_changes; }
  TextPosition LastChange() const { return m_lastChange; }

  bool IsModified() const { return m_modified; }
  virtual void SetModified(bool modified) { m_modified = modified; }
  bool IsReadOnly() const { return m_readOnly; }
  void SetReadOnly(bool readOnly) { m_readOnly = readOnly; }
  int32_t LineEndStyle() const { return m_style; }
  void SetLineEndStyle(int32_t style) { m_style = style; }
  void SetCreateBackup(bool create) { m_createBackup = create; }
  bool CreatesBackup() const { return m_createBackup; }
  /// The section under which the flag words are kept; empty for a text that was never loaded.
  const std::string& ProfileSection() const { return m_profileSection; }
  /// For a text that was saved under another name: flags that change from now on are kept there.
  void SetProfileSection(const std::string& section) { m_profileSection = section; }

  /// Told of each change before the views are: what they share that follows from the text. The buffer does
  /// not keep it alive. Null when there is none.
  void SetFirstObserver(const std::weak_ptr<BufferObserver>& observer) { m_firstObserver = observer; }
  std::shared_ptr<BufferObserver> FirstObserver() const { return m_firstObserver.lock(); }
  void AddView(BufferObserver* view);
  void RemoveView(BufferObserver* view);
  /// Whoever is added in the meantime is not told: it has seen the text as it is now. Whoever is removed in
  /// the meantime is not told any more.
  void NotifyViews(const BufferObserver* source, const TextChange* change, uint32_t hints, int32_t line);

 private:
  struct LineRecord {
    char* text;
    int32_t length;
    int32_t capacity;  ///< 0 while the line lies where it was loaded
    uint32_t flags;
  };

  LineRecord& Record(int32_t line) {
    return const_cast<LineRecord&>(static_cast<const CCrystalTextBuffer*>(this)->Record(line));
  }
  const LineRecord& Record(int32_t line) const {
    if (static_cast<uint32_t>(line) >= m_lines.Size()) {
      throw std::invalid_argument("line index outside the buffer");
    }
    return m_lines[static_cast<size_t>(line)];
  }
  LineRecord MakeLine(std::string_view text, std::string_view tail = {});
  void SetLineLength(LineRecord& line, int64_t length);
  void InsertIntoLine(LineRecord& line, int32_t at, std::string_view text);
  void FreeLines(int32_t first, int32_t last);
  void ReleaseAllText();

  /// Puts lines into the text, without flags, and returns their place.
  TextRange PutIn(TextPosition at, std::span<const std::string_view> pieces);
  /// Says so before.
  void CutOut(TextRange range);
  /// Calls `tell` for each observer that was there when it began and has not left since.
  template <class Tell>
  void TellEach(Tell tell);
  /// Deletes, tells it, and returns the flag words of the lines that went.
  std::vector<LineWord> TakeOut(const BufferObserver* source, TextRange range, bool wholeLines);
  /// Gives their flag words to lines that an insertion brought: those of `words`, and the hidden flag to all
  /// that came into a collapsed block.
  void GiveWords(TextRange range, bool wholeLines, std::span<const LineWord> words);
  bool CameIntoCollapsed(TextRange range, bool wholeLines) const;
  bool SetWords(std::span<const LineWord> words);
  bool ChangeWords(std::span<const LineRange> ranges, uint32_t setMask, uint32_t clearMask);
  void TextChanged(const BufferObserver* source, const TextChange& change, TextPosition lastChange);
  void InsertRecorded(EditSource source, TextPosition at, RecordText&& text, TextPosition& end,
                      int32_t actionCode, FlagsFollow follow);
  void AddRecord(uint32_t flags, int32_t actionCode, TextRange range, RecordText&& text);
  /// The flag words of lines that an undone or repeated edit took out.
  struct MovedWords {
    std::optional<TextPosition> from;
    std::string_view text;  ///< of the lines
    std::vector<LineWord> words;
  };
  /// Carries a record's deletion, or its insertion, out again.
  void TakeOutAgain(size_t index, MovedWords& moved);
  void PutInAgain(const UndoRecord& record, const MovedWords& moved);
  void FinishHistoryStep(TextPosition& position);
  /// Null when no line of the range, which was checked, holds a CR character.
  std::unique_ptr<std::vector<int32_t>> PieceLengthsOf(TextRange range) const;

  IoResult LoadLines(const std::string& path, int32_t style);
  void RestoreStoredFlags();
  void PersistFlags(int32_t first, int32_t last);

  GapVector<LineRecord> m_lines;
  LinePool m_pool;
  UndoHistory m_history;
  std::weak_ptr<BufferObserver> m_firstObserver;
  std::vector<BufferObserver*> m_views;  ///< null where one left while all are told
  LineFlagStore* m_store;
  std::string m_profileSection;
  TextPosition m_lastChange;
  uint64_t m_changes = 0;
  int32_t m_style = line_end::kCrLf;
  int32_t m_savedStyle = line_end::kCrLf;
  int32_t m_groupDepth = 0;
  int32_t m_notifyDepth = 0;
  bool m_nextRecordStartsGroup = true;
  bool m_initialised = false;
  bool m_readOnly = false;
  bool m_modified = false;
  bool m_createBackup = false;
};

}  // namespace quill
