#include "intel/outline/ScriptFacts.h"

#include <cstdlib>

#include "base/CodePage1252.h"
#include "intel/outline/OutlineScanner.h"

namespace quill {
namespace {

/// The nearest one for which `fits` is true; null when there is none.
template <typename Placed, typename Fits>
const Placed* Nearest(const std::vector<Placed>& all, TextPosition place, const Fits& fits) {
  const Placed* nearest = nullptr;
  const auto distance = [place](const Placed& one) { return std::abs(one.at.line - place.line); };
  for (const Placed& one : all) {
    if (fits(one) && (nearest == nullptr || distance(one) < distance(*nearest))) nearest = &one;
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
  const OutlineItem* found = Nearest(items, item.at, [&item](const OutlineItem& other) {
    return other.file == 0 && other.text == item.text;
  });
  const std::string_view word = DefinedWord(item.text);
  if (found == nullptr && !word.empty()) {
    found = Nearest(items, item.at, [word](const OutlineItem& other) {
      return other.file == 0 && cp1252::EqualNoCase(DefinedWord(other.text), word);
    });
  }
  return found == nullptr ? item.at : found->at;
}

TextPosition PlaceNow(const NamedFile& file, const Outline& now) {
  const NamedFile* found =
      Nearest(now.namedFiles, file.at, [&file](const NamedFile& other) { return other.name == file.name; });
  return found == nullptr ? file.at : found->at;
}

}  // namespace quill
