#pragma once
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "text/buffer/CrystalTextBuffer.h"
#include "text/buffer/LineFlags.h"
#include "text/parse/ScriptColouring.h"

namespace quill {

/// A buffer that holds the given text; "\n" stands for a line end.
class ScriptText : public CCrystalTextBuffer {
 public:
  explicit ScriptText(std::string_view text = {}, LineFlagStore* store = nullptr)
      : CCrystalTextBuffer(store) {
    NewBuffer();
    if (!text.empty()) Insert({0, 0}, text);
  }
  TextPosition Insert(TextPosition at, std::string_view text) {
    std::string lines;
    for (const char c : text) lines += c == '\n' ? std::string("\r\n") : std::string(1, c);
    TextPosition end;
    InsertTextAt(nullptr, at, lines, end);
    return end;
  }
  /// One character a line: "{" block start, "}" block end; lower down "h" and "e" with the hidden flag,
  /// "." and "-" for the other lines.
  std::string Marks() const {
    std::string marks;
    for (int32_t i = 0; i < LineCount(); ++i) {
      const uint32_t flags = LineFlags(i);
      const bool hidden = (flags & line_flag::kHidden) != 0;
      const bool start = (flags & line_flag::kBlockStart) != 0;
      const bool end = (flags & line_flag::kBlockEnd) != 0;
      marks += start ? (hidden ? 'h' : '{') : end ? (hidden ? 'e' : '}') : (hidden ? '-' : '.');
    }
    return marks;
  }
  /// Parses all lines from the top and returns their start states, the one after the last line included.
  std::vector<uint32_t> ParseFromTop() {
    static const WordClasses kNoWords;
    std::vector<uint32_t> states{0};
    for (int32_t i = 0; i < LineCount(); ++i) {
      states.push_back(ColourLine(*this, kNoWords, states.back(), i, nullptr, nullptr));
    }
    return states;
  }
  std::vector<TextBlock> Blocks(int32_t line, uint32_t state, const WordClasses& words) {
    std::vector<TextBlock> blocks(static_cast<size_t>(MostBlocks(LineLength(line))));
    int32_t count = 0;
    ColourLine(*this, words, state, line, blocks.data(), &count);
    blocks.resize(static_cast<size_t>(count));
    return blocks;
  }
};

/// One letter a column for the colours of a line: what a person sees of its blocks.
inline std::string Letters(std::string_view line, const std::vector<TextBlock>& blocks) {
  static constexpr std::string_view kLetters = "??.???????KCFV/N?S#";
  std::string letters(line.size(), ' ');
  for (const TextBlock& block : blocks) {
    for (auto i = static_cast<size_t>(block.column); i < letters.size(); ++i) {
      letters[i] = kLetters[static_cast<size_t>(block.colour)];
    }
  }
  return letters;
}

/// Names that the tests' scripts use.
struct TestWords {
  NameSet keywords, commands, functions, variables;
  TestWords() {
    for (const char* word : {"function", "if", "else", "while", "return", "var", "string", "action"})
      keywords.Insert(word);
    for (const char* word : {"wait", "vec_set", "str_cpy", "player"}) commands.Insert(word);
    for (const char* word : {"lander_move", "x"}) functions.Insert(word);
    for (const char* word : {"speed", "wait", "gr\xFC\xDF", "sixteen_letters_", "more_than_sixteen_letters"})
      variables.Insert(word);
    classes.Refresh();
  }
  WordSets Sets() const { return {&keywords, &commands, &functions, &variables}; }

  WordClasses classes{Sets()};
};

/// Text of `length` pieces that lexers stumble over.
inline std::string RandomScript(std::mt19937& random, int length, bool lines) {
  static const std::vector<std::string> kPieces = {"/",
                                                   "*",
                                                   "//",
                                                   "/*",
                                                   "*/",
                                                   "\"",
                                                   "'",
                                                   "\\",
                                                   "#",
                                                   "{",
                                                   "}",
                                                   "(",
                                                   ")",
                                                   "<",
                                                   "if",
                                                   "x",
                                                   "wait",
                                                   " ",
                                                   "\t",
                                                   "0x1f",
                                                   "12",
                                                   "5e",
                                                   ".",
                                                   "+=",
                                                   "_a1",
                                                   "WhIlE",
                                                   "\xFC",
                                                   "\xA0",
                                                   "\x80",
                                                   "ifdef",
                                                   "endif",
                                                   "ifndef",
                                                   "speed",
                                                   "gr\xFC\xDF",
                                                   "Sixteen_letters_",
                                                   "more_than_sixteen_letters",
                                                   "GR\xDC\xDF"};
  std::string text;
  for (int i = 0; i < length; ++i) {
    if (lines && random() % 5 == 0) text += '\n';
    text += kPieces[random() % kPieces.size()];
  }
  return text;
}

}  // namespace quill
