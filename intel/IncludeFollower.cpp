#include "intel/IncludeFollower.h"

#include <algorithm>
#include <filesystem>
#include <unordered_set>
#include <utility>

#include "base/InputFile.h"
#include "base/NameSet.h"
#include "intel/OutlineScanner.h"

namespace quill {
namespace {

namespace fs = std::filesystem;

/// The same file has the same name, as far as names alone tell.
fs::path Normal(const fs::path& path) {
  return path.lexically_normal();
}

/// Scripts are written for a system whose separator is the backslash.
fs::path FromScript(std::string name) {
  std::replace(name.begin(), name.end(), '\\', '/');
  return name;
}

class Follower {
 public:
  Follower(const std::string& scriptPath, const ScriptReader& read, const IncludeLimits& limits)
      : m_read(read), m_limits(limits), m_scriptFolder(fs::path(scriptPath).parent_path()) {
    if (!scriptPath.empty()) m_seen.insert(Normal(scriptPath).string());
  }

  void Follow(const Outline& outline, const std::string& path, int32_t depth) {
    for (const std::string& folder : outline.paths) m_folders.push_back(FromScript(folder));
    for (const NamedFile& include : outline.includes) {
      if (m_result.limitReached) return;
      FollowOne(include, path, depth);
    }
  }
  IncludedFiles Take() { return std::move(m_result); }

 private:
  void FollowOne(const NamedFile& include, const std::string& fromPath, int32_t depth) {
    for (const fs::path& candidate : Candidates(FromScript(include.name), fromPath)) {
      std::string path = candidate.string();
      if (m_seen.contains(path)) return;
      if (depth >= m_limits.depth || m_result.files.size() >= m_limits.files) {
        m_result.limitReached = true;
        return;
      }
      std::optional<std::string> text = m_read(path, m_limits.bytes - m_bytes);
      if (!text) continue;
      if (text->size() > m_limits.bytes - m_bytes) {
        m_result.limitReached = true;
        return;
      }
      m_bytes += text->size();
      m_seen.insert(path);
      const Outline outline = ScanOutlineText(*text);
      text.reset();
      m_result.files.push_back({path, outline});
      Follow(outline, path, depth + 1);
      return;
    }
    m_result.missing.push_back({include.name, fromPath, include.at});
  }

  std::vector<fs::path> Candidates(const fs::path& name, const std::string& fromPath) const {
    if (name.is_absolute()) return {Normal(name)};
    std::vector<fs::path> candidates;
    if (!fromPath.empty()) candidates.push_back(Normal(fs::path(fromPath).parent_path() / name));
    for (const fs::path& folder : m_folders) {
      if (folder.is_absolute() || !m_scriptFolder.empty()) {
        candidates.push_back(Normal(m_scriptFolder / folder / name));
      }
    }
    return candidates;
  }

  const ScriptReader& m_read;
  const IncludeLimits m_limits;
  const fs::path m_scriptFolder;
  std::vector<fs::path> m_folders;
  std::unordered_set<std::string> m_seen;
  size_t m_bytes = 0;
  IncludedFiles m_result;
};

}  // namespace

std::optional<std::string> ReadScriptFile(const std::string& path, size_t mostBytes) {
  InputFile file;
  if (!file.Open(path) || file.Size() > mostBytes) return std::nullopt;
  std::string text(static_cast<size_t>(file.Size()), '\0');
  size_t got = 0;
  if (!file.Read(text.data(), text.size(), got)) return std::nullopt;
  text.resize(got);
  return text;
}

IncludedFiles FollowIncludes(const Outline& script, const std::string& scriptPath, const ScriptReader& read,
                             const IncludeLimits& limits) {
  Follower follower(scriptPath, read, limits);
  follower.Follow(script, scriptPath, 0);
  return follower.Take();
}

void MergeIncluded(Outline& outline, const IncludedFiles& included) {
  NameSet names;
  for (const OutlineElement& element : outline.elements) names.Insert(element.name);
  int32_t number = 0;
  for (const IncludedFiles::File& file : included.files) {
    ++number;
    for (size_t root = 0; root < kOutlineRootCount; ++root) {
      for (const OutlineItem& item : file.outline.roots[root]) {
        outline.roots[root].push_back(item);
        outline.roots[root].back().file = number;
      }
    }
    for (const OutlineElement& element : file.outline.elements) {
      if (!names.Insert(element.name)) continue;
      outline.elements.push_back(element);
      outline.elements.back().file = number;
    }
    outline.paths.insert(outline.paths.end(), file.outline.paths.begin(), file.outline.paths.end());
  }
  if (number == 0) return;
  for (std::vector<OutlineItem>& items : outline.roots) SortItems(items);
}

}  // namespace quill
