#pragma once
#include <cstdint>
#include <string_view>

#include "text/buffer/EditSource.h"
#include "text/buffer/TextPosition.h"
#include "text/search/Search.h"

namespace quill {

class CCrystalTextBuffer;

struct ReplaceAllOutcome {
  int64_t count = 0;      ///< occurrences replaced
  TextPosition lastEnd;   ///< behind the last replacement
  TextPosition blockEnd;  ///< where the block ends now
  bool refused = false;   ///< read-only, or a line would have become too long: it ended before that line
};

/// Replaces `firstMatch` and every occurrence that a downward search from behind each replacement finds
/// before `blockEnd`, as one undo group of `source`'s. The outcome is that of replacing them one by one,
/// but a line is edited once, from its first occurrence to its last: many occurrences in one long line
/// cost no more than the line.
ReplaceAllOutcome ReplaceAllFrom(CCrystalTextBuffer& buffer, EditSource source, const TextSearch& search,
                                 std::string_view with, TextPosition firstMatch, TextPosition blockEnd);

}  // namespace quill
