#include "text/parse/BraceIndex.h"

#include <gtest/gtest.h>

#include <tuple>

#include "support/PlainBraceWalk.h"
#include "support/ScriptText.h"
#include "text/parse/ParsedText.h"

namespace quill {
namespace {

constexpr int64_t kNoLimit = int64_t{1} << 40;

TEST(BraceIndex, WalksBackwardsPastCommentsAndPairs) {
  const CommentMarkers kWords{"BEGIN", "Done", "rem"};
  const struct {
    const char* name;
    std::string_view text;  ///< "^" marks the caret, "@" the match in front of its character
    const CommentMarkers& markers;
  } kRows[] = {
      {"same line", "a@(b, c^", kScriptCommentMarkers},
      {"right behind", "@{^}", kScriptCommentMarkers},
      {"pairs between, of any kind", "@[ (x) {y} <^", kScriptCommentMarkers},
      {"kinds are not told apart", "@( [ x } ^ ( )", kScriptCommentMarkers},
      {"lines above", "if @{\n(x)\n\n  ^", kScriptCommentMarkers},
      {"none", "a) b^ (", kScriptCommentMarkers},
      {"block comment between", "@( /* ( } */ ^", kScriptCommentMarkers},
      {"comment over lines", "@(\n/* (\n( */\n^", kScriptCommentMarkers},
      {"inside a comment", "( /* @( x^ */", kScriptCommentMarkers},
      {"out of a comment nothing counts", "( /* x^ */", kScriptCommentMarkers},
      {"opener and closer share the star", "@( /*/ ^", kScriptCommentMarkers},
      {"a line comment ends its line's walk", "@(\n{ // x ^", kScriptCommentMarkers},
      {"what was met behind its marker counts", "{\n( // @( ^", kScriptCommentMarkers},
      {"markers in any case", "@( begin ( dONE ^", kWords},
      {"line marker in any case", "@(\n{ REM ^", kWords},
  };
  for (const auto& row : kRows) {
    std::string text;
    std::optional<TextPosition> match;
    TextPosition caret, here;
    for (const char c : row.text) {
      if (c == '^') caret = here;
      if (c == '@') match = here;
      if (c == '^' || c == '@') continue;
      text += c;
      here = c == '\n' ? TextPosition{here.line + 1, 0} : TextPosition{here.line, here.character + 1};
    }
    const ScriptText script(text);
    for (const auto& [lines, heavy, part] : {std::tuple{512, 1 << 16, 8192}, {1, 2, 1}}) {
      BraceIndex index(script, {lines, heavy, part});
      EXPECT_EQ(index.Find(caret, row.markers, kNoLimit).match, match) << row.name;
    }
    EXPECT_EQ(PlainBraceWalk(script, caret, row.markers), match) << row.name;
  }
}

TEST(BraceIndex, GetsFurtherWithEachSearchAndThenKnows) {
  std::string text = "{\n";
  for (int i = 0; i < 5000; ++i) text += "call( [1] ); // ()\n/* { */\n";
  ScriptText script(text);
  const std::shared_ptr<ParsedText> parsed = ParsedText::Of(script);
  const auto searches = [&](TextPosition from, int64_t mostCharacters) {
    for (int count = 1; count < 1000; ++count) {
      const auto answer = parsed->Braces().Find(from, kScriptCommentMarkers, mostCharacters);
      EXPECT_EQ(answer.match, answer.complete ? std::optional(TextPosition{0, 0}) : std::nullopt);
      if (answer.complete) return count;
    }
    return 1000;
  };
  const int first = searches(script.EndOfText(), 10'000);
  EXPECT_GT(first, 5);
  EXPECT_LT(first, 30);
  EXPECT_EQ(searches(script.EndOfText(), 0), 1);
  EXPECT_EQ(searches({6999, 3}, 0), 1);
  script.Insert({6000, 0}, "x\n");
  EXPECT_FALSE(parsed->Braces().Find(script.EndOfText(), kScriptCommentMarkers, 0).complete);
  EXPECT_EQ(searches(script.EndOfText(), 1), 1) << "only the edited group is walked anew";
}

/// Text in which comments begin and end oddly, with few and with many line ends.
std::string BraceText(std::mt19937& random, int length, bool lines) {
  static const char* const kPieces[] = {"{", "}", "(", ")", "[", "]", "{", "(", "/*",  "*/",
                                        "/", "*", "x", " ", "a", "b", "y", "z", "//",  "\n",
                                        "x", "x", "x", "x", "x", "x", "x", "x", "rem", "BEG"};
  std::string text;
  for (int i = 0; i < length; ++i) {
    const std::string_view piece = kPieces[random() % std::size(kPieces)];
    if (piece != "\n" || lines || random() % 20 == 0) text += piece;
  }
  return text;
}

TEST(BraceIndex, AgreesWithThePlainWalkAfterRandomEdits) {
  std::mt19937 random(17);
  const CommentMarkers kWords{"beg", "end", "rem"};
  for (int round = 0; round < 250; ++round) {
    const bool lines = round % 2 == 0;
    ScriptText script(BraceText(random, 300, lines));
    const auto part = 1 + static_cast<int32_t>(random() % 12);
    BraceIndex index(script, {1 + static_cast<int32_t>(random() % 6), part + 20, part});
    const CommentMarkers& markers = round % 5 == 0 ? kWords : kScriptCommentMarkers;
    struct Watch : BufferObserver {
      explicit Watch(BraceIndex& braces) : told(braces) {}
      void OnBufferUpdate(const BufferObserver*, const TextChange* change, uint32_t hints,
                          int32_t line) override {
        told.OnTextChange(change, hints, line);
      }
      BraceIndex& told;
    } watch(index);
    script.AddView(&watch);
    const auto place = [&] {
      const auto line = static_cast<int32_t>(random() % static_cast<uint32_t>(script.LineCount()));
      return TextPosition{
          line, static_cast<int32_t>(random() % (static_cast<uint32_t>(script.LineLength(line)) + 1))};
    };
    for (int step = 0; step < 40; ++step) {
      TextPosition at = place();
      const uint32_t what = random() % 10;
      if (what == 0) {
        script.Undo(at);
      } else if (what == 1) {
        script.Redo(at);
      } else if (what == 2) {
        script.DeleteRange(nullptr, TextRange::Between(at, place()));
      } else if (what < 6) {
        TextPosition end = at;
        end.character =
            std::min(at.character + static_cast<int32_t>(random() % 30), script.LineLength(at.line));
        script.DeleteRange(nullptr, {at, end});
      } else if (what < 9) {
        script.Insert(at, BraceText(random, static_cast<int>(random() % 60), lines));
      } else {
        script.NewBuffer(0, BraceText(random, 300, lines));
      }
      for (int search = 0; search < 4; ++search) {
        const TextPosition from = search == 0 ? script.EndOfText() : place();
        BraceIndex::Answer answer;
        for (int tries = 0; !(answer = index.Find(from, markers, 1 + random() % 50)).complete; ++tries)
          ASSERT_LT(tries, 3000) << "no progress in round " << round;
        ASSERT_EQ(answer.match, PlainBraceWalk(script, from, markers))
            << "round " << round << " step " << step;
      }
    }
    script.RemoveView(&watch);
  }
}

}  // namespace
}  // namespace quill
