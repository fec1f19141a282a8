// What the margin and the caret line show: bookmarks and indentation guides.

#include <gtest/gtest.h>

#include "support/ScriptText.h"
#include "text/view/Bookmarks.h"
#include "text/view/IndentGuides.h"

namespace quill {
namespace {

TEST(Bookmarks, AreToggledVisitedAndCleared) {
  ScriptText script("0\n1\n2\n3\n4");
  for (const int32_t line : {1, 3, 4, 4}) bookmarks::Toggle(script, line);
  bookmarks::ToggleBreakpoint(script, 2);
  EXPECT_EQ(bookmarks::Next(script, 0), 1);
  EXPECT_EQ(bookmarks::Next(script, 1), 3);
  EXPECT_EQ(bookmarks::Next(script, 3), std::nullopt) << "no wrapping";
  EXPECT_EQ(bookmarks::Previous(script, 3), 1);
  EXPECT_EQ(bookmarks::Previous(script, 1), std::nullopt);
  EXPECT_EQ(bookmarks::FindNumbered(script, 7), std::nullopt);
  EXPECT_TRUE(bookmarks::SetNumbered(script, 2, 7));
  EXPECT_TRUE(bookmarks::SetNumbered(script, 3, 7));
  EXPECT_EQ(bookmarks::FindNumbered(script, 7), 3);
  EXPECT_FALSE(bookmarks::SetNumbered(script, 3, 10));
  EXPECT_EQ(bookmarks::FindNumbered(script, -1), std::nullopt);
  bookmarks::ClearAll(script);
  EXPECT_EQ(script.FirstLineWithFlag(line_flag::kBookmark), -1);
  EXPECT_EQ(script.LineFlags(2), line_flag::kBreakpoint);
  EXPECT_EQ(script.LineFlags(3), line_flag::NumberedBookmark(7));
}

TEST(IndentGuides, StandAtTheTabStopsInsideTheLeadingWhiteSpace) {
  ScriptText script("if\n\t\tx\n  \ty\n\n         z\n\t \n\nend\n\n");
  const struct {
    int32_t line;
    int32_t limit;
    std::vector<int32_t> columns;
  } kRows[] = {
      {0, 80, {}}, {1, 80, {4}}, {2, 80, {}}, {3, 80, {}}, {4, 80, {4, 8}},
      {4, 8, {4}}, {5, 80, {}},  {6, 80, {}}, {8, 80, {}},
  };
  std::vector<int32_t> columns;
  for (const auto& row : kRows) {
    IndentGuideColumns(script, row.line, 4, row.limit, columns);
    EXPECT_EQ(columns, row.columns) << row.line;
  }
  IndentGuideColumns(script, 3, 2, 80, columns);
  EXPECT_EQ(columns, std::vector<int32_t>{2}) << "a blank line takes the smaller neighbour's";
}

}  // namespace
}  // namespace quill
