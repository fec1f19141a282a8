// Any bytes as a script: it loads, keeps its bytes, colours with blocks in order, and edits leave the
// cached line states, the block marks and the rows as a parse from the top has them.

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "text/buffer/CrystalTextBuffer.h"
#include "text/parse/Folding.h"
#include "text/parse/LongLine.h"
#include "text/parse/ParsedText.h"
#include "text/parse/ScriptColouring.h"

namespace {

using namespace quill;

void Check(bool holds) {
  if (!holds) std::abort();
}

std::string BytesOf(const CCrystalTextBuffer& buffer) {
  std::string bytes;
  buffer.CopyRange({{0, 0}, buffer.EndOfText()}, bytes, line_end::Bytes(buffer.LineEndStyle()));
  return bytes;
}

void Load(CCrystalTextBuffer& buffer, const uint8_t* data, size_t size) {
  const int file = memfd_create("script", 0);
  Check(file >= 0 && write(file, data, size) == static_cast<ssize_t>(size));
  Check(static_cast<bool>(buffer.LoadFile("/proc/self/fd/" + std::to_string(file))));
  close(file);
  Check(BytesOf(buffer) == std::string(reinterpret_cast<const char*>(data), size));
}

/// Colours all lines with blocks, and parts of them as parts of long lines.
void ColourAll(CCrystalTextBuffer& buffer, LineStateCache& states, const WordClasses& words) {
  uint32_t state = 0;
  std::vector<TextBlock> blocks;
  LongLine part(buffer, 7);
  for (int32_t line = 0; line < buffer.LineCount(); ++line) {
    Check(states.StateAt(line) == state);
    const int32_t length = buffer.LineLength(line);
    blocks.resize(static_cast<size_t>(MostBlocks(length)));
    int32_t count = 0;
    const uint32_t next = ColourLine(buffer, words, state, line, blocks.data(), &count);
    Check(count <= MostBlocks(length) && (count == 0) == (length == 0));
    for (int32_t i = 0; i < count; ++i) {
      const TextBlock& block = blocks[static_cast<size_t>(i)];
      Check(i == 0 ? block.column == 0 : block.column > blocks[static_cast<size_t>(i) - 1].column);
      Check(block.column <= length && block.colour >= 0 && block.colour < kColourIndexLimit);
    }
    for (int32_t from = 0; from < length; from += 1 + length / 3) {
      Check(part.Blocks(words, line, state, from, from + 9).front().column <= from);
    }
    state = next;
  }
  Check(states.StateAt(buffer.LineCount()) == state);
}

void CheckRows(const CCrystalTextBuffer& buffer, const FoldMap& folds) {
  int32_t line = 0;
  for (int32_t row = 0; row < folds.RowCount(); ++row) {
    Check(folds.LineOfRow(row) == line && folds.RowOfLine(line) == row);
    line = folds.NextShown(line);
  }
  Check(line == buffer.LineCount());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  CCrystalTextBuffer buffer;
  Load(buffer, data, size);
  const std::shared_ptr<ParsedText> parsed = ParsedText::Of(buffer);
  LineStateCache& states = parsed->States();
  NameSet names;
  names.Insert("if");
  names.Insert("x");
  const WordClasses words({&names, nullptr, nullptr, &names});
  ColourAll(buffer, states, words);
  Check(parsed->Braces().Find(buffer.EndOfText(), kScriptCommentMarkers, int64_t{1} << 40).complete);

  CollapseAll(buffer, states);
  CheckRows(buffer, parsed->Folds());
  const TextPosition middle{buffer.LineCount() / 2, buffer.LineLength(buffer.LineCount() / 2) / 2};
  const std::string text(reinterpret_cast<const char*>(data), size < 20 ? size : 20);
  TextPosition end;
  buffer.InsertTextAt(nullptr, middle, text, end);
  ColourAll(buffer, states, words);
  CheckRows(buffer, parsed->Folds());
  buffer.DeleteRange(nullptr, {{middle.line / 2, 0}, middle});
  ColourAll(buffer, states, words);
  CheckRows(buffer, parsed->Folds());
  while (buffer.Undo(end)) ColourAll(buffer, states, words);
  CheckRows(buffer, parsed->Folds());
  Check(BytesOf(buffer) == std::string(reinterpret_cast<const char*>(data), size));
  return 0;
}
