#pragma once
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/NameSet.h"
#include "intel/outline/Outline.h"

namespace quill {

class CCrystalTextBuffer;

/// Reads a script line by line for the Code Jumper. It builds no syntax tree and knows no block comments:
/// a definition inside one is listed. The first word of a line decides what the line defines.
class OutlineScanner {
 public:
  /// Bytes; a longer text behind a defining word is none.
  static constexpr size_t kLongestName = 65536;

  /// `onlyElements` is a list of file extensions; a named file is listed when the list is empty or its
  /// extension occurs anywhere in it.
  explicit OutlineScanner(std::string_view onlyElements) : m_onlyElements(onlyElements) {}

  const std::string& OnlyElements() const { return m_onlyElements; }
  /// The lines of a group, from above; `number` counts from 0 and is less than `OutlineGroup::kMostLines`.
  void ScanLine(std::string_view line, int32_t number);
  /// What was found. The scanner starts with another group.
  std::shared_ptr<const OutlineGroup> Finish();

 private:
  using Entries = std::vector<OutlineGroup::Entry>;

  void NoteFile(std::string_view line, std::string_view text, int32_t number);
  void NotePath(std::string_view line, std::string_view text, int32_t number);
  void DefineObject(std::string_view line, std::string_view rest, OutlineRoot root, int32_t number);
  void DefineFunction(std::string_view line, std::string_view rest, int32_t number);
  void DefineAction(std::string_view line, std::string_view rest, int32_t number);
  void Add(OutlineRoot root, std::string_view line, std::string_view name, int32_t number);
  void Append(Entries& entries, OutlineRoot root, std::string_view line, std::string_view text,
              int32_t number, bool indented = false);

  std::string m_onlyElements;
  OutlineGroup m_group;  ///< keeps its room from one group to the next
  NameSet m_names;       ///< that the group has brought
};

/// What a line defines by its first word; nothing for other lines, and for `include` and `path`.
std::optional<OutlineRoot> DefinedRoot(std::string_view line);

Outline ScanOutline(const CCrystalTextBuffer& buffer, std::string_view onlyElements = {});
/// The same for the bytes of a file, in the lines that a buffer would have.
Outline ScanOutlineText(std::string_view text, std::string_view onlyElements = {});

}  // namespace quill
