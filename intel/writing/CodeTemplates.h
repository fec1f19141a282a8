#pragma once
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "intel/outline/Definitions.h"
#include "text/buffer/TextPosition.h"

namespace quill {

inline constexpr char kTemplateFolderName[] = "qil_templates";

/// A template made ready for one place.
struct TemplateText {
  std::string text;  ///< lines ended by CR LF; the last one has no line end
  /// In the order in which Tab visits them; each with all places of its name, in the order of the text. The
  /// places are relative to where the text goes.
  std::vector<std::vector<TextPosition>> fields;
  std::string problem;  ///< a sentence without full stop when something was left out
};

/// How the lines of a place are indented.
struct TemplateIndent {
  std::string indentation;  ///< of the caret line; every further line gets it
  std::string step = "\t";  ///< what stands for a tab character at a template line's begin
};

/// Pieces of code that are inserted by name. A template is a file "name.txt" in the folder "qil_templates"
/// beside the program, in Windows-1252. In it, `$1` to `$9` are places that Tab visits in this order, `$0`
/// is the last one (without it, the end of the text), `${name}` stands for another template, and `$$` for
/// one "$". A number that comes again in the same file is the same field: what is written in one place
/// stands in all of them.
class CodeTemplates {
 public:
  static constexpr size_t kMostTemplates = 200;
  static constexpr size_t kLargestTemplate = 64u << 10;  ///< bytes
  static constexpr size_t kLargestText = 1u << 20;       ///< bytes of an expanded template
  static constexpr size_t kDeepestNesting = 16;
  static constexpr size_t kMostInclusions = 1000;  ///< in one expanded template

  /// Replaces all by those of the folder. What is too large or too much is left out; a missing folder
  /// gives none.
  void Load(const std::string& programFolder);
  /// Of the same name, ignoring case, the first one counts.
  void Add(std::string_view name, std::string_view text);

  /// In alphabetical order.
  const std::vector<std::string>& Names() const { return m_names; }
  bool Has(std::string_view name) const { return Find(name) != nullptr; }
  /// Throws std::invalid_argument when there is no such template. Whatever includes itself is left out.
  TemplateText Expand(std::string_view name, const TemplateIndent& indent = {}) const;
  /// The template name that ends at the caret, for the key Tab; nothing when there is none. A member, the
  /// name behind a ".", is none.
  std::optional<Identifier> NameBefore(std::string_view line, int32_t column) const;

 private:
  friend class TemplateExpander;
  const std::string* Find(std::string_view name) const;

  std::vector<std::string> m_names;
  std::vector<std::string> m_texts;  ///< with "\n" between lines; beside `m_names`
};

}  // namespace quill
