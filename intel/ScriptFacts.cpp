#include "intel/ScriptFacts.h"

#include <cstdlib>

#include "base/CodePage1252.h"
#include "intel/OutlineScanner.h"

namespace quill {
namespace {

/// The nearest item for which `fits` is true; null when there is none.
template <typename Fits>
const OutlineItem* Nearest(const std::vector<OutlineItem>& items, TextPosition place, const Fits& fits) {
  const OutlineItem* nearest = nullptr;
  const auto distance = [place](const OutlineItem& item) { return std::abs(item.at.line - place.line); };
  for (const OutlineItem& item : items) {
    if (item.file != 0 || !fits(item)) continue;
    if (nearest == nullptr || distance(item) < distance(*nearest)) nearest = &item;
  }
  return nearest;
}

}  // namespace

std::shared_ptr<const ScriptFacts> ReadScriptFacts(const CCrystalTextBuffer& buffer, const std::string& path,
                                                   std::string_view onlyElements,
                                                   const ScriptReader& reader) {
  auto facts = std::make_shared<ScriptFacts>();
  facts->outline = ScanOutline(buffer, onlyElements);
  if (reader) {
    const IncludedFiles included = FollowIncludes(facts->outline, path, reader);
    for (const IncludedFiles::File& file : included.files) facts->includedPaths.push_back(file.path);
    MergeIncluded(facts->outline, included);
  }
  facts->functions = EnclosingFunction(facts->outline);
  return facts;
}

TextPosition PlaceNow(const OutlineItem& item, OutlineRoot root, const Outline& now) {
  if (item.file != 0) return item.at;
  const auto& items = now.Items(root);
  const OutlineItem* found =
      Nearest(items, item.at, [&item](const OutlineItem& other) { return other.text == item.text; });
  if (found == nullptr) {
    const std::string_view name = BareName(root, item.text);
    found = Nearest(items, item.at, [root, name](const OutlineItem& other) {
      return cp1252::EqualNoCase(BareName(root, other.text), name);
    });
  }
  return found == nullptr ? item.at : found->at;
}

}  // namespace quill
