#include "text/edit/ColumnBlock.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "text/edit/ClipboardText.h"
#include "text/edit/UndoStep.h"
#include "text/view/VisualColumns.h"

namespace quill {
namespace {

int32_t ColumnAt(const EditTarget& target, TextPosition place) {
  return ColumnOf(target.Buffer().Line(place.line), place.character, target.Settings().tabSize);
}

/// Puts a text at a column, behind blanks where the line is too short. Returns the place after it.
TextPosition InsertAtColumn(UndoStep& step, const EditTarget& target, int32_t line, int32_t column,
                            std::string_view text) {
  const std::string_view old = target.Buffer().Line(line);
  const int32_t tabSize = target.Settings().tabSize;
  const int32_t character = CharacterAtColumn(old, column, tabSize);
  const int32_t missing = column - ColumnOf(old, character, tabSize);
  if (missing <= 0 || text.empty()) return step.Insert({line, character}, text);
  return step.Insert({line, character}, std::string(static_cast<size_t>(missing), ' ').append(text));
}

/// Makes the block zero columns wide at a column.
void CollapseTo(EditTarget& target, const ColumnBlock& block, int32_t column) {
  const BlockCorner anchor{target.Anchor().line, column};
  const BlockCorner caret{target.Caret().line, column};
  const TextPosition place = target.PlaceOf(caret);
  if (block.firstLine != block.lastLine || ColumnAt(target, place) < column) {
    target.SelectBlock(anchor, caret);
  } else {
    target.PlaceCaret(place);
  }
}

/// Splits at CR LF; a line end at the text's end is not followed by a line.
std::vector<std::string_view> SplitAtCrLf(std::string_view text) {
  std::vector<std::string_view> lines;
  for (size_t end = 0; (end = text.find("\r\n")) != std::string_view::npos;) {
    lines.push_back(text.substr(0, end));
    text.remove_prefix(end + 2);
  }
  if (lines.empty() || !text.empty()) lines.push_back(text);
  return lines;
}

/// Puts lines one below the other at a column, with new lines behind the last one where needed. Returns the
/// place behind the last of them.
TextPosition InsertBlock(UndoStep& step, EditTarget& target, BlockCorner at,
                         const std::vector<std::string_view>& lines) {
  CCrystalTextBuffer& buffer = target.Buffer();
  size_t width = 0;
  for (const std::string_view piece : lines) width = std::max(width, piece.size());
  TextPosition end;
  for (int32_t line = at.line; const std::string_view piece : lines) {
    if (line == buffer.LineCount()) step.Insert(buffer.EndOfText(), "\r\n");
    end = InsertAtColumn(step, target, line, at.column, piece);
    // What stands behind the block stays below one another.
    const bool textFollows = end.character < buffer.LineLength(line++);
    if (textFollows) end = step.Insert(end, std::string(width - piece.size(), ' '));
  }
  return end;
}

/// The same, selected as a block.
void DropLines(UndoStep& step, EditTarget& target, BlockCorner at,
               const std::vector<std::string_view>& lines) {
  InsertBlock(step, target, at, lines);
  int32_t right = at.column;
  const int32_t tabSize = target.Settings().tabSize;
  for (int32_t line = at.line; const std::string_view piece : lines) {
    const int32_t start = CharacterAtColumn(target.Buffer().Line(line), at.column, tabSize);
    right = std::max(right, ColumnAt(target, {line, start + static_cast<int32_t>(piece.size())}));
    ++line;
  }
  target.SelectBlock(at, {at.line + static_cast<int32_t>(lines.size()) - 1, right});
}

std::string TextOf(const EditTarget& target, const ColumnBlock& block) {
  std::string text;
  for (int32_t line = block.firstLine; line <= block.lastLine; ++line) {
    if (line != block.firstLine) text += "\r\n";
    text += target.Buffer().PieceOf(block.RangeOn(target.Buffer(), line, target.Settings().tabSize), line);
  }
  return text;
}

}  // namespace

TextRange ColumnBlock::RangeOn(const CCrystalTextBuffer& buffer, int32_t line, int32_t tabSize) const {
  const std::string_view text = buffer.Line(line);
  return {{line, CharacterAtColumn(text, left, tabSize)}, {line, CharacterAtColumn(text, right, tabSize)}};
}

ColumnBlock BlockOf(const EditTarget& target) {
  const TextRange selection = target.Selection();
  const auto [left, right] = std::minmax({target.AnchorCorner().column, target.CaretCorner().column});
  return {selection.start.line, selection.end.line, left, right};
}

namespace edit {

std::string CopyBlock(const EditTarget& target) {
  return TextOf(target, BlockOf(target));
}

bool TypeIntoBlock(EditTarget& target, std::string_view text, int32_t actionCode) {
  if (target.Buffer().IsReadOnly()) return false;
  const ColumnBlock block = BlockOf(target);
  ColumnBlock replaced = block;
  if (target.IsOverwriting() && block.Width() == 0) replaced.right += static_cast<int32_t>(text.size());
  const int32_t tabSize = target.Settings().tabSize;
  UndoStep step(target, actionCode);
  TextPosition end;
  for (int32_t line = block.firstLine; line <= block.lastLine; ++line) {
    step.Delete(replaced.RangeOn(target.Buffer(), line, tabSize));
    end = InsertAtColumn(step, target, line, block.left, text);
  }
  CollapseTo(target, block,
             text.empty() ? block.left : ColumnOf(target.Buffer().Line(end.line), end.character, tabSize));
  return true;
}

bool DeleteInBlock(EditTarget& target, bool toTheLeft, int32_t actionCode) {
  if (target.Buffer().IsReadOnly()) return false;
  const ColumnBlock block = BlockOf(target);
  if (block.Width() > 0) return TypeIntoBlock(target, {}, action::kDeleteSelection);
  if (toTheLeft && block.left == 0) return true;
  const int32_t tabSize = target.Settings().tabSize;
  int32_t column = block.left;
  UndoStep step(target, actionCode);
  for (int32_t line = block.firstLine; line <= block.lastLine; ++line) {
    const std::string_view text = target.Buffer().Line(line);
    TextRange range = block.RangeOn(target.Buffer(), line, tabSize);
    const bool reaches = ColumnOf(text, range.start.character, tabSize) >= block.left;
    if (toTheLeft && reaches) --range.start.character;
    if (!toTheLeft && range.end.character < static_cast<int32_t>(text.size())) ++range.end.character;
    step.Delete(range);
    if (line != target.Caret().line) continue;
    column = reaches ? ColumnAt(target, range.start) : block.left - (toTheLeft ? 1 : 0);
  }
  CollapseTo(target, block, column);
  return true;
}

bool PasteBlock(EditTarget& target, std::string_view text) {
  if (target.Buffer().IsReadOnly()) return false;
  const std::vector<std::string_view> lines = SplitAtCrLf(text);
  const bool columns = target.IsColumnSelection();
  if (columns && lines.size() == 1) return TypeIntoBlock(target, lines.front(), action::kPaste);
  const int32_t left = BlockOf(target).left;
  UndoStep step(target, action::kPaste);
  step.DeleteSelection();
  const TextPosition caret = target.Caret();
  target.PlaceCaret(InsertBlock(step, target, {caret.line, columns ? left : ColumnAt(target, caret)}, lines));
  return true;
}

bool DropBlock(EditTarget& target, TextPosition at, std::string_view text) {
  if (target.Buffer().IsReadOnly()) return false;
  const std::string lines = WithCrLf(text);
  UndoStep step(target, action::kDragAndDrop);
  DropLines(step, target, target.CornerOf(at), SplitAtCrLf(lines));
  return true;
}

bool MoveBlock(EditTarget& target, const ColumnBlock& from, TextPosition to, bool copy) {
  const CCrystalTextBuffer& buffer = target.Buffer();
  if (buffer.IsReadOnly()) return false;
  const int32_t column = target.CornerOf(to).column;
  const bool inside =
      to.line >= from.firstLine && to.line <= from.lastLine && column >= from.left && column <= from.right;
  if (from.Width() == 0 || (inside && !copy)) return true;
  const std::string text = TextOf(target, from);
  std::vector<std::string_view> lines = SplitAtCrLf(text);
  lines.resize(static_cast<size_t>(from.lastLine - from.firstLine) + 1);
  UndoStep step(target, action::kDragAndDrop);
  for (int32_t line = from.firstLine; !copy && line <= from.lastLine; ++line) {
    const TextRange range = from.RangeOn(buffer, line, target.Settings().tabSize);
    step.Delete(range);
    to = PositionAfterDelete(to, range);
  }
  DropLines(step, target, target.CornerOf(to), lines);
  return true;
}

}  // namespace edit
}  // namespace quill
