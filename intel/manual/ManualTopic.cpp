#include "intel/manual/ManualTopic.h"

#include "base/CodePage1252.h"
#include "intel/outline/Definitions.h"
#include "intel/writing/ObjectMembers.h"

namespace quill {
namespace {

std::string MemberTopic(const MemberAccess& access, std::string_view name, const ManualLookup& lookup) {
  if (const ObjectKind* kind = FindObjectKind(access.object, lookup.outline())) {
    const std::string topic = std::string(kind->prefix).append(name);
    return lookup.hasTopic(topic) ? topic : std::string();
  }
  for (const ObjectKind& kind : ObjectKinds()) {
    std::string topic = std::string(kind.prefix).append(name);
    if (lookup.hasTopic(topic)) return topic;
  }
  return {};
}

std::string KindTopic(std::string_view name, const ManualLookup& lookup) {
  const ObjectKind* kind = FindObjectKind(name, lookup.outline());
  if (kind == nullptr) return {};
  std::string keyword(kind->prefix.substr(0, kind->prefix.find('.')));
  return lookup.hasTopic(keyword) ? keyword : std::string();
}

}  // namespace

std::string FindManualTopic(std::string_view line, int32_t column, const ManualLookup& lookup) {
  const Identifier word = IdentifierAt(line, column);
  if (word.start == word.end) return {};
  std::string name = cp1252::ToLower(word.In(line));
  if (const auto access = MemberAccessAt(line, column)) {
    std::string topic = MemberTopic(*access, name, lookup);
    if (!topic.empty()) return topic;
  }
  if (lookup.hasTopic(name)) return name;
  return KindTopic(name, lookup);
}

}  // namespace quill
