#include "intel/ObjectMembers.h"

#include <algorithm>
#include <array>

#include "base/CodePage1252.h"
#include "intel/Definitions.h"

namespace quill {
namespace {

constexpr std::string_view kBitmap[] = {"height", "width"};
constexpr std::string_view kEntity[] = {
    "alpha",   "ambient", "blue",    "albedo",  "green",   "layer",   "model",   "pan",
    "red",     "roll",    "scale_x", "scale_y", "scale_z", "skill1",  "skill2",  "skill3",
    "skill4",  "skill5",  "skill6",  "skill7",  "skill8",  "skill9",  "skill10", "skill11",
    "skill12", "skill13", "skill14", "skill15", "skill16", "skill17", "skill18", "skill19",
    "skill20", "surface", "tilt",    "x",       "y",       "z"};
constexpr std::string_view kFont[] = {"height", "width"};
constexpr std::string_view kMaterial[] = {"albedo", "ambient", "blue", "green", "red"};
constexpr std::string_view kPanel[] = {"alpha", "layer", "picture", "pos_x", "pos_y", "scale_x", "scale_y"};
constexpr std::string_view kSky[] = {"blue", "green", "layer", "red", "stars"};
constexpr std::string_view kText[] = {"alpha", "blue",  "content", "face", "green",   "layer",   "length",
                                      "lines", "pos_x", "pos_y",   "red",  "scale_x", "scale_y", "string"};
constexpr std::string_view kView[] = {"alpha",    "ambient",  "fog",      "fog_end", "fog_start", "fov",
                                      "layer",    "offset_x", "offset_y", "pan",     "portal_x",  "portal_y",
                                      "portal_z", "pos_x",    "pos_y",    "roll",    "size_x",    "size_y",
                                      "tilt",     "x",        "y",        "z"};
constexpr std::string_view kWindow[] = {"blue", "green", "red", "size_x", "size_y", "title"};

constexpr ObjectKind kKinds[] = {
    {OutlineRoot::kBitmaps, "bmap.", kBitmap},   {OutlineRoot::kEntities, "entity.", kEntity},
    {OutlineRoot::kFonts, "font.", kFont},       {OutlineRoot::kMaterials, "material.", kMaterial},
    {OutlineRoot::kPanels, "panel.", kPanel},    {OutlineRoot::kSkies, "sky.", kSky},
    {OutlineRoot::kTexts, "text.", kText},       {OutlineRoot::kViews, "view.", kView},
    {OutlineRoot::kWindows, "window.", kWindow},
};

struct KnownObject {
  std::string_view name;
  OutlineRoot root;
};
constexpr KnownObject kKnownObjects[] = {
    {"camera", OutlineRoot::kViews}, {"me", OutlineRoot::kEntities}, {"you", OutlineRoot::kEntities}};

}  // namespace

std::span<const ObjectKind> ObjectKinds() {
  return kKinds;
}

const ObjectKind* FindObjectKind(OutlineRoot root) {
  const auto* found = std::find_if(std::begin(kKinds), std::end(kKinds),
                                   [root](const ObjectKind& k) { return k.root == root; });
  return found == std::end(kKinds) ? nullptr : found;
}

const ObjectKind* FindObjectKind(std::string_view objectName, const Outline& outline) {
  for (const OutlineElement& element : outline.elements) {
    if (cp1252::EqualNoCase(DefinedWord(element.name), objectName)) return FindObjectKind(element.root);
  }
  for (const KnownObject& known : kKnownObjects) {
    if (cp1252::EqualNoCase(known.name, objectName)) return FindObjectKind(known.root);
  }
  return nullptr;
}

std::optional<MemberAccess> MemberAccessAt(std::string_view line, int32_t column) {
  const Identifier member = IdentifierAt(line, column);
  if (member.start == 0 || line[static_cast<size_t>(member.start - 1)] != '.') return std::nullopt;
  const Identifier object = IdentifierAt(line, member.start - 1);
  const std::string_view name =
      object.In(line).substr(0, static_cast<size_t>(member.start - 1 - object.start));
  if (name.empty() || cp1252::IsAsciiDigit(name.front())) return std::nullopt;
  const auto end = static_cast<size_t>(std::clamp(column, member.start, member.end));
  const auto start = static_cast<size_t>(member.start);
  return MemberAccess{name, line.substr(start, end - start), member.start};
}

std::string QualifiedMember(std::string_view line, int32_t column, const Outline& outline) {
  const std::optional<MemberAccess> access = MemberAccessAt(line, column);
  if (!access) return {};
  const ObjectKind* kind = FindObjectKind(access->object, outline);
  if (kind == nullptr) return {};
  return std::string(kind->prefix).append(IdentifierAt(line, column).In(line));
}

}  // namespace quill
