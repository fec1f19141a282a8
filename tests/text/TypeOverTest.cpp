// Typing the closing brackets that the editor has inserted by itself.

#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "FakeEditor.h"
#include "text/edit/IndentAll.h"

namespace quill {
namespace {

TEST(TypeOver, GoesPastWhatTheEditorInserted) {
  const struct {
    const char* name;
    const char* before;
    const char* typed;  ///< "<" and ">" move the caret, "~" is Backspace
    const char* after;
  } cases[] = {
      {"arguments", "|", "f(a, b);", "f(a, b);|"},
      {"an index", "|", "a[1] = 2;", "a[1] = 2;|"},
      {"one in the other", "|", "f(a[(1)]);", "f(a[(1)]);|"},
      {"no arguments", "|", "f();", "f();|"},
      {"twice", "|", "f(a))", "f(a))|"},
      {"one of the user's", "f(a|)", ")", "f(a)|)"},
      {"not at the caret", "|", "f(a b<<)", "f(a)| b)"},
      {"after moving about", "|", "f(a<<>>)", "f(a)|"},
      {"after Backspace", "|", "f(ab~~)", "f()|"},
      {"taken away with its pair", "f|", "(a<~", "f|a)"},
      {"an earlier pair keeps it", "f() |", "g(a)", "f() g(a)|)"},
      {"a brace at once", "\t|", "{}", "\t{}|"},
      {"a block on one line", "|", "a = { 1, {2} };", "a = { 1, {2} };|"},
      {"a block begun above", "|", "{\nif (a) b;}", "{\n\tif (a) b;\n}|"},
      {"a brace below", "\t|", "{\na;\n}b", "\t{\n\t\ta;\n\t}b|"},
      {"a brace at the line's end", "|", "{\na;}", "{\n\ta;\n}|"},
      {"a brace with an empty line between", "|", "{\na;\n\n}", "{\n\ta;\n\t\n}|"},
      {"a brace with text between", "|", "{\na;\n\nb;<<<}", "{\n\ta;\n\t\n}|\tb;\n}"},
      {"braces in braces", "|", "{\n{\na;\n}\n}\nb", "{\n\t{\n\t\ta;\n\t}\n}\nb|"},
      {"another brace", "{\n|\n}", "}", "{\n}|\n}"},
      {"another bracket", "|", "f(a]", "f(a]|)"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    FakeEditor editor(c.before);
    const std::string text = editor.Text();
    for (const char key : std::string(c.typed)) {
      const int32_t step = key == '<' ? -1 : 1;
      if (key == '~') {
        editor.typing.TypeBackspace(editor);
      } else if (key == '<' || key == '>') {
        editor.PlaceCaret({editor.caret.line, editor.caret.character + step});
        editor.typing.CaretMoved(editor);
      } else {
        editor.Type({&key, 1});
      }
    }
    EXPECT_EQ(editor.Get(), c.after);
    editor.UndoAll();
    EXPECT_EQ(editor.Text(), text);
  }
}

TEST(TypeOver, AScriptTypedWithAllItsBracketsStandsAsItWasTyped) {
  const std::string script =
      "function f(a)\n{\n\tvar b[3];\n\tif (a[0] == (1 + 2))\n\t{\n\t\tg(\"x\", b[a[1]]);\n\t}\n\telse\n\t{\n"
      "\t\twhile (h(a, b) < 3)\n\t\t{\n\t\t\ta[0] += 1;\n\t\t}\n\t}\n}\n\nfunction k()\n{\n\treturn (1);\n}";
  FakeEditor editor;
  for (const char c : script) {
    if (c == '\t') continue;
    ASSERT_TRUE(editor.Type({&c, 1}));
  }
  EXPECT_EQ(editor.Text(), script);
}

TEST(TypeOver, HasItsSwitchAndIsNotForOverwriting) {
  FakeEditor editor;
  editor.settings.typeOverClosers = false;
  editor.Type("f(a){\n}");
  EXPECT_EQ(editor.Text(), "f(a){\n}\n})");
  editor.settings = {};
  editor.Set("|");
  editor.Type("a[b");
  editor.overwriting = true;
  editor.Type("]");
  EXPECT_EQ(editor.Get(), "a[b]|");
  EXPECT_TRUE(editor.Undo());
  EXPECT_EQ(editor.Text(), "a[b]") << "one bracket for the other";
}

TEST(TypeOver, KnowsItsBracketsThroughEditsElsewhere) {
  FakeEditor editor;
  editor.Type("\nf(a");
  TextPosition end;
  editor.buffer.InsertTextAt(nullptr, {0, 0}, "{\r\n", end);
  edit::IndentAll(editor);
  editor.Type(")");
  EXPECT_EQ(editor.Get(), "{\n\n\tf(a)|");
  editor.Type("\ng(b");
  editor.Select({3, 4}, {3, 3});
  editor.Type("c");
  editor.buffer.DeleteRange(nullptr, {{0, 0}, {1, 0}});
  editor.Type(")");
  EXPECT_EQ(editor.Get(), "\n\tf(a)\n\tg(c)|");
  editor.Type(";k(d");
  ASSERT_EQ(editor.caret, (TextPosition{2, 9}));
  editor.buffer.NewBuffer(line_end::kCrLf, "\n\n123456789)");
  editor.Type(")");
  EXPECT_EQ(editor.Get(), "\n\n123456789)|)") << "another text";
}

}  // namespace
}  // namespace quill
