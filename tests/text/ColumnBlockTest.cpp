#include "text/edit/ColumnBlock.h"

#include <gtest/gtest.h>

#include <functional>

#include "FakeEditor.h"
#include "text/edit/CaseCommands.h"
#include "text/edit/ClipboardText.h"
#include "text/edit/DeleteCommands.h"
#include "text/edit/Indentation.h"

namespace quill {
namespace {

TEST(VisualColumns, GoToTheNextStopAtEachTab) {
  EXPECT_EQ(ColumnOf("\ta\t\tb", 5, 3), 10);
  EXPECT_EQ(ColumnOf("abc\tb", 4, 3), 6);
  const int32_t expected[] = {0, 1, 1, 1, 2, 3, 3, 3};
  for (int32_t column = 0; column < 8; ++column) {
    EXPECT_EQ(CharacterAtColumn("\ta\t", column, 3), expected[column]) << column;
  }
}

TEST(ColumnBlock, EditsEveryLineAsOneStep) {
  const auto type = [](FakeEditor& e) { return e.Type("x"); };
  const auto paste = [](const char* text) {
    return [=](FakeEditor& e) { return edit::Paste(e, text, true); };
  };
  const struct {
    const char* name;
    std::function<bool(FakeEditor&)> command;
    const char* before;
    const char* after;
    const char* label;
  } cases[] = {
      {"typing", type, "ab[cd\nabcd\nabc]d", "abx[d\nabxd\nabx]d", "Typing"},
      {"typing fills short lines up", type, "abc[d\n\nabc]d", "abcx[d\n   x\nabcx]d", "Typing"},
      {"typing behind tabs", type, "\ta[b\nabcd\n\ta]b", "\tax[b\nabcdx\n\tax]b", "Typing"},
      {"tab", edit::TypeTab, "a[b\na]b", "a\t[b\na\t]b", "Typing"},
      {"delete", edit::DeleteRight, "a[bc\n\nab]c", "a[c\n\na]c", "Delete Selection"},
      {"delete beside", edit::DeleteRight, "a[b\na\na]b", "a[\na\na]", "Delete"},
      {"backspace beside", edit::DeleteLeft, "ab[c\n\nab]c", "a[c\n\na]c", "Backspace"},
      {"backspace at the edge", edit::DeleteLeft, "[b\n]c", "[b\n]c", ""},
      {"Enter", [](FakeEditor& e) { return e.Type("\n"); }, "a[bc\nab]c", "a\n|c\nac", "Typing"},
      {"paste a block", paste("1\r\n2\r\n"), "a[bc\nab]c\nd", "a1c\na2|c\nd", "Paste"},
      {"paste past the end", paste("1\r\n2\r\n3"), "a[b\na]b", "a1b\na2b\n 3|", "Paste"},
      {"paste one line everywhere", paste("12"), "a[b\na]b", "a12[b\na12]b", "Paste"},
      {"upper case", [](FakeEditor& e) { return edit::ChangeCase(e, edit::LetterCase::kUpper); },
       "a[bc\nabcd\nab]c", "a[Bc\naBcd\naB]c", "Replace"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    FakeEditor editor(c.before);
    editor.columns = true;
    const std::string text = editor.Text();
    EXPECT_TRUE(c.command(editor));
    EXPECT_EQ(editor.Get(), c.after);
    EXPECT_EQ(editor.UndoLabel(), *c.label == 0 ? "Unknown" : c.label);
    EXPECT_EQ(editor.UndoAll(), *c.label == 0 ? 0 : 1);
    EXPECT_EQ(editor.Text(), text);
    editor.Set(c.before);
    editor.columns = true;
    editor.buffer.SetReadOnly(true);
    EXPECT_FALSE(c.command(editor));
  }
}

TEST(ColumnBlock, IsCopiedLineByLine) {
  FakeEditor editor("a[bcd\n\n\txyz\nab]c");
  editor.columns = true;
  EXPECT_EQ(edit::CopySelection(editor), "b\r\n\r\n\r\nb");
  editor.Select({0, 3}, {3, 1});
  EXPECT_EQ(edit::CopySelection(editor), "bc\r\n\r\n\r\nbc");
  std::string cut;
  ASSERT_TRUE(edit::Cut(editor, cut));
  EXPECT_EQ(editor.Text(), "ad\n\n\txyz\na");
  EXPECT_EQ(editor.UndoLabel(), "Cut");
  EXPECT_TRUE(editor.columns);
  ASSERT_TRUE(editor.Type("1"));
  EXPECT_EQ(editor.Text(), "a1d\n 1\n\t1xyz\na1");
  EXPECT_EQ(editor.UndoAll(), 2);
}

TEST(ColumnBlock, StandsBehindTheEndsOfShortLines) {
  using Keys = std::function<void(FakeEditor&)>;
  const auto type = [](const char* text) -> Keys { return [=](FakeEditor& e) { e.Type(text); }; };
  const Keys backspace = edit::DeleteLeft;
  const Keys erase = edit::DeleteRight;
  const auto paste = [](const char* text) -> Keys {
    return [=](FakeEditor& e) { edit::Paste(e, text, true); };
  };
  const struct {
    const char* name;
    BlockCorner anchor, caret;
    std::vector<Keys> keys;
    const char* after;
    BlockCorner corner;
  } cases[] = {
      {"typing", {0, 4}, {2, 4}, {type("x"), type("y")}, "ab  xy\n    xy\nabcdxyef", {2, 6}},
      {"upwards", {2, 4}, {0, 4}, {type("x"), type("y")}, "ab  xy\n    xy\nabcdxyef", {0, 6}},
      {"and back", {0, 4}, {2, 4}, {type("xy"), backspace, backspace, backspace}, "ab \n   \nabcef", {2, 3}},
      {"backspace over nothing", {0, 4}, {1, 4}, {backspace, type("x")}, "ab x\n   x\nabcdef", {1, 4}},
      {"backspace to the text", {2, 3}, {0, 3}, {backspace, backspace}, "a\n\nadef", {0, 1}},
      {"delete", {0, 4}, {2, 4}, {erase, type("x")}, "ab  x\n    x\nabcdxf", {2, 5}},
      {"a block that only one line reaches", {0, 3}, {2, 5}, {type("x")}, "ab x\n   x\nabcxf", {2, 4}},
      {"deleting it", {0, 3}, {2, 5}, {erase, type("x")}, "ab x\n   x\nabcxf", {2, 4}},
      {"a tab", {0, 3}, {1, 3}, {edit::TypeTab, type("x")}, "ab \tx\n   \tx\nabcdef", {1, 7}},
      {"one line", {0, 5}, {0, 5}, {type("xy")}, "ab   xy\n\nabcdef", {0, 7}},
      {"back in one line", {0, 5}, {0, 5}, {backspace, type("x")}, "ab  x\n\nabcdef", {0, 5}},
      {"pasting", {0, 4}, {1, 4}, {paste("1\r\n2")}, "ab  1\n    2\nabcdef", {1, 5}},
      {"upper case",
       {0, 4},
       {2, 6},
       {[](FakeEditor& e) { edit::ChangeCase(e, edit::LetterCase::kUpper); }},
       "ab\n\nabcdEF",
       {2, 6}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    FakeEditor editor("ab|\n\nabcdef");
    editor.SelectBlock(c.anchor, c.caret);
    for (const Keys& key : c.keys) key(editor);
    EXPECT_EQ(editor.Text(), c.after);
    EXPECT_EQ(editor.CaretCorner().line, c.corner.line);
    EXPECT_EQ(editor.CaretCorner().column, c.corner.column);
    editor.UndoAll();
    EXPECT_EQ(editor.Text(), "ab\n\nabcdef");
  }
}

TEST(ColumnBlock, IsDraggedAsABlock) {
  const ColumnBlock block{0, 2, 1, 3};  // "bc", "", "BC"
  const struct {
    const char* name;
    TextPosition to;
    bool copy;
    const char* after;
  } cases[] = {
      {"to the right", {0, 5}, false, "adebc\nx\nADEBC"}, {"to the left", {0, 0}, false, "bcade\n  x\nBCADE"},
      {"down", {2, 5}, false, "ade\nx\nADEbc\n\n   BC"},  {"a copy", {0, 1}, true, "abcbcde\nx\nABCBCDE"},
      {"into itself", {0, 2}, false, "abcde\nx\nABCDE"},  {"beside itself", {2, 3}, false, "abcde\nx\nABCDE"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    FakeEditor editor("|abcde\nx\nABCDE");
    EXPECT_TRUE(edit::MoveBlock(editor, block, c.to, c.copy));
    std::string after = editor.Text();
    EXPECT_EQ(after, c.after);
    if (after != "abcde\nx\nABCDE") {
      EXPECT_EQ(editor.UndoLabel(), "Drag And Drop");
      EXPECT_EQ(editor.CaretCorner().line - editor.AnchorCorner().line, 2) << "and is selected there";
      EXPECT_EQ(editor.CaretCorner().column - editor.AnchorCorner().column, 2);
      EXPECT_EQ(editor.UndoAll(), 1);
    }
    EXPECT_EQ(editor.Text(), "abcde\nx\nABCDE");
  }
}

TEST(ColumnBlock, OverwritesWhenItHasNoColumns) {
  FakeEditor editor("a[bc\na]bc");
  editor.columns = true;
  editor.overwriting = true;
  ASSERT_TRUE(editor.Type("x"));
  EXPECT_EQ(editor.Get(), "ax[c\nax]c");
}

}  // namespace
}  // namespace quill
