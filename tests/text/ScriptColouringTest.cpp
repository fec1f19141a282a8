#include "text/parse/ScriptColouring.h"

#include <gtest/gtest.h>

#include <optional>

#include "base/CodePage1252.h"
#include "support/ScriptText.h"
#include "text/buffer/TextCopy.h"
#include "text/parse/ColourTable.h"
#include "text/parse/LongLine.h"
#include "text/parse/RowColours.h"

namespace quill {
namespace {

using namespace parse_state;

/// The rules of the parser, one character at a time and with nothing left out: slow, and easy to follow.
class SlowParser {
 public:
  SlowParser(std::string_view line, uint32_t state, const WordSets& words)
      : t(line), s(state), m_words(words) {}

  uint32_t Parse() {
    const int n = static_cast<int>(t.size());
    bool first = (s & ~kBlockComment) == 0;
    if (n == 0) return s;
    for (i = 0;; ++i) {
      if (redefine) Add(stepBack ? i - 1 : i, StateColour());
      redefine = stepBack = false;
      if (i == n || (s & kLineComment) != 0) break;
      const char c = t[static_cast<size_t>(i)];
      const char before = i > 0 ? t[static_cast<size_t>(i) - 1] : '\0';
      if ((s & kString) != 0) {
        Close(kString, c == '"');
      } else if ((s & kCharLiteral) != 0) {
        Close(kCharLiteral, c == '\'' && before != '\\');
      } else if ((s & kBlockComment) != 0) {
        Close(kBlockComment, c == '/' && before == '*');
      } else if (c == '/' && before == '/') {
        Add(i - 1, kColourComment);
        s |= kLineComment;
        break;
      } else {
        Code(c, before, first);
      }
    }
    if (word >= 0) EndWord();
    return s & kAcrossLines;
  }

  std::vector<TextBlock> blocks;
  bool open = false, close = false;

 private:
  void Code(char c, char before, bool& first) {
    open |= c == '{';
    close |= c == '}';
    const bool comment = c == '*' && before == '/';
    if (comment) Add(i - 1, kColourComment);
    if ((s & kPreprocessor) == 0) {
      if (c == '"' || c == '\'') {
        Add(i, kColourString);
        s |= c == '"' ? kString : kCharLiteral;
      }
      if (first && c == '#') {
        Add(i, kColourPreprocessor);
        s |= kPreprocessor;
      }
      first = first && cp1252::IsSpace(c);
      if (cp1252::IsWordChar(c)) {
        if (word < 0) word = i;
      } else if (word >= 0) {
        EndWord();
        redefine = stepBack = true;
      }
      if (std::string_view("[<({>)}]").find(c) != std::string_view::npos) {
        Add(i, kColourText);
        Add(i + 1, kColourText);
      }
    }
    if (comment) s |= kBlockComment;
  }

  void Close(uint32_t bit, bool ends) {
    if (!ends) return;
    s &= ~bit;
    redefine = true;
  }

  void EndWord() {
    const std::string_view name = t.substr(static_cast<size_t>(word), static_cast<size_t>(i - word));
    const std::string lower = cp1252::ToLower(name);
    int32_t colour = IsNumber(name) ? kColourNumber : -1;
    if (m_words.variables->Contains(lower)) colour = kColourVariable;
    if (m_words.functions->Contains(lower)) colour = kColourFunction;
    if (m_words.commands->Contains(lower)) colour = kColourCommand;
    if (m_words.keywords->Contains(lower)) colour = kColourKeyword;
    if (colour >= 0) Add(word, colour);
    word = -1;
  }

  int32_t StateColour() const {
    if ((s & (kLineComment | kBlockComment)) != 0) return kColourComment;
    if ((s & (kString | kCharLiteral)) != 0) return kColourString;
    return (s & kPreprocessor) != 0 ? kColourPreprocessor : kColourText;
  }

  void Add(int32_t column, int32_t colour) {
    if (!blocks.empty() && blocks.back().column > column) return;
    if (!blocks.empty() && blocks.back().column == column) blocks.pop_back();  // it would cover nothing
    blocks.push_back({column, colour});
  }

