#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "text/buffer/BufferObserver.h"
#include "text/buffer/TextPosition.h"
#include "text/search/Search.h"

namespace quill {

class CCrystalTextBuffer;

/// Every occurrence in the lines first..last, cut to the text: true columns, none overlapping the one
/// before, in order.
std::vector<TextRange> MatchesInLines(const CCrystalTextBuffer& buffer, const TextSearch& search,
                                      int32_t first, int32_t last);

/// `selection` is what a search selects when it finds something.
bool IsMatch(const CCrystalTextBuffer& buffer, const TextSearch& search, TextRange selection);

/// Counts the occurrences of a search in a whole text a slice at a time, and tells which of them a
/// selection is: "3 of 41". It keeps one number per block of lines; an edit inside a line makes it count
/// that line's block anew, an added or removed line everything from its block on.
class MatchCounter {
 public:
  explicit MatchCounter(const CCrystalTextBuffer& buffer) : m_buffer(&buffer) {}

  /// Forgets all counts; an empty search ends the counting.
  void Start(const TextSearch& search);
  void Stop();
  /// To be called for each change of the text, with the hints and the line of `BufferObserver`.
  void OnTextChanged(uint32_t hints, int32_t line);

  bool IsActive() const { return m_search.has_value(); }
  const TextSearch& Search() const { return m_search.value(); }
  /// Counts at least one block and about `lines` lines further. True when nothing is left to count.
  bool Advance(int32_t lines);
  bool IsComplete() const { return !IsActive() || (m_stale.empty() && m_nextLine >= LineCount()); }
  /// Of the part that is counted so far.
  int64_t Count() const { return m_count; }
  /// Number, from 1, of the occurrence at `selection`, which must be a match: the first one on its line
  /// that ends behind its start. 0 for another selection, and while the text up to it is not counted.
  int64_t OrdinalOf(TextRange selection) const;
  /// "3 of 41", or "41" when the selection is at none of them, with "+" behind a count that goes on;
  /// empty when there is no search.
  std::string StatusText(TextRange selection) const;

 private:
  static constexpr int32_t kLinesPerBlock = 256;
  struct Block {
    int32_t count = 0;   ///< occurrences in its lines
    bool stale = false;  ///< its text has changed since
  };

  int32_t LineCount() const;
  /// Occurrences in a line that start before column `end`.
  int64_t CountInLine(int32_t line, int32_t end) const;
  int64_t CountInLines(int32_t first, int32_t last) const;
  void RecountBlock(size_t block);

  const CCrystalTextBuffer* m_buffer;
  std::optional<TextSearch> m_search;
  std::vector<Block> m_blocks;  ///< those counted so far
  std::vector<size_t> m_stale;  ///< indices of the stale ones
  int32_t m_nextLine = 0;       ///< first line that is not counted
  int64_t m_count = 0;
};

}  // namespace quill
