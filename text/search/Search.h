#pragma once
#include <cstdint>
#include <string>
#include <string_view>

#include "base/ByteSearcher.h"
#include "text/buffer/TextPosition.h"

namespace quill {

class CCrystalTextBuffer;

/// Bits of a search; kept in the settings and handed to plug-ins, so the values are fixed.
namespace search_flag {
inline constexpr uint32_t kMatchCase = 0x01;
inline constexpr uint32_t kWholeWord = 0x02;
inline constexpr uint32_t kUpwards = 0x10;
}  // namespace search_flag

/// A search as it is asked for, and as a view remembers its last one.
struct SearchRequest {
  std::string what;
  uint32_t flags = 0;  ///< `search_flag`
  friend bool operator==(const SearchRequest&, const SearchRequest&) = default;
};

/// One search, prepared once and used on many lines. The empty string is found nowhere.
///
/// A character of a word is an ASCII letter, an ASCII digit or "_".
class TextSearch {
 public:
  TextSearch(std::string_view what, uint32_t flags);

  const std::string& What() const { return m_what; }
  uint32_t Flags() const { return m_flags; }
  int32_t Length() const { return static_cast<int32_t>(m_what.size()); }
  bool IsEmpty() const { return m_what.empty(); }

  /// The column of the first acceptable occurrence in `text`, or -1. With whole word it is one less than
  /// the true column for each occurrence that was passed over since a word character precedes it; that
  /// is how this search always was.
  int32_t FindInLine(std::string_view text) const;

  /// The same in a line of the buffer from column `from` on, as if the line began there; the column is
  /// the line's. -1 also when the line ends before `from`.
  int32_t FindInBufferLine(const CCrystalTextBuffer& buffer, int32_t line, int32_t from) const;

  /// Searches from `start`, which is moved to the block's start when it lies before it. Downwards up to
  /// the block's end; once more from the block's start with `wrap`. Upwards takes the leftmost
  /// occurrence of a line (on the first line: at or after `start`) down to line 0 whatever the block,
  /// once more from the last line with `wrap`. A range that reaches past the text ends with the text.
  bool FindInRange(const CCrystalTextBuffer& buffer, TextPosition start, TextRange block, bool wrap,
                   TextPosition& found) const;
  bool FindInText(const CCrystalTextBuffer& buffer, TextPosition start, bool wrap, TextPosition& found) const;

  /// The last occurrence that ends at or before a place; with `wrap` else the last one of the text. Of those
  /// that `NextOccurrence` gives when each line is searched from its start, one behind the other. The
  /// direction among the flags plays no part.
  bool FindPrevious(const CCrystalTextBuffer& buffer, TextPosition before, bool wrap,
                    TextPosition& found) const;

  /// The true column of the first occurrence at or after `from`, or -1. With whole word no word
  /// character of `text` touches it on either side.
  int32_t NextOccurrence(std::string_view text, int32_t from) const;

  /// What stands at `column` is what a search of this line can report, wherever in the line it began.
  bool IsFoundAt(std::string_view text, int32_t column) const;

 private:
  int32_t FindWordInLine(std::string_view text) const;
  int32_t LastOccurrence(std::string_view text, int32_t before) const;
  bool FindDownwards(const CCrystalTextBuffer& buffer, TextPosition start, TextPosition end,
                     TextPosition& found) const;
  bool FindUpwards(const CCrystalTextBuffer& buffer, TextPosition start, TextPosition& found) const;

  std::string m_what;
  uint32_t m_flags;
  ByteSearcher m_searcher;
};

/// The same as single calls. `FindInLine` matches case.
int32_t FindInLine(std::string_view text, std::string_view what, bool wholeWord);
bool FindInRange(const CCrystalTextBuffer& buffer, std::string_view what, TextPosition start,
                 TextPosition blockBegin, TextPosition blockEnd, uint32_t flags, bool wrap,
                 TextPosition& outFound);
bool FindInText(const CCrystalTextBuffer& buffer, std::string_view what, TextPosition start, uint32_t flags,
                bool wrap, TextPosition& outFound);

}  // namespace quill
