#include "text/parse/Folding.h"

#include <gtest/gtest.h>

#include "support/ScriptText.h"
#include "text/buffer/LineFlagStore.h"
#include "text/parse/ParsedText.h"
#include "text/view/TextViewModel.h"

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

/// What views show of a text, and how often they are told something.
struct FoldView : BufferObserver {
  explicit FoldView(CCrystalTextBuffer& text)
      : buffer(text), parsed(ParsedText::Of(text)), states(parsed->States()), map(parsed->Folds()) {
    buffer.AddView(this);
  }
  ~FoldView() override { buffer.RemoveView(this); }
  void OnBufferUpdate(const BufferObserver*, const TextChange*, uint32_t, int32_t) override { ++updates; }
  /// One character a line: "+" head of hidden lines, "_" hidden, "|" shown.
  std::string Shown() const {
    std::string shown;
    for (int32_t i = 0; i < buffer.LineCount(); ++i)
      shown += map.IsHidden(i) ? '_' : map.IsCollapsedHead(i) ? '+' : '|';
    return shown;
  }

  CCrystalTextBuffer& buffer;
  std::shared_ptr<ParsedText> parsed;
  LineStateCache& states;
  const FoldMap& map;
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
    ParsedText parsed(script);
    EXPECT_EQ(Print(FindBlock(script, row.line, &parsed.States())), row.block)
        << row.marks << " at " << row.line;
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
      {"inner head stays hidden, the outer block ends sooner", 2, "//", ".h--e}.", "|+___||"},
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
  script.NotifyViews(nullptr, nullptr, hint::kFlagsOnly, -1);
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

/// The rows of a map are those that a walk over all lines finds.
void CheckRows(const FoldMap& map, const ScriptText& script) {
  const std::vector<int32_t> shown = SlowRows(script);
  const auto rows = static_cast<int32_t>(shown.size());
  ASSERT_EQ(map.RowCount(), rows) << script.Marks();
  for (int32_t row = 0; row < rows; ++row) {
    const int32_t first = shown[static_cast<size_t>(row)];
    const int32_t next = row + 1 < rows ? shown[static_cast<size_t>(row) + 1] : script.LineCount();
    ASSERT_EQ(map.LineOfRow(row), first) << script.Marks();
    ASSERT_EQ(map.IsCollapsedHead(first), next > first + 1);
    ASSERT_EQ(map.LastLineUnder(first), next - 1);
    ASSERT_EQ(map.PreviousShown(first), row == 0 ? -1 : shown[static_cast<size_t>(row) - 1]);
    for (int32_t i = first; i < next; ++i) {
      ASSERT_EQ(map.RowOfLine(i), row);
      ASSERT_EQ(map.ShownLine(i), first);
      ASSERT_EQ(map.IsHidden(i), i != first);
      ASSERT_EQ(map.NextShown(i), next);
    }
  }
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
      CheckRows(view.map, script);
      if (testing::Test::HasFatalFailure()) return;
    }
  }
}

TEST(CollapsedBlock, IsHiddenAsAWholeOrNotAtAllAfterEditsAtItsEdges) {
  const struct {
    const char* name;
    const char* lines;
    const char* collapsed;  ///< what "Collapse All" makes of them
    TextRange cut;
    const char* text;
    const char* marks;
    const char* shown;
  } kRows[] = {
      {"Enter behind the head", "a{b}c", ".h-e.", {{1, 1}, {1, 1}}, "\n", ".h--e.", "|+___|"},
      {"Enter before the head", "a{b}c", ".h-e.", {{1, 0}, {1, 0}}, "\n", "..{.}.", "||||||"},
      {"lines in the middle", "a{b}c", ".h-e.", {{2, 1}, {2, 1}}, "\n{\n}", ".h-hee.", "|+____|"},
      {"Enter before the last line's brace", "a{b}c", ".h-e.", {{3, 0}, {3, 0}}, "\n", ".h--e.", "|+___|"},
      {"Enter behind the last line", "a{b}c", ".h-e.", {{3, 1}, {3, 1}}, "\n", ".h-e..", "|+__||"},
      {"a block behind the last line", "a{b}c", ".h-e.", {{3, 1}, {3, 1}}, "\n{\n}", ".h-e{}.", "|+__|||"},
      {"the head joins the line above", "a{b}c", ".h-e.", {{0, 1}, {1, 0}}, "", "{.}.", "||||"},
      {"its second line joins the head", "a{b}c", ".h-e.", {{1, 1}, {2, 0}}, "", ".he.", "|+_|"},
      {"the head is closed", "a{b}c", ".h-e.", {{1, 1}, {1, 1}}, "}", "...}.", "|||||"},
      {"the head is deleted", "a{b}c", ".h-e.", {{1, 0}, {1, 1}}, "", "...}.", "|||||"},
      {"another block opens in it", "a{b}}", ".h-e}", {{2, 0}, {2, 0}}, "{", ".hhe}", "|+__|"},
      {"Enter between two", "{}{}", "hehe", {{1, 1}, {1, 1}}, "\n", "he.he", "+_|+_"},
      {"Enter between two in a third", "{{}{}}", "hhehee", {{2, 1}, {2, 1}}, "\n", "hhe-hee", "+______"},
      {"an inner block's end goes", "{{}}a", "hhee.", {{2, 0}, {2, 1}}, "", "hh-e.", "+___|"},
      {"an inner block's start goes", "{{}}a", "hhee.", {{1, 0}, {1, 1}}, "", "h-e}.", "+__||"},
  };
  for (const auto& row : kRows) {
    ScriptText script(LinesOf(row.lines));
    FoldView view(script);
    ASSERT_TRUE(CollapseAll(script, view.states));
    ASSERT_EQ(script.Marks(), row.collapsed) << row.name;
    if (row.cut.start != row.cut.end) script.DeleteRange(nullptr, row.cut);
    if (*row.text != '\0') script.Insert(row.cut.start, row.text);
    view.states.ParseAll();
    EXPECT_EQ(script.Marks(), row.marks) << row.name;
    EXPECT_EQ(view.Shown(), row.shown) << row.name;
    TextPosition at;
    while (script.History().Position() > 1 && script.Undo(at)) view.states.ParseAll();
    CheckRows(view.map, script);
  }
}

