#include <gtest/gtest.h>

#include "intel/outline/OutlineScanner.h"
#include "intel/vocabulary/CommandDatabase.h"
#include "intel/writing/CallInsertion.h"
#include "intel/writing/CodeTemplates.h"
#include "intel/writing/Completion.h"
#include "intel/writing/CompletionDetail.h"
#include "intel/writing/DefinitionBody.h"
#include "intel/writing/PopupPlace.h"
#include "support/ScriptText.h"
#include "text/parse/ScriptColouring.h"

namespace quill {
namespace {

std::string Rows(const CompletionList& list) {
  std::string rows;
  for (size_t i = 0; i < list.Count(); ++i) {
    const std::string_view icon = CompletionIcon(list.Kind(i));
    rows += std::string(list.Name(i)) + ":" + std::string(icon.substr(icon.find('-') + 1)) + " ";
  }
  return rows;
}

std::shared_ptr<const CompletionNames> SomeNames() {
  CommandDatabase commands;
  commands.Append(std::vector<std::string>{"pan_show", "", "", "speed_up", "", "", "wait", "", ""});
  NameSet keywords;
  for (const char* word : {"while", "switch", "wait"}) keywords.Insert(word);
  return std::make_shared<const CompletionNames>(
      ScanOutlineText("var Ship_Speed;\nvar speed;\nvar SPEED;\nfunction stop_panel()\naction spin\n"
                      "panel* my_pan;\nstarter wait()\ntext = \"junk\";\nvar " +
                      std::string(2000, 'x') + ";\n"),
      commands, keywords);
}

TEST(CompletionList, ShowsBeginningsThenContainedThenScattered) {
  CompletionList list(SomeNames(), "SP");
  EXPECT_EQ(Rows(list),
            "speed:variable speed_up:command spin:action Ship_Speed:variable stop_panel:function ");
  list.Narrow("spe");
  EXPECT_EQ(Rows(list), "speed:variable speed_up:command Ship_Speed:variable stop_panel:function ");
  list.Narrow("speedu");
  EXPECT_EQ(Rows(list), "speed_up:command ");
  EXPECT_EQ(list.Command(0), 1);
  list.Narrow("spe");
  EXPECT_EQ(list.Count(), 4u);
  list.Narrow("w");
  EXPECT_EQ(Rows(list), "wait:function while:keyword pan_show:command switch:keyword ")
      << "the script's own name counts";
  list.Narrow("zzz");
  EXPECT_EQ(list.Count(), 0u);
  list.Narrow("");
  EXPECT_EQ(list.Count(), 10u);
}

TEST(CompletionList, NarrowedStepByStepIsTheSameAsOpenedAnew) {
  const auto names = SomeNames();
  CompletionList list(names, "");
  for (const char* begun : {"s", "sp", "spn", "sp", "p", "pa", "an", "n", "_", "_s"}) {
    list.Narrow(begun);
    EXPECT_EQ(Rows(list), Rows(CompletionList(names, begun))) << begun;
  }
}

TEST(CompletionAt, TellsWordsMembersAndPlacesThatAreNoCode) {
  const Outline outline = ScanOutlineText("panel* Pan;\nvar number;\n");
  const auto at = [&outline](std::string_view line, int32_t column, uint32_t state = 0) {
    const auto request = CompletionAt(line, column, state, outline);
    if (!request) return std::string("none");
    return std::string(request->object == nullptr ? "" : request->object->prefix) +
           std::string(request->begun) + "@" + std::to_string(request->start) + "-" +
           std::to_string(request->end) + (request->inCode ? "" : " quiet");
  };
  EXPECT_EQ(at("x = pan_sh;", 7), "pan@4-10");
  EXPECT_EQ(at("", 0), "@0-0");
  EXPECT_EQ(at("pan.", 4), "panel.@4-4");
  EXPECT_EQ(at("PAN.pos_x", 6), "panel.po@4-9");
  EXPECT_EQ(at("camera.", 7), "view.@7-7");
  EXPECT_EQ(at("me.sk", 5), "entity.sk@3-5");
  EXPECT_EQ(at("number.", 7), "none");
  EXPECT_EQ(at("unknown.", 8), "none");
  EXPECT_EQ(at("1.", 2), "none");
  EXPECT_EQ(at(".", 1), "none");
  EXPECT_EQ(at("// pan.", 7), "panel.@7-7 quiet");
  EXPECT_EQ(at("\"pan.", 5), "panel.@5-5 quiet");
  EXPECT_EQ(at("pan.", 4, parse_state::kBlockComment), "panel.@4-4 quiet");
  EXPECT_EQ(at(std::string(70000, ' ') + "pan.", 70004), "panel.@70004-70004 quiet");
  EXPECT_EQ(at("*/ pan.", 7, parse_state::kBlockComment), "panel.@7-7");
}

TEST(CompletionNames, HoldTheMembersOfAKind) {
  const auto members = std::make_shared<const CompletionNames>(*FindObjectKind(OutlineRoot::kPanels));
  EXPECT_EQ(Rows(CompletionList(members, "pos")), "pos_x:variable pos_y:variable ");
  EXPECT_EQ(FindObjectKind(OutlineRoot::kSounds), nullptr);
  for (const ObjectKind& kind : ObjectKinds()) EXPECT_EQ(CompletionNames(kind).Count(), kind.members.size());
}

TEST(CompletionKeys, LeaveEnterToTheTextUntilARowWasChosenOrTheListWasAskedFor) {
  using enum CompletionKey;
  CompletionKeys keys;
  EXPECT_EQ(keys.On(kEnter), CompletionStep::kTypeAndClose);
  EXPECT_EQ(keys.On(kTab), CompletionStep::kTake);
  EXPECT_EQ(keys.On(kEscape), CompletionStep::kClose);
  EXPECT_EQ(keys.On(kOther), CompletionStep::kTypeAndClose);
  EXPECT_EQ(keys.On(kDown), CompletionStep::kConfirm) << "the first row, before the second";
  EXPECT_EQ(keys.On(kDown), CompletionStep::kMove);
  EXPECT_EQ(keys.On(kEnter), CompletionStep::kTake);
  EXPECT_EQ(keys.On(kWordCharacter), CompletionStep::kTypeAndNarrow);
  EXPECT_EQ(keys.On(kEnter), CompletionStep::kTypeAndClose) << "typed on: the choice is void";
  keys.Chose();
  EXPECT_EQ(keys.On(kEnter), CompletionStep::kTake);
  EXPECT_EQ(CompletionKeys().On(kUpOrPage), CompletionStep::kMove);

  const struct {
    bool asked, chosen, idle;
    CompletionStep enter, tab;
  } rows[] = {
      {false, false, false, CompletionStep::kTypeAndClose, CompletionStep::kTake},
      {false, false, true, CompletionStep::kTypeAndClose, CompletionStep::kTypeAndClose},
      {false, true, true, CompletionStep::kTake, CompletionStep::kTake},
      {true, false, false, CompletionStep::kTake, CompletionStep::kTake},
      {true, false, true, CompletionStep::kTypeAndClose, CompletionStep::kTake},
      {true, true, true, CompletionStep::kTake, CompletionStep::kTake},
  };
  for (const auto& row : rows) {
    CompletionKeys one(row.asked);
    if (row.chosen) one.Chose();
    EXPECT_EQ(one.On(kEnter, row.idle), row.enter) << row.asked << row.chosen << row.idle;
    EXPECT_EQ(one.On(kTab, row.idle), row.tab) << row.asked << row.chosen << row.idle;
  }
}

TEST(CompletionNames, HaveTemplatesBesideWhatElseHasTheirName) {
  NameSet keywords;
  keywords.Insert("while");
  const auto names = std::make_shared<const CompletionNames>(
      ScanOutlineText("var loop_time;"), CommandDatabase(), keywords,
      std::vector<std::string>{"Loop", "while", "two words", "\xC3\xA4"});
  const CompletionList list(names, "");
  EXPECT_EQ(Rows(list), "Loop:template loop_time:variable while:template while:keyword ");
  EXPECT_TRUE(list.HasBeginnings());
  EXPECT_FALSE(CompletionList(names, "oop").HasBeginnings());
  EXPECT_FALSE(CompletionList(names, "zzz").HasBeginnings());
  EXPECT_EQ(list.LongestRows(2), (std::vector<size_t>{1, 2}));
}

TEST(OpensByItself, BehindThreeLettersOfAWordThatIsNotNewInCode) {
  const struct {
    const char* line;  ///< the caret is at its end
    bool opens;
  } rows[] = {
      {"gau", true},
      {"ga", false},
      {"x = gaug", true},
      {"f(a, gau", true},
      {"123", false},
      {"x = 1gau", false},
      {"// gau", false},
      {"s = \"gau", false},
      {"#gau", false},
      {"var gau", false},
      {"\tvar gau", false},
      {"var x = gau", true},
      {"var", true},
      {"entity* gau", false},
      {"panel gau", false},
      {"panel p { gau", true},
      {"function gau", false},
      {"function f(gau", false},
      {"function f() { gau", true},
      {"action gau", false},
      {"view = gau", true},
      {"while (gau", true},
  };
  for (const auto& row : rows) {
    const std::string_view line = row.line;
    const auto request = CompletionAt(line, static_cast<int32_t>(line.size()), 0, Outline());
    EXPECT_EQ(request && OpensByItself(line, *request), row.opens) << line;
  }
}

TEST(DefinitionBodyAt, IsTheKindWhereAMemberMayBegin) {
  const struct {
    const char* text;  ///< "|" is the caret
    const char* kind;
  } rows[] = {
      {"panel p\n{\n\t|", "panel."},
      {"panel p {|", "panel."},
      {"panel p\n\n// { }\n{\n\tpos_x = 1;\n\t|", "panel."},
      {"text t\n{\n\tcontent = \"{ ; }\"; |", "text."},
      {"entity e\n{\n\tmodel = <a.mdl>; // x = {\n |", "entity."},
      {"panel p\n{\n\tpicture = |", ""},
      {"text t\n{\n\tcontent = \"a\",\n|", ""},
      {"panel p\n{\n}\n|", ""},
      {"panel* p;\n|", ""},
      {"function f()\n{\n\t|", ""},
      {"function f()\n{\n\tif (x)\n\t{\n\t\t|", ""},
      {"function f()\n{\n\tpanel* p;\n\twhile (1) { |", ""},
      {"sound s\n{\n|", ""},
      {"|", ""},
  };
  for (const auto& row : rows) {
    std::string text = row.text;
    const size_t at = text.find('|');
    text.erase(at);
    ScriptText script(text);
    const std::vector<uint32_t> states = script.ParseFromTop();
    const ObjectKind* kind = DefinitionBodyAt(
        script, script.EndOfText(), [&states](int32_t line) { return states[static_cast<size_t>(line)]; });
    EXPECT_EQ(kind == nullptr ? "" : kind->prefix, row.kind) << row.text;
  }
}

TEST(CallForm, IsWhatStandsBetweenTheBracketsOfTheParameters) {
  EXPECT_EQ(FormOfCall("wait(number frames)"), CallForm::kArguments);
  EXPECT_EQ(FormOfCall("game_exit( )"), CallForm::kNothingIn);
  EXPECT_EQ(FormOfCall("broken("), CallForm::kArguments);
  EXPECT_EQ(FormOfCall("frame_count"), CallForm::kNameOnly);
  EXPECT_EQ(FormOfCall(""), CallForm::kNameOnly);
}

TEST(CompletionDetail, TellsHowTheSelectedNameIsUsed) {
  CommandDatabase commands;
  commands.Append(std::vector<std::string>{"", "", "", "wait", "wait(number frames)",
                                           "Stops for a while. Others go on.#10#13More.", "bare", "", ""});
  NameSet keywords;
  keywords.Insert("while");
  const Outline outline =
      ScanOutlineText("var speed = 5;\nfunction walk(now)\nvar wide = " + std::string(5000, '1') + ";\n");
  CodeTemplates templates;
  templates.Add("loop", "while ($1)\n{\n\t$0\n}");
  templates.Add("long", std::string(100, '\n'));
  const auto names = std::make_shared<const CompletionNames>(outline, commands, keywords, templates.Names());
  const auto detail = [&](const char* begun) {
    const CompletionDetail d =
        DetailOf(CompletionList(names, begun), 0, nullptr, commands, outline, templates);
    return d.heading + "|" + d.text;
  };
  EXPECT_EQ(detail("wait"), "wait(number frames)|Stops for a while.");
  EXPECT_EQ(detail("bare"), "bare|");
  EXPECT_EQ(detail("speed"), "speed = 5|");
  EXPECT_EQ(detail("walk"), "walk(now)|");
  EXPECT_EQ(detail("while"), "while|");
  EXPECT_LT(detail("wide").size(), 400u);
  EXPECT_EQ(detail("loop"), "loop|while ()\n{\n    \n}");
  EXPECT_EQ(detail("long"), "long|" + std::string(11, '\n') + "...");
  const ObjectKind* panel = FindObjectKind(OutlineRoot::kPanels);
  const CompletionList members(std::make_shared<const CompletionNames>(*panel), "pos");
  const CompletionDetail member = DetailOf(members, 0, panel, commands, outline, templates);
  EXPECT_EQ(member.heading + "|" + member.text, "panel.pos_x|upper left corner, in pixels of the screen");
}

TEST(PlacePopup, NeverCoversItsLine) {
  const PixelRect screen{0, 0, 1000, 800};
  struct Case {
    PixelRect anchor;
    int width, height;
    PopupSide wanted;
    int x, y;
  };
  const Case cases[] = {
      {{100, 100, 0, 20}, 200, 150, PopupSide::kBelow, 100, 120},
      {{100, 300, 0, 20}, 200, 150, PopupSide::kAbove, 100, 150},
      {{100, 700, 0, 20}, 200, 150, PopupSide::kBelow, 100, 550},
      {{100, 100, 0, 20}, 200, 150, PopupSide::kAbove, 100, 120},
      {{950, 100, 0, 20}, 200, 150, PopupSide::kBelow, 800, 120},
      {{-50, 100, 0, 20}, 200, 150, PopupSide::kBelow, 0, 120},
      {{100, 300, 0, 20}, 1200, 600, PopupSide::kBelow, 0, 320},
      {{100, 500, 0, 20}, 200, 600, PopupSide::kBelow, 100, -100},
  };
  for (const Case& c : cases) {
    const PixelRect place = PlacePopup(c.anchor, c.width, c.height, screen, c.wanted);
    EXPECT_EQ(place, (PixelRect{c.x, c.y, c.width, c.height})) << c.anchor.x << "," << c.anchor.y;
  }
}

}  // namespace
}  // namespace quill
