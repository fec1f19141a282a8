#pragma once
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "intel/outline/EnclosingFunction.h"
#include "intel/outline/IncludeFollower.h"
#include "intel/outline/Outline.h"

namespace quill {

class CCrystalTextBuffer;

/// What one reading of a script found. Does not change any more; lines that were inserted later are not
/// in it.
struct ScriptFacts {
  Outline outline;  ///< with what the included files define, when those were followed
  EnclosingFunction functions;
  /// Of the included files: item file n is `includedPaths[n - 1]`.
  std::vector<std::string> includedPaths;
};

/// Reads a script's text. `onlyElements` is explained at `OutlineScanner`; a null `reader` follows no
/// includes.
std::shared_ptr<const ScriptFacts> ReadScriptFacts(const CCrystalTextBuffer& buffer, const std::string& path,
                                                   std::string_view onlyElements, const ScriptReader& reader);

/// Where an item of an older reading of the script is now: of those with its text, the one nearest to its
/// old place; without one, of those that define the same word; else the old place. Included files are taken
/// as unchanged.
TextPosition PlaceNow(const OutlineItem& item, OutlineRoot root, const Outline& now);
/// The same for a file that the script names.
TextPosition PlaceNow(const NamedFile& file, const Outline& now);

}  // namespace quill