  std::string_view t;
  uint32_t s;
  WordSets m_words;
  int32_t i = 0, word = -1;
  bool redefine = true, stepBack = false;
};

std::string Print(const std::vector<TextBlock>& blocks) {
  std::string text;
  for (const TextBlock& b : blocks) text += std::to_string(b.column) + ":" + std::to_string(b.colour) + " ";
  return text;
}

TEST(ColourLine, DrawsEachColumnAsTheRulesAsk) {
  const struct {
    const char* name;
    uint32_t state;
    std::string_view line;
    const char* colours;
    uint32_t after;
  } kRows[] = {
      {"classes, first match wins", 0, "if wait(x, speed)", "KK.CCCC.F..VVVVV.", 0},
      {"any case", 0, "IF Wait GR\xDC\xDF", "KK.CCCC.VVVV", 0},
      {"maximal words", 0, "if2 _if a.x", "..........F", 0},
      {"numbers", 0, "0x1F 12 0x 1a 5e 0X1F 1.5", "NNNN.NN.......NN......N.N", 0},
      {"a double quote ends a string always", 0, R"("a\"x " if)", "SSSSF.SSSS", kString},
      {"a character literal knows the backslash", 0, R"('\'' if)", "SSSS.KK", 0},
      {"a character literal ends with its line", 0, "'if", "SSS", 0},
      {"a string goes on", kString, "if\" if", "SSS.KK", 0},
      {"a comment goes on", kBlockComment, "if */ if", "/////.KK", 0},
      {"opener and closer share the star", 0, "/*/if", "///KK", 0},
      {"no slash from the line above", kBlockComment, "/ if", "////", kBlockComment},
      {"line comment", 0, "x // if /*", "F.////////", 0},
      {"comment behind a comment stays as it was", 0, "/**/*if", "////...", kBlockComment},
      {"slash behind a comment opens a line comment", 0, "/**// if {", "////......", 0},
      {"preprocessor line", 0, "\t # if \"a\" 'b' 12",
       ".."
       "###############",
       0},
      {"comments in it", 0, "#x /* y */ if // k", "###///////####////", 0},
      {"# after text", 0, "x # if", "F...KK", 0},
      {"# after a string", 0, "\"\" # if", "SS...KK", 0},
      {"# after a comment of the line", 0, "/**/ # if", "////...KK", 0},
      {"# after a comment from above", kBlockComment, "*/ # if", "//.####", 0},
      {"# after a no-break space", 0, "\xA0# if", ".####", 0},
      {"a word right before a quote", 0, "if\"a\"if'b'if", "..SSS..SSSKK", 0},
      {"brackets", 0, "if(if)<[{", "KK.KK....", 0},
      {"incoming line comment", kLineComment, "if", "//", 0},
      {"empty lines hand their state on", kPreprocessor | kString, "", "", kPreprocessor | kString},
  };
  const TestWords words;
  for (const auto& row : kRows) {
    ScriptText script(row.line);
    EXPECT_EQ(Letters(row.line, script.Blocks(0, row.state, words.classes)), row.colours) << row.name;
    EXPECT_EQ(ColourLine(script, words.classes, row.state, 0, nullptr, nullptr), row.after) << row.name;
  }
}

TEST(ColourLine, GivesEachBracketABlockOfItsOwnAndAppendsOnlyInOrder) {
  const TestWords words;
  ScriptText script("((x");
  EXPECT_EQ(Print(script.Blocks(0, 0, words.classes)), "0:2 1:2 2:12 ");
  TextBlock blocks[8] = {{2, kColourString}};
  int32_t count = 1;
  ColourLine(script, words.classes, 0, 0, blocks, &count);
  EXPECT_EQ(Print({blocks, blocks + count}), "2:12 ") << "what lies before the last block is dropped";
}

TEST(ColourLine, MarksLinesThatOpenOrCloseABlock) {
  const struct {
    std::string_view line;
    const char* mark;
  } kRows[] = {
      {"if(x) {", "{"}, {"}", "}"},        {"} else {", "."}, {"{ }", "."},       {"// {", "."},
      {"{ // }", "{"},  {"\"{\"", "."},    {"'{'", "."},      {"/* { */ }", "}"}, {"#define A {", "{"},
      {"ifdef X", "{"}, {"ifndef X", "{"}, {" ifdef X", "."}, {"Ifdef X", "."},   {"endif", "}"},
      {"endif {", "{"}, {"ifdef }", "{"},  {"ifde", "."},     {"", "."},          {"ifndefx", "{"},
  };
  for (const auto& row : kRows) {
    for (const uint32_t before : {0u, line_flag::kBlockStart, line_flag::kBlockEnd}) {
      ScriptText script(row.line);
      script.RestoreFlags(0, before | line_flag::kBookmark);
      ColourLine(script, {}, 0, 0, nullptr, nullptr);
      EXPECT_EQ(script.Marks(), row.mark) << row.line;
      EXPECT_TRUE(script.LineFlags(0) & line_flag::kBookmark);
    }
  }
}

TEST(ColourLine, AgreesWithTheSlowParserOnRandomLines) {
  std::mt19937 random(12);
  const TestWords words;
  for (int round = 0; round < 20000; ++round) {
    const std::string line =
        RandomScript(random, static_cast<int>(random() % (round % 4 == 0 ? 120 : 30)), false);
    const uint32_t state = random() % 4 == 0 ? random() % 32 : random() % 2 * kBlockComment;
    SlowParser slow(line, state, words.Sets());
    const uint32_t after = slow.Parse();
    ScriptText script(line);
    EXPECT_EQ(ColourLine(script, words.classes, state, 0, nullptr, nullptr), after)
        << line << " from " << state;
    const std::string marks = script.Marks();
    ASSERT_EQ(Print(script.Blocks(0, state, words.classes)), Print(slow.blocks)) << line << " from " << state;
    ASSERT_EQ(script.Marks(), marks) << line << ": walks with and without blocks differ";
    if (slow.open != slow.close) {
      ASSERT_EQ(marks, slow.open                                                 ? "{"
                       : line.starts_with("ifdef") || line.starts_with("ifndef") ? "{"
                                                                                 : "}")
          << line;
    }
  }
}

TEST(LongLine, ColoursAPartAsTheWholeLineWould) {
  std::mt19937 random(7);
  const TestWords words;
  ScriptText script(RandomScript(random, 1500, false) + std::string(300, ' ') + std::string(300, 'x') +
                    "#\"");
  LongLine part(script, 23);
  for (int round = 0; round < 2000; ++round) {
    const uint32_t state = round / 200 % 3 * kBlockComment;  // none, comment, string
    if (round % 8 == 7) {
      const TextPosition at{0, static_cast<int32_t>(random() % static_cast<uint32_t>(script.LineLength(0)))};
      const TextPosition end = script.Insert(at, RandomScript(random, 3, false));
      const TextChange change{true, {at, end}};
      part.OnTextChange(&change, hint::kLineChanged, 0);
    }
    const std::string_view line = script.Line(0);
    const std::string whole = Letters(line, script.Blocks(0, state, words.classes));
    const auto from = static_cast<int32_t>(random() % line.size());
    const int32_t to =
        std::min(from + static_cast<int32_t>(random() % 40), static_cast<int32_t>(line.size()));
    const std::string seen = Letters(line, part.Blocks(words.classes, 0, state, from, to));
    const auto first = static_cast<size_t>(from), length = static_cast<size_t>(to - from);
    ASSERT_EQ(seen.substr(first, length), whole.substr(first, length)) << from << " in round " << round;
  }
}

TEST(LongLine, AWordBeyondTheLongestIsPlainWhereverThePartBegins) {
  const TestWords words;
  for (const int32_t length : {kLongestWord - 1, kLongestWord, kLongestWord + 1, 3 * kLongestWord}) {
    for (const char* behind : {";12", "\"12", " if", ""}) {
      ScriptText script("if " + std::string(static_cast<size_t>(length), '1') + behind);
      const std::string_view line = script.Line(0);
      const std::string whole = Letters(line, script.Blocks(0, 0, words.classes));
      const char expected = length <= kLongestWord && *behind != '"' ? 'N' : '.';
      EXPECT_EQ(whole.substr(3, static_cast<size_t>(length)),
                std::string(static_cast<size_t>(length), expected));
      LongLine part(script);
      const int32_t wordEnd = length + 3;
      for (const int32_t from :
           {0, 3, 4, 100, wordEnd / 2, wordEnd - 70, wordEnd - 3, wordEnd - 1, wordEnd}) {
        const int32_t to = std::min(from + 40, static_cast<int32_t>(line.size()));
        const std::string seen = Letters(line, part.Blocks(words.classes, 0, 0, from, to));
        const auto first = static_cast<size_t>(from), count = static_cast<size_t>(to - from);
        EXPECT_EQ(seen.substr(first, count), whole.substr(first, count))
            << length << behind << " from " << from;
      }
    }
  }
}

TEST(RowColours, PiecesOfACopyLookLikeTheLinesThatWereCopied) {
  std::mt19937 random(9);
  for (int round = 0; round < 60; ++round) {
    TestWords words;
    ScriptText script(RandomScript(random, 500, true) + "\n" + std::string(300, round % 2 == 0 ? '1' : 'x') +
                      ";" + RandomScript(random, 300, false));
    const std::vector<uint32_t> states = script.ParseFromTop();
    std::vector<std::string> whole;
    for (int32_t line = 0; line < script.LineCount(); ++line) {
      const auto at = static_cast<size_t>(line);
      whole.push_back(Letters(script.Line(line), script.Blocks(line, states[at], words.classes)));
    }
    const TextCopy copy(script);
    const WordClassesCopy known(words.classes);
    RowColours colours(copy, known.Get());
    script.NewBuffer();
    words.variables.Clear();
    words.classes.Refresh();
    for (int32_t line = 0; line < copy.LineCount(); ++line) {
      if (random() % 6 == 0) continue;
      const std::string_view text = copy.Line(line);
      int32_t end = 0;
      for (int32_t start = 0; start < copy.LineLength(line); start = end) {
        end = std::min(start + 1 + static_cast<int32_t>(random() % 40), copy.LineLength(line));
        const auto blocks = colours.Blocks(line, start, end);
        const std::string seen = Letters(text, {blocks.begin(), blocks.end()});
        const auto first = static_cast<size_t>(start), length = static_cast<size_t>(end - start);
        ASSERT_EQ(seen.substr(first, length), whole[static_cast<size_t>(line)].substr(first, length))
            << "line " << line << " from " << start << " in round " << round;
      }
    }
  }
}

TEST(ColourTable, ReadsColoursAndSwitchesOrFallsBackToDefaults) {
  const ColourReader reader{[](const ColourSetting& setting, const DesktopColours& desktop) {
                              return setting.name == "BackColor" ? 0xFF112233u : setting.Fallback(desktop);
                            },
                            [](const FlagSetting& setting) { return setting.name == "FuncBold"; }};
  ColourTable table;
  EXPECT_FALSE(table.AnyBold());
  table.Load(reader, {0xAAAAAA, 0xBBBBBB});
  std::string seen;
  for (int32_t index = 0; index < kColourIndexLimit; ++index) {
    char text[40];
    std::snprintf(text, sizeof text, "%d=%06X%s%s ", index, table.ColourOf(index),
                  table.IsBold(index) ? "b" : "", table.IsDefault(index) ? "" : "!");
    seen += text;
  }
  EXPECT_EQ(seen,
            "0=112233! 1=112233! 2=000000 3=000000 4=808080 5=000000 6=BBBBBB 7=C56A31 8=FFFFFF 9=808080 "
            "10=FF0000 11=000088 12=515151b 13=515151 14=008000 15=A000A0 16=000000 17=686868 18=C08000 "
            "19=000000 20=000000 21=000000 22=000000 23=000000 24=000000 25=00FFFF ");
  EXPECT_EQ(table.ColourOf(-1), 0u);
  EXPECT_EQ(table.ColourOf(kColourIndexLimit), 0u);
}

}  // namespace
}  // namespace quill
