#pragma once
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "settings/AppProfile.h"
#include "settings/ProfileTable.h"

namespace quill {

/// The files opened or saved last, newest first, kept in the profile.
class RecentFiles {
 public:
  static constexpr size_t kMaxFiles = std::size(profile::kRecentFiles);

  explicit RecentFiles(AppProfile profile) : m_profile(profile) {}

  /// Reads the list; gaps in it close.
  void Load();
  /// Puts a full path on top and stores the list; a list that cannot be stored still counts for this run.
  void Add(std::string path);
  /// Takes a path off, such as that of a file that has gone, and stores the list.
  void Remove(std::string_view path);
  const std::vector<std::string>& Paths() const { return m_paths; }

 private:
  void Store();

  AppProfile m_profile;
  std::vector<std::string> m_paths;
};

}  // namespace quill
