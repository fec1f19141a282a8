#pragma once
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "intel/jumper/OutlineFilter.h"
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

/// The rows of a list, each made when it is asked for: definitions, behind them named files. Keeps the
/// outline that its texts belong to.
class OutlineRows {
 public:
  class Iterator {
   public:
    Iterator(const OutlineRows& rows, size_t index) : m_rows(&rows), m_index(index) {}
    OutlineRow operator*() const { return (*m_rows)[m_index]; }
    Iterator& operator++() {
      ++m_index;
      return *this;
    }
    bool operator==(const Iterator& other) const { return m_index == other.m_index; }

   private:
    const OutlineRows* m_rows;
    size_t m_index;
  };

  /// What a row shows of a definition.
  enum class Shows : uint8_t { kText, kName };

  OutlineRows() = default;
  OutlineRows(Outline outline, Shows shows, std::vector<OutlineRef> definitions,
              std::vector<OutlineRef> files = {});

  size_t size() const { return m_definitions.size() + m_files.size(); }
  /// Throws std::out_of_range for a row that is not there.
  OutlineRow operator[](size_t index) const;
  Iterator begin() const { return {*this, 0}; }
  Iterator end() const { return {*this, size()}; }

  /// Those that fit.
  OutlineRows Filtered(const OutlineFilter& filter) const;

 private:
  Outline m_outline;
  Shows m_shows = Shows::kText;
  std::vector<OutlineRef> m_definitions;
  std::vector<OutlineRef> m_files;
};

/// The pane "Variables": the global variables with their values, those of included files last when they are
/// in the order of the text. A variable that is indented counts as a local one; the tree has it.
OutlineRows VariableRows(const Outline& outline, RowOrder order);

/// The pane "Elements": everything that has a name, once, whatever its kind, and then, apart from these, the
/// files that the script names between "<" and ">". Those without an extension come last: most of them are
/// comparisons. Beside the tree, which has a place for each kind, this is the one place that has all. What
/// only looks like a definition, such as the rest of an assignment, is left out.
OutlineRows ElementRows(const Outline& outline, RowOrder order);

/// The name of a row's icon: by its kind, or of a file by its extension.
std::string_view RowIcon(const OutlineRow& row);

/// What the Code Jumper's tree and lists show of a script.
struct JumperRows {
  /// By root, those of the items that fit the filter. Only with a filter: else all are shown.
  std::array<std::vector<uint32_t>, kOutlineRootCount> fitting;
  OutlineRows variables;
  OutlineRows elements;
  bool isFiltered = false;
};
JumperRows MakeJumperRows(const Outline& outline, RowOrder order, const OutlineFilter& filter);

}  // namespace quill
