#pragma once
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace quill {

/// Where a buffer keeps its lines' flag words between runs: integers under a section (the file's full
/// path), named by the decimal line index. Failures are silent: nothing is read, a write is dropped.
class LineFlagStore {
 public:
  using Word = std::pair<int32_t, uint32_t>;  ///< line index, flag word

  virtual ~LineFlagStore() = default;
  /// Every stored non-zero word of a section, in any order, read in one go.
  virtual std::vector<Word> ReadAll(const std::string& section) = 0;
  /// Deletes each line's value and writes it anew unless the word is 0; all in one transaction.
  virtual void Write(const std::string& section, const std::vector<Word>& words) = 0;
};

}  // namespace quill
