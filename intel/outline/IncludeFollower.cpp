#include "intel/outline/IncludeFollower.h"

#include <algorithm>
#include <filesystem>
#include <unordered_set>
#include <utility>

#include "base/CodePage1252.h"
#include "base/InputFile.h"
#include "intel/outline/OutlineOrders.h"
#include "intel/outline/OutlineScanner.h"

namespace quill {
namespace {

namespace fs = std::filesystem;

/// The same file has the same name, as far as names alone tell.
fs::path Normal(const fs::path& path) {
  return path.lexically_normal();
}

/// Scripts are written for a system whose separator is the backslash.
fs::path FromScript(std::string_view name) {
  std::string path(name);
  std::replace(path.begin(), path.end(), '\\', '/');
  return path;
}

constexpr std::string_view kScriptExtensions[] = {".vsl", ".vsc", ".c", ".h", ".fx", ".txt"};

class Follower {
 public:
  Follower(const std::string& scriptPath, const ScriptReader& read, const IncludeLimits& limits)
      : m_read(read), m_limits(limits), m_scriptPath(scriptPath) {
    if (!scriptPath.empty()) m_seen.insert(Normal(scriptPath).string());
  }

  void Follow(const Outline& outline, const std::string& path, int32_t depth) {
    for (std::string& folder : outline.Paths()) m_folders.push_back(std::move(folder));
    for (const NamedFile& include : outline.Includes()) {
      if (m_result.limitReached) return;
      FollowOne(include, path, depth);
    }
  }
  IncludedFiles Result() { return std::move(m_result); }

 private:
  void FollowOne(const NamedFile& include, const std::string& fromPath, int32_t depth) {
    std::string foundPath;
    std::optional<std::string> text;
    const bool done = VisitPlacesOfFile(include.name, fromPath, m_scriptPath, m_folders,
                                        [this, depth, &foundPath, &text](const std::string& path) {
                                          foundPath = path;
                                          return IsDecided(path, depth, text);
                                        });
    if (!done) m_result.missing.push_back({include.name, fromPath, include.at});
    if (!text) return;
    m_bytes += text->size();
    m_seen.insert(foundPath);
    const Outline outline = ScanOutlineText(*text);
    text.reset();
    m_result.files.push_back({foundPath, outline});
    Follow(outline, foundPath, depth + 1);
  }

  /// Whether no other place is to be looked at; `text` is set when there is a new file.
  bool IsDecided(const std::string& path, int32_t depth, std::optional<std::string>& text) {
    const bool tired = m_attempts++ >= m_limits.attempts;
    if (!tired && m_seen.contains(path)) return true;
    m_result.limitReached = tired || depth >= m_limits.depth || m_result.files.size() >= m_limits.files;
    if (m_result.limitReached) return true;
    const size_t left = m_limits.bytes - m_bytes;
    text = m_read(path, left);
    if (text && text->size() > left) {
      m_result.limitReached = true;
      text.reset();
      return true;
    }
    return text.has_value();
  }

  const ScriptReader& m_read;
  const IncludeLimits m_limits;
  const std::string& m_scriptPath;
  std::vector<std::string> m_folders;
  std::unordered_set<std::string> m_seen;
  size_t m_attempts = 0;
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

bool VisitPlacesOfFile(std::string_view name, const std::string& fromPath, const std::string& scriptPath,
                       const std::vector<std::string>& folders,
                       const std::function<bool(const std::string& path)>& visit) {
  const fs::path file = FromScript(name);
  if (file.is_absolute()) return visit(Normal(file).string());
  if (!fromPath.empty() && visit(Normal(fs::path(fromPath).parent_path() / file).string())) return true;
  const fs::path scriptFolder = fs::path(scriptPath).parent_path();
  for (const std::string& written : folders) {
    const fs::path folder = FromScript(written);
    if (!folder.is_absolute() && scriptFolder.empty()) continue;
    if (visit(Normal(scriptFolder / folder / file).string())) return true;
  }
  return false;
}

bool IsScriptName(std::string_view name) {
  const std::string_view extension = name.substr(std::min(name.rfind('.'), name.size()));
  return std::any_of(std::begin(kScriptExtensions), std::end(kScriptExtensions),
                     [extension](std::string_view known) { return cp1252::EqualNoCase(extension, known); });
}

IncludedFiles FollowIncludes(const Outline& script, const std::string& scriptPath, const ScriptReader& read,
                             const IncludeLimits& limits) {
  Follower follower(scriptPath, read, limits);
  follower.Follow(script, scriptPath, 0);
  return follower.Result();
}

void MergeIncluded(Outline& outline, const IncludedFiles& included) {
  if (included.files.empty()) return;
  OutlineParts parts = outline.Parts();
  AppendIncluded(parts, included);
  outline = MakeOutline(std::move(parts), outline);
}

void AppendIncluded(OutlineParts& parts, const IncludedFiles& included) {
  int32_t number = 0;
  for (const IncludedFiles::File& file : included.files) {
    ++number;
    const OutlineParts& more = file.outline.Parts();
    for (const uint32_t slot : more.sequence) {
      parts.Append(more.bySlot[slot].group, more.bySlot[slot].firstLine, number);
    }
  }
}

}  // namespace quill
