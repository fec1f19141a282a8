#pragma once
#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "intel/outline/OutlineGroup.h"
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

/// A definition or a named file within an outline: the group's slot and behind it, in the bits that number a
/// group's lines, the entry.
using OutlineRef = uint32_t;

/// The groups of a script and of its included files. A group keeps its slot from one outline of the text to
/// the next, so that what was sorted stays sorted.
struct OutlineParts {
  struct Part {
    std::shared_ptr<const OutlineGroup> group;  ///< null for a slot that is not in use
    int32_t firstLine = 0;
    int32_t file = 0;   ///< as in `OutlineItem`
    uint32_t rank = 0;  ///< place in `sequence`
  };
  std::vector<Part> bySlot;
  std::vector<uint32_t> sequence;  ///< the slots in the order of the text, those of the files behind it

  /// Adds a group behind all others.
  void Append(std::shared_ptr<const OutlineGroup> group, int32_t firstLine, int32_t file = 0);
};

/// The definitions in the orders that are asked for.
struct OutlineOrders {
  /// By `OutlineRoot`; alphabetical, ignoring case, equal ones in the order of the text.
  std::array<std::vector<OutlineRef>, kOutlineRootCount> roots;
  /// All that define a word, but for folders, by this word and then by their text in the same way.
  std::vector<OutlineRef> words;
  /// The first ones of their names, in the order of the text.
  std::vector<OutlineRef> elements;
  std::vector<OutlineRef> paths;       ///< in the order of the text
  std::vector<OutlineRef> namedFiles;  ///< in the order of the text, without those of included files
  std::vector<OutlineRef> includes;    ///< likewise
};

template <typename Value>
class OutlineRange;

/// What a script defines. Does not change any more; a copy costs little.
class Outline {
 public:
  Outline();
  Outline(std::shared_ptr<const OutlineParts> parts, std::shared_ptr<const OutlineOrders> orders)
      : m_parts(std::move(parts)), m_orders(std::move(orders)) {}

  /// In alphabetical order, ignoring case.
  OutlineRange<OutlineItem> Items(OutlineRoot root) const;
  /// In the order of the text.
  OutlineRange<OutlineElement> Elements() const;
  /// Those whose extension was asked for.
  OutlineRange<NamedFile> NamedFiles() const;
  /// Files of "include" lines, whatever their extension.
  OutlineRange<NamedFile> Includes() const;
  /// Folders of "path" lines, as written.
  std::vector<std::string> Paths() const;
  /// The number of all definitions.
  size_t Count() const;

  const OutlineParts& Parts() const { return *m_parts; }
  const OutlineOrders& Orders() const { return *m_orders; }
  const std::shared_ptr<const OutlineOrders>& SharedOrders() const { return m_orders; }
  const std::vector<OutlineRef>& Order(OutlineRoot root) const {
    return m_orders->roots[static_cast<size_t>(root)];
  }

  // Of a definition. Texts live as long as the outline or a copy of it.
  std::string_view TextOf(OutlineRef ref) const { return GroupOf(ref).TextOf(EntryOf(ref)); }
  std::string_view BareNameOf(OutlineRef ref) const;
  std::string_view WordOf(OutlineRef ref) const;
  OutlineRoot RootOf(OutlineRef ref) const { return static_cast<OutlineRoot>(EntryOf(ref).root); }
  bool IsIndented(OutlineRef ref) const { return EntryOf(ref).indented != 0; }
  TextPosition PlaceOf(OutlineRef ref) const { return PlaceOf(ref, EntryOf(ref)); }
  int32_t FileOf(OutlineRef ref) const { return PartOf(ref).file; }
  OutlineItem ItemOf(OutlineRef ref) const;

  // Of a named file.
  std::string_view NamedFileText(OutlineRef ref) const;
  TextPosition NamedFilePlace(OutlineRef ref) const;

