#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

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

  /// Lines in any order; `number` counts from 0.
  void ScanLine(std::string_view line, int32_t number);
  /// What was found, sorted. The scanner starts anew.
  Outline Finish();

 private:
  void NoteFile(std::string_view line, std::string_view text, int32_t number);
  void NotePath(std::string_view line, std::string_view text, int32_t number);
  void DefineObject(std::string_view line, std::string_view rest, OutlineRoot root, int32_t number);
  void DefineFunction(std::string_view line, std::string_view rest, int32_t number);
  void DefineAction(std::string_view line, std::string_view rest, int32_t number);
  void Add(OutlineRoot root, std::string_view line, std::string_view name, int32_t number);

  std::string m_onlyElements;
  Outline m_outline;
  NameSet m_names;  ///< of the element list
};

/// What a line defines by its first word; nothing for other lines, and for `include` and `path`.
std::optional<OutlineRoot> DefinedRoot(std::string_view line);

Outline ScanOutline(const CCrystalTextBuffer& buffer, std::string_view onlyElements = {});
/// The same for the bytes of a file, in the lines that a buffer would have.
Outline ScanOutlineText(std::string_view text, std::string_view onlyElements = {});

}  // namespace quill
