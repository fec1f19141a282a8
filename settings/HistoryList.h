#pragma once
#include <string>
#include <string_view>
#include <vector>

#include "settings/AppProfile.h"

namespace quill {

/// The past entries of a history combo box, newest first, kept in a section of the application profile
/// under a prefix plus index. The text that the box showed last lies under the bare prefix, or under "Last"
/// when the prefix is empty.
class HistoryList {
 public:
  static constexpr size_t kMaxLoaded = 10;
  /// One more is stored than loaded: the entry that a new one has pushed out of the list.
  static constexpr size_t kMaxStored = kMaxLoaded + 1;

  HistoryList(AppProfile profile, std::string section, std::string prefix);

  /// Reads the entries, up to the first that is empty or missing, and the last current text.
  void Load();
  /// Stores `currentText` as it is as the last one, moves it, trimmed, to the top of the entries unless
  /// it is empty, and stores these; stored entries beyond them are deleted. All or nothing.
  bool Save(std::string_view currentText);

  const std::vector<std::string>& Entries() const { return m_entries; }
  /// The text that the box showed last; empty when none is stored.
  const std::string& LastText() const { return m_lastText; }

 private:
  std::string NameOf(size_t index) const { return m_prefix + std::to_string(index); }
  std::string LastName() const { return m_prefix.empty() ? "Last" : m_prefix; }
  void MoveToTop(std::string_view text);

  AppProfile m_profile;
  std::string m_section;
  std::string m_prefix;
  std::vector<std::string> m_entries;
  std::string m_lastText;
};

}  // namespace quill
