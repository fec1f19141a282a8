#pragma once
#include <string>
#include <vector>

namespace quill {

/// For each of some files, as much of the end of its folder ("a/x") as tells it from the others of the same
/// name; empty for a name that no other file has, and for an empty path. A path that stands there several
/// times is one file.
std::vector<std::string> TellingFolders(const std::vector<std::string>& paths);

}  // namespace quill
