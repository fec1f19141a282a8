// Bookmarks and breakpoints of lines that go and come back.

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "FakeEditor.h"
#include "text/edit/DeleteCommands.h"
#include "text/edit/LineCommands.h"

namespace quill {
namespace {

/// "a b* c@2": the lines, "*" behind one with a bookmark, "@" behind one with a breakpoint, then numbers.
std::string Shown(const CCrystalTextBuffer& buffer) {
  std::string shown;
  for (int32_t line = 0; line < buffer.LineCount(); ++line) {
    if (line > 0) shown += ' ';
    shown += buffer.Line(line);
    const uint32_t flags = buffer.LineFlags(line);
    if ((flags & line_flag::kBookmark) != 0) shown += '*';
    if ((flags & line_flag::kBreakpoint) != 0) shown += '@';
    for (int n = 0; n < 10; ++n) {
      if ((flags & line_flag::NumberedBookmark(n)) != 0) shown += std::to_string(n);
    }
  }
  return shown;
}

/// Lines a to d: a bookmark on a, a breakpoint and number 2 on b, a bookmark on d.
void SetMarks(FakeEditor& editor) {
  editor.Set("|a\nb\nc\nd");
  editor.buffer.SetFlagOnLine(0, line_flag::kBookmark, true);
  editor.buffer.SetFlagOnLine(1, line_flag::kBreakpoint, true);
  editor.buffer.SetFlagOnLine(1, line_flag::NumberedBookmark(2), true);
  editor.buffer.SetFlagOnLine(3, line_flag::kBookmark, true);
}

TEST(KeptMarks, ComeBackWithTheirLines) {
  using edit::DeleteLines, edit::MoveLinesDown, edit::MoveLinesUp, edit::DuplicateLines;
  const struct {
    const char* name;
    std::function<bool(EditTarget&)> command;
    int32_t first, last;
    const char* after;
  } cases[] = {
      {"up", MoveLinesUp, 2, 2, "a* c b@2 d*"},
      {"up to the top", MoveLinesUp, 1, 1, "b@2 a* c d*"},
      {"up from the end", MoveLinesUp, 3, 3, "a* b@2 d* c"},
      {"down", MoveLinesDown, 2, 2, "a* b@2 d* c"},
      {"down from the top", MoveLinesDown, 0, 0, "b@2 a* c d*"},
      {"two lines down", MoveLinesDown, 0, 1, "c a* b@2 d*"},
      {"two lines up", MoveLinesUp, 1, 2, "b@2 c a* d*"},
      {"the first line goes", DeleteLines, 0, 0, "b@2 c d*"},
      {"lines go", DeleteLines, 1, 2, "a* d*"},
      {"the last line goes", DeleteLines, 3, 3, "a* b@2 c"},
      {"all go", DeleteLines, 0, 3, "*"},
      {"a copy has none", DuplicateLines, 1, 1, "a* b@2 b c d*"},
      {"a selection goes", edit::DeleteSelection, 1, 2, "a* c@2 d*"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    FakeEditor editor;
    SetMarks(editor);
    editor.Select({c.first, 0}, {c.last, 1});
    if (std::string(c.name) == "a selection goes") editor.Select({1, 0}, {2, 0});
    ASSERT_TRUE(c.command(editor));
    EXPECT_EQ(Shown(editor.buffer), c.after);
    for (int round = 0; round < 3; ++round) {
      ASSERT_TRUE(editor.Undo());
      EXPECT_EQ(Shown(editor.buffer), "a* b@2 c d*") << round;
      ASSERT_TRUE(edit::Redo(editor));
      EXPECT_EQ(Shown(editor.buffer), c.after) << round;
    }
  }
}

TEST(KeptMarks, ThatWereSetInTheMeantimeStay) {
  FakeEditor editor;
  SetMarks(editor);
  editor.PlaceCaret({2, 0});
  ASSERT_TRUE(edit::MoveLinesUp(editor));  // b goes down
  editor.buffer.SetFlagOnLine(2, line_flag::kBookmark, true);
  editor.buffer.SetFlagOnLine(2, line_flag::kBreakpoint, false);
  editor.buffer.SetFlagOnLine(1, line_flag::kBreakpoint, true);
  EXPECT_EQ(Shown(editor.buffer), "a* c@ b*2 d*");
  ASSERT_TRUE(editor.Undo());
  EXPECT_EQ(Shown(editor.buffer), "a* b*2 c@ d*");
  ASSERT_TRUE(edit::Redo(editor));
  EXPECT_EQ(Shown(editor.buffer), "a* c@ b*2 d*");

  SetMarks(editor);
  editor.PlaceCaret({1, 0});
  ASSERT_TRUE(edit::DeleteLines(editor));
  editor.buffer.SetFlagOnLine(2, line_flag::NumberedBookmark(2), true);
  ASSERT_TRUE(editor.Undo());
  EXPECT_EQ(Shown(editor.buffer), "a* b@ c d*2") << "a number stands once";
}

TEST(KeptMarks, ACollapsedBlockComesBackCollapsed) {
  FakeEditor editor("a|\n{\nb\n}\nc");
  editor.buffer.ChangeFlagsOnLines(1, 3, line_flag::kHidden, 0);
  editor.buffer.SetBlockMarks(1, line_flag::kBlockStart);
  editor.buffer.SetBlockMarks(3, line_flag::kBlockEnd);
  const auto hidden = [&] {
    std::string lines;
    for (int32_t line = 0; line < editor.buffer.LineCount(); ++line) {
      if ((editor.buffer.LineFlags(line) & line_flag::kHidden) != 0) lines += editor.buffer.Line(line);
    }
    return lines;
  };
  editor.Select({1, 0}, {4, 0});
  ASSERT_TRUE(edit::DeleteLines(editor));
  EXPECT_EQ(editor.Text(), "a\nc");
  ASSERT_TRUE(editor.Undo());
  EXPECT_EQ(hidden(), "{b}");
  editor.Select({2, 0}, {3, 1});
  ASSERT_TRUE(edit::DeleteLines(editor));
  editor.buffer.ChangeFlagsOnLines(0, 2, 0, line_flag::kHidden);
  ASSERT_TRUE(editor.Undo());
  EXPECT_EQ(hidden(), "") << "their head has been opened";
}

TEST(KeptMarks, FollowTheirLinesThroughAnyUndoneEdits) {
  std::mt19937 random(5);
  for (int round = 0; round < 300; ++round) {
    FakeEditor editor("|a\nb\nc\nd\ne\nf");
    for (int32_t line = 0; line < 6; ++line) {
      if (random() % 2 == 0) editor.buffer.SetFlagOnLine(line, line_flag::kBookmark, true);
      if (random() % 3 == 0) editor.buffer.SetFlagOnLine(line, line_flag::kBreakpoint, true);
    }
    std::vector<std::string> before{Shown(editor.buffer)};
    for (int step = 0; step < 12; ++step) {
      const size_t position = editor.buffer.History().Position();
      const int32_t count = editor.buffer.LineCount();
      const auto place = [&] {
        const auto line = static_cast<int32_t>(random() % static_cast<unsigned>(count));
        return TextPosition{line, static_cast<int32_t>(random() % (editor.buffer.Line(line).size() + 1))};
      };
      editor.Select(place(), place());
      switch (random() % 6) {
        case 0:
          edit::MoveLinesUp(editor);
          break;
        case 1:
          edit::MoveLinesDown(editor);
          break;
        case 2:
          edit::DeleteLines(editor);
          break;
        case 3:
          edit::DuplicateLines(editor);
          break;
        case 4:
          edit::DeleteSelection(editor);
          break;
        default:
          editor.Type("\n");
      }
      if (editor.buffer.History().Position() == position) continue;
      before.push_back(Shown(editor.buffer));
    }
    for (size_t i = before.size() - 1; i-- > 0;) {
      ASSERT_TRUE(editor.Undo());
      ASSERT_EQ(Shown(editor.buffer), before[i]) << round << " " << i;
    }
    while (edit::Redo(editor)) {
    }
    EXPECT_EQ(Shown(editor.buffer), before.back()) << round;
  }
}

}  // namespace
}  // namespace quill
