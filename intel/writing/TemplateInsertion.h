#pragma once
#include <optional>
#include <string>
#include <string_view>

#include "intel/writing/CodeTemplates.h"
#include "intel/writing/TemplateSession.h"
#include "text/edit/EditTarget.h"

namespace quill {

/// A template that stands in a text.
struct InsertedTemplate {
  TemplateSession session;  ///< the caret is at its first stop
  std::string problem;      ///< as in `TemplateText`
};

namespace edit {

/// Replaces the selection, if any, by a template, as one undo step. Its lines are indented like the caret
/// line. Nothing when the text is read-only; throws std::invalid_argument when there is no such template.
std::optional<InsertedTemplate> InsertTemplate(EditTarget& target, const CodeTemplates& templates,
                                               std::string_view name);

/// Writes what stands in a place of the session, in one line, into the others of its field, within the undo
/// step of the edit before. The session must be told of the changes meanwhile. False when there is nothing to
/// write, or the text is read-only.
bool FillEqualPlaces(EditTarget& target, TemplateSession& session, size_t place);

}  // namespace edit
}  // namespace quill
