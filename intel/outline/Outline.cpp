#include "intel/outline/Outline.h"

#include <algorithm>

#include "base/CodePage1252.h"
#include "base/NameSet.h"

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

void AppendFiles(std::string& text, std::string_view heading, const OutlineRange<NamedFile>& files) {
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

int CompareNoCase(std::string_view a, std::string_view b) {
  const size_t both = std::min(a.size(), b.size());
  for (size_t i = 0; i < both; ++i) {
    const auto left = static_cast<uint8_t>(cp1252::ToLower(a[i]));
    const auto right = static_cast<uint8_t>(cp1252::ToLower(b[i]));
    if (left != right) return left < right ? -1 : 1;
  }
  if (a.size() == b.size()) return 0;
  return a.size() < b.size() ? -1 : 1;
}

// Outline

void OutlineParts::Append(std::shared_ptr<const OutlineGroup> group, int32_t firstLine, int32_t file) {
  const auto slot = static_cast<uint32_t>(bySlot.size());
  bySlot.push_back({std::move(group), firstLine, file, static_cast<uint32_t>(sequence.size())});
  sequence.push_back(slot);
}

Outline::Outline() {
  static const auto noParts = std::make_shared<const OutlineParts>();
  static const auto noOrders = std::make_shared<const OutlineOrders>();
  m_parts = noParts;
  m_orders = noOrders;
}

OutlineRange<OutlineItem> Outline::Items(OutlineRoot root) const {
  return {*this, Order(root), [](const Outline& outline, OutlineRef ref) { return outline.ItemOf(ref); }};
}

OutlineRange<OutlineElement> Outline::Elements() const {
  return {*this, m_orders->elements, [](const Outline& outline, OutlineRef ref) {
            const OutlineRoot root = outline.RootOf(ref);
            return OutlineElement{std::string(outline.BareNameOf(ref)), ElementKindOf(root), root,
                                  outline.PlaceOf(ref), outline.FileOf(ref)};
          }};
}

OutlineRange<NamedFile> Outline::NamedFiles() const {
  return {*this, m_orders->namedFiles, [](const Outline& outline, OutlineRef ref) {
            return NamedFile{std::string(outline.NamedFileText(ref)), outline.NamedFilePlace(ref)};
          }};
}

OutlineRange<NamedFile> Outline::Includes() const {
  return {*this, m_orders->includes, [](const Outline& outline, OutlineRef ref) {
            const OutlineGroup& group = outline.GroupOf(ref);
            const OutlineGroup::Entry& entry = group.includes[NumberOf(ref)];
            return NamedFile{std::string(group.TextOf(entry)), outline.PlaceOf(ref, entry)};
          }};
}

std::vector<std::string> Outline::Paths() const {
  std::vector<std::string> paths;
  paths.reserve(m_orders->paths.size());
  for (const OutlineRef ref : m_orders->paths) paths.emplace_back(TextOf(ref));
  return paths;
}

size_t Outline::Count() const {
  size_t count = 0;
  for (const auto& order : m_orders->roots) count += order.size();
  return count;
}

std::string_view Outline::BareNameOf(OutlineRef ref) const {
  return BareName(RootOf(ref), TextOf(ref));
}

std::string_view Outline::WordOf(OutlineRef ref) const {
  return DefinedWord(TextOf(ref));
}

OutlineItem Outline::ItemOf(OutlineRef ref) const {
  return {std::string(TextOf(ref)), PlaceOf(ref), FileOf(ref), IsIndented(ref)};
}

std::string_view Outline::NamedFileText(OutlineRef ref) const {
  const OutlineGroup& group = GroupOf(ref);
  return group.TextOf(group.namedFiles[NumberOf(ref)]);
}

TextPosition Outline::NamedFilePlace(OutlineRef ref) const {
  return PlaceOf(ref, GroupOf(ref).namedFiles[NumberOf(ref)]);
}

bool Outline::IsBefore(OutlineRef a, OutlineRef b) const {
  const uint32_t rankOfA = PartOf(a).rank;
  const uint32_t rankOfB = PartOf(b).rank;
  return rankOfA != rankOfB ? rankOfA < rankOfB : NumberOf(a) < NumberOf(b);
}

std::span<const OutlineRef> Outline::Defining(std::string_view word) const {
  const std::vector<OutlineRef>& words = m_orders->words;
  const auto first = std::partition_point(words.begin(), words.end(), [this, word](OutlineRef ref) {
    return CompareNoCase(WordOf(ref), word) < 0;
  });
  const auto last = std::partition_point(
      first, words.end(), [this, word](OutlineRef ref) { return CompareNoCase(WordOf(ref), word) == 0; });
  return {first, last};
}

std::span<const OutlineRef> Outline::WithText(OutlineRoot root, std::string_view text) const {
  const std::vector<OutlineRef>& order = Order(root);
  const auto first = std::partition_point(order.begin(), order.end(), [this, text](OutlineRef ref) {
    return CompareNoCase(TextOf(ref), text) < 0;
  });
  const auto last = std::partition_point(
      first, order.end(), [this, text](OutlineRef ref) { return CompareNoCase(TextOf(ref), text) == 0; });
  return {first, last};
}

size_t Outline::IndexOf(OutlineRef ref) const {
  const std::span<const OutlineRef> same = WithText(RootOf(ref), TextOf(ref));
  const auto found = std::partition_point(same.begin(), same.end(),
                                          [this, ref](OutlineRef other) { return IsBefore(other, ref); });
  return static_cast<size_t>(&*same.begin() - Order(RootOf(ref)).data()) +
         static_cast<size_t>(found - same.begin());
}

void CollectNames(const Outline& outline, NameSet& functions, NameSet& variables) {
  for (const OutlineRef ref : outline.Orders().elements) {
    const bool isVariable = ElementKindOf(outline.RootOf(ref)) == element_kind::kVariable;
    if (const std::string_view word = outline.WordOf(ref); !word.empty()) {
      (isVariable ? variables : functions).Insert(cp1252::ToLower(word));
    }
  }
}

std::string DescribeOutline(const Outline& outline) {
  std::string text;
  for (size_t root = 0; root < kOutlineRootCount; ++root) {
    const auto items = outline.Items(static_cast<OutlineRoot>(root));
    if (!items.empty()) text.append(kRootNames[root]).append("\n");
    for (const OutlineItem& item : items) {
      text.append("  ").append(item.text);
      AppendPlace(text, item.at, item.file);
    }
  }
  const auto elements = outline.Elements();
  if (!elements.empty()) text += "elements\n";
  for (const OutlineElement& element : elements) {
    text += "  " + std::to_string(element.kind) + ' ' + element.name;
    AppendPlace(text, element.at, element.file);
  }
  const std::vector<std::string> paths = outline.Paths();
  if (!paths.empty()) text += "path list\n";
  for (const std::string& path : paths) text += "  " + path + '\n';
  AppendFiles(text, "named files", outline.NamedFiles());
  AppendFiles(text, "includes", outline.Includes());
  return text;
}

}  // namespace quill
