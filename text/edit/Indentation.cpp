#include "text/edit/Indentation.h"

#include <algorithm>
#include <functional>

#include "text/edit/ColumnBlock.h"
#include "text/edit/UndoStep.h"
#include "text/view/VisualColumns.h"

namespace quill {

std::string IndentStep(const EditSettings& settings) {
  return IndentOfWidth(settings.tabSize, settings);
}

std::string IndentOfWidth(int32_t columns, const EditSettings& settings) {
  const int32_t tabs = settings.keepSpaces ? 0 : columns / settings.tabSize;
  return std::string(static_cast<size_t>(tabs), '\t')
      .append(static_cast<size_t>(columns - tabs * settings.tabSize), ' ');
}

int32_t LeadingStep(std::string_view line, const EditSettings& settings) {
  return line.starts_with(IndentStep(settings)) ? static_cast<int32_t>(IndentStep(settings).size()) : 0;
}

int32_t LeadingWhiteSpace(std::string_view line) {
  return static_cast<int32_t>(std::min(line.find_first_not_of("\t "), line.size()));
}

namespace edit {
namespace {

/// White space at the start of a line that is at most one step wide.
int32_t UpToOneStep(std::string_view line, int32_t tabSize) {
  const int32_t blanks = LeadingWhiteSpace(line);
  int32_t characters = 0;
  while (characters < blanks && ColumnOf(line, characters, tabSize) < tabSize) ++characters;
  return characters;
}

/// Calls `shift` for each selected line; it edits the line's start and returns by how many characters the
/// text moved. Caret and anchor follow.
bool ShiftLines(EditTarget& target, const std::function<int32_t(UndoStep&, int32_t)>& shift) {
  if (target.Buffer().IsReadOnly()) return false;
  TextPosition anchor = target.Anchor();
  TextPosition caret = target.Caret();
  const bool keepsStart = target.HasSelection();
  const LineRange lines = SelectedLines(target);
  UndoStep step(target, action::kIndent);
  for (int32_t line = lines.first; line <= lines.last; ++line) {
    const int32_t moved = shift(step, line);
    for (TextPosition* end : {&anchor, &caret}) {
      // A selection that begins at a line's start takes the new indentation in.
      if (end->line == line && (end->character > 0 || !keepsStart)) {
        end->character = std::max(0, end->character + moved);
      }
    }
  }
  target.Select(anchor, caret);
  return true;
}

}  // namespace

bool IndentLines(EditTarget& target) {
  const std::string indent = IndentStep(target.Settings());
  return ShiftLines(target, [&](UndoStep& step, int32_t line) {
    if (target.Buffer().LineLength(line) == 0) return 0;
    return step.Insert({line, 0}, indent).character;
  });
}

bool UnindentLines(EditTarget& target) {
  const int32_t tabSize = target.Settings().tabSize;
  return ShiftLines(target, [&](UndoStep& step, int32_t line) {
    const int32_t removed = UpToOneStep(target.Buffer().Line(line), tabSize);
    step.Delete({{line, 0}, {line, removed}});
    return -removed;
  });
}

bool TypeTab(EditTarget& target) {
  if (target.Buffer().IsReadOnly()) return false;
  const EditSettings settings = target.Settings();
  if (target.IsColumnSelection()) return TypeIntoBlock(target, IndentStep(settings), action::kTyping);
  if (target.HasSelection()) return IndentLines(target);
  const TextPosition caret = target.Caret();
  const int32_t column = ColumnOf(target.Buffer().Line(caret.line), caret.character, settings.tabSize);
  const auto blanks = static_cast<size_t>(settings.tabSize - column % settings.tabSize);
  UndoStep step(target, action::kTyping);
  target.PlaceCaret(step.Insert(caret, settings.keepSpaces ? std::string(blanks, ' ') : "\t"));
  return true;
}

}  // namespace edit
}  // namespace quill
