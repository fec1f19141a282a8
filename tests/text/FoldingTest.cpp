#include "text/parse/Folding.h"

#include <gtest/gtest.h>

#include "support/ScriptText.h"
#include "text/buffer/LineFlagStore.h"
#include "text/parse/FoldMap.h"
#include "text/parse/LineStateCache.h"

namespace quill {
namespace {

struct CountingStore : LineFlagStore {
  std::vector<Word> ReadAll(const std::string&) override { return {}; }
  void Write(const std::string&, const std::vector<Word>& words) override {
    ++writes;
    lines += words.size();
  }
  int writes = 0;
  size_t lines = 0;
};

/// A view that keeps what a painting view keeps, and counts what it is told.
struct FoldView : BufferObserver {
  explicit FoldView(CCrystalTextBuffer& text) : buffer(text), states(text), map(text) {
    buffer.AddView(this);
  }
  ~FoldView() override { buffer.RemoveView(this); }
  void OnBufferUpdate(const BufferObserver*, const TextChange* change, uint32_t hints,
                      int32_t line) override {
    ++updates;
    states.OnTextChange(change, hints, line);
    map.OnTextChange(change, hints, line);
  }
  /// One character a line: "+" head of hidden lines, "_" hidden, "|" shown.
  std::string Shown() const {
    std::string shown;
    for (int32_t i = 0; i < buffer.LineCount(); ++i)
      shown += map.IsHidden(i) ? '_' : map.IsCollapsedHead(i) ? '+' : '|';
    return shown;
  }

