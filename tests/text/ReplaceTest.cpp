#include <gtest/gtest.h>

#include <random>

#include "support/ScriptText.h"
#include "text/search/ReplaceAll.h"
#include "text/search/ReplaceSession.h"

namespace quill {
namespace {

/// A text with a selection; also the slow twin of everything that a view would do.
struct FakeView : ReplaceTarget, BufferObserver, EditHook {
  explicit FakeView(std::string_view text) : buffer(text) { buffer.AddView(this); }
  ~FakeView() override { buffer.RemoveView(this); }
  CCrystalTextBuffer& Buffer() override { return buffer; }
  EditSource Source() override { return this; }
  TextRange Selection() const override { return selection; }
  void SelectFound(TextPosition at, int32_t length) override {
    selection = {at, {at.line, at.character + length}};
  }
  bool ReplaceSelectedText(std::string_view text) override {
    TextPosition end = selection.start;
    if (!buffer.DeleteRange(this, selection, action::kReplace)) return false;
    buffer.InsertTextAt(this, selection.start, text, end, action::kReplace);
    PlaceCaret(end);
    return true;
  }
  void PlaceCaret(TextPosition at) override { selection = {at, at}; }
  void OnBufferUpdate(const BufferObserver*, const TextChange* change, uint32_t, int32_t) override {
    if (session != nullptr && change != nullptr) session->OnTextChanged(*change);
  }
  void OnUndoGroupClosed(int32_t code, std::string_view) override { closedAction = code; }

  std::string Text() const {
    std::string text;
    buffer.CopyRange({{}, buffer.EndOfText()}, text, "\n");
    return text;
  }
  std::string Selected() const {
    std::string text = std::to_string(selection.start.line) + "," + std::to_string(selection.start.character);
    return selection.IsEmpty() ? text + "|" : text + "-" + std::to_string(selection.end.character);
  }

