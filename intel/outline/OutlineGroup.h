#pragma once
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quill {

/// What some successive lines of a script define, in a few bytes a definition. Once made it does not change
/// any more and is shared. Lines count from the first one of the group: it stays true wherever its lines go.
struct OutlineGroup {
  /// A group has at most so many lines, and a line defines at most one thing.
  static constexpr int32_t kLineBits = 10;
  static constexpr int32_t kMostLines = 1 << kLineBits;

  /// A definition, or a file that is named.
  struct Entry {
    uint32_t start;           ///< of its text, in `text`
    uint32_t character : 31;  ///< of the text's first character in its line
    uint32_t indented : 1;    ///< blanks or tabs before the definition
    uint32_t length : 17;     ///< of the text
    uint32_t line : kLineBits;
    uint32_t root : 5;  ///< an `OutlineRoot`; of a file without meaning
    friend bool operator==(const Entry&, const Entry&) = default;
  };

  std::string text;  ///< of all entries, in one piece
  std::vector<Entry> items;
  std::vector<Entry> namedFiles;
  std::vector<Entry> includes;
  std::vector<uint16_t> names;  ///< those of the items that bring a name of the element list first

  std::string_view TextOf(const Entry& entry) const {
    return std::string_view(text).substr(entry.start, entry.length);
  }
  friend bool operator==(const OutlineGroup&, const OutlineGroup&) = default;
};

}  // namespace quill
