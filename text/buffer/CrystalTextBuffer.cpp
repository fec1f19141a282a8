#include "text/buffer/CrystalTextBuffer.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>

#include "base/UiThread.h"
#include "text/buffer/LineFlagStore.h"

namespace quill {
namespace {

/// A byte at a time for short texts: they were just copied, and a read wider than the writes would wait
/// for them to reach the cache.
bool HasCr(std::string_view text) {
  constexpr size_t kShort = 32;
  if (text.size() > kShort) return text.find('\r') != std::string_view::npos;
  return std::any_of(text.begin(), text.end(), [](char c) { return c == '\r'; });
}

/// Cuts a text at each CR; a CR directly followed by LF is one break.
std::vector<std::string_view> SplitLines(std::string_view text) {
  std::vector<std::string_view> pieces;
  while (true) {
    const size_t cr = text.find('\r');
    if (cr == std::string_view::npos) break;
    pieces.push_back(text.substr(0, cr));
    const bool pair = cr + 1 < text.size() && text[cr + 1] == '\n';
    text.remove_prefix(cr + (pair ? 2 : 1));
  }
  pieces.push_back(text);
  return pieces;
}

/// Cuts a text at known places with two line-end characters between the pieces.
std::vector<std::string_view> SplitAt(std::string_view text, const std::vector<int32_t>& lengths) {
  std::vector<std::string_view> pieces;
  size_t at = 0;
  for (const int32_t length : lengths) {
    pieces.push_back(text.substr(at, static_cast<size_t>(length)));
    at += static_cast<size_t>(length) + 2;
  }
  return pieces;
}

/// The lines of a record's text; a single one, as most are, costs no memory.
class RecordPieces {
 public:
  RecordPieces(std::string_view text, const std::vector<int32_t>* lengths) : m_single(text) {
    if (lengths != nullptr) {
      m_pieces = SplitAt(text, *lengths);
    } else if (HasCr(text)) {
      m_pieces = SplitLines(text);
    }
  }
  explicit RecordPieces(const UndoRecord& record) : RecordPieces(record.text, record.pieceLengths) {}
  std::span<const std::string_view> Get() const {
    if (m_pieces.empty()) return {&m_single, 1};
    return m_pieces;
  }

