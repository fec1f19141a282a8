#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "intel/outline/Outline.h"

namespace quill {

/// Where something is defined.
struct DefinitionPlace {
  int32_t file = 0;  ///< as in `OutlineItem`
  TextPosition at;
  OutlineRoot root = OutlineRoot::kVariables;
  bool indented = false;
};

/// The definitions of a script and its included files by name, ignoring case.
class Definitions {
 public:
  Definitions() = default;
  explicit Definitions(Outline outline) : m_outline(std::move(outline)) {}

  /// The definition that a name in `line` of the script means: the nearest one above within the function
  /// that begins at line `functionStart` (-1 for none), else the first that is not indented, the script's
  /// before those of its includes, else the first of all. Nothing when there is none.
  std::optional<DefinitionPlace> Find(std::string_view name, int32_t line, int32_t functionStart) const;

 private:
  Outline m_outline;
};

/// A place in a document, which is told by its path or title.
struct JumpPlace {
  std::string document;
  TextPosition at;
  friend bool operator==(const JumpPlace&, const JumpPlace&) = default;
};

/// The places from which the user jumped, the last one first out.
class JumpHistory {
 public:
  static constexpr size_t kMostPlaces = 100;

  /// The oldest place is forgotten when there are too many; the same place twice in a row counts once.
  void Push(JumpPlace place);
  bool IsEmpty() const { return m_places.empty(); }
  /// Takes the last place out; throws std::invalid_argument when there is none.
  JumpPlace Pop();

 private:
  std::vector<JumpPlace> m_places;
};

/// The identifier that contains `column` or ends there, as columns [start, end); both `column` when there
/// is none.
struct Identifier {
  int32_t start = 0;
  int32_t end = 0;
  std::string_view In(std::string_view line) const {
    return line.substr(static_cast<size_t>(start), static_cast<size_t>(end - start));
  }
};
Identifier IdentifierAt(std::string_view line, int32_t column);

}  // namespace quill
