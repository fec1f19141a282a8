#pragma once
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "intel/outline/Outline.h"

namespace quill {

struct ObjectMember {
  std::string_view name;
  std::string_view meaning;  ///< a few words without full stop
};

/// The kinds of object that have members.
struct ObjectKind {
  OutlineRoot root;
  std::string_view prefix;  ///< "entity." and so on
  std::span<const ObjectMember> members;
};

/// In the order of the roots.
std::span<const ObjectKind> ObjectKinds();
/// Empty for what is no member of the kind; case is ignored.
std::string_view MeaningOf(const ObjectKind& kind, std::string_view member);
/// Null when the objects of a root have no members.
const ObjectKind* FindObjectKind(OutlineRoot root);
/// The kind of an object by its name, ignoring case: one that the script defines, or one that is known
/// without a definition (`camera`, `me`, `you`). Null when it is none.
const ObjectKind* FindObjectKind(std::string_view objectName, const Outline& outline);

/// The object name before a "." and the begun member behind it, around a column; nothing when the column
/// is not behind a ".".
struct MemberAccess {
  std::string_view object;
  std::string_view member;  ///< up to the column
  int32_t memberStart = 0;
};
std::optional<MemberAccess> MemberAccessAt(std::string_view line, int32_t column);

/// The whole member at a column under its kind's prefix, such as "panel.pos_x"; empty when there is no
/// known object before it.
std::string QualifiedMember(std::string_view line, int32_t column, const Outline& outline);

}  // namespace quill
