// Outlines of the samples and of odd lines lie in tests/golden beside one another. A mismatch leaves the
// new form in a file with ".new" appended; look at it, and rename it when it is right.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>

#include "intel/jumper/OutlineFilter.h"
#include "intel/jumper/OutlineLists.h"
#include "intel/outline/EnclosingFunction.h"
#include "intel/outline/OutlineScanner.h"
#include "intel/outline/ScriptFacts.h"
#include "support/Paths.h"
#include "support/ScriptText.h"
#include "support/TempFolder.h"

namespace quill {
namespace {

namespace fs = std::filesystem;
const fs::path kSource = QUILL_SOURCE_DIR;
const fs::path kGolden = kSource / "tests/golden";
const fs::path kSamples = kSource / "samples/lander";

std::string ReadAll(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

/// False when they differ: then the new form is left beside the old one.
bool IsAsGolden(const fs::path& golden, const std::string& actual) {
  const fs::path fresh(golden.string() + ".new");
  if (fs::exists(golden) && ReadAll(golden) == actual) {
    fs::remove(fresh);
    return true;
  }
  std::ofstream(fresh, std::ios::binary) << actual;
  return false;
}

void CompareWithGolden(const fs::path& golden, const std::string& actual) {
  EXPECT_TRUE(IsAsGolden(golden, actual)) << "differs: compare " << golden << " with its .new";
}

std::string Texts(const Outline& outline, OutlineRoot root) {
  std::string texts;
  for (const OutlineItem& item : outline.Items(root)) texts += "[" + item.text + "]";
  return texts;
}

TEST(GoldenOutline, LooksAsItDidWhenAPersonLastLooked) {
  std::map<fs::path, fs::path> scripts = {{kGolden / "outline-odd.vsl", kGolden / "outline-odd.outline"}};
  for (const auto& file : fs::directory_iterator(kSamples)) {
    if (!file.is_regular_file()) continue;
    scripts[file.path()] = kGolden / "lander" / (file.path().filename().string() + ".outline");
  }
  EXPECT_EQ(scripts.size(), 13u);
  for (const auto& [script, form] : scripts) {
    CCrystalTextBuffer buffer;
    ASSERT_TRUE(buffer.LoadFile(script.string())) << script;
    const std::string described = DescribeOutline(ScanOutline(buffer));
    CompareWithGolden(form, described);
    EXPECT_EQ(described, DescribeOutline(ScanOutlineText(ReadAll(script)))) << script;
  }
}

TEST(GoldenOutline, OfASampleWithItsIncludes) {
  CCrystalTextBuffer buffer;
  const std::string path = (kSamples / "main.vsl").string();
  ASSERT_TRUE(buffer.LoadFile(path));
  const auto facts = ReadScriptFacts(buffer, path, "vsl,wav", ReadScriptFile);
  std::string described;
  for (const std::string& file : facts->includedPaths)
    described += "file " + fs::relative(file, kSamples).string() + '\n';
  CompareWithGolden(kGolden / "lander/main.vsl.with-includes.outline",
                    described + DescribeOutline(facts->outline));
}

TEST(GoldenOutline, AMismatchLeavesTheNewFormBesideTheOld) {
  const TempFolder folder;
  const std::string golden = folder.Write("x.outline", "old");
  EXPECT_FALSE(IsAsGolden(golden, "new"));
  EXPECT_EQ(folder.Read("x.outline") + folder.Read("x.outline.new"), "oldnew");
  EXPECT_TRUE(IsAsGolden(golden, "old"));
  EXPECT_EQ(folder.Names(), std::set<std::string>{"x.outline"}) << "right again, nothing is left to look at";
}

TEST(OutlineScanner, ListsNamedFilesByTheirExtension) {
  const std::string_view script = "bmap a = <a.bmp>;\nbmap b = <b.tar.gz>;\nif (a < b || b > c)\n";
  const auto named = [script](std::string_view only) {
    std::string names;
    for (const NamedFile& file : ScanOutlineText(script, only).NamedFiles()) names += file.name + "|";
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

TEST(OutlineScanner, CutsBytesIntoTheLinesThatABufferHas) {
  const TempFolder folder;
  for (const std::string text :
       {"var a;\rvar b;\rvar c;", "var a;\n\rvar b;\n\rvar c;", "var a;\r\nvar b;\nvar c;",
        "var a;\nvar b;\r\nvar c;", "\n\r\n", "\r", "", "var a;\n", "\r\n\r\nvar a;"}) {
    CCrystalTextBuffer buffer;
    ASSERT_TRUE(buffer.LoadFile(folder.Write("a.vsl", text)));
    EXPECT_EQ(DescribeOutline(ScanOutlineText(text)), DescribeOutline(ScanOutline(buffer)))
        << testing::PrintToString(text);
  }
}

TEST(OutlineLists, ShowNamesAndLeaveOutWhatDefinesNone) {
  Outline outline = ScanOutlineText(
      "include <b.VSC>;\nentity *ship;\nvar_nsave z = 1;\nvar A[2] = 3;\n"
      "font = arial;\n\tvar inner;\nstarter go()\naction fly {\nmake <B.vsc>;\n");
  IncludedFiles included;
  included.files.push_back({"/p.vsl", ScanOutlineText("var m;\nvar a;\nsky s = <s.tga>;\n")});
  MergeIncluded(outline, included);
  const auto rows = [](const OutlineRows& all) {
    std::string text;
    for (const OutlineRow& row : all) {
      text += std::string(row.Name()) + "(" + std::string(row.text.substr(row.nameLength)) + ")" +
              (row.file == 0 ? "" : "'") + " ";
    }
    return text;
  };
  EXPECT_EQ(rows(VariableRows(outline, RowOrder::kAlphabetical)), "a()' A([2] = 3) m()' z( = 1) ");
  EXPECT_EQ(rows(VariableRows(outline, RowOrder::kOfText)), "z( = 1) A([2] = 3) m()' a()' ");
  EXPECT_EQ(rows(ElementRows(outline, RowOrder::kAlphabetical)),
            "A() a()' fly() go(()) inner() m()' s()' ship() z() b.VSC() ");
  EXPECT_EQ(rows(ElementRows(outline, RowOrder::kOfText)),
            "ship() z() A() inner() go(()) fly() m()' a()' s()' b.VSC() ")
      << "a file that is named twice is listed once";
  std::string icons;
  const Outline files =
      ScanOutlineText("include <a.h>;\nbmap b = <b.PCX>;\nsound c = <c.ogg>;\nmodel <d.mdl>\nx <e>");
  for (const OutlineRow& row : ElementRows(files, RowOrder::kOfText))
    icons += std::string(RowIcon(row)) + " ";
  EXPECT_EQ(icons,
            "kind-object kind-object document-script document-image document-sound document-model document ");
}

TEST(PlaceNow, IsTheNearestOneWithTheTextElseWithTheName) {
  const Outline now =
      ScanOutlineText("var n = 2;\n\n\nvar n = 1;\nvar n = 1;\nentity* ship;\nx <f.x>\n\nx <f.x>\n");
  const auto line = [&now](const char* text, OutlineRoot root, int32_t was, int32_t file = 0) {
    return PlaceNow(OutlineItem{text, {was, 7}, file}, root, now).line;
  };
  EXPECT_EQ(line("n = 1", OutlineRoot::kVariables, 0), 3);
  EXPECT_EQ(line("n = 1", OutlineRoot::kVariables, 9), 4);
  EXPECT_EQ(line("n = 7", OutlineRoot::kVariables, 0), 0);
  EXPECT_EQ(line("ship", OutlineRoot::kEntities, 9), 5);
  EXPECT_EQ(line("gone", OutlineRoot::kVariables, 9), 9);
  EXPECT_EQ(line("n = 1", OutlineRoot::kVariables, 0, 1), 0) << "in an included file";
  EXPECT_EQ(PlaceNow(NamedFile{"f.x", {7, 0}}, now).line, 6);
  EXPECT_EQ(PlaceNow(NamedFile{"g.x", {7, 0}}, now).line, 7);
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
    const auto entry = functions.Around(script, line);
    around += !entry ? '.'
                     : "FAS"[entry->root == OutlineRoot::kFunctions ? 0
                             : entry->root == OutlineRoot::kActions ? 1
                                                                    : 2];
  }
  EXPECT_EQ(around, ".FFFFF.AAAAS");
  EXPECT_FALSE(functions.Around(script, 99));

  ScriptText endless("function f()\n{\n" + std::string(600000, 'x') + "\n" + std::string(600000, 'x') +
                     "\n\n");
  const EnclosingFunction one(ScanOutline(endless));
  EXPECT_TRUE(one.Around(endless, 3));
  EXPECT_FALSE(one.Around(endless, 4)) << "nobody writes so much into one function";
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