  ScriptText buffer;
  TextRange selection;
  ReplaceSession* session = nullptr;
  int32_t closedAction = -1;
};

TEST(ReplaceSession, FindNextStepsByOneCharacterAndStartsAnewAfterTheLast) {
  FakeView view("aaa\nxaa");
  ReplaceSession session(view, TextPosition{0, 1});
  const ReplaceRequest request{"aa", "b", search_flag::kUpwards, false};
  EXPECT_TRUE(session.FindNext(request));
  EXPECT_EQ(view.Selected(), "0,1-3") << "from the remembered start, and downwards whatever the flags";
  EXPECT_TRUE(session.FindNext(request));
  EXPECT_EQ(view.Selected(), "1,1-3");
  EXPECT_FALSE(session.FindNext(request));
  EXPECT_TRUE(session.FindNext(request));
  EXPECT_EQ(view.Selected(), "0,0-2") << "one character further would be column 1";
}

TEST(ReplaceSession, ReplaceTakesTheMatchThenGoesPastTheReplacement) {
  FakeView view("ab ab ab");
  ReplaceSession session(view, {});
  const ReplaceRequest request{"ab", "abab", 0, false};
  EXPECT_TRUE(session.Replace(request));
  EXPECT_EQ(view.Text(), "ab ab ab") << "the first press only finds";
  EXPECT_TRUE(session.Replace(request));
  EXPECT_EQ(view.Text(), "abab ab ab");
  EXPECT_EQ(view.Selected(), "0,5-7") << "the replacement is not found again";
  view.selection = {};
  EXPECT_TRUE(session.Replace(request));
  EXPECT_EQ(view.Text(), "abab ab ab") << "what the user selected meanwhile is not replaced";
  EXPECT_EQ(view.Selected(), "0,5-7");
  EXPECT_TRUE(session.Replace(request));
  EXPECT_FALSE(session.Replace(request)) << "replaced the last one";
  EXPECT_EQ(view.Text(), "abab abab abab");
  TextPosition at;
  view.buffer.Undo(at);
  EXPECT_EQ(view.Text(), "abab abab ab") << "each press is one step";
}

TEST(ReplaceSession, ABlockEndBehindTheMatchMovesWithTheText) {
  for (const bool all : {false, true}) {
    FakeView view("a-a-a-a\na");
    ReplaceSession session(view, {}, {{0, 2}, {0, 5}});
    view.session = &session;
    const ReplaceRequest request{"a", "long", 0, true};
    if (all) {
      EXPECT_EQ(session.ReplaceAll(request), 2);
      EXPECT_EQ(view.Selected(), "0,11|");
    } else {
      EXPECT_TRUE(session.FindNext(request));
      EXPECT_TRUE(session.Replace(request));
      EXPECT_FALSE(session.Replace(request));
    }
    EXPECT_EQ(view.Text(), "a-long-long-a\na");
    EXPECT_EQ(session.Block(), (TextRange{{0, 2}, {0, 11}}));
    TextPosition at;
    while (view.Text() != "a-a-a-a\na" && view.buffer.Undo(at)) continue;
    EXPECT_EQ(session.Block(), (TextRange{{0, 2}, {0, 5}})) << "undo moves it back";
  }
}

TEST(ReplaceSession, AScopeThatIsSwitchedBetweenStepsHoldsForTheNextOne) {
  enum Step { kFind, kReplace, kAll };
  struct Row {
    std::vector<std::pair<Step, bool>> steps;  ///< each in the block?
    const char* text;
    const char* selected;
  };
  const Row rows[] = {
      {{{kFind, false}, {kAll, true}}, "a\nB B\nB\na", "2,1|"},  // found above the block
      {{{kFind, false}, {kFind, true}}, "a\na a\na\na", "1,0-1"},
      {{{kFind, false}, {kReplace, true}}, "a\na a\na\na", "1,0-1"},
      {{{kFind, false}, {kFind, false}, {kFind, false}, {kAll, true}}, "a\na B\nB\na", "2,1|"},  // inside
      {{{kFind, true}, {kFind, false}, {kAll, false}}, "a\na B\nB\nB", "3,1|"},
      {{{kAll, true}, {kAll, false}}, "B\nB B\nB\nB", "3,1|"},
      {{{kAll, false}}, "B\nB B\nB\nB", "3,1|"},
  };
  for (const Row& row : rows) {
    FakeView view("a\na a\na\na");
    ReplaceSession session(view, {}, {{1, 0}, {2, 1}});
    view.session = &session;
    std::string steps;
    for (const auto& [step, inBlock] : row.steps) {
      const ReplaceRequest request{"a", "B", search_flag::kMatchCase, inBlock};
      if (step == kAll) session.ReplaceAll(request);
      if (step != kAll) step == kFind ? session.FindNext(request) : session.Replace(request);
      steps += std::to_string(step) + (inBlock ? "s " : "w ");
    }
    EXPECT_EQ(view.Text(), row.text) << steps;
    EXPECT_EQ(view.Selected(), row.selected) << steps;
  }
}

TEST(ReplaceSession, RefusesEmptySearchesAndReadOnlyTexts) {
  FakeView view("ab");
  ReplaceSession session(view, {});
  EXPECT_EQ(session.ReplaceAll({"", "x", 0, false}), 0);
  EXPECT_TRUE(session.FindNext({"ab", "x", 0, false}));
  view.buffer.SetReadOnly(true);
  EXPECT_TRUE(session.Replace({"ab", "x", 0, false}));
  EXPECT_EQ(session.ReplaceAll({"ab", "x", 0, false}), 0);
  EXPECT_EQ(view.Text(), "ab");
  EXPECT_TRUE(session.HasMatch());
}

TEST(ReplaceAll, IsOneStepThatKeepsTheMarksOfItsLines) {
  FakeView view("ab ab\nnone\nab");
  view.buffer.SetFlagOnLine(1, line_flag::kBookmark, true);
  ReplaceSession session(view, {});
  EXPECT_EQ(session.ReplaceAll({"AB", "", 0, false}), 3);
  EXPECT_EQ(view.Text(), " \nnone\n");
  EXPECT_EQ(view.closedAction, action::kReplace);
  EXPECT_EQ(view.buffer.FirstLineWithFlag(line_flag::kBookmark), 1);
  TextPosition at;
  EXPECT_TRUE(view.buffer.Undo(at));
  EXPECT_EQ(view.Text(), "ab ab\nnone\nab");
}

TEST(ReplaceAll, DoesWhatReplacingOneByOneDoes) {
  std::mt19937 random(23);
  const char* const replacements[] = {"", "b", "ab", "a b a", "x\r\ny", "\r\n"};
  for (int round = 0; round < 3000; ++round) {
    std::string content;
    for (size_t n = random() % 60; n > 0; --n) content += "abB  _\n"[random() % 7];
    FakeView fast(content);
    FakeView slow(content);
    const auto anywhere = [&] {
      const auto line = static_cast<int32_t>(random() % static_cast<uint32_t>(fast.buffer.LineCount()));
      return TextPosition{line, static_cast<int32_t>(random() % (fast.buffer.Line(line).size() + 1))};
    };
    const ReplaceRequest request{random() % 2 == 0 ? "b" : "ab", replacements[random() % 6],
                                 static_cast<uint32_t>(random() % 4), random() % 2 == 0};
    const TextPosition start = anywhere();
    const TextRange block = TextRange::Between(anywhere(), anywhere());
    ReplaceSession fastSession(fast, start, block);
    ReplaceSession slowSession(slow, start, block);
    const int64_t count = fastSession.ReplaceAll(request);
    for (bool found = slowSession.FindNext(request); found;) found = slowSession.Replace(request);
    ASSERT_EQ(fast.Text(), slow.Text()) << request.what << " by " << request.with << " in " << content;
    EXPECT_EQ(fastSession.Block(), slowSession.Block());
    EXPECT_EQ(fast.Selected(), slow.Selected());
    TextPosition at;
    if (count > 0) fast.buffer.Undo(at);
    EXPECT_EQ(fast.Text(), content);
  }
}

}  // namespace
}  // namespace quill