 private:
  std::string_view m_single;
  std::vector<std::string_view> m_pieces;
};

/// A record's text without the line end that parts its lines from the one that stays.
std::string_view TextOfLines(const UndoRecord& record) {
  std::string_view text = record.text;
  if (record.HasWholeLines() && text.ends_with("\r\n")) text.remove_suffix(2);
  if (!record.HasWholeLines() && text.starts_with("\r\n")) text.remove_prefix(2);
  return text;
}

}  // namespace

std::string_view line_end::Bytes(int32_t style) {
  switch (style) {
    case kLfCr:
      return "\n\r";
    case kLf:
      return "\n";
    default:
      return "\r\n";
  }
}

CCrystalTextBuffer::~CCrystalTextBuffer() {
  ReleaseAllText();
}

void CCrystalTextBuffer::NewBuffer(int32_t style, std::string_view text) {
  AssertUiThread();
  ClearBuffer();
  for (size_t end = text.find('\n'); end != std::string_view::npos; end = text.find('\n')) {
    m_lines.PushBack(MakeLine(text.substr(0, end)));
    text.remove_prefix(end + 1);
  }
  m_lines.PushBack(MakeLine(text));
  m_style = m_savedStyle = style == line_end::kAutomatic ? static_cast<int32_t>(line_end::kCrLf) : style;
  m_initialised = true;
  SetModified(false);
  NotifyViews(nullptr, nullptr, hint::kReset, -1);
}

void CCrystalTextBuffer::ClearBuffer() {
  AssertUiThread();
  ReleaseAllText();
  m_history.Clear();
  ++m_changes;
  m_profileSection.clear();
  m_lastChange = {};
  m_groupDepth = 0;
  m_nextRecordStartsGroup = true;
  m_readOnly = false;
  m_initialised = false;
}

bool CCrystalTextBuffer::CopyLine(int32_t line, std::string& text) const {
  text.assign(Line(line));
  return !text.empty();
}

int32_t CCrystalTextBuffer::CopyLeadingWhiteSpace(int32_t line, std::string& text) const {
  const std::string_view all = Line(line);
  const size_t end = std::min(all.find_first_not_of("\t "), all.size());
  text.assign(all.substr(0, end));
  return static_cast<int32_t>(end);
}

void CCrystalTextBuffer::CopyRange(TextRange range, std::string& text, std::string_view lineEnd) const {
  CheckPosition(range.start);
  CheckPosition(range.end);
  text.clear();
  if (range.end < range.start) throw std::invalid_argument("range ends before it starts");
  auto length = static_cast<size_t>(range.end.character);
  for (int32_t line = range.start.line; line < range.end.line; ++line)
    length += Line(line).size() + lineEnd.size();
  text.reserve(length - static_cast<size_t>(range.start.character));
  for (int32_t line = range.start.line; line <= range.end.line; ++line) {
    text.append(PieceOf(range, line));
    if (line != range.end.line) text.append(lineEnd);
  }
}

TextPosition CCrystalTextBuffer::EndOfText() const {
  const int32_t last = LineCount() - 1;
  return last < 0 ? TextPosition{} : TextPosition{last, LineLength(last)};
}

void CCrystalTextBuffer::CheckPosition(TextPosition position) const {
  if (position.character < 0 || position.character > LineLength(position.line)) {
    throw std::invalid_argument("character index outside the line");
  }
}

void CCrystalTextBuffer::AddView(BufferObserver* view) {
  AssertUiThread();
  m_views.push_back(view);
}

void CCrystalTextBuffer::RemoveView(BufferObserver* view) {
  AssertUiThread();
  if (m_notifyDepth == 0) {
    std::erase(m_views, view);
  } else {
    std::replace(m_views.begin(), m_views.end(), view, static_cast<BufferObserver*>(nullptr));
  }
}

template <class Tell>
void CCrystalTextBuffer::TellEach(Tell tell) {
  struct Telling {
    explicit Telling(CCrystalTextBuffer& teller) : buffer(teller) { ++buffer.m_notifyDepth; }
    ~Telling() {
      if (--buffer.m_notifyDepth == 0) std::erase(buffer.m_views, nullptr);
    }
    CCrystalTextBuffer& buffer;
  } telling(*this);
  if (const auto first = m_firstObserver.lock()) tell(*first);
  const size_t count = m_views.size();
  for (size_t i = 0; i < count; ++i) {
    if (BufferObserver* view = m_views[i]; view != nullptr) tell(*view);
  }
}

void CCrystalTextBuffer::NotifyViews(const BufferObserver* source, const TextChange* change, uint32_t hints,
                                     int32_t line) {
  AssertUiThread();
  TellEach([&](BufferObserver& view) { view.OnBufferUpdate(source, change, hints, line); });
}

// Line records

CCrystalTextBuffer::LineRecord CCrystalTextBuffer::MakeLine(std::string_view text, std::string_view tail) {
  const auto length = static_cast<int64_t>(text.size() + tail.size());
  if (length > kLongestLine) throw std::invalid_argument("line too long");
  const int64_t capacity = LinePool::CapacityFor(length);
  LineRecord line{m_pool.Allocate(static_cast<int32_t>(capacity)), static_cast<int32_t>(length),
                  static_cast<int32_t>(capacity), 0};
  if (!text.empty()) std::memcpy(line.text, text.data(), text.size());
  if (!tail.empty()) std::memcpy(line.text + text.size(), tail.data(), tail.size());
  return line;
}

void CCrystalTextBuffer::SetLineLength(LineRecord& line, int64_t length) {
  if (length > line.length && length >= line.capacity) {
    if (length > kLongestLine) throw std::invalid_argument("line too long");
    const auto capacity = static_cast<int32_t>(LinePool::CapacityFor(length));
    line.text = m_pool.Reallocate(line.text, line.capacity, line.length, capacity);
    line.capacity = capacity;
  }
  line.length = static_cast<int32_t>(length);
}

void CCrystalTextBuffer::InsertIntoLine(LineRecord& line, int32_t at, std::string_view text) {
  const auto tail = static_cast<size_t>(line.length - at);
  SetLineLength(line, static_cast<int64_t>(line.length) + static_cast<int64_t>(text.size()));
  std::memmove(line.text + at + text.size(), line.text + at, tail);
  if (!text.empty()) std::memcpy(line.text + at, text.data(), text.size());
}

void CCrystalTextBuffer::FreeLines(int32_t first, int32_t last) {
  for (int32_t i = first; i <= last; ++i) {
    const LineRecord& line = m_lines[static_cast<size_t>(i)];
    m_pool.Free(line.text, line.capacity);
  }
}

void CCrystalTextBuffer::ReleaseAllText() {
  const size_t count = m_lines.Size();
  for (size_t i = 0; i < count; ++i) {
    const LineRecord& line = m_lines[i];
    if (LinePool::IsLong(line.capacity)) m_pool.Free(line.text, line.capacity);
  }
  m_lines.Clear();
  m_pool.ReleaseChunks();
}

// Flags

void CCrystalTextBuffer::SetFlagOnLine(int32_t line, uint32_t mask, bool set, bool removeFromPreviousLine) {
  AssertUiThread();
  if (!std::has_single_bit(mask)) return;
  if (line == -1) {
    line = FirstLineWithFlag(mask);
    if (line == -1) return;
  } else if (removeFromPreviousLine && set) {
    (void)Record(line);  // refuse a wrong line before anything changes
    const int32_t previous = FirstLineWithFlag(mask);
    if (previous >= 0 && previous != line) SetFlagOnLine(previous, mask, false);
  }
  uint32_t& flags = Record(line).flags;
  const uint32_t changed = set ? flags | mask : flags & ~mask;
  if (changed == flags) return;
  flags = changed;
  NotifyViews(nullptr, nullptr, hint::kLineFlags, line);
  PersistFlags(line, line);
}

int32_t CCrystalTextBuffer::FirstLineWithAnyFlag(uint32_t mask) const {
  const size_t count = m_lines.Size();
  for (size_t i = 0; i < count; ++i) {
    if ((m_lines[i].flags & mask) != 0) return static_cast<int32_t>(i);
  }
  return -1;
}

int32_t CCrystalTextBuffer::FirstLineWithFlag(uint32_t mask) const {
  return std::has_single_bit(mask) ? FirstLineWithAnyFlag(mask) : -1;
}

void CCrystalTextBuffer::ChangeFlagsOnLines(int32_t first, int32_t last, uint32_t setMask,
                                            uint32_t clearMask) {
  AssertUiThread();
  (void)Record(first);
  (void)Record(last);
  for (int32_t line = first; line <= last; ++line) {
    uint32_t& flags = Record(line).flags;
    flags = (flags | setMask) & ~clearMask;
  }
  PersistFlags(first, last);
  NotifyViews(nullptr, nullptr, hint::kFlagsOnly, -1);
}

bool CCrystalTextBuffer::ChangeFlagsOnRanges(std::span<const LineRange> ranges, uint32_t setMask,
                                             uint32_t clearMask) {
  AssertUiThread();
  if (!ChangeWords(ranges, setMask, clearMask)) return false;
  NotifyViews(nullptr, nullptr, hint::kFlagsOnly, -1);
  return true;
}

bool CCrystalTextBuffer::ShowLines(std::span<const LineRange> ranges) {
  AssertUiThread();
  return ChangeWords(ranges, 0, line_flag::kHidden);
}

bool CCrystalTextBuffer::ChangeWords(std::span<const LineRange> ranges, uint32_t setMask,
                                     uint32_t clearMask) {
  std::vector<LineFlagStore::Word> words;
  for (const LineRange& range : ranges) {
    for (int32_t line = range.first; line <= range.last; ++line) {
      uint32_t& flags = Record(line).flags;
      const uint32_t changed = (flags | setMask) & ~clearMask;
      if (changed != flags) words.emplace_back(line, changed);
      flags = changed;
    }
  }
  if (words.empty()) return false;
  if (m_store != nullptr && !m_profileSection.empty()) m_store->Write(m_profileSection, words);
  return true;
}

void CCrystalTextBuffer::SetBlockMarks(int32_t line, uint32_t marks) {
  AssertUiThread();
  uint32_t& flags = Record(line).flags;
  flags = (flags & ~line_flag::kBlockMarks) | (marks & line_flag::kBlockMarks);
}

void CCrystalTextBuffer::PersistFlags(int32_t first, int32_t last) {
  if (m_store == nullptr || m_profileSection.empty()) return;
  std::vector<LineFlagStore::Word> words;
  words.reserve(static_cast<size_t>(std::max(last - first + 1, 0)));
  for (int32_t line = first; line <= last; ++line) words.emplace_back(line, LineFlags(line));
  m_store->Write(m_profileSection, words);
}

// Editing

bool CCrystalTextBuffer::InsertTextAt(EditSource source, TextPosition at, std::string_view text,
                                      TextPosition& end, int32_t actionCode) {
  CheckPosition(at);
  if (m_readOnly) return false;
  InsertRecorded(source, at, {std::string(text), nullptr}, end, actionCode, FlagsFollow::kLine);
  return true;
}

bool CCrystalTextBuffer::InsertLinesAt(EditSource source, TextPosition at,
                                       const std::vector<std::string_view>& lines, TextPosition& end,
                                       int32_t actionCode, FlagsFollow follow) {
  if (lines.empty()) throw std::invalid_argument("no lines to insert");
  CheckPosition(at);
  if (m_readOnly) return false;
  RecordText record;
  bool anyCr = false;
  for (size_t i = 0; i < lines.size(); ++i) {
    if (i != 0) record.text += "\r\n";
    record.text += lines[i];
    anyCr = anyCr || HasCr(lines[i]);
  }
  if (anyCr) record.pieceLengths = std::make_unique<std::vector<int32_t>>();
  for (size_t i = 0; anyCr && i < lines.size(); ++i) {
    record.pieceLengths->push_back(static_cast<int32_t>(lines[i].size()));
  }
  InsertRecorded(source, at, std::move(record), end, actionCode, follow);
  return true;
}

void CCrystalTextBuffer::InsertRecorded(EditSource source, TextPosition at, RecordText&& text,
                                        TextPosition& end, int32_t actionCode, FlagsFollow follow) {
  AssertUiThread();
  if (static_cast<int64_t>(text.text.size()) > kLongestLine - LineLength(at.line)) {
    throw std::invalid_argument("text too long");
  }
  const bool ownGroup = m_groupDepth == 0;
  if (ownGroup) OpenUndoGroup();
  const bool wholeLines = follow == FlagsFollow::kText;
  // From the record's copy: the caller's text may be a line of ours.
  const TextRange range = PutIn(at, RecordPieces(text.text, text.pieceLengths.get()).Get());
  GiveWords(range, wholeLines, {});
  TextChanged(source.observer, {true, range}, range.end);
  end = range.end;
  AddRecord(UndoRecord::kInsert | (wholeLines ? UndoRecord::kWholeLines : 0), actionCode, range,
            std::move(text));
  if (ownGroup) CloseUndoGroup(source.hook);
}

bool CCrystalTextBuffer::InsertTextAt(EditSource source, int32_t line, int32_t character,
                                      std::string_view text, int32_t& outEndLine, int32_t& outEndChar,
                                      int32_t actionCode) {
  TextPosition end;
  if (!InsertTextAt(source, {line, character}, text, end, actionCode)) return false;
  outEndLine = end.line;
  outEndChar = end.character;
  return true;
}

bool CCrystalTextBuffer::DeleteRange(EditSource source, TextRange range, int32_t actionCode,
                                     FlagsFollow follow) {
  AssertUiThread();
  RecordText text;
  CopyRange(range, text.text);
  if (m_readOnly) return false;
  if (HasCr(text.text)) text.pieceLengths = PieceLengthsOf(range);
  const bool ownGroup = m_groupDepth == 0;
  if (ownGroup) OpenUndoGroup();
  const bool wholeLines = follow == FlagsFollow::kText;
  std::vector<LineWord> words = TakeOut(source.observer, range, wholeLines);
  AddRecord(wholeLines ? UndoRecord::kWholeLines : 0, actionCode, range, std::move(text));
  m_history.KeepWords(m_history.Position() - 1, std::move(words));
  if (ownGroup) CloseUndoGroup(source.hook);
  return true;
}

std::unique_ptr<std::vector<int32_t>> CCrystalTextBuffer::PieceLengthsOf(TextRange range) const {
  auto lengths = std::make_unique<std::vector<int32_t>>();
  bool anyCr = false;
  for (int32_t line = range.start.line; line <= range.end.line; ++line) {
    const std::string_view piece = PieceOf(range, line);
    lengths->push_back(static_cast<int32_t>(piece.size()));
    anyCr = anyCr || HasCr(piece);
  }
  if (!anyCr) lengths.reset();
  return lengths;
}

TextRange CCrystalTextBuffer::PutIn(TextPosition at, std::span<const std::string_view> pieces) {
  const auto added = static_cast<int32_t>(pieces.size()) - 1;
  if (added == 0) {
    InsertIntoLine(Record(at.line), at.character, pieces.front());
    return {at, {at.line, at.character + static_cast<int32_t>(pieces.front().size())}};
  }
  const std::string_view tail = Line(at.line).substr(static_cast<size_t>(at.character));
  std::vector<LineRecord> fresh;
  fresh.reserve(static_cast<size_t>(added));
  for (int32_t i = 1; i < added; ++i) fresh.push_back(MakeLine(pieces[static_cast<size_t>(i)]));
  fresh.push_back(MakeLine(pieces.back(), tail));
  LineRecord& first = Record(at.line);
  SetLineLength(first, at.character);
  InsertIntoLine(first, at.character, pieces.front());
  m_lines.Insert(static_cast<size_t>(at.line) + 1, fresh.data(), fresh.size());
  return {at, {at.line + added, static_cast<int32_t>(pieces.back().size())}};
}

void CCrystalTextBuffer::CutOut(TextRange range) {
  TellEach([range](BufferObserver& view) { view.OnDeleting(range); });
  LineRecord& first = Record(range.start.line);
  if (range.start.line == range.end.line) {
    const auto tail = static_cast<size_t>(first.length - range.end.character);
    std::memmove(first.text + range.start.character, first.text + range.end.character, tail);
    SetLineLength(first, first.length - (range.end.character - range.start.character));
    return;
  }
  const std::string_view tail = Line(range.end.line).substr(static_cast<size_t>(range.end.character));
  SetLineLength(first, range.start.character);
  InsertIntoLine(first, range.start.character, tail);
  FreeLines(range.start.line + 1, range.end.line);
  m_lines.Erase(static_cast<size_t>(range.start.line) + 1,
                static_cast<size_t>(range.end.line - range.start.line));
}

void CCrystalTextBuffer::TextChanged(const BufferObserver* source, const TextChange& change,
                                     TextPosition lastChange) {
  const bool oneLine = change.range.start.line == change.range.end.line;
  NotifyViews(source, &change, oneLine ? hint::kLineChanged : hint::kLinesChanged, change.range.start.line);
  if (!m_modified) SetModified(true);
  ++m_changes;
  m_lastChange = lastChange;
}

// History

void CCrystalTextBuffer::AddRecord(uint32_t flags, int32_t actionCode, TextRange range, RecordText&& text) {
  if (m_nextRecordStartsGroup) flags |= UndoRecord::kGroupStart;
  m_nextRecordStartsGroup = false;
  m_history.Add(flags, actionCode, range, std::move(text));
}

void CCrystalTextBuffer::OpenUndoGroup(bool mergeWithPrevious) {
  AssertUiThread();
  if (m_groupDepth++ > 0) return;
  m_nextRecordStartsGroup = !mergeWithPrevious || m_history.Position() == 0;
}

void CCrystalTextBuffer::CloseUndoGroup(EditHook* hook) {
  AssertUiThread();
  if (m_groupDepth > 0 && --m_groupDepth > 0) return;
  m_nextRecordStartsGroup = true;
  const auto last = m_history.Last();
  if (hook == nullptr || !last) return;
  const std::string lastText(last->text);  // a copy: the hook's own edits may drop records
  hook->OnUndoGroupClosed(last->action, lastText);
}

void CCrystalTextBuffer::TakeOutAgain(size_t index, MovedWords& moved) {
  const UndoRecord record = m_history.At(index);
  std::vector<LineWord> words = TakeOut(nullptr, record.range, record.HasWholeLines());
  moved = {record.range.start, TextOfLines(record), words};
  m_history.KeepWords(index, std::move(words));
}

void CCrystalTextBuffer::PutInAgain(const UndoRecord& record, const MovedWords& moved) {
  PutIn(record.range.start, RecordPieces(record).Get());
  // Lines that go from one place to another keep what was set on them in the meantime.
  const bool sameLines = moved.from && moved.from != record.range.start && moved.text == TextOfLines(record);
  std::span<const LineWord> words;
  if (sameLines) {
    words = moved.words;
  } else if (record.words != nullptr) {
    words = *record.words;
  }
  GiveWords(record.range, record.HasWholeLines(), words);
  TextChanged(nullptr, {true, record.range}, record.range.end);
}

bool CCrystalTextBuffer::Undo(TextPosition& position) {
  AssertUiThread();
  if (!CanUndo()) return false;
  bool groupStart = false;
  MovedWords moved;
  while (!groupStart && m_history.Position() != 0) {
    const UndoRecord record = *m_history.Last();
    if (record.IsInsert()) {
      TakeOutAgain(m_history.Position() - 1, moved);
    } else {
      PutInAgain(record, moved);
    }
    groupStart = record.StartsGroup();
    m_history.StepBack();
  }
  FinishHistoryStep(position);
  return true;
}

bool CCrystalTextBuffer::Redo(TextPosition& position) {
  AssertUiThread();
  if (!CanRedo()) return false;
  std::optional<UndoRecord> next = m_history.Next();
  MovedWords moved;
  do {
    if (next->IsInsert()) {
      PutInAgain(*next, moved);
    } else {
      TakeOutAgain(m_history.Position(), moved);
    }
    m_history.StepForward();
    next = m_history.Next();
  } while (next && !next->StartsGroup());
  FinishHistoryStep(position);
  return true;
}

void CCrystalTextBuffer::FinishHistoryStep(TextPosition& position) {
  position = m_lastChange;
  m_nextRecordStartsGroup = true;
  const bool modified = !m_history.IsAtSaved() || m_style != m_savedStyle;
  if (modified != m_modified) SetModified(modified);
}

bool CCrystalTextBuffer::UndoLabel(std::string& label) const {
  const auto record = m_history.Last();
  const char* text = !record ? nullptr : action::Description(record->action);
  label = text == nullptr ? "" : text;
  return text != nullptr;
}

bool CCrystalTextBuffer::RedoLabel(std::string& label) const {
  const auto record = m_history.Next();
  const char* text = !record ? nullptr : action::Description(record->action);
  label = text == nullptr ? "" : text;
  return text != nullptr;
}

}  // namespace quill
