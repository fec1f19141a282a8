#include "intel/outline/OutlineScanner.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

#include "base/CodePage1252.h"
#include "intel/outline/LiveOutline.h"
#include "intel/outline/OutlineOrders.h"
#include "text/buffer/CrystalTextBuffer.h"
#include "text/buffer/FileLines.h"

namespace quill {
namespace {

/// What a first word asks for.
enum class Rule : uint8_t { kObject, kFunction, kAction, kInclude };

struct Keyword {
  std::string_view word;
  Rule rule;
  OutlineRoot root;
  size_t removed;  ///< characters to take off the line's front before the name
};

// "window" leaves the blank behind it; the trimming takes it away.
constexpr Keyword kKeywords[] = {
    {"action", Rule::kAction, OutlineRoot::kActions, 6},
    {"bmap", Rule::kObject, OutlineRoot::kBitmaps, 5},
    {"define", Rule::kObject, OutlineRoot::kDefines, 7},
    {"entity", Rule::kObject, OutlineRoot::kEntities, 7},
    {"font", Rule::kObject, OutlineRoot::kFonts, 5},
    {"function", Rule::kFunction, OutlineRoot::kFunctions, 8},
    {"include", Rule::kInclude, OutlineRoot::kFunctions, 7},
    {"material", Rule::kObject, OutlineRoot::kMaterials, 9},
    {"panel", Rule::kObject, OutlineRoot::kPanels, 6},
    {"skill", Rule::kObject, OutlineRoot::kSkills, 6},
    {"sky", Rule::kObject, OutlineRoot::kSkies, 4},
    {"sound", Rule::kObject, OutlineRoot::kSounds, 6},
    {"starter", Rule::kObject, OutlineRoot::kStarters, 8},
    {"string", Rule::kObject, OutlineRoot::kStrings, 7},
    {"text", Rule::kObject, OutlineRoot::kTexts, 5},
    {"var", Rule::kObject, OutlineRoot::kVariables, 4},
    {"var_info", Rule::kObject, OutlineRoot::kVariables, 9},
    {"var_nsave", Rule::kObject, OutlineRoot::kVariables, 10},
    {"view", Rule::kObject, OutlineRoot::kViews, 5},
    {"window", Rule::kObject, OutlineRoot::kWindows, 6},
};
constexpr std::string_view kPathWord = "path";
constexpr std::string_view kViewAssignment = "view =";
constexpr std::string_view kLineComment = "//";

/// For each byte the keywords that begin with it, in either case: [first, last).
struct KeywordRange {
  uint8_t first = 0;
  uint8_t last = 0;
};
constexpr std::array<KeywordRange, 256> MakeRanges() {
  std::array<KeywordRange, 256> ranges{};
  for (size_t i = 0; i < std::size(kKeywords); ++i) {
    const auto lower = static_cast<uint8_t>(kKeywords[i].word[0]);
    const auto upper = static_cast<uint8_t>(lower - 'a' + 'A');
    if (ranges[lower].last == 0) ranges[lower].first = static_cast<uint8_t>(i);
    ranges[lower].last = static_cast<uint8_t>(i + 1);
    ranges[upper] = ranges[lower];
  }
  return ranges;
}
constexpr std::array<KeywordRange, 256> kRanges = MakeRanges();

/// `prefix` is in lower case.
bool BeginsWith(std::string_view text, std::string_view prefix) {
  if (text.size() < prefix.size()) return false;
  return std::equal(prefix.begin(), prefix.end(), text.begin(),
                    [](char p, char c) { return cp1252::ToLower(c) == p; });
}

const Keyword* FirstWord(std::string_view text) {
  const KeywordRange range = kRanges[static_cast<uint8_t>(text.front())];
  for (size_t i = range.first; i < range.last; ++i) {
    const std::string_view word = kKeywords[i].word;
    if (BeginsWith(text, word) && (text.size() == word.size() || !cp1252::IsWordChar(text[word.size()]))) {
      return &kKeywords[i];
    }
  }
  return nullptr;
}

std::string_view TrimLeft(std::string_view text) {
  size_t i = 0;
  while (i < text.size() && (text[i] == ' ' || text[i] == '\t' || cp1252::IsSpace(text[i]))) ++i;
  return text.substr(i);
}
std::string_view TrimRight(std::string_view text) {
  while (!text.empty() && cp1252::IsSpace(text.back())) text.remove_suffix(1);
  return text;
}
std::string_view CutFrom(std::string_view text, char c) {
  return text.substr(0, text.find(c));
}
std::string_view CutBehind(std::string_view text, char c) {
  const size_t at = text.find(c);
  return at == std::string_view::npos ? text : text.substr(0, at + 1);
}

const char* FindByte(const char* from, const char* end, char c) {
  return from < end ? static_cast<const char*>(std::memchr(from, c, static_cast<size_t>(end - from)))
                    : nullptr;
}

/// The text between the first "<" that is not the first character and the next ">"; null data when the
/// line has none.
std::string_view NamedFileIn(std::string_view text) {
  const char* end = text.data() + text.size();
  const char* open = FindByte(text.data() + 1, end, '<');
  if (open == nullptr) return {};
  const char* close = FindByte(open + 1, end, '>');
  return close == nullptr ? std::string_view()
                          : std::string_view(open + 1, static_cast<size_t>(close - open - 1));
}

}  // namespace

void OutlineScanner::ScanLine(std::string_view line, int32_t number) {
  const std::string_view text = TrimLeft(line);
  if (text.empty() || text.starts_with(kLineComment)) return;
  NoteFile(line, text, number);
  if (kRanges[static_cast<uint8_t>(text.front())].last == 0) return;
  if (BeginsWith(text, kPathWord)) NotePath(line, text, number);
  const Keyword* keyword = FirstWord(text);
  if (keyword == nullptr) return;
  const std::string_view rest = text.substr(std::min(keyword->removed, text.size()));
  switch (keyword->rule) {
    case Rule::kObject:
      if (!BeginsWith(text, kViewAssignment)) DefineObject(line, rest, keyword->root, number);
      break;
    case Rule::kFunction:
      // One with a ";" is a prototype.
      if (text.find(';') == std::string_view::npos) DefineFunction(line, rest, number);
      break;
    case Rule::kAction:
      DefineAction(line, rest, number);
      break;
    case Rule::kInclude:
      if (const std::string_view name = NamedFileIn(text); !name.empty() && name.size() <= kLongestName) {
        Append(m_group.includes, keyword->root, line, name, number);
      }
      break;
  }
}

void OutlineScanner::NotePath(std::string_view line, std::string_view text, int32_t number) {
  const size_t open = text.find('"');
  const size_t close = open == std::string_view::npos ? open : text.find('"', open + 1);
  if (close == std::string_view::npos) return;
  const std::string_view folder = text.substr(open + 1, close - open - 1);
  if (folder.size() > kLongestName) return;
  Append(m_group.items, OutlineRoot::kPaths, line, folder, number, text.data() != line.data());
}

void OutlineScanner::NoteFile(std::string_view line, std::string_view text, int32_t number) {
  const std::string_view name = NamedFileIn(text);
  if (name.data() == nullptr || name.size() > kLongestName || name.find('%') != std::string_view::npos) {
    return;
  }
  const size_t dot = name.find('.');
  const std::string_view extension =
      dot == std::string_view::npos ? std::string_view() : name.substr(dot + 1);
  // An empty extension occurs in every list.
  if (m_onlyElements.empty() || m_onlyElements.find(extension) != std::string::npos) {
    Append(m_group.namedFiles, OutlineRoot::kPaths, line, name, number);
  }
}

void OutlineScanner::DefineObject(std::string_view line, std::string_view rest, OutlineRoot root,
                                  int32_t number) {
  rest = TrimRight(CutFrom(rest, '{'));
  Add(root, line, TrimLeft(CutFrom(CutFrom(rest, ';'), ',')), number);
}

void OutlineScanner::DefineFunction(std::string_view line, std::string_view rest, int32_t number) {
  Add(OutlineRoot::kFunctions, line, CutFrom(CutBehind(TrimLeft(rest), ')'), '{'), number);
}

void OutlineScanner::DefineAction(std::string_view line, std::string_view rest, int32_t number) {
  Add(OutlineRoot::kActions, line, CutFrom(CutFrom(TrimLeft(rest), '('), '{'), number);
}

void OutlineScanner::Add(OutlineRoot root, std::string_view line, std::string_view name, int32_t number) {
  if (name.empty() || name.size() > kLongestName) return;
  Append(m_group.items, root, line, name, number, cp1252::IsSpace(line.front()));
  const std::string_view bare = BareName(root, name);
  if (!bare.empty() && m_names.Insert(bare)) {
    m_group.names.push_back(static_cast<uint16_t>(m_group.items.size() - 1));
  }
}

void OutlineScanner::Append(Entries& entries, OutlineRoot root, std::string_view line, std::string_view text,
                            int32_t number, bool indented) {
  OutlineGroup::Entry entry{};
  entry.start = static_cast<uint32_t>(m_group.text.size());
  entry.character = static_cast<uint32_t>(text.data() - line.data()) & 0x7FFFFFFFu;
  entry.indented = indented ? 1 : 0;
  entry.length = static_cast<uint32_t>(text.size()) & 0x1FFFFu;
  entry.line = static_cast<uint32_t>(number) & (OutlineGroup::kMostLines - 1);
  entry.root = static_cast<uint32_t>(root) & 0x1Fu;
  m_group.text += text;
  entries.push_back(entry);
}

std::shared_ptr<const OutlineGroup> OutlineScanner::Finish() {
  auto group = std::make_shared<const OutlineGroup>(m_group);  // a copy takes no more room than it needs
  m_group.text.clear();
  for (Entries* entries : {&m_group.items, &m_group.namedFiles, &m_group.includes}) entries->clear();
  m_group.names.clear();
  m_names.Clear();
  return group;
}

std::optional<OutlineRoot> DefinedRoot(std::string_view line) {
  const std::string_view text = TrimLeft(line);
  const Keyword* keyword = text.empty() ? nullptr : FirstWord(text);
  if (keyword == nullptr || keyword->rule == Rule::kInclude) return std::nullopt;
  return keyword->root;
}

Outline ScanOutline(const CCrystalTextBuffer& buffer, std::string_view onlyElements) {
  LiveOutline outline(buffer, onlyElements);
  while (!outline.IsRead()) outline.ReadSome();
  return MakeOutline(outline.Parts());
}

Outline ScanOutlineText(std::string_view text, std::string_view onlyElements) {
  OutlineScanner scanner(onlyElements);
  OutlineParts parts;
  const std::string_view lineEnd = line_end::Bytes(DetectLineEndStyle(text));
  int32_t first = 0;
  for (int32_t number = 0;; ++number) {
    if (number - first == OutlineGroup::kMostLines) {
      parts.Append(scanner.Finish(), first);
      first = number;
    }
    const size_t end = text.find(lineEnd);
    scanner.ScanLine(text.substr(0, end), number - first);
    if (end == std::string_view::npos) break;
    text.remove_prefix(end + lineEnd.size());
  }
  parts.Append(scanner.Finish(), first);
  return MakeOutline(std::move(parts));
}

}  // namespace quill
