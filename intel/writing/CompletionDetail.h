#pragma once
#include <cstddef>
#include <string>
#include <string_view>

#include "intel/writing/Completion.h"

namespace quill {

class CodeTemplates;
class CommandDatabase;

/// What is shown beside the selected name of the completion list.
struct CompletionDetail {
  std::string heading;  ///< how the name is used: a command's parameters, the line that defines a name
  std::string text;     ///< what it is for; empty when nobody wrote it down
};

/// `object` is the kind whose members the list shows; null for other lists. Of a template it is the text
/// that is written.
CompletionDetail DetailOf(const CompletionList& list, size_t row, const ObjectKind* object,
                          const CommandDatabase& commands, const Outline& outline,
                          const CodeTemplates& templates);

/// A help text up to the end of its first sentence or paragraph.
std::string FirstSentence(std::string_view help);

}  // namespace quill
