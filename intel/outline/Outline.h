#pragma once
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "text/buffer/TextPosition.h"

namespace quill {

class NameSet;

/// The kinds of object that a script defines, in the order in which the Code Jumper shows them.
enum class OutlineRoot : uint8_t {
  kActions,
  kBitmaps,
  kDefines,
  kEntities,
  kFonts,
  kFunctions,
  kMaterials,
  kPanels,
  kPaths,
  kSkills,
  kSkies,
  kSounds,
  kStarters,
  kStrings,
  kTexts,
  kVariables,
  kViews,
  kWindows,
};
inline constexpr size_t kOutlineRootCount = 18;
/// "Actions", "Bitmaps" and so on.
std::string_view OutlineRootName(OutlineRoot root);

/// The icon kinds of the element list: places in its row of icons.
namespace element_kind {
enum Kind : int32_t { kVariable = 2, kFunction = 3, kAction = 4 };
}  // namespace element_kind

/// Which kind of element the children of a root are.
element_kind::Kind ElementKindOf(OutlineRoot root);

/// One definition: a child of a root.
struct OutlineItem {
  std::string text;  ///< as the tree shows it: a function with its parameters, a variable with its value
  TextPosition at;   ///< of the text's first character
  /// 0 for the script itself, n for the n-th included file.
  int32_t file = 0;
  bool indented = false;  ///< blanks or tabs before it: as a rule a local variable
};

/// A name that the script defines, listed once however often it is defined.
struct OutlineElement {
  std::string name;
  element_kind::Kind kind = element_kind::kVariable;
  OutlineRoot root = OutlineRoot::kVariables;
  TextPosition at;
  int32_t file = 0;
};

/// What stands between "<" and ">".
struct NamedFile {
  std::string name;
  TextPosition at;
  /// From behind the first "."; empty for what is no file, as in a comparison.
  std::string_view Extension() const;
};

/// What a script defines.
struct Outline {
  /// By `OutlineRoot`; each in alphabetical order, ignoring case.
  std::array<std::vector<OutlineItem>, kOutlineRootCount> roots;
  /// In the order of the text.
  std::vector<OutlineElement> elements;
  /// Folders of "path" lines, as written.
  std::vector<std::string> paths;
  /// Those whose extension was asked for.
  std::vector<NamedFile> namedFiles;
  /// Files of "include" lines, whatever their extension.
  std::vector<NamedFile> includes;

  std::vector<OutlineItem>& Items(OutlineRoot root) { return roots[static_cast<size_t>(root)]; }
  const std::vector<OutlineItem>& Items(OutlineRoot root) const { return roots[static_cast<size_t>(root)]; }
};

/// The name alone of a child's text: without value, array size, file or parameters. A view into `text`.
std::string_view BareName(OutlineRoot root, std::string_view text);

/// The identifier that a child's or an element's text begins with, but for the "*" of a pointer: what
/// other lines call it. A view into `text`; empty for what only looks like a definition, such as the rest
/// of an assignment.
std::string_view DefinedWord(std::string_view text);

/// Sorts children by their text, ignoring case; equal ones stay in their order.
void SortItems(std::vector<OutlineItem>& items);

/// Adds the words that the element list defines, in lower case: functions and actions to one set, the others
/// to the other.
void CollectNames(const Outline& outline, NameSet& functions, NameSet& variables);

/// For people and tests: each root that has children, and below it a line "text  line:column" each, then
/// elements, paths, named files and includes. Lines and columns count from 1; of an included file its number
/// is told.
std::string DescribeOutline(const Outline& outline);

}  // namespace quill
