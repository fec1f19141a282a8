#include "shell/RecentFiles.h"

#include <algorithm>

#include "settings/Settings.h"

namespace quill {

void RecentFiles::Load() {
  m_paths.clear();
  for (const ProfileText& entry : profile::kRecentFiles) {
    std::string path = ReadText(m_profile, entry);
    if (!path.empty() && std::ranges::find(m_paths, path) == m_paths.end()) {
      m_paths.push_back(std::move(path));
    }
  }
}

void RecentFiles::Add(std::string path) {
  if (path.empty()) return;
  std::erase(m_paths, path);
  m_paths.insert(m_paths.begin(), std::move(path));
  if (m_paths.size() > kMaxFiles) m_paths.pop_back();
  Store();
}

void RecentFiles::Remove(std::string_view path) {
  if (std::erase(m_paths, std::string(path)) != 0) Store();
}

void RecentFiles::Store() {
  SettingsTransaction transaction(m_profile.Store());
  for (size_t i = 0; i < kMaxFiles; ++i) {
    const ProfileText& entry = profile::kRecentFiles[i];
    if (i < m_paths.size()) {
      WriteText(m_profile, entry, m_paths[i]);
    } else {
      m_profile.DeleteValue(entry.section, entry.name);
    }
  }
  transaction.Commit();
}

}  // namespace quill
