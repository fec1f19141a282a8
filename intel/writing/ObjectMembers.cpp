#include "intel/writing/ObjectMembers.h"

#include <algorithm>
#include <array>

#include "base/CodePage1252.h"
#include "intel/outline/Definitions.h"

namespace quill {
namespace {

constexpr std::string_view kSkillMeaning = "a number for the script's own use";
constexpr std::string_view kAlphaMeaning = "how much it covers what is behind, 0 to 100";
constexpr std::string_view kLightMeaning = "how bright it is without light, and how much light it gives back";
constexpr std::string_view kColorMeaning = "color, 0 to 255";
constexpr std::string_view kLayerMeaning = "order among panels and texts";
constexpr std::string_view kCornerMeaning = "upper left corner, in pixels of the screen";
constexpr std::string_view kDirectionMeaning = "direction, in degrees";
constexpr std::string_view kPlaceMeaning = "place in the level";

// Each in alphabetical order.
constexpr ObjectMember kBitmap[] = {
    {"height", "size in pixels"},
    {"width", "size in pixels"},
};
constexpr ObjectMember kEntity[] = {
    {"albedo", kLightMeaning},
    {"alpha", kAlphaMeaning},
    {"ambient", kLightMeaning},
    {"blue", "tint, 0 to 255"},
    {"green", "tint, 0 to 255"},
    {"layer", "in a definition: order among what is drawn over the picture"},
    {"model", "in a definition: the file of the model or picture"},
    {"pan", kDirectionMeaning},
    {"red", "tint, 0 to 255"},
    {"roll", kDirectionMeaning},
    {"scale_x", "size as a factor of the model's"},
    {"scale_y", "size as a factor of the model's"},
    {"scale_z", "size as a factor of the model's"},
    {"skill1", kSkillMeaning},
    {"skill2", kSkillMeaning},
    {"skill3", kSkillMeaning},
    {"skill4", kSkillMeaning},
    {"skill5", kSkillMeaning},
    {"skill6", kSkillMeaning},
    {"skill7", kSkillMeaning},
    {"skill8", kSkillMeaning},
    {"skill9", kSkillMeaning},
    {"skill10", kSkillMeaning},
    {"skill11", kSkillMeaning},
    {"skill12", kSkillMeaning},
    {"skill13", kSkillMeaning},
    {"skill14", kSkillMeaning},
    {"skill15", kSkillMeaning},
    {"skill16", kSkillMeaning},
    {"skill17", kSkillMeaning},
    {"skill18", kSkillMeaning},
    {"skill19", kSkillMeaning},
    {"skill20", kSkillMeaning},
    {"surface", "in a definition: its material"},
    {"tilt", kDirectionMeaning},
    {"x", kPlaceMeaning},
    {"y", kPlaceMeaning},
    {"z", kPlaceMeaning},
};
constexpr ObjectMember kFont[] = {
    {"height", "size of a character in pixels"},
    {"width", "size of a character in pixels"},
};
constexpr ObjectMember kMaterial[] = {
    {"albedo", kLightMeaning}, {"ambient", kLightMeaning}, {"blue", kColorMeaning},
    {"green", kColorMeaning},  {"red", kColorMeaning},
};
constexpr ObjectMember kPanel[] = {
    {"alpha", kAlphaMeaning},
    {"layer", kLayerMeaning},
    {"picture", "in a definition: the bitmap"},
    {"pos_x", kCornerMeaning},
    {"pos_y", kCornerMeaning},
    {"scale_x", "size as a factor of the bitmap's"},
    {"scale_y", "size as a factor of the bitmap's"},
};
constexpr ObjectMember kSky[] = {
    {"blue", kColorMeaning}, {"green", kColorMeaning},           {"layer", "order among the skies"},
    {"red", kColorMeaning},  {"stars", "how many stars it has"},
};
constexpr ObjectMember kText[] = {
    {"alpha", kAlphaMeaning},
    {"blue", kColorMeaning},
    {"content", "in a definition: the lines, in quotes, with commas between them"},
    {"face", "in a definition: the font"},
    {"green", kColorMeaning},
    {"layer", kLayerMeaning},
    {"length", "number of characters"},
    {"lines", "number of lines"},
    {"pos_x", kCornerMeaning},
    {"pos_y", kCornerMeaning},
    {"red", kColorMeaning},
    {"scale_x", "size as a factor"},
    {"scale_y", "size as a factor"},
    {"string", "the lines as strings: string[0] is the first"},
};
constexpr ObjectMember kView[] = {
    {"alpha", kAlphaMeaning},
    {"ambient", "light that comes from everywhere"},
    {"fog", "strength of the fog"},
    {"fog_end", "where the fog hides everything"},
    {"fog_start", "where the fog begins"},
    {"fov", "angle that it sees, in degrees"},
    {"layer", "order among the views"},
    {"offset_x", "shift of the picture, in pixels"},
    {"offset_y", "shift of the picture, in pixels"},
    {"pan", kDirectionMeaning},
    {"portal_x", "place of a portal"},
    {"portal_y", "place of a portal"},
    {"portal_z", "place of a portal"},
    {"pos_x", "upper left corner of the part of the screen that it fills, in pixels"},
    {"pos_y", "upper left corner of the part of the screen that it fills, in pixels"},
    {"roll", kDirectionMeaning},
    {"size_x", "size of the part of the screen that it fills, in pixels"},
    {"size_y", "size of the part of the screen that it fills, in pixels"},
    {"tilt", kDirectionMeaning},
    {"x", kPlaceMeaning},
    {"y", kPlaceMeaning},
    {"z", kPlaceMeaning},
};
constexpr ObjectMember kWindow[] = {
    {"blue", "color behind everything, 0 to 255"},
    {"green", "color behind everything, 0 to 255"},
    {"red", "color behind everything, 0 to 255"},
    {"size_x", "size in pixels"},
    {"size_y", "size in pixels"},
    {"title", "in a definition: the text in its title bar"},
};

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

std::string_view MeaningOf(const ObjectKind& kind, std::string_view member) {
  for (const ObjectMember& candidate : kind.members) {
    if (cp1252::EqualNoCase(candidate.name, member)) return candidate.meaning;
  }
  return {};
}

const ObjectKind* FindObjectKind(OutlineRoot root) {
  const auto* found = std::find_if(std::begin(kKinds), std::end(kKinds),
                                   [root](const ObjectKind& k) { return k.root == root; });
  return found == std::end(kKinds) ? nullptr : found;
}

const ObjectKind* FindObjectKind(std::string_view objectName, const Outline& outline) {
  const std::span<const OutlineRef> all = outline.Defining(objectName);
  const auto first = std::min_element(
      all.begin(), all.end(), [&outline](OutlineRef a, OutlineRef b) { return outline.IsBefore(a, b); });
  if (first != all.end()) return FindObjectKind(outline.RootOf(*first));
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
