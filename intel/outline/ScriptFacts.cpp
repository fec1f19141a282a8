#include "intel/outline/ScriptFacts.h"

#include <cstdlib>
#include <optional>
#include <span>

#include "intel/outline/OutlineOrders.h"
#include "intel/outline/OutlineScanner.h"

namespace quill {
namespace {

/// The one of the script itself that is nearest to a place; `fits` leaves some out.
template <typename Fits>
std::optional<TextPosition> Nearest(const Outline& outline, std::span<const OutlineRef> all,
                                    TextPosition place, const Fits& fits) {
  std::optional<TextPosition> nearest;
  const auto distance = [place](TextPosition one) { return std::abs(one.line - place.line); };
  for (const OutlineRef ref : all) {
    if (outline.FileOf(ref) != 0 || !fits(ref)) continue;
    const TextPosition at = outline.PlaceOf(ref);
    if (!nearest || distance(at) < distance(*nearest)) nearest = at;
  }
  return nearest;
}

bool HasSameWords(const OutlineNames& a, const OutlineNames& b) {
  const auto isSame = [](const NameSet& one, const NameSet& other) {
    if (one.Size() != other.Size()) return false;
    for (size_t i = 0; i < one.Size(); ++i) {
      if (!other.Contains(one.WordAt(i))) return false;
    }
    return true;
  };
  return isSame(a.functions, b.functions) && isSame(a.variables, b.variables);
}

}  // namespace

std::shared_ptr<const ScriptFacts> MakeScriptFacts(OutlineParts parts, const IncludedFiles* included,
                                                   const ScriptFacts& previous,
                                                   const std::atomic<bool>* stop) {
  auto facts = std::make_shared<ScriptFacts>();
  if (included != nullptr) {
    AppendIncluded(parts, *included);
    for (const IncludedFiles::File& file : included->files) facts->includedPaths.push_back(file.path);
  }
  facts->outline = MakeOutline(std::move(parts), previous.outline, stop);
  if (stop != nullptr && stop->load()) return nullptr;
  facts->functions = EnclosingFunction(facts->outline);
  if (previous.names != nullptr && facts->outline.SharedOrders() == previous.outline.SharedOrders()) {
    facts->names = previous.names;
    return facts;
  }
  auto names = std::make_shared<OutlineNames>();
  CollectNames(facts->outline, names->functions, names->variables);
  // The same names as before are the same set: nothing has to be coloured anew for them.
  const bool isSame = previous.names != nullptr && HasSameWords(*names, *previous.names);
  facts->names = isSame ? previous.names : std::move(names);
  return facts;
}

std::shared_ptr<const ScriptFacts> ReadScriptFacts(const CCrystalTextBuffer& buffer, const std::string& path,
                                                   std::string_view onlyElements,
                                                   const ScriptReader& reader) {
  const Outline script = ScanOutline(buffer, onlyElements);
  ScriptFacts alone;
  alone.outline = script;
  if (!reader) return MakeScriptFacts(script.Parts(), nullptr, alone);
  const IncludedFiles included = FollowIncludes(script, path, reader);
  return MakeScriptFacts(script.Parts(), &included, alone);
}

TextPosition PlaceNow(const OutlineItem& item, OutlineRoot root, const Outline& now) {
  if (item.file != 0) return item.at;
  const auto hasText = [&](OutlineRef ref) { return now.TextOf(ref) == item.text; };
  std::optional<TextPosition> found = Nearest(now, now.WithText(root, item.text), item.at, hasText);
  const std::string_view word = DefinedWord(item.text);
  if (!found && !word.empty()) {
    const auto isOfRoot = [&](OutlineRef ref) { return now.RootOf(ref) == root; };
    found = Nearest(now, now.Defining(word), item.at, isOfRoot);
  }
  return found.value_or(item.at);
}

TextPosition PlaceNow(const NamedFile& file, const Outline& now) {
  std::optional<TextPosition> nearest;
  const auto distance = [&file](TextPosition at) { return std::abs(at.line - file.at.line); };
  for (const OutlineRef ref : now.Orders().namedFiles) {
    if (now.NamedFileText(ref) != file.name) continue;
    const TextPosition at = now.NamedFilePlace(ref);
    if (!nearest || distance(at) < distance(*nearest)) nearest = at;
  }
  return nearest.value_or(file.at);
}

}  // namespace quill
