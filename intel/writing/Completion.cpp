#include "intel/writing/Completion.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "base/CodePage1252.h"
#include "intel/outline/CodeWalk.h"
#include "intel/outline/Definitions.h"
#include "intel/outline/OutlineScanner.h"

namespace quill {
namespace {

/// How well a name fits, best first.
enum Fit : uint8_t { kBegins, kContains, kInOrder, kNot };

/// Further to the right nothing is offered unasked: reading the line with every key would be felt.
constexpr size_t kMostColumns = 65536;
/// Letters of a word before a list opens by itself.
constexpr size_t kLettersUnasked = 3;

bool HasInOrder(std::string_view name, std::string_view characters) {
  size_t found = 0;
  for (const char c : name) {
    if (found < characters.size() && c == characters[found]) ++found;
  }
  return found == characters.size();
}

Fit FitOf(std::string_view name, std::string_view begun) {
  if (name.starts_with(begun)) return kBegins;
  if (!HasInOrder(name, begun)) return kNot;
  return name.find(begun) != std::string_view::npos ? kContains : kInOrder;
}

/// Whether the line names something new at a column: "var x", "entity* x", "function x(y, z".
bool NamesSomethingNew(std::string_view line, size_t column) {
  const std::optional<OutlineRoot> root = DefinedRoot(line);
  if (!root) return false;
  const auto isIn = [](std::string_view set) { return [set](char c) { return set.find(c) != set.npos; }; };
  const std::string_view before = line.substr(0, column);
  const auto word = std::find_if_not(before.begin(), before.end(), cp1252::IsSpace);
  const auto wordEnd = std::find_if_not(word, before.end(), cp1252::IsWordChar);
  if (wordEnd == before.end()) return false;  // it is the defining word itself
  if (*root == OutlineRoot::kFunctions || *root == OutlineRoot::kActions) {
    return std::none_of(wordEnd, before.end(), isIn("{;"));
  }
  return std::all_of(wordEnd, before.end(), isIn(" \t*"));
}

}  // namespace

std::optional<CompletionRequest> CompletionAt(std::string_view line, int32_t column, uint32_t state,
                                              const Outline& outline) {
  CompletionRequest request;
  const Identifier word = IdentifierAt(line, column);
  const auto caret = static_cast<size_t>(std::clamp(column, word.start, word.end));
  request.start = word.start;
  request.end = word.end;
  request.begun = line.substr(static_cast<size_t>(word.start), caret - static_cast<size_t>(word.start));
  request.inCode = caret <= kMostColumns && EndsInCode(line.substr(0, caret), state);
  if (word.start > 0 && line[static_cast<size_t>(word.start - 1)] == '.') {
    const std::optional<MemberAccess> access = MemberAccessAt(line, column);
    if (access) request.object = FindObjectKind(access->object, outline);
    if (request.object == nullptr) return std::nullopt;
  }
  return request;
}

bool OpensByItself(std::string_view line, const CompletionRequest& request) {
  const bool atEnd = request.begun.size() == static_cast<size_t>(request.end - request.start);
  return request.inCode && atEnd && request.begun.size() >= kLettersUnasked &&
         !cp1252::IsAsciiDigit(request.begun.front()) &&
         !NamesSomethingNew(line, static_cast<size_t>(request.start));
}

CompletionList::CompletionList(std::shared_ptr<const CompletionNames> names, std::string_view begun)
    : m_names(std::move(names)) {
  ShowAll();
  Narrow(begun);
}

void CompletionList::ShowAll() {
  m_begun.clear();
  m_candidates.resize(m_names->Count());
  std::iota(m_candidates.begin(), m_candidates.end(), 0u);
}

void CompletionList::Narrow(std::string_view begun) {
  const std::string lower = cp1252::ToLower(begun);
  // A longer word fits only names that the shorter one fits.
  if (!lower.starts_with(m_begun)) ShowAll();
  m_begun = lower;
  std::vector<uint32_t> groups[kNot];
  size_t kept = 0;
  for (const uint32_t index : m_candidates) {
    const Fit fit = FitOf(m_names->LowerName(index), m_begun);
    if (fit == kNot) continue;
    groups[fit].push_back(index);
    m_candidates[kept++] = index;
  }
  m_candidates.resize(kept);
  m_shown = std::move(groups[kBegins]);
  for (const Fit fit : {kContains, kInOrder}) {
    m_shown.insert(m_shown.end(), groups[fit].begin(), groups[fit].end());
  }
}

bool CompletionList::HasBeginnings() const {
  return !m_shown.empty() && m_names->LowerName(m_shown.front()).starts_with(m_begun);
}

std::vector<size_t> CompletionList::LongestRows(size_t most) const {
  std::vector<size_t> rows(m_shown.size());
  std::iota(rows.begin(), rows.end(), size_t{0});
  most = std::min(most, rows.size());
  std::partial_sort(rows.begin(), rows.begin() + static_cast<std::ptrdiff_t>(most), rows.end(),
                    [this](size_t a, size_t b) { return Name(a).size() > Name(b).size(); });
  rows.resize(most);
  return rows;
}

CompletionStep CompletionKeys::On(CompletionKey key, bool idle) {
  switch (key) {
    case CompletionKey::kDown:
      return std::exchange(m_chosen, true) ? CompletionStep::kMove : CompletionStep::kConfirm;
    case CompletionKey::kUpOrPage:
      m_chosen = true;
      return CompletionStep::kMove;
    case CompletionKey::kTab:
      return m_chosen || m_asked || !idle ? CompletionStep::kTake : CompletionStep::kTypeAndClose;
    case CompletionKey::kEnter:
      return m_chosen || (m_asked && !idle) ? CompletionStep::kTake : CompletionStep::kTypeAndClose;
    case CompletionKey::kEscape:
      return CompletionStep::kClose;
    case CompletionKey::kWordCharacter:
    case CompletionKey::kBackspace:
      m_chosen = false;  // the rows change under the selection
      return CompletionStep::kTypeAndNarrow;
    default:
      return CompletionStep::kTypeAndClose;
  }
}

}  // namespace quill
