#include "text/search/FindOpening.h"

#include "base/CodePage1252.h"
#include "text/buffer/CrystalTextBuffer.h"
#include "text/view/Navigation.h"

namespace quill {

SearchRequest SearchToBeginWith(const std::optional<SearchRequest>& last, const SearchRequest& stored,
                                const std::optional<std::string>& selected) {
  SearchRequest request = last.value_or(SearchRequest{stored.what, stored.flags & ~search_flag::kUpwards});
  if (selected) request.what = *selected;
  return request;
}

std::optional<std::string> SelectedWithinLine(const CCrystalTextBuffer& buffer, TextRange selection) {
  if (selection.IsEmpty() || selection.start.line != selection.end.line) return std::nullopt;
  std::string text;
  buffer.CopyRange(selection, text);
  return text;
}

TextRange WordAround(const CCrystalTextBuffer& buffer, TextPosition caret) {
  if (caret.line >= buffer.LineCount()) return {caret, caret};
  const std::string_view line = buffer.Line(caret.line);
  const WordRange word = WordAt(line, caret.character);
  if (word.start == word.end || !cp1252::IsWordChar(line[static_cast<size_t>(word.start)])) {
    return {caret, caret};
  }
  return {{caret.line, word.start}, {caret.line, word.end}};
}

}  // namespace quill
