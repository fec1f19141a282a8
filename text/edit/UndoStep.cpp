#include "text/edit/UndoStep.h"

#include <algorithm>

#include "text/edit/ColumnBlock.h"

namespace quill {

UndoStep::UndoStep(EditTarget& target, int32_t actionCode, bool merge)
    : m_target(target), m_buffer(target.Buffer()), m_action(actionCode) {
  m_buffer.OpenUndoGroup(merge);
}

UndoStep::~UndoStep() {
  if (m_open) m_buffer.CloseUndoGroup();
}

void UndoStep::CloseWithHook() {
  m_open = false;
  m_buffer.CloseUndoGroup(m_edited ? m_target.Source().hook : nullptr);
}

TextPosition UndoStep::Insert(TextPosition at, std::string_view text) {
  TextPosition end = at;
  if (text.empty()) return end;
  m_edited = m_buffer.InsertTextAt(m_target.Source(), at, text, end, m_action) || m_edited;
  return end;
}

TextPosition UndoStep::InsertPieces(TextPosition at, const std::vector<std::string_view>& pieces,
                                    FlagsFollow follow) {
  TextPosition end = at;
  if (pieces.empty() || (pieces.size() == 1 && pieces.front().empty())) return end;
  m_edited = m_buffer.InsertLinesAt(m_target.Source(), at, pieces, end, m_action, follow) || m_edited;
  return end;
}

void UndoStep::ReplaceInLine(TextRange range, std::string_view text) {
  Delete(range);
  InsertPieces(range.start, {text});
}

void UndoStep::Delete(TextRange range, FlagsFollow follow) {
  if (range.IsEmpty()) return;
  m_edited = m_buffer.DeleteRange(m_target.Source(), range, m_action, follow) || m_edited;
}

void UndoStep::DeleteSelection() {
  if (m_target.IsColumnSelection()) {
    const ColumnBlock block = BlockOf(m_target);
    const int32_t tabSize = m_target.Settings().tabSize;
    for (int32_t line = block.firstLine; line <= block.lastLine; ++line) {
      Delete(block.RangeOn(m_buffer, line, tabSize));
    }
    m_target.PlaceCaret(block.RangeOn(m_buffer, block.firstLine, tabSize).start);
    return;
  }
  const TextRange selection = m_target.Selection();
  Delete(selection);
  m_target.PlaceCaret(selection.start);
}

void UndoStep::InsertLines(int32_t before, const std::vector<std::string_view>& lines) {
  std::vector<std::string_view> pieces = lines;
  if (before > 0) {
    pieces.insert(pieces.begin(), std::string_view());
    InsertPieces({before - 1, m_buffer.LineLength(before - 1)}, pieces);
    return;
  }
  pieces.emplace_back();
  InsertPieces({0, 0}, pieces, FlagsFollow::kText);
}

void UndoStep::RemoveLines(int32_t first, int32_t last) {
  if (first > 0) {
    Delete({{first - 1, m_buffer.LineLength(first - 1)}, {last, m_buffer.LineLength(last)}});
  } else if (last + 1 < m_buffer.LineCount()) {
    Delete({{0, 0}, {last + 1, 0}}, FlagsFollow::kText);
  } else {
    Delete({{0, 0}, m_buffer.EndOfText()});
  }
}

std::vector<std::string> CopyPieces(const CCrystalTextBuffer& buffer, TextRange range) {
  std::vector<std::string> pieces;
  for (int32_t line = range.start.line; line <= range.end.line; ++line) {
    pieces.emplace_back(buffer.PieceOf(range, line));
  }
  return pieces;
}

std::vector<std::string_view> ViewsOf(const std::vector<std::string>& pieces) {
  return {pieces.begin(), pieces.end()};
}

namespace edit {
namespace {

bool Step(EditTarget& target, bool (CCrystalTextBuffer::*step)(TextPosition&)) {
  TextPosition place;
  if (!(target.Buffer().*step)(place)) return false;
  target.PlaceCaret(place);
  return true;
}

}  // namespace

bool Undo(EditTarget& target) {
  return Step(target, &CCrystalTextBuffer::Undo);
}

bool Redo(EditTarget& target) {
  return Step(target, &CCrystalTextBuffer::Redo);
}

}  // namespace edit
}  // namespace quill
