// How assistive technology counts and reads a text: offsets, characters, words and lines.
#include <gtest/gtest.h>

#include "support/ScriptText.h"
#include "text/view/OffsetIndex.h"
#include "text/view/TextUnit.h"

namespace quill {
namespace {

/// Hands the buffer's changes on to an index.
struct Feeder : BufferObserver {
  explicit Feeder(OffsetIndex& to) : index(to) {}
  void OnBufferUpdate(const BufferObserver*, const TextChange* change, uint32_t, int32_t) override {
    if (change != nullptr) index.OnTextChange(*change);
  }
  OffsetIndex& index;
};

TEST(OffsetIndex, FollowsEditsAndUndoLikeACountFromTheTop) {
  std::mt19937 random(11);
  ScriptText script(RandomScript(random, 300, true));
  OffsetIndex index(script, 4);
  Feeder feeder(index);
  script.AddView(&feeder);
  const auto anywhere = [&] {
    const auto line = static_cast<int32_t>(random() % static_cast<uint32_t>(script.LineCount()));
    return TextPosition{line,
                        static_cast<int32_t>(random() % static_cast<uint32_t>(script.LineLength(line) + 1))};
  };
  for (int round = 0; round < 400; ++round) {
    TextPosition place = anywhere();
    if (random() % 5 == 0) {
      script.Undo(place);
    } else if (random() % 2 == 0) {
      script.Insert(place, RandomScript(random, static_cast<int>(random() % 30), random() % 2 == 0));
    } else {
      const TextPosition other = round % 40 == 0 ? script.EndOfText() : anywhere();
      script.DeleteRange(nullptr, TextRange::Between(place, other));
    }
    int64_t offset = 0;
    for (int32_t line = 0; line < script.LineCount(); ++line) {
      for (int32_t i = 0; i <= script.LineLength(line); ++i, ++offset) {
        ASSERT_EQ(index.OffsetOf({line, i}), offset) << "round " << round;
        ASSERT_EQ(index.PositionAt(offset), (TextPosition{line, i})) << "round " << round;
      }
    }
    ASSERT_EQ(index.Length(), offset - 1);
    EXPECT_EQ(index.PositionAt(offset + 5), script.EndOfText());
    EXPECT_EQ(index.PositionAt(-1), TextPosition{});
  }
  script.RemoveView(&feeder);
}

/// "before|at|after" with line ends as "$"; "-" for none.
std::string Around(const ScriptText& script, TextPosition at, TextUnit unit) {
  const auto told = [&](const std::optional<TextRange>& range) {
    std::string text = "-";
    if (range) script.CopyRange(*range, text, "$");
    return text;
  };
  return told(UnitBefore(script, at, unit)) + '|' + told(UnitAt(script, at, unit)) + '|' +
         told(UnitAfter(script, at, unit));
}

TEST(TextUnit, WordsAndLinesFollowOneAnotherWithoutAGap) {
  const ScriptText script("ab  c_1;;\n\n\tend\n");
  const struct {
    TextPosition at;
    const char* character;
    const char* word;
    const char* line;
  } rows[] = {{{0, 0}, "-|a|b", "-|ab|  ", "-|ab  c_1;;$|$"},
              {{0, 2}, "b| | ", "ab|  |c_1", "-|ab  c_1;;$|$"},
              {{0, 8}, ";|;|$", "c_1|;;|$", "-|ab  c_1;;$|$"},
              {{0, 9}, ";|$|$", ";;|$|$", "-|ab  c_1;;$|$"},
              {{1, 0}, "$|$|\t", "$|$|\t", "ab  c_1;;$|$|\tend$"},
              {{2, 4}, "d|$|-", "end|$|-", "$|\tend$|"},
              {{3, 0}, "$||-", "$||-", "\tend$||-"}};
  for (const auto& row : rows) {
    EXPECT_EQ(Around(script, row.at, TextUnit::kCharacter), row.character);
    EXPECT_EQ(Around(script, row.at, TextUnit::kWord), row.word);
    EXPECT_EQ(Around(script, row.at, TextUnit::kLine), row.line);
  }
  EXPECT_EQ(Around(script, {1, 0}, TextUnit::kText), "-|ab  c_1;;$$\tend$|-");
}

}  // namespace
}  // namespace quill
