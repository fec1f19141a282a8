#include "text/search/ReplaceAll.h"

#include <algorithm>
#include <string>

#include "text/buffer/CrystalTextBuffer.h"

namespace quill {
namespace {

/// What one line becomes.
struct LineEdit {
  int32_t start = 0;  ///< column of the first occurrence
  int32_t end = 0;    ///< column behind the last one
  int64_t count = 0;
  std::string text;  ///< for the columns between
};

/// Collects the occurrences from `first` on that start before column `limit`. False when the line would
/// become too long for a buffer.
bool CollectEdit(const CCrystalTextBuffer& buffer, const TextSearch& search, std::string_view with,
                 TextPosition first, int32_t limit, LineEdit& edit) {
  const std::string_view line = buffer.Line(first.line);
  int32_t at = first.character;
  edit.start = edit.end = at;
  edit.count = 0;
  edit.text.clear();
  while (at >= 0 && at < limit) {
    if (edit.text.size() + line.size() + with.size() > CCrystalTextBuffer::kLongestLine) return false;
    edit.text.append(line.substr(static_cast<size_t>(edit.end), static_cast<size_t>(at - edit.end)));
    edit.text.append(with);
    edit.end = at + search.Length();
    ++edit.count;
    at = search.FindInBufferLine(buffer, first.line, edit.end);
  }
  return true;
}

/// `end` receives the place behind the last replacement.
bool ApplyEdit(CCrystalTextBuffer& buffer, EditSource source, int32_t line, const LineEdit& edit,
               TextPosition& end) {
  end = {line, edit.start};
  if (!buffer.DeleteRange(source, {end, {line, edit.end}}, action::kReplace)) return false;
  return edit.text.empty() || buffer.InsertTextAt(source, end, edit.text, end, action::kReplace);
}

}  // namespace

ReplaceAllOutcome ReplaceAllFrom(CCrystalTextBuffer& buffer, EditSource source, const TextSearch& search,
                                 std::string_view with, TextPosition firstMatch, TextPosition blockEnd) {
  ReplaceAllOutcome outcome{0, firstMatch, blockEnd, buffer.IsReadOnly()};
  if (outcome.refused || search.IsEmpty()) return outcome;
  TextPosition& limit = outcome.blockEnd;
  LineEdit edit;
  buffer.OpenUndoGroup();
  TextPosition at = firstMatch;
  while (at.line <= std::min(limit.line, buffer.LineCount() - 1)) {
    const int32_t column = at == firstMatch ? at.character : search.FindInBufferLine(buffer, at.line, 0);
    const bool atLimit = at.line == limit.line;
    const int32_t lineEnd = buffer.LineLength(at.line);
    const int32_t columnLimit = atLimit ? std::min(limit.character, lineEnd) : lineEnd;
    int32_t added = 0;
    if (column >= 0 && column < columnLimit) {
      outcome.refused = !CollectEdit(buffer, search, with, {at.line, column}, columnLimit, edit);
      if (outcome.refused || !ApplyEdit(buffer, source, at.line, edit, outcome.lastEnd)) break;
      outcome.count += edit.count;
      added = outcome.lastEnd.line - at.line;
      limit.line += added;
      if (atLimit) limit.character = std::max(outcome.lastEnd.character + limit.character - edit.end, 0);
    }
    at = {at.line + added + 1, 0};
  }
  buffer.CloseUndoGroup(source.hook);
  return outcome;
}

}  // namespace quill
