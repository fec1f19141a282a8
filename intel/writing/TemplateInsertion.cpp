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

bool FillEqualPlaces(EditTarget& target, TemplateSession& session, size_t place) {
  const CCrystalTextBuffer& buffer = target.Buffer();
  const TextRange written = session.Places()[place].range;
  if (buffer.IsReadOnly() || written.start.line != written.end.line) return false;
  const std::string text(buffer.PieceOf(written, written.start.line));
  const int32_t offset = target.Caret().character - written.start.character;
  std::optional<UndoStep> step;
  for (size_t i = 0; i < session.Places().size(); ++i) {
    const TextRange other = session.Places()[i].range;
    if (i == place || session.Places()[i].field != session.Places()[place].field) continue;
    if (other.start.line != other.end.line || buffer.PieceOf(other, other.start.line) == text) continue;
    if (!step) step.emplace(target, action::kTyping, true);
    session.BeginWriting(i);
    step->ReplaceInLine(other, text);
  }
  session.BeginWriting(place);
  if (!step) return false;
  const TextPosition start = session.Places()[place].range.start;
  target.PlaceCaret({start.line, start.character + offset});
  return true;
}

}  // namespace quill::edit
