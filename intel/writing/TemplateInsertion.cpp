#include "intel/writing/TemplateInsertion.h"

#include <algorithm>

#include "text/edit/Indentation.h"
#include "text/edit/UndoStep.h"

namespace quill::edit {
namespace {

/// The white space before the caret's place at the start of its line.
std::string IndentationAt(const CCrystalTextBuffer& buffer, TextPosition place) {
  const std::string_view line = buffer.Line(place.line);
  const int32_t blanks = std::min(LeadingWhiteSpace(line), place.character);
  return std::string(line.substr(0, static_cast<size_t>(blanks)));
}

}  // namespace

std::optional<InsertedTemplate> InsertTemplate(EditTarget& target, const CodeTemplates& templates,
                                               std::string_view name) {
  if (target.Buffer().IsReadOnly()) return std::nullopt;
  UndoStep step(target, action::kReplace);
  step.DeleteSelection();
  const TextPosition place = target.Caret();
  TemplateText text =
      templates.Expand(name, {IndentationAt(target.Buffer(), place), IndentStep(target.Settings())});
  step.Insert(place, text.text);
  TemplateSession session(place, text);
  target.PlaceCaret(session.Next());
  return InsertedTemplate{std::move(session), std::move(text.problem)};
}

}  // namespace quill::edit
