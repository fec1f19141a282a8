#pragma once
#include <cstdint>
#include <optional>
#include <string>

/// Where the settings file lies and what happens to a damaged one: the platform's half of the store.
namespace quill::settings_file {

/// "quill/settings.db" under the user's configuration folder: `xdgConfigHome` when it is an absolute
/// path, else ".config" under `home`. Both are values of the environment and may be null. Empty when
/// there is neither.
std::string DefaultPath(const char* xdgConfigHome, const char* home);

/// Creates the folder that holds `path`, and those above it, readable by their owner only.
void MakeFolderFor(const std::string& path);

/// The file that `path` leads to through symbolic links; `path` itself when there is none yet.
std::string ResolveLinks(const std::string& path);

/// Tells two files that had the same path at different times apart.
struct Identity {
  uint64_t device = 0;
  uint64_t inode = 0;
  bool operator==(const Identity&) const = default;
};
/// Nothing when there is no such file.
std::optional<Identity> IdentityOf(const std::string& path);

enum class SetAsideOutcome { kDone, kReplacedByAnother, kFailed };
struct SetAsideResult {
  SetAsideOutcome outcome;
  std::string newPath;  ///< after kDone
};
/// Renames the file `damaged` at `path`, with its write-ahead log, to the first free name of
/// "`path`.damaged", "`path`.damaged-2" and so on. When another copy of the program did so first and
/// `path` is a new file by now, that one is left alone.
SetAsideResult SetAside(const std::string& path, const Identity& damaged);

}  // namespace quill::settings_file
