#include "intel/outline/Outline.h"

#include <utility>

#include "base/CodePage1252.h"
#include "base/NameSet.h"
#include "intel/outline/AlphabeticalOrder.h"

namespace quill {
namespace {

constexpr std::array<std::string_view, kOutlineRootCount> kRootNames = {
    "Actions", "Bitmaps", "Defines", "Entities", "Fonts",   "Functions", "Materials", "Panels", "Paths",
    "Skills",  "Skies",   "Sounds",  "Starters", "Strings", "Texts",     "Variables", "Views",  "Windows"};

/// Drops what follows the first `c`, unless that is the first character.
std::string_view CutBehindFirst(std::string_view text, char c) {
  const size_t at = text.find(c);
  return at == std::string_view::npos || at == 0 ? text : text.substr(0, at);
}

void AppendPlace(std::string& text, TextPosition at, int32_t file = 0) {
  text += "  " + std::to_string(at.line + 1) + ':' + std::to_string(at.character + 1);
  if (file != 0) text += " in file " + std::to_string(file);
  text += '\n';
}

void AppendFiles(std::string& text, std::string_view heading, const std::vector<NamedFile>& files) {
  if (!files.empty()) text.append(heading).append("\n");
  for (const NamedFile& file : files) {
    text.append("  ").append(file.name);
    AppendPlace(text, file.at);
  }
}

}  // namespace

std::string_view OutlineRootName(OutlineRoot root) {
  return kRootNames[static_cast<size_t>(root)];
}

element_kind::Kind ElementKindOf(OutlineRoot root) {
  if (root == OutlineRoot::kFunctions) return element_kind::kFunction;
  return root == OutlineRoot::kActions ? element_kind::kAction : element_kind::kVariable;
}

std::string_view NamedFile::Extension() const {
  const size_t dot = name.find('.');
  return dot == std::string::npos ? std::string_view() : std::string_view(name).substr(dot + 1);
}

std::string_view BareName(OutlineRoot root, std::string_view text) {
  switch (ElementKindOf(root)) {
    case element_kind::kFunction:
      return cp1252::Trimmed(text.substr(0, text.find('(')));
    case element_kind::kAction:
      return cp1252::Trimmed(text);
    default:
      for (const char c : {'=', '[', '<'}) text = CutBehindFirst(text, c);
      return cp1252::Trimmed(text);
  }
}

std::string_view DefinedWord(std::string_view text) {
  size_t start = 0;
  while (start < text.size() && (text[start] == '*' || cp1252::IsSpace(text[start]))) ++start;
  size_t end = start;
  while (end < text.size() && cp1252::IsWordChar(text[end])) ++end;
  return text.substr(start, end - start);
}

void SortItems(std::vector<OutlineItem>& items) {
  std::vector<std::string_view> texts;
  texts.reserve(items.size());
  for (const OutlineItem& item : items) texts.push_back(item.text);
  std::vector<OutlineItem> sorted;
  sorted.reserve(items.size());
  for (const uint32_t index : AlphabeticalOrder(texts)) sorted.push_back(std::move(items[index]));
  items = std::move(sorted);
}

void CollectNames(const Outline& outline, NameSet& functions, NameSet& variables) {
  for (const OutlineElement& element : outline.elements) {
    NameSet& names = element.kind == element_kind::kVariable ? variables : functions;
    if (const std::string_view word = DefinedWord(element.name); !word.empty()) {
      names.Insert(cp1252::ToLower(word));
    }
  }
}

std::string DescribeOutline(const Outline& outline) {
  std::string text;
  for (size_t root = 0; root < kOutlineRootCount; ++root) {
    if (!outline.roots[root].empty()) text.append(kRootNames[root]).append("\n");
    for (const OutlineItem& item : outline.roots[root]) {
      text.append("  ").append(item.text);
      AppendPlace(text, item.at, item.file);
    }
  }
  if (!outline.elements.empty()) text += "elements\n";
  for (const OutlineElement& element : outline.elements) {
    text += "  " + std::to_string(element.kind) + ' ' + element.name;
    AppendPlace(text, element.at, element.file);
  }
  if (!outline.paths.empty()) text += "path list\n";
  for (const std::string& path : outline.paths) text += "  " + path + '\n';
  AppendFiles(text, "named files", outline.namedFiles);
  AppendFiles(text, "includes", outline.includes);
  return text;
}

}  // namespace quill
