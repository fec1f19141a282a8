#include "text/view/Navigation.h"

#include <algorithm>

#include "base/CodePage1252.h"
#include "text/view/TextViewModel.h"

namespace quill {
namespace {

enum class Kind : uint8_t { kSpace, kWord, kOther };

Kind KindOf(char c) {
  if (cp1252::IsSpace(c)) return Kind::kSpace;
  return cp1252::IsWordChar(c) ? Kind::kWord : Kind::kOther;
}

Kind KindAt(std::string_view line, int32_t column) {
  return KindOf(line[static_cast<size_t>(column)]);
}

}  // namespace

WordRange WordAt(std::string_view line, int32_t column) {
  const auto length = static_cast<int32_t>(line.size());
  if (length == 0) return {0, 0};
  int32_t inside = std::clamp(column, 0, length);
  const bool behindWord = inside > 0 && KindAt(line, inside - 1) == Kind::kWord;
  if (inside == length || (behindWord && KindAt(line, inside) != Kind::kWord)) --inside;
  return RunAt(line, inside);
}

WordRange RunAt(std::string_view line, int32_t column) {
  const auto length = static_cast<int32_t>(line.size());
  const Kind kind = KindAt(line, column);
  WordRange range{column, column + 1};
  while (range.start > 0 && KindAt(line, range.start - 1) == kind) --range.start;
  while (range.end < length && KindAt(line, range.end) == kind) ++range.end;
  return range;
}

int32_t NextWordStart(std::string_view line, int32_t column) {
  const auto length = static_cast<int32_t>(line.size());
  if (column < length) {
    const Kind kind = KindAt(line, column);
    while (column < length && KindAt(line, column) == kind && kind != Kind::kSpace) ++column;
  }
  while (column < length && KindAt(line, column) == Kind::kSpace) ++column;
  return column;
}

int32_t PreviousWordStart(std::string_view line, int32_t column) {
  while (column > 0 && KindAt(line, column - 1) == Kind::kSpace) --column;
  if (column == 0) return 0;
  const Kind kind = KindAt(line, column - 1);
  while (column > 0 && KindAt(line, column - 1) == kind) --column;
  return column;
}

TextPosition Navigator::Vertical(TextPosition from, int32_t rows) {
  if (m_wantedX < 0) m_wantedX = m_model.XOf(from);
  const int32_t row = m_model.Folds().RowOfLine(from.line);
  const int32_t target = std::clamp(row + rows, 0, m_model.RowCount() - 1);
  if (target == row && rows < 0) return {m_model.Folds().LineOfRow(row), 0};
  const int32_t line = m_model.Folds().LineOfRow(target);
  if (target == row) return {line, m_model.Buffer()->LineLength(line)};
  return {line, m_model.CharacterAt(line, m_wantedX, true)};
}

BlockCorner Navigator::BlockTarget(BlockCorner from, Motion motion, int32_t pageRows) {
  const CCrystalTextBuffer& buffer = *m_model.Buffer();
  const std::string_view line = buffer.Line(from.line);
  const int32_t tabSize = m_model.TabSize();
  const int32_t character = CharacterAtColumn(line, from.column, tabSize);
  const int32_t end = ColumnOf(line, static_cast<int32_t>(line.size()), tabSize);
  const auto below = [&](int32_t rows) {
    const FoldMap& folds = m_model.Folds();
    const int32_t row = std::clamp(folds.RowOfLine(from.line) + rows, 0, m_model.RowCount() - 1);
    return BlockCorner{folds.LineOfRow(row), from.column};
  };
  switch (motion) {
    case Motion::kUp:
      return below(-1);
    case Motion::kDown:
      return below(1);
    case Motion::kPageUp:
      return below(-pageRows);
    case Motion::kPageDown:
      return below(pageRows);
    case Motion::kLeft:
      if (from.column > end) return {from.line, from.column - 1};
      return {from.line, character == 0 ? 0 : ColumnOf(line, character - 1, tabSize)};
    case Motion::kRight:
      return {from.line, from.column >= end ? from.column + 1 : ColumnOf(line, character + 1, tabSize)};
    case Motion::kWordLeft:
      return {from.line, ColumnOf(line, PreviousWordStart(line, character), tabSize)};
    case Motion::kWordRight:
      if (from.column >= end) return from;
      return {from.line, ColumnOf(line, NextWordStart(line, character), tabSize)};
    default: {
      const TextPosition to = Target({from.line, character}, motion, pageRows);
      return {to.line, ColumnOf(buffer.Line(to.line), to.character, tabSize)};
    }
  }
}

TextPosition Navigator::Target(TextPosition from, Motion motion, int32_t pageRows) {
  const CCrystalTextBuffer& buffer = *m_model.Buffer();
  const FoldMap& folds = m_model.Folds();
  switch (motion) {
    case Motion::kUp:
      return Vertical(from, -1);
    case Motion::kDown:
      return Vertical(from, 1);
    case Motion::kPageUp:
      return Vertical(from, -pageRows);
    case Motion::kPageDown:
      return Vertical(from, pageRows);
    default:
      break;
  }
  m_wantedX = -1;
  const std::string_view line = buffer.Line(from.line);
  const auto length = static_cast<int32_t>(line.size());
  const int32_t above = folds.PreviousShown(from.line);
  const int32_t below = folds.NextShown(from.line);
  const bool canGoUp = above >= 0;
  const bool canGoDown = below < buffer.LineCount();
  switch (motion) {
    case Motion::kLeft:
      if (from.character > 0) return {from.line, from.character - 1};
      return canGoUp ? TextPosition{above, buffer.LineLength(above)} : from;
    case Motion::kRight:
      if (from.character < length) return {from.line, from.character + 1};
      return canGoDown ? TextPosition{below, 0} : from;
    case Motion::kWordLeft:
      if (from.character > 0) return {from.line, PreviousWordStart(line, from.character)};
      return canGoUp ? TextPosition{above, buffer.LineLength(above)} : from;
    case Motion::kWordRight:
      if (from.character < length) return {from.line, NextWordStart(line, from.character)};
      return canGoDown ? TextPosition{below, 0} : from;
    case Motion::kLineStart: {
      const auto indent = static_cast<int32_t>(std::min(line.find_first_not_of("\t "), line.size()));
      return {from.line, from.character == indent ? 0 : indent};
    }
    case Motion::kLineEnd:
      return {from.line, length};
    case Motion::kTextStart:
      return {0, 0};
    default: {
      const int32_t last = folds.ShownLine(buffer.LineCount() - 1);
      return {last, buffer.LineLength(last)};
    }
  }
}

}  // namespace quill
