// Outlines of the samples and of odd lines lie in tests/golden beside one another. A mismatch leaves the
// new form in a file with ".new" appended; look at it, and rename it when it is right.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "intel/EnclosingFunction.h"
#include "intel/OutlineFilter.h"
#include "intel/OutlineScanner.h"
#include "support/ScriptText.h"

namespace quill {
namespace {

namespace fs = std::filesystem;
const fs::path kSource = QUILL_SOURCE_DIR;

std::string ReadAll(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

void CompareWithGolden(const fs::path& golden, const std::string& actual) {
  const fs::path fresh(golden.string() + ".new");
  if (fs::exists(golden) && ReadAll(golden) == actual) {
    fs::remove(fresh);
    return;
  }
  std::ofstream(fresh, std::ios::binary) << actual;
  ADD_FAILURE() << "differs: compare " << golden << " with " << fresh;
}

std::string Texts(const Outline& outline, OutlineRoot root) {
  std::string texts;
  for (const OutlineItem& item : outline.Items(root)) texts += "[" + item.text + "]";
  return texts;
}

TEST(GoldenOutline, LooksAsItDidWhenAPersonLastLooked) {
  const fs::path golden = kSource / "tests/golden";
  std::vector<std::pair<fs::path, fs::path>> scripts = {
      {golden / "outline-odd.vsl", golden / "outline-odd.outline"}};
  for (const char* name : {"main.vsl", "ship.vsl", "hud.vsl", "menu.vsl", "lander.h"}) {
    scripts.emplace_back(kSource / "samples/lander" / name,
                         golden / "lander" / (std::string(name) + ".outline"));
  }
  for (const auto& [script, form] : scripts) {
    CCrystalTextBuffer buffer;
    ASSERT_TRUE(buffer.LoadFile(script.string())) << script;
    const std::string described = DescribeOutline(ScanOutline(buffer));
    CompareWithGolden(form, described);
    EXPECT_EQ(described, DescribeOutline(ScanOutlineText(ReadAll(script)))) << script;
  }
}

TEST(OutlineScanner, ListsNamedFilesByTheirExtension) {
  const std::string_view script = "bmap a = <a.bmp>;\nbmap b = <b.tar.gz>;\nif (a < b || b > c)\n";
  const auto named = [script](std::string_view only) {
    std::string names;
    for (const NamedFile& file : ScanOutlineText(script, only).namedFiles) names += file.name + "|";
    return names;
  };
  EXPECT_EQ(named(""), "a.bmp|b.tar.gz| b || b |");
  EXPECT_EQ(named("pcx,bmp"), "a.bmp| b || b |") << "an empty extension occurs in every list";
  EXPECT_EQ(named("wav,tar.gz"), "b.tar.gz| b || b |");
}

TEST(OutlineScanner, GivesNamesToTheColouringInLowerCase) {
  NameSet functions, variables;
  CollectNames(ScanOutlineText("VAR Speed;\nentity *Ship;\nfunction Go(a)\nACTION Fly\nstarter Init()\n"
                               "text = \"junk\";\n"),
               functions, variables);
  EXPECT_EQ(functions.Words(), (std::vector<std::string>{"go", "fly"}));
  EXPECT_EQ(variables.Words(), (std::vector<std::string>{"speed", "ship", "init"}));
}

TEST(OutlineScanner, SortsByWindows1252WithoutRegardToCase) {
  EXPECT_EQ(Texts(ScanOutlineText("var b;\nvar A;\nvar \xE4;\nvar \xC4z;\nvar B;\nvar same_prefix_2;\n"
                                  "var SAME_PREFIX_1;\nvar a;\n"),
                  OutlineRoot::kVariables),
            "[A][a][b][B][SAME_PREFIX_1][same_prefix_2][\xE4][\xC4z]");
}

TEST(OutlineScanner, SurvivesEveryPrefixOfAScriptAndVeryLongNames) {
  const std::string script = ReadAll(kSource / "tests/golden/outline-odd.vsl");
  const size_t whole = ScanOutlineText(script).elements.size();
  for (size_t length = 0; length < script.size(); ++length) {
    // Cut inside a line, that line's name may be new and may hide a later one.
    EXPECT_LE(ScanOutlineText(std::string_view(script).substr(0, length)).elements.size(), whole + 1);
  }
  const std::string name(10000, 'n');
  const Outline outline =
      ScanOutlineText("var " + name + " = 1;\nfunction " + name + "()\nvar " + std::string(70000, 'x'));
  ASSERT_EQ(outline.elements.size(), 1u);
  EXPECT_EQ(outline.elements[0].name, name);
  EXPECT_EQ(Texts(outline, OutlineRoot::kFunctions), "[" + name + "()]");
}

TEST(EnclosingFunction, IsTheOneWhoseBracesAreStillOpen) {
  ScriptText script(
      "var a;\n"
      "function one()\n{\n  x = \"}\"; // }\n  if (a) { b(); }\n}\n"
      "\n"
      "action two {\n  /* } */\n  y();\n}\n"
      "starter three()");
  const EnclosingFunction functions(ScanOutline(script));
  std::string around;
  for (int32_t line = 0; line < script.LineCount(); ++line) {
    const EnclosingFunction::Entry* entry = functions.Around(script, line);
    around += entry == nullptr ? '.'
                               : "FAS"[entry->root == OutlineRoot::kFunctions ? 0
                                       : entry->root == OutlineRoot::kActions ? 1
                                                                              : 2];
  }
  EXPECT_EQ(around, ".FFFFF.AAAAS");
  EXPECT_EQ(functions.Around(script, 99), nullptr);
}

TEST(OutlineFilter, WantsAllTypedWordsInAnyCaseOrTheRootsName) {
  const Outline outline = ScanOutlineText("var ship_speed;\nvar Speed_Max;\nvar fuel;\npanel pan;\n");
  const auto shown = FilterOutline(outline, OutlineFilter(" SPEED  max"));
  EXPECT_EQ(shown[static_cast<size_t>(OutlineRoot::kVariables)], std::vector<uint32_t>{2});
  EXPECT_TRUE(shown[static_cast<size_t>(OutlineRoot::kPanels)].empty());
  EXPECT_EQ(
      FilterOutline(outline, OutlineFilter("vari"))[static_cast<size_t>(OutlineRoot::kVariables)].size(), 3u);
  EXPECT_EQ(FilterOutline(outline, OutlineFilter("  "))[static_cast<size_t>(OutlineRoot::kPanels)].size(),
            1u);
}

}  // namespace
}  // namespace quill
