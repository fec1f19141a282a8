#pragma once
#include <cstdint>
#include <string_view>
#include <vector>

#include "intel/outline/Outline.h"

namespace quill {

/// A row of the lists beside the Code Jumper's tree. Its texts belong to the outline.
struct OutlineRow {
  std::string_view text;  ///< begins with the name; then what else the definition says, such as a value
  size_t nameLength = 0;
  bool isFile = false;                         ///< a named file
  OutlineRoot root = OutlineRoot::kVariables;  ///< of what is no file
  TextPosition at;
  int32_t file = 0;  ///< as in `OutlineItem`

  std::string_view Name() const { return text.substr(0, nameLength); }
};

enum class RowOrder : uint8_t { kAlphabetical, kOfText };

/// The pane "Variables": the global variables with their values, those of included files last when they are
/// in the order of the text. A variable that is indented counts as a local one; the tree has it.
std::vector<OutlineRow> VariableRows(const Outline& outline, RowOrder order);

/// The pane "Elements": everything that has a name, once, whatever its kind, and then, apart from these, the
/// files that the script names between "<" and ">". Those without an extension come last: most of them are
/// comparisons. Beside the tree, which has a place for each kind, this is the one place that has all. What
/// only looks like a definition, such as the rest of an assignment, is left out.
std::vector<OutlineRow> ElementRows(const Outline& outline, RowOrder order);

/// The name of a row's icon: by its kind, or of a file by its extension.
std::string_view RowIcon(const OutlineRow& row);

}  // namespace quill
