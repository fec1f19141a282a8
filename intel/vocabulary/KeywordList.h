#pragma once
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "base/IoResult.h"
#include "intel/vocabulary/DatabaseResult.h"

namespace quill {

/// The script keywords while the user edits them: a list in alphabetical order, ignoring case.
class KeywordList {
 public:
  /// Replaces the entries by those of the file.
  DatabaseResult Load(const std::string& path);
  /// Writes every entry in list order.
  IoResult Save(const std::string& path) const;

  const std::vector<std::string>& Entries() const { return m_entries; }
  /// Position of the new entry, or nothing when the list has it already, ignoring case.
  std::optional<size_t> Add(const std::string& text);
  /// Puts `text` in the place of the selected entry, unsorted and without a look for duplicates; with
  /// none selected it goes to the end. Returns its position. Throws std::invalid_argument for a
  /// selection outside the list, as does `Remove`.
  size_t Edit(std::optional<size_t> selected, const std::string& text);
  void Remove(std::optional<size_t> selected);

 private:
  void CheckSelection(std::optional<size_t> selected) const;

  std::vector<std::string> m_entries;
};

}  // namespace quill
