#pragma once
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "intel/outline/Definitions.h"
#include "text/buffer/BufferObserver.h"
#include "text/buffer/TextPosition.h"

namespace quill {

inline constexpr char kTemplateFolderName[] = "qil_templates";

/// A template made ready for one place.
struct TemplateText {
  std::string text;                 ///< lines ended by CR LF; the last one has no line end
  std::vector<TextPosition> stops;  ///< relative to the place, in the order in which Tab visits them
  std::string problem;              ///< a sentence without full stop when something was left out
};

/// How the lines of a place are indented.
struct TemplateIndent {
  std::string indentation;  ///< of the caret line; every further line gets it
  std::string step = "\t";  ///< what stands for a tab character at a template line's begin
};

/// Pieces of code that are inserted by name. A template is a file "name.txt" in the folder "qil_templates"
/// beside the program, in Windows-1252. In it, `$1` to `$9` are places that Tab visits in this order, `$0`
/// is the last one (without it, the end of the text), `${name}` stands for another template, and `$$` for
/// one "$".
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

/// Leads the caret from stop to stop of an inserted template while the text changes.
class TemplateSession {
 public:
  TemplateSession() = default;
  /// `place` is where the template's text begins.
  TemplateSession(TextPosition place, const TemplateText& inserted);

  bool IsActive() const { return m_next < m_stops.size(); }
  /// The next stop; throws std::invalid_argument when there is none.
  TextPosition Next();
  /// Ends the session when nothing of the template is left, as after an undo.
  void OnTextChange(const TextChange& change);
  /// Ends the session when the caret has left the template's lines.
  void OnCaretMoved(TextPosition caret);
  void End() { m_stops.clear(); }

 private:
  TextRange m_range;  ///< the template's text and what was written into it
  std::vector<TextPosition> m_stops;
  size_t m_next = 0;
};

}  // namespace quill
