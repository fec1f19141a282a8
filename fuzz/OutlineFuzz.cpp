// Any bytes as a script: its outline, and what typing at some place in it asks, stay within the text; the
// lines of the bytes are those of a buffer.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "intel/jumper/OutlineFilter.h"
#include "intel/jumper/OutlineLists.h"
#include "intel/outline/Definitions.h"
#include "intel/outline/EnclosingFunction.h"
#include "intel/outline/OutlineScanner.h"
#include "intel/vocabulary/CommandDatabase.h"
#include "intel/writing/Completion.h"
#include "intel/writing/Hints.h"
#include "text/buffer/CrystalTextBuffer.h"

namespace {

using namespace quill;

void Check(bool holds) {
  if (!holds) std::abort();
}

bool IsIn(const CCrystalTextBuffer& buffer, TextPosition at, size_t length) {
  return at.line >= 0 && at.line < buffer.LineCount() && at.character >= 0 &&
         static_cast<size_t>(at.character) + length <= static_cast<size_t>(buffer.LineLength(at.line));
}

void CheckOutline(const CCrystalTextBuffer& buffer, const Outline& outline) {
  for (size_t r = 0; r < kOutlineRootCount; ++r) {
    for (const OutlineItem& item : outline.Items(static_cast<OutlineRoot>(r))) {
      Check(IsIn(buffer, item.at, item.text.size()));
      const auto start = static_cast<size_t>(item.at.character);
      Check(buffer.Line(item.at.line).substr(start, item.text.size()) == item.text);
      const std::string_view name = BareName(static_cast<OutlineRoot>(r), item.text);
      Check(name.size() <= item.text.size());
    }
  }
  for (const NamedFile& file : outline.NamedFiles()) Check(IsIn(buffer, file.at, file.name.size()));
  for (const RowOrder order : {RowOrder::kAlphabetical, RowOrder::kOfText}) {
    Check(VariableRows(outline, order).size() <= outline.Items(OutlineRoot::kVariables).size());
    for (const OutlineRow& row : ElementRows(outline, order)) {
      Check(row.nameLength > 0 && row.nameLength <= row.text.size() && !RowIcon(row).empty());
    }
  }
}

/// What is asked when the caret comes to a place.
void CheckPlace(const CCrystalTextBuffer& buffer, TextPosition caret, uint32_t state,
                const Outline& outline) {
  static const CommandDatabase commands = [] {
    CommandDatabase some;
    some.Append(std::vector<std::string>{"move", "move(vector way, number speed)", "", "x", "x()", "",
                                         "panel.x", "x(a", ""});
    return some;
  }();
  const std::string_view line = buffer.Line(caret.line);
  if (const auto request = CompletionAt(line, caret.character, state, outline)) {
    Check(0 <= request->start && request->start <= request->end);
    Check(static_cast<size_t>(request->end) <= line.size());
    Check(static_cast<size_t>(request->start) + request->begun.size() <= static_cast<size_t>(request->end));
  }
  HintText hint;
  hint.Update(buffer, caret, std::nullopt, commands, outline);
  Check(hint.Argument().start <= hint.Argument().end && hint.Argument().end <= hint.Text().size());
  Check(IsCaretInArgumentList(buffer, caret) == IsCaretInArgumentList(line, caret.character));
  const EnclosingFunction functions(outline);
  const auto around = functions.Around(buffer, caret.line);
  Check(!around || around->at.line <= caret.line);
  const Definitions definitions(outline);
  const Identifier name = IdentifierAt(line, caret.character);
  definitions.Find(name.In(line), caret.line, around ? around->at.line : -1);
}

}  // namespace

/// The first two bytes choose the place and the state at its line's start, the rest is the script.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 2) return 0;
  const std::string text(reinterpret_cast<const char*>(data) + 2, size - 2);
  CCrystalTextBuffer buffer;
  buffer.NewBuffer();
  TextPosition end;
  buffer.InsertTextAt(nullptr, {0, 0}, text, end);
  const Outline outline = ScanOutline(buffer);
  CheckOutline(buffer, outline);

  std::string bytes;
  buffer.CopyRange({{0, 0}, buffer.EndOfText()}, bytes);
  if (text.find('\n') == std::string::npos) {  // else there are lines with a lone one
    Check(DescribeOutline(ScanOutlineText(bytes)) == DescribeOutline(outline));
  }
  FilterOutline(outline, OutlineFilter(std::string_view(text).substr(0, 8)));

  const int32_t line = data[0] % buffer.LineCount();
  for (const int32_t column : {0, static_cast<int32_t>(data[1]), buffer.LineLength(line)}) {
    CheckPlace(buffer, {line, std::min(column, buffer.LineLength(line))}, data[1] & 0x0Fu, outline);
  }
  return 0;
}
