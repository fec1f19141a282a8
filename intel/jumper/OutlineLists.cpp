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

/// Rows whose names are the same but for case come in the order of the text.
void SortSameNamesByPlace(const Outline& outline, std::vector<OutlineRef>& sorted) {
  const auto isBefore = [&outline](OutlineRef a, OutlineRef b) { return outline.IsBefore(a, b); };
  for (auto first = sorted.begin(); first != sorted.end();) {
    const std::string_view word = outline.WordOf(*first);
    const auto last = std::find_if(first + 1, sorted.end(), [&outline, word](OutlineRef ref) {
      return !cp1252::EqualNoCase(outline.WordOf(ref), word);
    });
    std::sort(first, last, isBefore);
    first = last;
  }
}

/// The elements that define a word, alphabetically.
std::vector<OutlineRef> SortedElements(const Outline& outline) {
  // Picked from the words, which are sorted: by slot, one bit for each definition.
  std::vector<std::vector<bool>> isElement(outline.Parts().bySlot.size());
  for (const OutlineRef ref : outline.Orders().elements) {
    std::vector<bool>& ofSlot = isElement[Outline::SlotOf(ref)];
    if (ofSlot.empty()) ofSlot.resize(OutlineGroup::kMostLines);
    ofSlot[Outline::NumberOf(ref)] = true;
  }
  std::vector<OutlineRef> sorted;
  for (const OutlineRef ref : outline.Orders().words) {
    const std::vector<bool>& ofSlot = isElement[Outline::SlotOf(ref)];
    if (!ofSlot.empty() && ofSlot[Outline::NumberOf(ref)]) sorted.push_back(ref);
  }
  SortSameNamesByPlace(outline, sorted);
  return sorted;
}

/// Each file once, those without an extension last.
std::vector<OutlineRef> NamedFileRows(const Outline& outline, RowOrder order) {
  std::vector<OutlineRef> files;
  std::vector<std::string_view> names;
  NameSet seen;
  for (const OutlineRef ref : outline.Orders().namedFiles) {
    const std::string_view name = cp1252::Trimmed(outline.NamedFileText(ref));
    if (name.empty() || !seen.Insert(cp1252::ToLower(name))) continue;
    files.push_back(ref);
    names.push_back(name);
  }
  if (order == RowOrder::kAlphabetical) {
    std::vector<OutlineRef> sorted;
    sorted.reserve(files.size());
    for (const uint32_t index : AlphabeticalOrder(names)) sorted.push_back(files[index]);
    files = std::move(sorted);
  }
  std::stable_partition(files.begin(), files.end(), [&outline](OutlineRef ref) {
    return outline.NamedFileText(ref).find('.') != std::string_view::npos;
  });
  return files;
}

}  // namespace

OutlineRows::OutlineRows(Outline outline, Shows shows, std::vector<OutlineRef> definitions,
                         std::vector<OutlineRef> files)
    : m_outline(std::move(outline)),
      m_shows(shows),
      m_definitions(std::move(definitions)),
      m_files(std::move(files)) {}

OutlineRow OutlineRows::operator[](size_t index) const {
  if (index >= m_definitions.size()) {
    const OutlineRef ref = m_files.at(index - m_definitions.size());
    const std::string_view name = cp1252::Trimmed(m_outline.NamedFileText(ref));
    return {name, name.size(), true, OutlineRoot::kPaths, m_outline.NamedFilePlace(ref), 0};
  }
  const OutlineRef ref = m_definitions[index];
  std::string_view text = m_shows == Shows::kText ? m_outline.TextOf(ref) : m_outline.BareNameOf(ref);
  const std::string_view name = DefinedWord(text);
  text.remove_prefix(static_cast<size_t>(name.data() - text.data()));
  return {text, name.size(), false, m_outline.RootOf(ref), m_outline.PlaceOf(ref), m_outline.FileOf(ref)};
}

OutlineRows OutlineRows::Filtered(const OutlineFilter& filter) const {
  OutlineRows fitting(m_outline, m_shows, {});
  for (size_t i = 0; i < size(); ++i) {
    const OutlineRow row = (*this)[i];
    if (!filter.Fits(row.text) && (row.isFile || !filter.Fits(OutlineRootName(row.root)))) continue;
    if (row.isFile) {
      fitting.m_files.push_back(m_files[i - m_definitions.size()]);
    } else {
      fitting.m_definitions.push_back(m_definitions[i]);
    }
  }
  return fitting;
}

OutlineRows VariableRows(const Outline& outline, RowOrder order) {
  std::vector<OutlineRef> rows;
  for (const OutlineRef ref : outline.Orders().words) {
    if (outline.RootOf(ref) == OutlineRoot::kVariables && !outline.IsIndented(ref)) rows.push_back(ref);
  }
  if (order == RowOrder::kOfText) {
    std::sort(rows.begin(), rows.end(),
              [&outline](OutlineRef a, OutlineRef b) { return outline.IsBefore(a, b); });
  }
  return {outline, OutlineRows::Shows::kText, std::move(rows)};
}

OutlineRows ElementRows(const Outline& outline, RowOrder order) {
  std::vector<OutlineRef> elements;
  if (order == RowOrder::kAlphabetical) {
    elements = SortedElements(outline);
  } else {
    for (const OutlineRef ref : outline.Orders().elements) {
      if (!outline.WordOf(ref).empty()) elements.push_back(ref);
    }
  }
  return {outline, OutlineRows::Shows::kName, std::move(elements), NamedFileRows(outline, order)};
}

JumperRows MakeJumperRows(const Outline& outline, RowOrder order, const OutlineFilter& filter) {
  JumperRows rows{{}, VariableRows(outline, order), ElementRows(outline, order), !filter.IsEmpty()};
  if (filter.IsEmpty()) return rows;
  rows.fitting = FilterOutline(outline, filter);
  rows.variables = rows.variables.Filtered(filter);
  rows.elements = rows.elements.Filtered(filter);
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
