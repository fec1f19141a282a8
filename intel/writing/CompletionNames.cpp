#include "intel/writing/CompletionNames.h"

#include <algorithm>

#include "base/CodePage1252.h"
#include "intel/vocabulary/CommandDatabase.h"

namespace quill {

CompletionKind KindOfRoot(OutlineRoot root) {
  switch (root) {
    case OutlineRoot::kFunctions:
    case OutlineRoot::kStarters:
      return CompletionKind::kFunction;
    case OutlineRoot::kActions:
      return CompletionKind::kAction;
    case OutlineRoot::kVariables:
    case OutlineRoot::kDefines:
    case OutlineRoot::kSkills:
    case OutlineRoot::kStrings:
      return CompletionKind::kVariable;
    default:
      return CompletionKind::kObject;
  }
}

std::string_view CompletionIcon(CompletionKind kind) {
  switch (kind) {
    case CompletionKind::kTemplate:
      return "kind-template";
    case CompletionKind::kObject:
      return "kind-object";
    case CompletionKind::kFunction:
      return "kind-function";
    case CompletionKind::kAction:
      return "kind-action";
    case CompletionKind::kCommand:
      return "kind-command";
    case CompletionKind::kKeyword:
      return "kind-keyword";
    default:
      return "kind-variable";
  }
}

CompletionNames::CompletionNames(const Outline& outline, const CommandDatabase& commands,
                                 const NameSet& keywords, const std::vector<std::string>& templates) {
  for (const OutlineRef ref : outline.Orders().elements) {
    Add(outline.WordOf(ref), KindOfRoot(outline.RootOf(ref)));
  }
  for (int32_t i = 0; i < commands.Count(); ++i) {
    Add(commands.GetCommandName(i), CompletionKind::kCommand, i);
  }
  for (const std::string& keyword : keywords.Words()) Add(keyword, CompletionKind::kKeyword);
  for (const std::string& name : templates) {
    const auto isOfWord = [](char c) { return cp1252::IsAsciiAlnum(c) || c == '_'; };
    if (std::all_of(name.begin(), name.end(), isOfWord)) Add(name, CompletionKind::kTemplate);
  }
  Sort();
}

CompletionNames::CompletionNames(const ObjectKind& kind) {
  for (const ObjectMember& member : kind.members) Add(member.name, CompletionKind::kMember);
  Sort();
}

void CompletionNames::Add(std::string_view name, CompletionKind kind, int32_t command) {
  if (name.empty() || name.size() > kLongestName) return;
  m_names.push_back({m_text.size(), name.size(), kind, command});
  m_text += name;
  for (const char c : name) m_lower.push_back(cp1252::ToLower(c));
}

void CompletionNames::Sort() {
  const auto lower = [this](const Entry& e) { return std::string_view(m_lower).substr(e.start, e.length); };
  std::sort(m_names.begin(), m_names.end(), [lower](const Entry& a, const Entry& b) {
    const int compared = lower(a).compare(lower(b));
    if (compared != 0) return compared < 0;
    return a.kind != b.kind ? a.kind < b.kind : a.start < b.start;
  });
  const auto twice = std::unique(m_names.begin(), m_names.end(), [lower](const Entry& a, const Entry& b) {
    const bool isTemplate = a.kind == CompletionKind::kTemplate;
    return lower(a) == lower(b) && isTemplate == (b.kind == CompletionKind::kTemplate);
  });
  m_names.erase(twice, m_names.end());
}

}  // namespace quill
