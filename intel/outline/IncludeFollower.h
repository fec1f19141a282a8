#pragma once
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "intel/outline/Outline.h"

namespace quill {

/// The text of a file of at most `mostBytes` bytes; nothing when there is none, or only a larger one. Who
/// hands it in may answer with the text of an open window.
using ScriptReader = std::function<std::optional<std::string>(const std::string& path, size_t mostBytes)>;

/// Reads from the disk.
std::optional<std::string> ReadScriptFile(const std::string& path, size_t mostBytes);

struct IncludeLimits {
  int32_t depth = 32;  ///< of files that include one another
  size_t files = 1000;
  size_t attempts = 10000;   ///< places that are looked at, whether or not there is a file
  size_t bytes = 64u << 20;  ///< of all files together
};

/// What a script's `include <file>;` lines lead to.
struct IncludedFiles {
  struct File {
    std::string path;
    Outline outline;
  };
  struct Missing {
    std::string name;      ///< as written
    std::string fromPath;  ///< the file that has the line
    TextPosition at;
  };

  std::vector<File> files;  ///< each once, in the order in which they are read
  std::vector<Missing> missing;
  bool limitReached = false;  ///< some files were left out
};

/// Follows the includes of a script, those of its included files, and so on. A name is looked for beside
/// the file that has the line, then in the folders of the "path" lines read so far, which are relative to
/// the script. A file that is already there, the script itself too, is not read again.
/// `scriptPath` may be empty for a text without a file: then only absolute names are found.
IncludedFiles FollowIncludes(const Outline& script, const std::string& scriptPath, const ScriptReader& read,
                             const IncludeLimits& limits = {});

/// Where a file that a script names may be: beside the file that names it, then in the folders, which are
/// relative to the script. Scripts are written for a system whose separator is the backslash. `fromPath` and
/// `scriptPath` may be empty for a text without a file. Calls `visit` with one place after the other until
/// it returns true; false when it never did.
bool VisitPlacesOfFile(std::string_view name, const std::string& fromPath, const std::string& scriptPath,
                       const std::vector<std::string>& folders,
                       const std::function<bool(const std::string& path)>& visit);

/// Whether the name has the extension of a script or of a file that scripts include, in any case.
bool IsScriptName(std::string_view name);

/// Adds what the files define to the script's outline: roots, elements and paths. Item file n is
/// `included.files[n - 1]`.
void MergeIncluded(Outline& outline, const IncludedFiles& included);
/// The same for groups of which no outline was made yet.
void AppendIncluded(OutlineParts& parts, const IncludedFiles& included);

}  // namespace quill
