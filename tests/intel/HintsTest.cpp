#include <gtest/gtest.h>

#include "intel/outline/OutlineScanner.h"
#include "intel/vocabulary/CommandDatabase.h"
#include "intel/writing/Hints.h"
#include "support/ScriptText.h"

namespace quill {
namespace {

/// Takes the "|" out of a text and tells where it stood.
TextPosition TakeCaret(std::string& text) {
  const size_t at = text.find('|');
  text.erase(at, 1);
  const std::string before = text.substr(0, at);
  const size_t lineStart = before.rfind('\n') == std::string::npos ? 0 : before.rfind('\n') + 1;
  return {static_cast<int32_t>(std::count(before.begin(), before.end(), '\n')),
          static_cast<int32_t>(at - lineStart)};
}

CommandDatabase SomeCommands() {
  CommandDatabase commands;
  commands.Append(std::vector<std::string>{
      "first", "first()", "", "move", "move(entity who, vector way)", "Moves.",  //
      "length", "length(vector v)", "", "plain", "no bracket", "", "panel.pos_x", "pos_x(pixels)", ""});
  return commands;
}

TEST(IsCaretInArgumentList, GoesByTheFirstBracketsOfTheLine) {
  const std::pair<const char*, bool> cases[] = {
      {"move(|", true},
      {"move|(", false},
      {"mov|e(", false},
      {"move(a|, b)", true},
      {"move(a, b|)", true},
      {"move(a, b)|", false},
      {"|", false},
      {"   |", false},
      {"a|, b);", true},
      {"a, b|);", true},
      {"a, b)|;", false},
      {"|a);", true},
      {"f(g(a)|, b)", false},
      {"x = y;|", false},
      {"f(a); g(|", false},
      {"\t\tmo|ve(a)", false},
      {"\t\tmove|(a)", true},
      {"\t\tmove(a|)", false},
      {"\t\tmove(|abc)", true},
      {"\tmove(a|", true},
      {"\tmov|e(", false},
      {"\tmove|(", true},
  };
  for (const auto& [marked, expected] : cases) {
    std::string text = marked;
    const TextPosition caret = TakeCaret(text);
    EXPECT_EQ(IsCaretInArgumentList(ScriptText(text), caret), expected) << marked;
  }
  EXPECT_FALSE(IsCaretInArgumentList(ScriptText("move("), {1, 0}));
  EXPECT_FALSE(IsCaretInArgumentList(ScriptText("move("), {-1, 0}));
}

TEST(OpenCallAt, KnowsNestingStringsCommentsAndEarlierLines) {
  const std::pair<const char*, const char*> cases[] = {
      {"move(|", "move 0"},
      {"move (a, f(b, c), |", "move 2"},
      {"move(a, f(b, |c), d)", "f 1"},
      {"move(a[1, 2], (b + |", "move 1"},
      {"move(\"a, (\", |", "move 1"},
      {"move(a, // b, (\n  c,\n  |", "move 2"},
      {"move(a /* , */, '(', |", "move 2"},
      {"move(a;\nb|", " 0"},
      {"move(a)|", " 0"},
      {"if (x) { y(|", "y 0"},
      {"))) f(|", "f 0"},
  };
  for (const auto& [marked, expected] : cases) {
    std::string text = marked;
    const TextPosition caret = TakeCaret(text);
    const OpenCall call = OpenCallAt(ScriptText(text), caret);
    EXPECT_EQ(call.name + " " + std::to_string(call.argument), expected) << marked;
  }
}

TEST(ArgumentPart, IsWithoutBlanksAndEmptyWhereThereIsNone) {
  const std::string text = "f(number a,  string b )";
  const auto part = [&text](int32_t argument) {
    const TextPart p = ArgumentPart(text, argument);
    return text.substr(p.start, p.end - p.start);
  };
  EXPECT_EQ(part(0), "number a");
  EXPECT_EQ(part(1), "string b");
  EXPECT_EQ(part(2), "");
  EXPECT_EQ(part(-1), "");
  EXPECT_TRUE(ArgumentPart("f()", 0).IsEmpty());
  EXPECT_TRUE(ArgumentPart("no bracket", 0).IsEmpty());
  EXPECT_EQ(ArgumentPart("f(a", 0), (TextPart{2, 3}));
}

TEST(HintText, IsTheCommandAtTheCaretOrTheOneWhoseArgumentsAreWritten) {
  const CommandDatabase commands = SomeCommands();
  const Outline outline = ScanOutlineText(
      "panel Pan {\nvar v;\nfunction steer_far(x)\nfunction Steer (ship, way)\nfunction move(own)\n");
  HintText hint;
  struct Case {
    const char* marked;
    const char* text;
    const char* argument;
  };
  const Case cases[] = {
      {"mo|ve", "move(entity who, vector way)", ""},
      {"MOVE|(", "move(entity who, vector way)", ""},
      {"move(a, b|)", "move(entity who, vector way)", "vector way"},
      {"move(a, length(|b))", "length(vector v)", "vector v"},
      {"move(a, leng|th(b))", "length(vector v)", ""},
      {"mine(|", "", ""},
      {"pan.pos_x| = 1", "pos_x(pixels)", ""},
      {"v.pos_x| = 1", "", ""},
      {"first|", "first()", ""},
      {"steer(a, |", "Steer (ship, way)", "way"},
      {"STEER|", "Steer (ship, way)", ""},
      {"steer(move(|", "move(entity who, vector way)", "entity who"},  // the engine's own counts
      {"steer(length(a), |", "Steer (ship, way)", "way"},
      {"move(steer|", "move(entity who, vector way)", "entity who"},  // a function as an argument
      {"steer_f(|", "", ""},
  };
  for (const Case& c : cases) {
    std::string text = c.marked;
    const TextPosition caret = TakeCaret(text);
    hint.Update(ScriptText(text), caret, std::nullopt, commands, outline);
    EXPECT_EQ(hint.Text(), c.text) << c.marked;
    EXPECT_EQ(hint.Text().substr(hint.Argument().start, hint.Argument().end - hint.Argument().start),
              c.argument)
        << c.marked;
  }
  EXPECT_TRUE(hint.Update(ScriptText("mo"), {0, 2}, "move", commands, outline));
  EXPECT_EQ(hint.Command(), 1) << "the list's entry goes before the word at the caret";
  EXPECT_FALSE(hint.Update(ScriptText("move("), {0, 5}, std::nullopt, commands, outline)) << "the same text";
}

TEST(HintTip, ShowsReplacesAndHidesButNeverFlickers) {
  using enum HintTip::Action;
  HintTip tip;
  EXPECT_EQ(tip.ShowHint(false, true, "f(a)"), kNothing);
  EXPECT_EQ(tip.ShowHint(true, false, "f(a)"), kNothing);
  EXPECT_EQ(tip.ShowHint(true, true, "no bracket"), kNothing);
  EXPECT_EQ(tip.ShowHint(true, true, "f(a)"), kShow);
  EXPECT_EQ(tip.ShowHint(true, true, "f(a)"), kNothing);
  EXPECT_EQ(tip.ShowHint(true, true, "F(a)"), kShow);
  EXPECT_EQ(tip.ShowHint(false, false, ""), kNothing) << "switched off, a visible tip stays";
  EXPECT_TRUE(tip.IsVisible());
  EXPECT_EQ(tip.ShowHint(true, true, ""), kHide);
  EXPECT_EQ(tip.ShowHint(true, true, "F(a)"), kShow);
  EXPECT_EQ(tip.ShowHint(true, false, "F(a)"), kHide);
  EXPECT_EQ(tip.ShowHint(true, true, "F(a)"), kShow);
  tip.Dismissed();
  EXPECT_EQ(tip.ShowHint(true, true, "F(a)"), kShow);
}

}  // namespace
}  // namespace quill
