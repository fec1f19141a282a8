#include "shell/RecentFiles.h"

#include <algorithm>

namespace quill {
namespace {

constexpr std::string_view kSection = "Recent File List";

std::string NameOf(size_t index) {
  return "File" + std::to_string(index + 1);
}

}  // namespace

void RecentFiles::Load() {
  m_paths.clear();
  for (size_t i = 0; i < kMaxFiles; ++i) {
    std::string path = m_profile.ReadText(kSection, NameOf(i));
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
    if (i < m_paths.size()) {
      m_profile.WriteText(kSection, NameOf(i), m_paths[i]);
    } else {
      m_profile.DeleteValue(kSection, NameOf(i));
    }
  }
  transaction.Commit();
}

}  // namespace quill
