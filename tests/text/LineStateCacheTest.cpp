#include "text/parse/LineStateCache.h"

#include <gtest/gtest.h>

#include "support/ScriptText.h"
#include "text/parse/ParsedText.h"

namespace quill {
namespace {

/// A view that gathers what the parses tell it.
struct StateView : BufferObserver, ParseListener {
  explicit StateView(CCrystalTextBuffer& text)
      : buffer(text), parsed(ParsedText::Of(text)), states(parsed->States()), depths(text, states, 5) {
    buffer.AddView(this);
    states.AddListener(this);
  }
  ~StateView() override {
    states.RemoveListener(this);
    buffer.RemoveView(this);
  }
  void OnBufferUpdate(const BufferObserver*, const TextChange* change, uint32_t hints,
                      int32_t line) override {
    linesMoved = linesMoved || (hints & hint::kVerticalRange) != 0;
    depths.OnTextChange(change, hints, line);
  }
  void OnReparsed(std::optional<LineRange> lines, bool marks) override {
    if (lines) changed.Add(lines->first, lines->last);
    marksChanged = marksChanged || marks;
  }
  LineRange TakeChanged() {
    const LineRange lines = changed.IsEmpty() ? LineRange{0, -1} : changed.Range();
    changed.Clear();
    return lines;
  }

  CCrystalTextBuffer& buffer;
  std::shared_ptr<ParsedText> parsed;
  LineStateCache& states;
  FoldDepthIndex depths;
  TouchedLines changed;
  bool marksChanged = false;
  bool linesMoved = false;
};

std::string Changed(StateView& view) {
  const LineRange lines = view.TakeChanged();
  return lines.last < 0 ? "none" : std::to_string(lines.first) + "-" + std::to_string(lines.last);
}

TEST(LineStateCache, ReparsesOnlyUntilTheStatesAgreeAgain) {
  ScriptText script("a\nb\n/*\nc\n*/\nd\n{");
  StateView view(script);
  EXPECT_EQ(view.states.StateAt(7), 0u);
  EXPECT_EQ(Changed(view), "none");
  view.marksChanged = false;

  script.Insert({0, 1}, "/*");
  EXPECT_EQ(view.states.StateAt(2), parse_state::kBlockComment);
  EXPECT_EQ(Changed(view), "1-2") << "no further than asked";
  EXPECT_EQ(view.states.StateAt(7), 0u);
  EXPECT_EQ(Changed(view), "none") << "line 3 was in a comment before";
  EXPECT_FALSE(view.marksChanged);

  script.Insert({0, 3}, "x\ny");
  script.DeleteRange(nullptr, {{5, 0}, {6, 0}});  // the closer
  view.states.ParseAll();
  EXPECT_EQ(Changed(view), "6-6");
  EXPECT_TRUE(std::exchange(view.marksChanged, false)) << "the brace lies in the comment now";
  view.states.ParseAll();
  EXPECT_FALSE(view.marksChanged);
  script.NewBuffer();
  EXPECT_EQ(view.states.StateAt(1), 0u);
  EXPECT_THROW(view.states.StateAt(2), std::invalid_argument);
}

/// One random edit, undo or redo.
void Disturb(ScriptText& script, std::mt19937& random) {
  const auto place = [&] {
    const auto line = static_cast<int32_t>(random() % static_cast<uint32_t>(script.LineCount()));
    return TextPosition{
        line, static_cast<int32_t>(random() % (static_cast<uint32_t>(script.LineLength(line)) + 1))};
  };
  TextPosition at;
  switch (random() % 8) {
    case 0:
      script.Undo(at);
      break;
    case 1:
      script.Redo(at);
      break;
    case 2:
    case 3: {
      const TextPosition start = place();
      const int32_t line = std::min(start.line + static_cast<int32_t>(random() % 6), script.LineCount() - 1);
      script.DeleteRange(nullptr, TextRange::Between(start, {line, script.LineLength(line)}));
      break;
    }
    default:
      script.Insert(place(), RandomScript(random, 1 + static_cast<int32_t>(random() % 8), true));
  }
}

TEST(LineStateCache, AgreesWithAParseFromTheTopAfterRandomEdits) {
  std::mt19937 random(3);
  for (int round = 0; round < 300; ++round) {
    ScriptText script(RandomScript(random, 200, true));
    StateView view(script);
    for (int step = 0; step < 8; ++step) {
      std::vector<uint32_t> before;
      before.reserve(static_cast<size_t>(script.LineCount()));
      for (int32_t i = 0; i < script.LineCount(); ++i) before.push_back(view.states.StateAt(i));
      view.TakeChanged();
      view.linesMoved = false;
      for (uint32_t edits = random() % 4; edits != 0; --edits) Disturb(script, random);
      view.states.StateAt(static_cast<int32_t>(random() % static_cast<uint32_t>(script.LineCount())));
      view.states.ParseAll();
      const LineRange changed = view.TakeChanged();

      std::string text;
      script.CopyRange({{0, 0}, script.EndOfText()}, text, "\n");
      ScriptText fresh(text);
      const std::vector<uint32_t> states = fresh.ParseFromTop();
      int32_t depth = 0;
      for (int32_t i = 0; i < script.LineCount(); ++i) {
        const auto line = static_cast<size_t>(i);
        ASSERT_EQ(view.states.StateAt(i), states[line]) << "line " << i << " in round " << round;
        ASSERT_EQ(view.depths.DepthBefore(i), depth);
        depth = FoldDepthIndex::DepthAfter(fresh.LineFlags(i), depth);
        if (!view.linesMoved && before[line] != states[line]) {
          ASSERT_TRUE(i >= changed.first && i <= changed.last) << "line " << i << " in round " << round;
        }
      }
      ASSERT_EQ(script.Marks(), fresh.Marks()) << "round " << round;
    }
  }
}

}  // namespace
}  // namespace quill
