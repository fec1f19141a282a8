#pragma once
#include <cstdint>
#include <optional>
#include <vector>

#include "base/GapVector.h"
#include "text/buffer/BufferObserver.h"
#include "text/buffer/LineRange.h"

namespace quill {

class CCrystalTextBuffer;
class FoldSettler;

/// Told what a parse found.
class ParseListener {
 public:
  virtual ~ParseListener() = default;
  /// The start states of some of these lines have changed: they look different although nobody edited them.
  /// With `marksChanged` block marks of lines that were parsed before have changed, too: the margin below
  /// them looks different. It must not parse.
  virtual void OnReparsed(std::optional<LineRange> changed, bool marksChanged) = 0;
};

/// The parse state at the start of each line. Lines are parsed when their state is needed; after an edit
/// only from the changed lines on, and only until a line's end state is what it was before. Parsing sets
/// the block marks of the lines parsed. Marks belong to the text, so that there must be one cache for all
/// who look at it: `ParsedText` has it.
class LineStateCache {
 public:
  LineStateCache(CCrystalTextBuffer& buffer, FoldSettler& folding);
  LineStateCache(const LineStateCache&) = delete;
  LineStateCache& operator=(const LineStateCache&) = delete;

  /// Forgets everything, as after a load.
  void Reset();
  /// What the buffer tells; costs no parsing. Call it once for every update.
  void OnTextChange(const TextChange* change, uint32_t hints, int32_t line);

  /// The state in which `line` starts (0 to the line count, which stands for the end of the text). All
  /// lines before it are parsed as far as needed. Called from within a parse of its own it returns what
  /// is known so far.
  uint32_t StateAt(int32_t line);
  /// Makes the start states and block marks of all lines up to `line` right, that line included.
  void ParseThrough(int32_t line);
  void ParseAll();

  /// It must be removed before it goes away.
  void AddListener(ParseListener* listener) { m_listeners.push_back(listener); }
  void RemoveListener(ParseListener* listener) { std::erase(m_listeners, listener); }

 private:
  /// The states that survive a line's end fit into two bits; the rest of a byte tells what is not known.
  static constexpr uint8_t kDirty = 0x80;    ///< the line's text changed since it was parsed
  static constexpr uint8_t kUnknown = 0x40;  ///< no start state yet: differs from every state
  static constexpr uint8_t kStateBits = 0x0C;

  int32_t KnownLines() const { return static_cast<int32_t>(m_states.Size()); }
  void MarkDirty(int32_t line);
  void InsertLines(int32_t at, int32_t count);
  void RemoveLines(int32_t at, int32_t count);
  /// Parses all lines before `end` as far as needed.
  void ParseBefore(int32_t end);
  /// Parses what is dirty before line `end`.
  void RepairBefore(int32_t end);
  /// Parses lines never seen up to and excluding `end`.
  void ExtendTo(int32_t end);
  void NoteChanged(int32_t line);
  void TellListeners();

  CCrystalTextBuffer& m_buffer;
  FoldSettler& m_folding;
  GapVector<uint8_t> m_states;  ///< start states of the lines from 0 on that were ever reached
  int32_t m_firstDirty = 0;     ///< all dirty lines lie in [m_firstDirty, m_dirtyEnd)
  int32_t m_dirtyEnd = 0;
  std::vector<ParseListener*> m_listeners;
  std::optional<LineRange> m_changed;  ///< what the listeners are to be told
  bool m_marksChanged = false;
  bool m_parsing = false;
};

}  // namespace quill