  /// Whether one stands before another in the text; the script is before its files.
  bool IsBefore(OutlineRef a, OutlineRef b) const;
  /// The definitions of a word, ignoring case, by their texts.
  std::span<const OutlineRef> Defining(std::string_view word) const;
  /// A root's items with a text, ignoring case, in the order of the text.
  std::span<const OutlineRef> WithText(OutlineRoot root, std::string_view text) const;
  /// The place of a definition among its root's items.
  size_t IndexOf(OutlineRef ref) const;

  static uint32_t SlotOf(OutlineRef ref) { return ref >> OutlineGroup::kLineBits; }
  static uint32_t NumberOf(OutlineRef ref) { return ref & (OutlineGroup::kMostLines - 1); }
  static OutlineRef RefOf(uint32_t slot, size_t number) {
    return slot << OutlineGroup::kLineBits | static_cast<uint32_t>(number);
  }

 private:
  const OutlineParts::Part& PartOf(OutlineRef ref) const { return m_parts->bySlot[SlotOf(ref)]; }
  const OutlineGroup& GroupOf(OutlineRef ref) const { return *PartOf(ref).group; }
  const OutlineGroup::Entry& EntryOf(OutlineRef ref) const { return GroupOf(ref).items[NumberOf(ref)]; }
  TextPosition PlaceOf(OutlineRef ref, const OutlineGroup::Entry& entry) const {
    return {PartOf(ref).firstLine + static_cast<int32_t>(entry.line), static_cast<int32_t>(entry.character)};
  }

  std::shared_ptr<const OutlineParts> m_parts;
  std::shared_ptr<const OutlineOrders> m_orders;
};

/// Some definitions of an outline, each made when it is asked for. Lives without the outline that it is of.
template <typename Value>
class OutlineRange {
 public:
  using Make = Value (*)(const Outline&, OutlineRef);

  class Iterator {
   public:
    using iterator_category = std::random_access_iterator_tag;
    using value_type = Value;
    using difference_type = ptrdiff_t;
    using pointer = const Value*;
    using reference = Value;

    Iterator(const OutlineRange& range, size_t index) : m_range(&range), m_index(index) {}
    Value operator*() const { return (*m_range)[m_index]; }
    Iterator& operator++() {
      ++m_index;
      return *this;
    }
    bool operator==(const Iterator& other) const { return m_index == other.m_index; }

   private:
    const OutlineRange* m_range;
    size_t m_index;
  };

  OutlineRange(const Outline& outline, const std::vector<OutlineRef>& refs, Make make)
      : m_outline(outline), m_refs(&refs), m_make(make) {}
  size_t size() const { return m_refs->size(); }
  bool empty() const { return m_refs->empty(); }
  Value operator[](size_t index) const { return m_make(m_outline, (*m_refs)[index]); }
  Value front() const { return (*this)[0]; }
  Iterator begin() const { return {*this, 0}; }
  Iterator end() const { return {*this, size()}; }

 private:
  Outline m_outline;  ///< keeps what the references are of
  const std::vector<OutlineRef>* m_refs;
  Make m_make;
};

/// The name alone of a child's text: without value, array size, file or parameters. A view into `text`.
std::string_view BareName(OutlineRoot root, std::string_view text);

/// The identifier that a child's or an element's text begins with, but for the "*" of a pointer: what
/// other lines call it. A view into `text`; empty for what only looks like a definition, such as the rest
/// of an assignment.
std::string_view DefinedWord(std::string_view text);

/// Less than, equal to or greater than zero, ignoring case.
int CompareNoCase(std::string_view a, std::string_view b);

/// Adds the words that the element list defines, in lower case: functions and actions to one set, the others
/// to the other.
void CollectNames(const Outline& outline, NameSet& functions, NameSet& variables);

/// For people and tests: each root that has children, and below it a line "text  line:column" each, then
/// elements, paths, named files and includes. Lines and columns count from 1; of an included file its number
/// is told.
std::string DescribeOutline(const Outline& outline);

}  // namespace quill
