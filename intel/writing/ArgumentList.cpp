#include "intel/writing/ArgumentList.h"

#include <algorithm>
#include <vector>

#include "base/CodePage1252.h"
#include "intel/outline/CodeWalk.h"
#include "text/buffer/CrystalTextBuffer.h"

namespace quill {
namespace {

/// How far before the caret a call may have begun.
constexpr int32_t kMostLines = 30;
constexpr int32_t kMostCharacters = 65536;

struct Bracket {
  std::string_view name;  ///< what stands before it
  int32_t commas = 0;
};

std::string_view NameBefore(std::string_view line, size_t column) {
  size_t end = column;
  while (end > 0 && cp1252::IsSpace(line[end - 1])) --end;
  size_t start = end;
  while (start > 0 && cp1252::IsWordChar(line[start - 1])) --start;
  return line.substr(start, end - start);
}

void Follow(std::vector<Bracket>& open, std::string_view line, size_t column, char c) {
  switch (c) {
    case '(':
      open.push_back({NameBefore(line, column)});
      break;
    case '[':
      open.push_back({});
      break;
    case ')':
    case ']':
      if (!open.empty()) open.pop_back();
      break;
    case ',':
      if (!open.empty()) ++open.back().commas;
      break;
    case ';':
    case '{':
    case '}':
      open.clear();  // a statement ends here, whatever was left open
      break;
    default:
      break;
  }
}

}  // namespace

bool IsCaretInArgumentList(const CCrystalTextBuffer& buffer, TextPosition caret) {
  return caret.line >= 0 && caret.line < buffer.LineCount() &&
         IsCaretInArgumentList(buffer.Line(caret.line), caret.character);
}

bool IsCaretInArgumentList(std::string_view line, int32_t column) {
  while (!line.empty() && cp1252::IsSpace(line.front())) line.remove_prefix(1);
  if (line.empty()) return false;
  const auto place = [line](char c) {
    const size_t at = line.find(c);
    return at == std::string_view::npos ? int64_t{-1} : static_cast<int64_t>(at);
  };
  const int64_t before = int64_t{column} - 1;
  const int64_t open = place('(');
  const int64_t close = place(')');
  if (open <= before && close > before) return true;
  return open - 1 < before && close == -1 && open != -1;
}

OpenCall OpenCallAt(const CCrystalTextBuffer& buffer, TextPosition place) {
  if (place.line < 0 || place.line >= buffer.LineCount()) return {};
  int32_t first = place.line;
  int64_t characters = 0;
  while (first > 0 && place.line - first < kMostLines) {
    characters += buffer.LineLength(first - 1);
    if (characters > kMostCharacters) break;
    --first;
  }
  std::vector<Bracket> open;
  uint32_t state = 0;
  for (int32_t i = first; i <= place.line; ++i) {
    std::string_view line = buffer.Line(i);
    if (i == place.line) {
      const auto end = static_cast<size_t>(std::clamp(place.character, 0, buffer.LineLength(i)));
      const size_t start = end > kMostCharacters ? end - kMostCharacters : 0;
      line = line.substr(start, end - start);
    }
    state = WalkCode(line, state, [&open, line](size_t column, char c) { Follow(open, line, column, c); });
  }
  // A bracket of an expression belongs to the call around it.
  while (!open.empty() && open.back().name.empty()) open.pop_back();
  if (open.empty()) return {};
  return {std::string(open.back().name), open.back().commas};
}

TextPart ArgumentPart(std::string_view parameters, int32_t argument) {
  const size_t open = parameters.find('(');
  if (open == std::string_view::npos || argument < 0) return {};
  const size_t close = std::min(parameters.rfind(')'), parameters.size());
  size_t start = open + 1;
  for (; argument > 0; --argument) {
    const size_t comma = parameters.find(',', start);
    if (comma >= close) return {};
    start = comma + 1;
  }
  size_t end = std::min(parameters.find(',', start), close);
  while (start < end && cp1252::IsSpace(parameters[start])) ++start;
  while (end > start && cp1252::IsSpace(parameters[end - 1])) --end;
  return start < end ? TextPart{start, end} : TextPart{};
}

}  // namespace quill
