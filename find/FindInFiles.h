#pragma once
#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>

namespace quill {

/// One line of the result list, see `AppendResultLine`. Path bytes are the file system's, the text is in
/// the editor's code page.
struct GrepResult {
  std::string_view entry;  ///< the whole line; valid in the call
  size_t pathLength = 0;   ///< the path is the entry's beginning
  size_t textStart = 0;    ///< index in the entry
  size_t matchStart = 0;   ///< index in the entry of the line's first occurrence
  int64_t line = 0;        ///< from 1
};

struct GrepTotals {
  int64_t lines = 0;
  int64_t filesWithMatches = 0;
  int64_t files = 0;    ///< searched
  int64_t skipped = 0;  ///< files and folders that could not be read
  /// "12 lines in 3 of 40 files", with ", 2 skipped" when some were.
  std::string StatusText() const;
};

/// Gets results in the order in which they were found, a few hundred at a time.
using GrepSink = std::function<void(std::span<const GrepResult>)>;

/// Whether a file is searched: what follows from the first "." of its name on is ".vsl" or ".vsc" in any
/// case, so a.b.vsl is not.
bool IsSearchedFile(std::string_view name);

/// Searches every script below a directory for `what`, whatever its case, and blocks until the walk ends.
/// Depth first, in the file system's order. Each directory is searched once, however many links lead to
/// it; what vanishes meanwhile and what is no regular file is passed over. An empty directory or text
/// finds nothing.
GrepTotals FindInFiles(const std::string& directory, std::string_view what, const GrepSink& sink);

}  // namespace quill
