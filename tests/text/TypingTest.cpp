// Typed characters, Enter, and what the editor adds by itself.

#include <gtest/gtest.h>

#include "FakeEditor.h"

namespace quill {
namespace {

TEST(Typing, AWordIsOneStepAndTheBlankAfterItTheNext) {
  FakeEditor editor;
  editor.Type("abc def");
  EXPECT_EQ(editor.Get(), "abc def|");
  EXPECT_EQ(editor.UndoLabel(), "Typing");
  const char* steps[] = {"abc |", "abc|", "|"};
  for (const char* step : steps) {
    ASSERT_TRUE(editor.Undo());
    EXPECT_EQ(editor.Get(), step);
  }
  EXPECT_FALSE(editor.Undo());
  ASSERT_TRUE(edit::Redo(editor));
  EXPECT_EQ(editor.Get(), "abc|");
}

TEST(Typing, AMovedCaretBeginsAStep) {
  FakeEditor editor;
  editor.Type("ab");
  editor.PlaceCaret({0, 1});
  editor.Type("c");
  editor.typing.Forget();
  editor.Type("d");
  EXPECT_EQ(editor.Get(), "acd|b");
  EXPECT_EQ(editor.UndoAll(), 3);
}

TEST(Typing, ReplacesTheSelectionOrTheNextCharacterInTheSameStep) {
  FakeEditor editor("a[b\nc]d");
  editor.Type("x");
  EXPECT_EQ(editor.Get(), "ax|d");
  ASSERT_TRUE(editor.Undo());
  EXPECT_EQ(editor.Get(), "ab\nc|d");
  editor.overwriting = true;
  editor.Type("yz");
  EXPECT_EQ(editor.Get(), "ab\ncyz|");
  ASSERT_TRUE(editor.Undo());
  EXPECT_EQ(editor.buffer.Line(1), "cd");
}

TEST(Typing, RefusesReadOnlyTextAndControlCharacters) {
  FakeEditor editor("a|");
  EXPECT_FALSE(editor.typing.TypeCharacter(editor, '\x1f'));
  EXPECT_TRUE(editor.typing.TypeCharacter(editor, '\xe9'));
  editor.buffer.SetReadOnly(true);
  EXPECT_FALSE(editor.Type("x"));
  EXPECT_FALSE(editor.Type("\n"));
  EXPECT_EQ(editor.Get(), "a\xe9|");
  EXPECT_FALSE(editor.Undo());
}

TEST(Typing, EnterInOverwriteModeOnlyMovesUntilTheLastLine) {
  FakeEditor editor("\ta|b\ncd");
  editor.overwriting = true;
  editor.Type("\n");
  EXPECT_EQ(editor.Get(), "\tab\n|cd");
  editor.Type("\n");
  EXPECT_EQ(editor.Get(), "\tab\n\n|cd");
}

struct TypedCase {
  const char* name;
  const char* before;
  const char* typed;
  const char* after;
  int steps;  ///< undo steps
};

void Check(const TypedCase& c, FakeEditor& editor) {
  editor.Set(c.before);
  const std::string text = editor.Text();
  editor.Type(c.typed);
  EXPECT_EQ(editor.Get(), c.after) << c.name;
  EXPECT_EQ(editor.UndoAll(), c.steps) << c.name;
  EXPECT_EQ(editor.Text(), text) << c.name;
}

TEST(AutoIndent, AddsWhatTheTypedCharacterAsksFor) {
  const TypedCase cases[] = {
      {"parenthesis at the end", "f|", "(", "f(|)", 2},
      {"parenthesis before a closing one", "f| x)", "(", "f(| x)", 1},
      {"parenthesis before another pair", "f| (x)", "(", "f(|) (x)", 2},
      {"bracket", "a| ]", "[", "a[|] ]", 2},
      {"brace", "\t\tif |x", "{", "\t\tif {|\n\t\t}x", 2},
      {"brace counts tabs only", "  |", "{", "  {|\n}", 2},
      {"stepping over", "f|", "()", "f()|", 3},
      {"an earlier pair stops that", "f() g|", "()", "f() g()|)", 2},
      {"nothing to step over", "f(|", ")", "f()|", 1},
      {"brace unindents", "\t\tx|y", "}", "\tx}y|", 2},
      {"brace at column 0", "x|", "}", "x}|", 1},
      {"two blanks are no tab", "  |", "}", "  }|", 1},
      {"Enter copies white space", "\t  x|y", "\n", "\t  x\n\t  |y", 2},
      {"no white space to copy", "x|y", "\n", "x\n|y", 1},
      {"hard blanks are white space", "\xa0\tx|", "\n", "\xa0\tx\n\xa0\t|", 2},
      {"Enter after a brace", "\tif {|", "\n", "\tif {\n\t\t|", 2},
      {"the brace must be last", "\tif { |", "\n", "\tif { \n\t|", 2},
      {"brace, Enter", "\t|", "{\n", "\t{\n\t\t|\n\t}", 4},
  };
  FakeEditor editor;
  for (const TypedCase& c : cases) Check(c, editor);
}

TEST(AutoIndent, WithBlanksAStepIsTheTabSize) {
  const TypedCase cases[] = {
      {"Enter after a brace", "   {|", "\n", "   {\n      |", 2},
      {"brace unindents", "      |", "}", "   }|", 2},
      {"too few blanks", "  |", "}", "  }|", 1},
      {"a tab is not blanks", "\t|", "}", "\t}|", 1},
      {"tabs are copied for a brace", "\t   |", "{", "\t   {|\n\t}", 2},
  };
  FakeEditor editor;
  editor.settings.keepSpaces = true;
  for (const TypedCase& c : cases) Check(c, editor);
}

TEST(AutoIndent, HasItsSwitches) {
  FakeEditor editor("\t|");
  editor.settings.autoBrackets = false;
  editor.Type("(){}\n");
  EXPECT_EQ(editor.Get(), "(){}\n|");  // "}" and Enter follow AutoIndent alone
  editor.settings = {};
  editor.settings.autoIndent = false;
  editor.Set("\t|");
  editor.Type("(}\n[");
  EXPECT_EQ(editor.Get(), "\t(}\n[|");
  editor.settings = {};
  editor.overwriting = true;
  editor.Set("\t|");
  editor.Type("(}");
  EXPECT_EQ(editor.Get(), "\t(}|");
}

TEST(AutoIndent, ItsInsertionsAreStepsOfTheirOwn) {
  FakeEditor editor("\t|");
  editor.Type("{\n");
  const std::pair<const char*, const char*> steps[] = {
      {"Auto Indent", "\t{\n|\n\t}"}, {"Typing", "\t{|\n\t}"}, {"Indent", "\t{|"}, {"Typing", "\t|"}};
  for (const auto& [label, text] : steps) {
    EXPECT_EQ(editor.UndoLabel(), label);
    ASSERT_TRUE(editor.Undo());
    EXPECT_EQ(editor.Get(), text);
  }
}

TEST(AutoIndent, FollowsTypingOnly) {
  FakeEditor editor("|");
  TextPosition end;
  editor.buffer.InsertTextAt(&editor, {0, 0}, "(", end, action::kPaste);
  EXPECT_EQ(editor.Get(), "(|");
  editor.buffer.InsertTextAt(&editor, {0, 1}, "[", end, action::kTyping);
  EXPECT_EQ(editor.Get(), "([|]");
}

}  // namespace
}  // namespace quill