  CCrystalTextBuffer& buffer;
  LineStateCache states;
  FoldMap map;
  int updates = 0;
};

std::string Print(const std::optional<LineRange>& block) {
  return block ? std::to_string(block->first) + "-" + std::to_string(block->last) : "none";
}

/// A script whose lines are the characters of `marks`: "{", "}", or others without a meaning.
std::string LinesOf(std::string_view marks) {
  std::string text;
  for (const char c : marks) text += std::string(text.empty() ? "" : "\n") + c;
  return text;
}

TEST(FindBlock, FindsTheInnermostBlockAroundALine) {
  const struct {
    const char* marks;
    int32_t line;
    const char* block;
  } kRows[] = {
      {"a{b}c", 0, "none"}, {"a{b}c", 1, "1-3"},  {"a{b}c", 2, "1-3"},  {"a{b}c", 3, "1-3"},
      {"a{b}c", 4, "none"}, {"{{a}}", 2, "1-3"},  {"{{a}b}", 4, "0-5"}, {"{{a}}", 4, "0-4"},
      {"{{a}}", 0, "0-4"},  {"{a}{b}", 3, "3-5"}, {"{a", 1, "none"},    {"a}", 1, "none"},
      {"}{a}", 2, "1-3"},   {"{a{b}", 1, "none"}, {"{a}}", 3, "none"},
  };
  for (const auto& row : kRows) {
    ScriptText script(LinesOf(row.marks));
    LineStateCache states(script);
    EXPECT_EQ(Print(FindBlock(script, row.line, &states)), row.block) << row.marks << " at " << row.line;
    EXPECT_EQ(Print(FindBlock(script, row.line)), row.block);
  }
}

TEST(ToggleFold, CollapsesExpandsAndRefuses) {
  ScriptText script("a\n{\nb\n}\nc");
  FoldView view(script);
  view.states.ParseAll();
  for (const auto& [first, last] : {std::pair{-1, 3}, {1, 5}, {3, 1}, {0, 3}, {1, 2}}) {
    EXPECT_FALSE(ToggleFold(script, first, last)) << first << "-" << last;
  }
  EXPECT_EQ(script.Marks(), ".{.}.");
  EXPECT_TRUE(ToggleFold(script, 1, 3));
  EXPECT_EQ(script.Marks(), ".h-e.");
  EXPECT_EQ(view.Shown(), "|+__|");
  EXPECT_TRUE(IsHeadOfCollapsed(script, 1));
  EXPECT_TRUE(ToggleFold(script, 1, 3));
  EXPECT_EQ(script.Marks(), ".{.}.");
  EXPECT_TRUE(view.map.IsIdentity());
}

TEST(CollapseAll, CollapsesOutermostBlocksInOneGoAndExpandAllUndoesIt) {
  CountingStore store;
  const std::string path = testing::TempDir() + "quill-collapse-all.vsl";
  {
    ScriptText script(LinesOf("}{{}a}{}b{"));
    ASSERT_TRUE(script.SaveFile(path));
  }
  CCrystalTextBuffer plain(&store);
  ASSERT_TRUE(plain.LoadFile(path));
  std::remove(path.c_str());
  FoldView view(plain);
  EXPECT_FALSE(ExpandAll(plain));
  EXPECT_EQ(view.updates, 0);
  EXPECT_TRUE(CollapseAll(plain, view.states));
  EXPECT_EQ(view.Shown(), "|+____+_||");
  EXPECT_EQ(view.updates, 2) << "the flags, and that lines moved";
  EXPECT_FALSE(CollapseAll(plain, view.states));
  EXPECT_TRUE(ExpandAll(plain));
  EXPECT_EQ(view.Shown(), "||||||||||");
  EXPECT_EQ(store.writes, 2);
  EXPECT_EQ(store.lines, 14u);
}

TEST(ColourLine, ExpandsACollapsedBlockWhoseHeadLosesItsMark) {
  const struct {
    const char* name;
    int32_t line;
    std::string_view insert;
    const char* marks;
    const char* shown;
  } kRows[] = {
      {"head in a comment", 1, "//", "..{.}}.", "|||||||"},
      {"comment over all of it", 0, "/*", ".......", "|||||||"},
      {"inner head stays hidden, the outer block ends sooner", 2, "//", ".h--ee.", "|+___||"},
  };
  for (const auto& row : kRows) {
    ScriptText script("a\n{\n{\nb\n}\n}\nc");
    FoldView view(script);
    view.states.ParseAll();
    ASSERT_TRUE(ToggleFold(script, 1, 5));
    script.Insert({row.line, 0}, row.insert);
    view.states.ParseAll();
    EXPECT_EQ(script.Marks(), row.marks) << row.name;
    EXPECT_EQ(view.Shown(), row.shown) << row.name;
  }
}

TEST(FoldMap, ShowsFlaggedLinesThatNothingAccountsFor) {
  ScriptText script(LinesOf("ab{c}d{e"));
  FoldView view(script);
  view.states.ParseAll();
  for (int32_t i = 1; i < 8; ++i) script.RestoreFlags(i, script.LineFlags(i) | line_flag::kHidden);
  view.map.Rebuild();
  EXPECT_EQ(view.Shown(), "||+__|+_");
}

/// The rows as a walk over all lines finds them.
std::vector<int32_t> SlowRows(const CCrystalTextBuffer& buffer) {
  std::vector<int32_t> shown;
  int32_t depth = 0;
  for (int32_t i = 0; i < buffer.LineCount(); ++i) {
    const uint32_t flags = buffer.LineFlags(i);
    if ((flags & line_flag::kHidden) == 0) depth = 0;
    if (depth == 0) shown.push_back(i);
    if ((flags & line_flag::kHidden) == 0) continue;
    if ((flags & line_flag::kBlockStart) != 0) ++depth;
    if ((flags & line_flag::kBlockEnd) != 0 && depth > 0) --depth;
  }
  return shown;
}

TEST(FoldMap, AgreesWithAWalkOverAllLinesAfterRandomEdits) {
  std::mt19937 random(5);
  for (int round = 0; round < 60; ++round) {
    std::string marks;
    for (int i = 0; i < 60; ++i) marks += "{}ab"[random() % 4];
    ScriptText script(LinesOf(marks));
    FoldView view(script);
    for (int step = 0; step < 60; ++step) {
      const auto line = static_cast<int32_t>(random() % static_cast<uint32_t>(script.LineCount()));
      TextPosition at;
      const uint32_t what = random() % 10;
      if (what < 4) {
        if (const auto block = FindBlock(script, line, &view.states))
          ToggleFold(script, block->first, block->last);
      } else if (what < 6) {
        script.Insert({line, static_cast<int32_t>(random() % 2) * script.LineLength(line)},
                      random() % 2 ? "\n{\n}\n" : "\n");
      } else if (what < 8) {
        const int32_t last = std::min(line + static_cast<int32_t>(random() % 4), script.LineCount() - 1);
        script.DeleteRange(nullptr, {{line, 0}, {last, script.LineLength(last)}});
      } else if (what == 8) {
        script.Undo(at);
      } else if (random() % 4 == 0) {
        random() % 2 == 0 ? CollapseAll(script, view.states) : ExpandAll(script);
      }
      if (random() % 2 == 0) view.states.ParseAll();
      const std::vector<int32_t> shown = SlowRows(script);
      const auto rows = static_cast<int32_t>(shown.size());
      ASSERT_EQ(view.map.RowCount(), rows) << script.Marks();
      for (int32_t row = 0; row < rows; ++row) {
        const int32_t first = shown[static_cast<size_t>(row)];
        const int32_t next = row + 1 < rows ? shown[static_cast<size_t>(row) + 1] : script.LineCount();
        ASSERT_EQ(view.map.LineOfRow(row), first) << script.Marks();
        ASSERT_EQ(view.map.IsCollapsedHead(first), next > first + 1);
        ASSERT_EQ(view.map.LastLineUnder(first), next - 1);
        ASSERT_EQ(view.map.PreviousShown(first), row == 0 ? -1 : shown[static_cast<size_t>(row) - 1]);
        for (int32_t i = first; i < next; ++i) {
          ASSERT_EQ(view.map.RowOfLine(i), row);
          ASSERT_EQ(view.map.ShownLine(i), first);
          ASSERT_EQ(view.map.IsHidden(i), i != first);
          ASSERT_EQ(view.map.NextShown(i), next);
        }
      }
    }
  }
}

}  // namespace
}  // namespace quill
