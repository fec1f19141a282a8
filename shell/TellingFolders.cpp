#include "shell/TellingFolders.h"

#include <algorithm>
#include <map>
#include <set>
#include <string_view>

namespace quill {
namespace {

struct Place {
  std::string_view folder;
  std::string_view name;
};

Place PlaceOf(std::string_view path) {
  const size_t slash = path.rfind('/');
  if (slash == std::string_view::npos) return {{}, path};
  return {path.substr(0, std::max<size_t>(slash, 1)), path.substr(slash + 1)};
}

/// The last `count` parts of a folder; all of it when it has no more.
std::string_view LastParts(std::string_view folder, int count) {
  if (folder == "/") return folder;
  size_t begin = folder.size();
  for (; count > 0; --count) {
    const size_t slash = begin == 0 ? std::string_view::npos : folder.rfind('/', begin - 1);
    if (slash == std::string_view::npos) return folder;
    begin = slash;
  }
  return folder.substr(begin + 1);
}

std::string_view TellingPart(std::string_view folder, const std::set<std::string_view>& alike) {
  for (int count = 1;; ++count) {
    const std::string_view part = LastParts(folder, count);
    const auto same = std::ranges::count_if(
        alike, [part, count](std::string_view other) { return LastParts(other, count) == part; });
    if (same == 1 || part == folder) return part;
  }
}

}  // namespace

std::vector<std::string> TellingFolders(const std::vector<std::string>& paths) {
  std::map<std::string_view, std::set<std::string_view>> foldersOf;
  for (const std::string& path : paths) {
    const Place place = PlaceOf(path);
    if (!path.empty()) foldersOf[place.name].insert(place.folder);
  }
  std::vector<std::string> folders;
  for (const std::string& path : paths) {
    const Place place = PlaceOf(path);
    const auto alike = foldersOf.find(place.name);
    const bool alone = alike == foldersOf.end() || alike->second.size() < 2;
    folders.emplace_back(alone ? std::string_view() : TellingPart(place.folder, alike->second));
  }
  return folders;
}

}  // namespace quill
