// Commands of the Edit menu and the editing keys: what each does to text, caret, selection and history.

#include <gtest/gtest.h>

#include <functional>

#include "FakeEditor.h"
#include "text/edit/CaseCommands.h"
#include "text/edit/ClipboardText.h"
#include "text/edit/DeleteCommands.h"
#include "text/edit/IndentAll.h"
#include "text/edit/Indentation.h"
#include "text/edit/InsertCommands.h"
#include "text/edit/LineCommands.h"

namespace quill {
namespace {

using Command = std::function<bool(EditTarget&)>;
struct Case {
  const char* name;
  Command command;
  const char* before;
  const char* after;
  const char* label;  ///< of the undo step, "" when nothing happens
};

/// Every command: its result, one undo step that brings the text back, and its refusal.
void Check(const std::vector<Case>& cases, const EditSettings& settings = {}) {
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    FakeEditor editor;
    editor.settings = settings;
    editor.Set(c.before);
    const std::string text = editor.Text();
    EXPECT_TRUE(c.command(editor));
    EXPECT_EQ(editor.Get(), c.after);
    EXPECT_EQ(editor.UndoLabel(), *c.label == 0 ? "Unknown" : c.label);
    EXPECT_EQ(editor.UndoAll(), *c.label == 0 ? 0 : 1);
    EXPECT_EQ(editor.Text(), text);
    editor.Set(c.before);
    editor.buffer.SetReadOnly(true);
    EXPECT_FALSE(c.command(editor));
    EXPECT_EQ(editor.Text(), text);
  }
}

TEST(DeleteCommands, DeleteCharactersWordsLineEndsAndSelections) {
  using namespace edit;
  Check({
      {"character", DeleteRight, "a|bc", "a|c", "Delete"},
      {"line end", DeleteRight, "a|\nb", "a|b", "Delete"},
      {"at the end", DeleteRight, "a\nb|", "a\nb|", ""},
      {"back", DeleteLeft, "ab|c", "a|c", "Backspace"},
      {"back over a line end", DeleteLeft, "a\n|b", "a|b", "Backspace"},
      {"back at the start", DeleteLeft, "|a", "|a", ""},
      {"word", DeleteWordRight, "a |foo  bar", "a |bar", "Delete"},
      {"word at the line's end", DeleteWordRight, "a|\n b", "a| b", "Delete"},
      {"word back", DeleteWordLeft, "a foo  |bar", "a |bar", "Backspace"},
      {"word back at the line's start", DeleteWordLeft, "a\n|b", "a|b", "Backspace"},
      {"selection", DeleteRight, "a[b\nc]d", "a|d", "Delete Selection"},
      {"selection back", DeleteWordLeft, "a[b\nc]d", "a|d", "Delete Selection"},
      {"selection by command", DeleteSelection, "a[b\nc]d", "a|d", "Delete Selection"},
      {"no selection", DeleteSelection, "a|d", "a|d", ""},
  });
}

TEST(Clipboard, TakesAnyLineEndsAndGivesCrLf) {
  EXPECT_EQ(edit::WithCrLf("a\r\nb\n\rc\rd\n\r\ne\n\nf\r\r\n"), "a\r\nb\r\nc\r\nd\r\n\r\ne\r\n\r\nf\r\n\r\n");
  const auto paste = [](EditTarget& t) { return edit::Paste(t, "x\ny"); };
  std::string cut = "untouched";
  const auto cutSelection = [&](EditTarget& t) { return edit::Cut(t, cut); };
  Check({
      {"paste", paste, "a|b", "ax\ny|b", "Paste"},
      {"paste over a selection", paste, "a[1\n2]b", "ax\ny|b", "Paste"},
      {"paste nothing", [](EditTarget& t) { return edit::Paste(t, ""); }, "a[b]", "a[b]", ""},
      {"cut nothing", cutSelection, "a|b", "a|b", ""},
  });
  EXPECT_EQ(cut, "");
  Check({{"cut", cutSelection, "a[1\n2]b", "a|b", "Cut"}});
  EXPECT_EQ(cut, "1\r\n2");
  FakeEditor editor("a[1\n2]b");
  EXPECT_EQ(edit::CopySelection(editor), "1\r\n2");
}

TEST(LineCommands, CommentAndUncommentEveryTouchedLine) {
  using namespace edit;
  Check({
      {"caret line", CommentLines, "a|b\ncd", "//ab\n|cd", "Indent"},
      {"last line", CommentLines, "ab\nc|d", "ab\n//cd|", "Indent"},
      {"selection", CommentLines, "a[b\ncd\n]ef\ngh", "//ab\n//cd\n//ef\n|gh", "Indent"},
      {"uncomment", UncommentLines, " //[a\n/\n1 //b //c]\nd", " a\n/\n1 b //c\n|d", "Delete"},
      {"a letter first", UncommentLines, "f() //|x\ny", "f() //x\n|y", ""},
      {"uncomment the last line", UncommentLines, "a\n//b|", "a\nb|", "Delete"},
      {"only the first marker", UncommentLines, "///|/", "//|", "Delete"},
  });
}

TEST(LineCommands, DuplicateMoveAndDelete) {
  using namespace edit;
  Check({
      {"duplicate", DuplicateLines, "a|b\nc", "ab\na|b\nc", "Paste"},
      {"duplicate the last", DuplicateLines, "a\nb|", "a\nb\nb|", "Paste"},
      {"duplicate a selection", DuplicateLines, "a[b\nc\n]d", "ab\nc\na[b\nc\n]d", "Paste"},
      {"up", MoveLinesUp, "a\nb\nc|\nd", "a\nc|\nb\nd", "Drag And Drop"},
      {"up to the top", MoveLinesUp, "a\n[b\nc]", "[b\nc]\na", "Drag And Drop"},
      {"up from the top", MoveLinesUp, "a|\nb", "a|\nb", ""},
      {"down", MoveLinesDown, "a[\nb]\nc\nd", "c\na[\nb]\nd", "Drag And Drop"},
      {"down to the end", MoveLinesDown, "a|\nb", "b\na|", "Drag And Drop"},
      {"down with the line end", MoveLinesDown, "[a\n]b", "b\n[a]", "Drag And Drop"},
      {"down from the end", MoveLinesDown, "a\n|b", "a\n|b", ""},
      {"delete", DeleteLines, "abc\nab|c\na\nb", "abc\na|\nb", "Delete"},
      {"delete the first", DeleteLines, "a|\nb", "b|", "Delete"},
      {"delete the last", DeleteLines, "a\nb|", "a|", "Delete"},
      {"delete the only one", DeleteLines, "ab|c", "|", "Delete"},
      {"delete a selection", DeleteLines, "a[\nb\n]c", "|c", "Delete"},
  });
}

TEST(LineCommands, BookmarksStayWithTheirLines) {
  constexpr uint32_t kA = 1u << 17;
  constexpr uint32_t kB = 1u << 19;
  const std::pair<Command, std::vector<uint32_t>> cases[] = {
      {edit::MoveLinesUp, {kB, kA, 0}},
      {edit::MoveLinesDown, {kA, 0, kB}},
      {edit::DuplicateLines, {kA, kB, 0, 0}},
      {edit::DeleteLines, {kA, 0}},
      {[](EditTarget& t) {
         return t.PlaceCaret({0, 0}), edit::DeleteLines(t);
       },
       {kB, 0}},
      {[](EditTarget& t) {
         return t.PlaceCaret({0, 0}), edit::MoveLinesDown(t);
       },
       {kB, kA, 0}},
  };
  for (const auto& [command, expected] : cases) {
    FakeEditor editor("a\nb|\nc");
    editor.buffer.SetFlagOnLine(0, kA, true);
    editor.buffer.SetFlagOnLine(1, kB, true);
    ASSERT_TRUE(command(editor));
    std::vector<uint32_t> flags;
    flags.reserve(expected.size());
    for (int32_t i = 0; i < editor.buffer.LineCount(); ++i) flags.push_back(editor.buffer.LineFlags(i));
    EXPECT_EQ(flags, expected) << editor.Get();
  }
}

TEST(LineCommands, KeepCarriageReturnsInsideLines) {
  for (const Command& command : {Command(edit::MoveLinesUp), Command(edit::DuplicateLines)}) {
    FakeEditor editor("|");
    TextPosition end;
    editor.buffer.InsertLinesAt(nullptr, {0, 0}, {"a\rb", "c\rd"}, end);
    editor.PlaceCaret({1, 0});
    ASSERT_TRUE(command(editor));
    EXPECT_EQ(editor.buffer.Line(1).size(), 3u) << editor.Get();
    ASSERT_TRUE(editor.Undo());
    EXPECT_EQ(editor.Text(), "a\rb\nc\rd");
  }
}

TEST(Indentation, ShiftsSelectedLinesAndTypesTabs) {
  using namespace edit;
  Check({
      {"tab", TypeTab, "a|b", "a\t|b", "Typing"},
      {"selection", TypeTab, "a[b\n\ncd\n]ef", "\ta[b\n\n\tcd\n]ef", "Indent"},
      {"from a line's start", IndentLines, "[ab\nc]d", "[\tab\n\tc]d", "Indent"},
      {"back", TypeBackTab, "\t\ta[b\n  c\n    d]", "\ta[b\nc\n d]", "Indent"},
      {"back, caret only", TypeBackTab, "  \ta|b", "a|b", "Indent"},
      {"back with nothing to lose", TypeBackTab, "a|b", "a|b", ""},
  });
  EditSettings blanks;
  blanks.keepSpaces = true;
  Check({{"blanks to the stop", TypeTab, "\tab|c", "\tab |c", "Typing"},
         {"a whole stop", TypeTab, "abc|d", "abc   |d", "Typing"},
         {"selection", TypeTab, "[ab]", "[   ab]", "Indent"}},
        blanks);
}

TEST(Indentation, IndentAllFollowsTheBracesOfCode) {
  const char* const before =
      "function f()\n   {\nif (a) { // {\nb = \"{\n  }\";\n/* {\n    x\n*/\n  }\n  #define {\n  \t \n"
      " \t c = '{'; |d = '\\'{';\n} }\nendif\n}}}e\n";
  const char* const after =
      "function f()\n{\n\tif (a) { // {\n\t\tb = \"{\n  }\";\n\t\t/* {\n\t\t\t x\n\t\t*/\n\t}\n#define {\n\n"
      "\tc = '{'; |d = '\\'{';\n} }\nendif\n}}}e\n";
  Check({{"script", edit::IndentAll, before, after, "Indent"},
         {"nothing to do", edit::IndentAll, "a\n{|\n\tb\n}", "a\n{|\n\tb\n}", ""}});
  EditSettings blanks;
  blanks.keepSpaces = true;
  Check({{"blanks", edit::IndentAll, "[{\n\tb]\n{", "[{\n   b]\n   {", "Indent"}}, blanks);
}

TEST(CaseCommands, ChangeTheSelectionByTheCodePage) {
  const auto upper = [](EditTarget& t) { return edit::ChangeCase(t, edit::LetterCase::kUpper); };
  const auto lower = [](EditTarget& t) { return edit::ChangeCase(t, edit::LetterCase::kLower); };
  Check({
      {"upper", upper, "a[b\xe9\n1c]d", "a[B\xc9\n1C]d", "Replace"},
      {"lower", lower, "A[B]C", "A[b]C", "Replace"},
      {"no letter changes", lower, "A[b]C", "A[b]C", ""},
      {"no selection", upper, "a|b", "a|b", ""},
  });
}

TEST(InsertCommands, ReplaceDateAndDragging) {
  using namespace edit;
  setenv("TZ", "UTC-3", 1);
  tzset();
  const auto date = [](EditTarget& t) {
    return InsertDate(t, 86400 * 366 - 3600);
  };  // 1970, three hours east
  const auto move = [](bool copy, TextPosition to) {
    return [=](EditTarget& t) { return MoveText(t, t.Selection(), to, copy); };
  };
  Check({
      {"replace", [](EditTarget& t) { return ReplaceSelectedText(t, "x\ry"); }, "a[b]c", "ax\ny|c",
       "Replace"},
      {"date", date, "a[b]c", "a1971-01-02|c", "Replace"},
      {"drop",
       [](EditTarget& t) {
         return DropText(t, {0, 1}, "x\ny");
       },
       "ab|", "a[x\ny]b", "Drag And Drop"},
      {"move forward", move(false, {1, 1}), "a[b\nc]de", "a[b\nc]de", ""},
      {"move past", move(false, {1, 2}), "a[b\nc]de", "ad[b\nc]e", "Drag And Drop"},
      {"move back", move(false, {0, 0}), "a[b\nc]d", "[b\nc]ad", "Drag And Drop"},
      {"copy", move(true, {0, 0}), "a[b]c", "[b]abc", "Drag And Drop"},
      {"take away", [](EditTarget& t) { return RemoveDraggedText(t, t.Selection()); }, "a[b]c", "a|c",
       "Drag And Drop"},
  });
}

}  // namespace
}  // namespace quill
