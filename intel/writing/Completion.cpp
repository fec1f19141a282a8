#include "intel/writing/Completion.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "base/CodePage1252.h"
#include "intel/outline/CodeWalk.h"
#include "intel/outline/Definitions.h"

namespace quill {
namespace {

/// How well a name fits, best first.
enum Fit : uint8_t { kBegins, kContains, kInOrder, kNot };

/// Further to the right nothing is offered unasked: reading the line with every key would be felt.
constexpr size_t kMostColumns = 65536;

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

CompletionStep CompletionKeys::On(CompletionKey key) {
  switch (key) {
    case CompletionKey::kUpOrDown:
      m_chosen = true;
      return CompletionStep::kMove;
    case CompletionKey::kTab:
      return CompletionStep::kTake;
    case CompletionKey::kEnter:
      return m_chosen ? CompletionStep::kTake : CompletionStep::kTypeAndClose;
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
