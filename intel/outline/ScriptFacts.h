#pragma once
#include <atomic>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/NameSet.h"
#include "intel/outline/EnclosingFunction.h"
#include "intel/outline/IncludeFollower.h"
#include "intel/outline/Outline.h"

namespace quill {

class CCrystalTextBuffer;

/// The names for the colouring, in lower case.
struct OutlineNames {
  NameSet functions;
  NameSet variables;
};

/// What one reading of a script found. Does not change any more; lines that were inserted later are not
/// in it.
struct ScriptFacts {
  Outline outline;  ///< with what the included files define, when those were followed
  EnclosingFunction functions;
  /// Of the included files: item file n is `includedPaths[n - 1]`.
  std::vector<std::string> includedPaths;
  std::shared_ptr<const OutlineNames> names;  ///< null only in facts of no script
  bool isWhole = true;                        ///< else the reading still goes on: more will be known
};

/// Makes facts of groups that were read. What `previous` has of the same groups is taken over. `included` may
/// be null. Null when `stop` was set meanwhile.
std::shared_ptr<const ScriptFacts> MakeScriptFacts(OutlineParts parts, const IncludedFiles* included,
                                                   const ScriptFacts& previous,
                                                   const std::atomic<bool>* stop = nullptr);

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
