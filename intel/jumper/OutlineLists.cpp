#include "intel/jumper/OutlineLists.h"

#include <algorithm>
#include <iterator>

#include "base/CodePage1252.h"
#include "base/NameSet.h"
#include "intel/outline/AlphabeticalOrder.h"
#include "intel/outline/IncludeFollower.h"
#include "intel/writing/CompletionNames.h"

namespace quill {
namespace {

struct FileIcon {
  std::string_view extension;
  std::string_view icon;
};
constexpr FileIcon kFileIcons[] = {
    {".bmp", "document-image"}, {".dds", "document-image"}, {".jpg", "document-image"},
    {".pcx", "document-image"}, {".png", "document-image"}, {".tga", "document-image"},
    {".mdl", "document-model"}, {".wmb", "document-model"}, {".mid", "document-sound"},
    {".mp3", "document-sound"}, {".ogg", "document-sound"}, {".wav", "document-sound"},
};

/// Of an item or an element; its name is empty when it defines none.
OutlineRow RowOf(std::string_view text, OutlineRoot root, TextPosition at, int32_t file) {
  const std::string_view name = DefinedWord(text);
  text.remove_prefix(static_cast<size_t>(name.data() - text.data()));
  return {text, name.size(), false, root, at, file};
}

/// Sorts what stands from `first` on.
void SortByName(std::vector<OutlineRow>& rows, size_t first = 0) {
  std::vector<std::string_view> names;
  names.reserve(rows.size() - first);
  for (size_t i = first; i < rows.size(); ++i) names.push_back(rows[i].Name());
  std::vector<OutlineRow> sorted;
  sorted.reserve(names.size());
  for (const uint32_t index : AlphabeticalOrder(names)) sorted.push_back(rows[first + index]);
  std::copy(sorted.begin(), sorted.end(), rows.begin() + static_cast<ptrdiff_t>(first));
}

}  // namespace

std::vector<OutlineRow> VariableRows(const Outline& outline, RowOrder order) {
  std::vector<OutlineRow> rows;
  for (const OutlineItem& item : outline.Items(OutlineRoot::kVariables)) {
    const OutlineRow row = RowOf(item.text, OutlineRoot::kVariables, item.at, item.file);
    if (!item.indented && row.nameLength > 0) rows.push_back(row);
  }
  if (order == RowOrder::kAlphabetical) {
    SortByName(rows);
  } else {
    std::sort(rows.begin(), rows.end(), [](const OutlineRow& a, const OutlineRow& b) {
      return a.file != b.file ? a.file < b.file : a.at < b.at;
    });
  }
  return rows;
}

std::vector<OutlineRow> ElementRows(const Outline& outline, RowOrder order) {
  std::vector<OutlineRow> rows;
  rows.reserve(outline.elements.size() + outline.namedFiles.size());
  for (const OutlineElement& element : outline.elements) {
    const OutlineRow row = RowOf(element.name, element.root, element.at, element.file);
    if (row.nameLength > 0) rows.push_back(row);
  }
  if (order == RowOrder::kAlphabetical) SortByName(rows);
  const size_t firstFile = rows.size();
  NameSet files;
  for (const NamedFile& file : outline.namedFiles) {
    const std::string_view name = cp1252::Trimmed(file.name);
    if (name.empty() || !files.Insert(cp1252::ToLower(name))) continue;
    rows.push_back({name, name.size(), true, OutlineRoot::kPaths, file.at, 0});
  }
  if (order == RowOrder::kAlphabetical) SortByName(rows, firstFile);
  std::stable_partition(rows.begin() + static_cast<ptrdiff_t>(firstFile), rows.end(),
                        [](const OutlineRow& row) { return row.text.find('.') != std::string_view::npos; });
  return rows;
}

std::string_view RowIcon(const OutlineRow& row) {
  if (!row.isFile) return CompletionIcon(KindOfRoot(row.root));
  if (IsScriptName(row.text)) return "document-script";
  const std::string_view extension = row.text.substr(std::min(row.text.rfind('.'), row.text.size()));
  const auto* const found = std::find_if(
      std::begin(kFileIcons), std::end(kFileIcons),
      [extension](const FileIcon& known) { return cp1252::EqualNoCase(known.extension, extension); });
  return found == std::end(kFileIcons) ? "document" : found->icon;
}

}  // namespace quill