/// One random edit of two texts that are the same.
void Disturb(ScriptText& a, ScriptText& b, std::mt19937& random) {
  static const char* const kTexts[] = {"\n",   "{",     "}",      "//",        "/*",  "*/",
                                       "\"",   "x",     "\n",     "{\n",       "\n}", "\n{\nx\n}\n",
                                       "}\n{", "ifdef", "\n/*\n", "{\n{\n}\n}"};
  auto line = static_cast<int32_t>(random() % static_cast<uint32_t>(a.LineCount()));
  for (int tries = 0; tries < 3 && (a.LineFlags(line) & line_flag::kBlockMarks) == 0; ++tries)
    line = static_cast<int32_t>(random() % static_cast<uint32_t>(a.LineCount()));
  const int32_t length = a.LineLength(line);
  const TextPosition start{line, random() % 2 == 0 ? 0 : length};
  const int32_t lastLine = std::min(line + static_cast<int32_t>(random() % 5), a.LineCount() - 1);
  TextPosition at;
  switch (random() % 12) {
    case 0:
    case 1:
      a.Undo(at);
      b.Undo(at);
      break;
    case 2:
      a.Redo(at);
      b.Redo(at);
      break;
    case 3:
      for (ScriptText* text : {&a, &b}) text->DeleteRange(nullptr, {start, std::max(start, {lastLine, 0})});
      break;
    case 4:  // whole lines
      for (ScriptText* text : {&a, &b})
        text->DeleteRange(nullptr, {{line, 0}, {lastLine, 0}}, 0, FlagsFollow::kText);
      break;
    case 5: {
      const std::vector<std::string_view> lines{"{", "x", "}", ""};
      for (ScriptText* text : {&a, &b})
        text->InsertLinesAt(nullptr, {line, 0}, lines, at, 0, FlagsFollow::kText);
      break;
    }
    case 6:
    case 7:
    case 8: {
      const auto block = FindBlock(a, line);
      if (!block) break;
      ToggleFold(a, block->first, block->last);
      ToggleFold(b, block->first, block->last);
      break;
    }
    default: {
      const std::string_view text = kTexts[random() % std::size(kTexts)];
      a.Insert(start, text);
      b.Insert(start, text);
    }
  }
}

TEST(ParsedText, IsTheSameForAllViewsAndAsAParseOfTheWholeText) {
  std::mt19937 random(23);
  for (int round = 0; round < 400; ++round) {
    std::string marks;
    for (int i = 0; i < 30; ++i) marks += "{}ab{}c"[random() % 7];
    ScriptText script(LinesOf(marks));
    ScriptText whole(LinesOf(marks));
    TextViewModel views[2];
    for (TextViewModel& view : views) view.SetBuffer(&script);
    for (int step = 0; step < 40; ++step) {
      if (random() % 12 == 0) {
        CollapseAll(script, views[random() % 2].States());
        ParsedText parsed(whole);
        CollapseAll(whole, parsed.States());
      }
      for (uint32_t edits = 1 + random() % 2; edits != 0; --edits) {
        Disturb(script, whole, random);
        if (random() % 2 == 0) (void)views[0].RowCount();
      }
      // The one that is edited on and on is parsed by either view, here and there; the other one wholly.
      for (uint32_t parses = random() % 3; parses != 0; --parses)
        views[random() % 2].ParseThrough(static_cast<int32_t>(random() % 40));
      views[random() % 2].ParseThrough(script.LineCount());
      ParsedText parsed(whole);
      parsed.States().ParseAll();
      ASSERT_EQ(script.Marks(), whole.Marks()) << "round " << round << " step " << step;
      for (TextViewModel& view : views) CheckRows(view.Folds(), script);
      if (HasFatalFailure()) return;
      std::string text;
      script.CopyRange({{0, 0}, script.EndOfText()}, text, "\n");
      ScriptText fresh(text);
      const std::vector<uint32_t> states = fresh.ParseFromTop();
      for (int32_t i = 0; i < script.LineCount(); ++i) {
        const uint32_t flags = script.LineFlags(i);
        ASSERT_EQ(flags & line_flag::kBlockMarks, fresh.LineFlags(i))
            << "round " << round << " step " << step;
        ASSERT_EQ(views[0].States().StateAt(i), states[static_cast<size_t>(i)]);
        if ((flags & line_flag::kHidden) == 0) continue;
        ASSERT_TRUE(views[0].Folds().IsHidden(i) || views[0].Folds().IsCollapsedHead(i))
            << "a shown line keeps the flag: " << script.Marks() << " line " << i;
      }
    }
  }
}

}  // namespace
}  // namespace quill
