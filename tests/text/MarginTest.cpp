// What the margin and the caret line show: bookmarks, indentation guides, the matching brace.

#include <gtest/gtest.h>

#include "support/ScriptText.h"
#include "text/parse/BraceMatch.h"
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

TEST(FindOpenBrace, WalksBackwardsPastCommentsAndPairs) {
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
    EXPECT_EQ(FindOpenBrace(ScriptText(text), caret, row.markers), match) << row.name;
  }
  const ScriptText far("(\n" + std::string(100, 'x'));
  EXPECT_TRUE(FindOpenBrace(far, {1, 100}, kScriptCommentMarkers, 102));
  EXPECT_FALSE(FindOpenBrace(far, {1, 100}, kScriptCommentMarkers, 101)) << "gives up";
  EXPECT_TRUE(IsBrace('<') && IsBrace(']') && !IsBrace('/') && !IsBrace('\0'));
}

}  // namespace
}  // namespace quill
