#include "text/edit/LineCommands.h"

#include <algorithm>

#include "base/CodePage1252.h"
#include "text/edit/UndoStep.h"

namespace quill::edit {
namespace {

constexpr std::string_view kLineComment = "//";

/// The selected lines with those that they hide.
LineRange WholeLines(const EditTarget& target) {
  const LineRange lines = SelectedLines(target);
  return {lines.first, std::max(lines.last, target.NextShown(lines.last) - 1)};
}

std::vector<std::string> CopyLines(const CCrystalTextBuffer& buffer, LineRange lines) {
  return CopyPieces(buffer, {{lines.first, 0}, {lines.last, buffer.LineLength(lines.last)}});
}

void SelectShifted(EditTarget& target, TextPosition anchor, TextPosition caret, int32_t lines) {
  const CCrystalTextBuffer& buffer = target.Buffer();
  const auto shifted = [&](TextPosition place) {
    place.line += lines;
    return place.line < buffer.LineCount() ? place : buffer.EndOfText();
  };
  target.Select(shifted(anchor), shifted(caret));
}

/// Moves the lines to the other side of their neighbours: it is these that are taken out and put back.
void SwapWithNeighbours(EditTarget& target, LineRange neighbours, int32_t newPlace, int32_t shift) {
  CCrystalTextBuffer& buffer = target.Buffer();
  const TextPosition anchor = target.Anchor();
  const TextPosition caret = target.Caret();
  const std::vector<std::string> lines = CopyLines(buffer, neighbours);
  std::vector<LineWord> words;
  for (int32_t line = neighbours.first; line <= neighbours.last; ++line) {
    words.push_back({newPlace + line - neighbours.first, buffer.LineFlags(line)});
  }
  UndoStep step(target, action::kDragAndDrop);
  step.RemoveLines(neighbours.first, neighbours.last);
  step.InsertLines(newPlace, ViewsOf(lines));
  buffer.ReplaceFlags(words);
  SelectShifted(target, anchor, caret, shift);
}

/// Where a line's comment marker begins when no letter precedes it, else -1.
int32_t FindMarker(std::string_view line) {
  for (size_t i = 0; i + 1 < line.size() && !cp1252::IsLetter(line[i]); ++i) {
    if (line.substr(i, 2) == kLineComment) return static_cast<int32_t>(i);
  }
  return -1;
}

/// Calls `change` for every selected line as one step; the caret goes below.
template <class Change>
bool ChangeComments(EditTarget& target, int32_t actionCode, Change change) {
  const CCrystalTextBuffer& buffer = target.Buffer();
  if (buffer.IsReadOnly()) return false;
  const TextRange selection = target.Selection();
  const int32_t last = selection.end.line;
  const bool atEnd = last + 1 == buffer.LineCount();
  const auto below = [&] { return atEnd ? buffer.EndOfText() : TextPosition{last + 1, 0}; };
  UndoStep step(target, actionCode);
  for (int32_t line = selection.start.line; line <= last; ++line) change(step, line);
  target.PlaceCaret(below());
  return true;
}

}  // namespace

bool CommentLines(EditTarget& target) {
  return ChangeComments(target, action::kIndent, [](UndoStep& step, int32_t line) {
    step.Insert({line, 0}, kLineComment);
  });
}

bool UncommentLines(EditTarget& target) {
  const CCrystalTextBuffer& buffer = target.Buffer();
  return ChangeComments(target, action::kDelete, [&](UndoStep& step, int32_t line) {
    const int32_t marker = FindMarker(buffer.Line(line));
    if (marker >= 0) step.Delete({{line, marker}, {line, marker + 2}});
  });
}

bool DuplicateLines(EditTarget& target) {
  const CCrystalTextBuffer& buffer = target.Buffer();
  if (buffer.IsReadOnly()) return false;
  const LineRange lines = WholeLines(target);
  const TextPosition anchor = target.Anchor();
  const TextPosition caret = target.Caret();
  UndoStep step(target, action::kPaste);
  step.InsertLines(lines.last + 1, ViewsOf(CopyLines(buffer, lines)));
  SelectShifted(target, anchor, caret, lines.last - lines.first + 1);
  return true;
}

bool MoveLinesUp(EditTarget& target) {
  if (target.Buffer().IsReadOnly()) return false;
  const LineRange lines = WholeLines(target);
  if (lines.first == 0) return true;
  const LineRange above{std::max(0, target.PreviousShown(lines.first)), lines.first - 1};
  const int32_t count = above.last - above.first + 1;
  SwapWithNeighbours(target, above, lines.last + 1 - count, -count);
  return true;
}

bool MoveLinesDown(EditTarget& target) {
  const CCrystalTextBuffer& buffer = target.Buffer();
  if (buffer.IsReadOnly()) return false;
  const LineRange lines = WholeLines(target);
  if (lines.last + 1 >= buffer.LineCount()) return true;
  const LineRange below{lines.last + 1, std::max(lines.last + 1, target.NextShown(lines.last + 1) - 1)};
  SwapWithNeighbours(target, below, lines.first, below.last - below.first + 1);
  return true;
}

bool DeleteLines(EditTarget& target) {
  const CCrystalTextBuffer& buffer = target.Buffer();
  if (buffer.IsReadOnly()) return false;
  const LineRange lines = WholeLines(target);
  const int32_t character = target.Caret().character;
  UndoStep step(target, action::kDelete);
  step.RemoveLines(lines.first, lines.last);
  const int32_t line = std::min(lines.first, buffer.LineCount() - 1);
  target.PlaceCaret({line, std::min(character, buffer.LineLength(line))});
  return true;
}

}  // namespace quill::edit
