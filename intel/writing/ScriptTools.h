#pragma once
#include <span>
#include <string>
#include <string_view>

/// Ready-made texts for `edit::ReplaceSelectedText`, which makes each one undo step.
namespace quill {

/// A comment between two lines of slashes; no line break at its end.
std::string CommentBanner(std::string_view comment);

/// The definition of an image: the file's name without its folder, in upper case. `path` may use either
/// separator.
std::string ImageDefinition(std::string_view path);

/// What the variable dialog asks for.
struct VariableDraft {
  std::string type;  ///< one of `VariableTypes`
  std::string name;  ///< with "[number]" behind it for an array
  std::string value;
  std::string comment;
};
/// First the one that a new dialog shows.
std::span<const std::string_view> VariableTypes();
/// Why no definition can be made of it, as a sentence without full stop; empty when one can.
std::string VariableProblem(const VariableDraft& draft);
/// The definition, one line without a line break. A string's value gets its quotes and a file its "<" and
/// ">" unless they are there.
std::string VariableDefinition(const VariableDraft& draft);

}  // namespace quill
