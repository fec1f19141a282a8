#include "tools/manual/CodeHtml.h"

#include <vector>

#include "intel/vocabulary/CommandDatabase.h"
#include "intel/vocabulary/KeywordDatabase.h"
#include "text/buffer/CrystalTextBuffer.h"
#include "text/parse/ScriptColouring.h"

namespace quill::manual {
namespace {

std::string_view ClassOf(int32_t colour) {
  switch (colour) {
    case kColourKeyword:
      return "keyword";
    case kColourCommand:
      return "command";
    case kColourComment:
      return "comment";
    case kColourNumber:
      return "number";
    case kColourString:
      return "string";
    case kColourPreprocessor:
      return "directive";
    default:
      return {};
  }
}

std::string BlockHtml(std::string_view text, int32_t colour, const HelpLink& link) {
  std::string escaped = EscapeHtml(text);
  const std::string_view name = ClassOf(colour);
  if (name.empty()) return escaped;
  if (colour == kColourCommand) return "<a class=\"command\" href=\"" + link(text) + "\">" + escaped + "</a>";
  return "<span class=\"" + std::string(name) + "\">" + escaped + "</span>";
}

}  // namespace

std::string CodeHtml(std::string_view code, const Vocabulary& vocabulary, const HelpLink& link) {
  CCrystalTextBuffer buffer;
  buffer.NewBuffer();
  std::string lines;
  for (const char c : code) {
    if (c == '\n') lines += '\r';
    lines += c;
  }
  TextPosition end;
  buffer.InsertTextAt(nullptr, {0, 0}, lines, end);
  const WordClasses words({&vocabulary.keywords.ScriptKeywords(), &vocabulary.commands.Names()});

  std::string html;
  std::vector<TextBlock> blocks;
  uint32_t state = 0;
  for (int32_t i = 0; i < buffer.LineCount(); ++i) {
    const std::string_view line = buffer.Line(i);
    blocks.resize(static_cast<size_t>(MostBlocks(buffer.LineLength(i))));
    int32_t count = 0;
    state = ColourLine(buffer, words, state, i, blocks.data(), &count);
    for (int32_t b = 0; b < count; ++b) {
      const auto start = static_cast<size_t>(blocks[static_cast<size_t>(b)].column);
      const size_t stop =
          b + 1 < count ? static_cast<size_t>(blocks[static_cast<size_t>(b) + 1].column) : line.size();
      html += BlockHtml(line.substr(start, stop - start), blocks[static_cast<size_t>(b)].colour, link);
    }
    if (i + 1 < buffer.LineCount()) html += '\n';
  }
  return html;
}

std::string CodeBox(std::string_view codeHtml) {
  // A table, because the help viewer's rich text gives no other block an inner margin.
  return "<table class=\"code\" width=\"100%\" cellspacing=\"0\" cellpadding=\"8\"><tr><td><pre>" +
         std::string(codeHtml) + "</pre></td></tr></table>\n";
}

}  // namespace quill::manual
