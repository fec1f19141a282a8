#include <gtest/gtest.h>

#include <map>

#include "intel/outline/Definitions.h"
#include "intel/outline/IncludeFollower.h"
#include "intel/outline/OutlineScanner.h"
#include "support/TempFolder.h"

namespace quill {
namespace {

/// Files in memory.
struct Files {
  std::map<std::string, std::string> texts;
  int reads = 0;

  IncludedFiles Follow(const std::string& script, const IncludeLimits& limits = {}) {
    const ScriptReader read = [this](const std::string& path, size_t most) -> std::optional<std::string> {
      ++reads;
      const auto found = texts.find(path);
      if (found == texts.end() || found->second.size() > most) return std::nullopt;
      return found->second;
    };
    return FollowIncludes(ScanOutlineText(texts.at(script)), script, read, limits);
  }
};

std::string Paths(const IncludedFiles& included) {
  std::string paths;
  for (const auto& file : included.files) paths += file.path + "|";
  for (const auto& missing : included.missing) paths += "?" + missing.name + " in " + missing.fromPath + "|";
  return paths;
}

TEST(FollowIncludes, LooksBesideTheFileThenInThePathFolders) {
  Files files{{{"/g/main.vsl", "path \"lib\";\ninclude <sub\\a.vsl>;\ninclude <far.vsl>;\ninclude <no.h>;\n"},
               {"/g/sub/a.vsl", "include <b.vsl>;\npath \"deep\";\n"},
               {"/g/sub/b.vsl", ""},
               {"/g/b.vsl", "not this one"},
               {"/g/lib/far.vsl", "include <../sub/b.vsl>;\ninclude <d.h>;"},
               {"/g/deep/d.h", "var d;"}}};
  EXPECT_EQ(Paths(files.Follow("/g/main.vsl")),
            "/g/sub/a.vsl|/g/sub/b.vsl|/g/lib/far.vsl|/g/deep/d.h|?no.h in /g/main.vsl|");
}

TEST(FollowIncludes, ReadsEachFileOnceHoweverTheyIncludeOneAnother) {
  Files files{{{"/g/a.vsl", "include <b.vsl>;\ninclude <./a.vsl>;"},
               {"/g/b.vsl", "include <a.vsl>;\ninclude <b.vsl>;\ninclude <x/../b.vsl>;"}}};
  EXPECT_EQ(Paths(files.Follow("/g/a.vsl")), "/g/b.vsl|");
  EXPECT_EQ(files.reads, 1);
}

TEST(FollowIncludes, StopsAtItsLimits) {
  Files chain;
  for (int i = 0; i < 50; ++i) {
    chain.texts["/" + std::to_string(i)] = "include <" + std::to_string(i + 1) + ">;";
  }
  IncludedFiles included = chain.Follow("/0", {.depth = 10});
  EXPECT_EQ(included.files.size(), 10u);
  EXPECT_TRUE(included.limitReached);
  included = chain.Follow("/0", {.depth = 100, .files = 7});
  EXPECT_EQ(included.files.size(), 7u);
  EXPECT_TRUE(included.limitReached);
  included = chain.Follow("/0", {.depth = 100, .bytes = 30});
  EXPECT_EQ(included.files.size(), 2u);
  EXPECT_EQ(Paths(included), "/1|/2|?3 in /2|") << "too large for what is left";
}

TEST(FollowIncludes, ReadsFilesAndRefusesFolders) {
  const TempFolder folder;
  folder.Write("a.vsl", "var a;");
  EXPECT_EQ(ReadScriptFile(folder.Path("a.vsl"), 6), "var a;");
  EXPECT_EQ(ReadScriptFile(folder.Path("a.vsl"), 5), std::nullopt);
  EXPECT_EQ(ReadScriptFile(folder.Path(""), 100), std::nullopt);
  EXPECT_EQ(ReadScriptFile(folder.Path("none"), 100), std::nullopt);
}

TEST(Definitions, PreferTheFunctionsOwnThenTheScriptsThenAnInclude) {
  Files files{{{"/m.vsl",
                "include <i.vsl>;\n"
                "function f()\n{\n\tvar n;\n\tn = Speed;\n}\n"
                "function g()\n{\n\tvar n;\n\tn = 1;\n}\n"
                "var n;\n"
                "var speed;\n"},
               {"/i.vsl", "var SPEED;\nentity* other;\naction Go\n"}}};
  Outline outline = ScanOutlineText(files.texts["/m.vsl"]);
  MergeIncluded(outline, files.Follow("/m.vsl"));
  const Definitions definitions(outline);
  const auto find = [&definitions](std::string_view name, int32_t line, int32_t start) {
    const auto place = definitions.Find(name, line, start);
    return !place ? std::string("none")
                  : std::to_string(place->file) + ":" + std::to_string(place->at.line) + ":" +
                        std::to_string(place->at.character);
  };
  EXPECT_EQ(find("n", 4, 1), "0:3:5");
  EXPECT_EQ(find("N", 9, 6), "0:8:5");
  EXPECT_EQ(find("n", 11, -1), "0:11:4") << "outside of functions: the one that is not indented";
  EXPECT_EQ(find("speed", 4, 1), "0:12:4") << "the script's own before the included";
  EXPECT_EQ(find("OTHER", 4, 1), "1:1:8");
  EXPECT_EQ(find("go", 4, 1), "1:2:7");
  EXPECT_EQ(find("nowhere", 4, 1), "none");
}

TEST(JumpHistory, ComesBackInReverseAndForgetsTheOldest) {
  JumpHistory history;
  for (int32_t i = 0; i <= static_cast<int32_t>(JumpHistory::kMostPlaces); ++i) {
    history.Push({"a.vsl", {i, 0}});
    history.Push({"a.vsl", {i, 0}});
  }
  int32_t expected = static_cast<int32_t>(JumpHistory::kMostPlaces);
  while (!history.IsEmpty()) EXPECT_EQ(history.Pop().at.line, expected--);
  EXPECT_EQ(expected, 0);
  EXPECT_THROW(history.Pop(), std::invalid_argument);
}

TEST(IdentifierAt, ContainsTheColumnOrEndsThere) {
  const std::string_view line =
      "move(ship_1, \xFC"
      "ber)";
  const auto at = [line](int32_t column) { return std::string(IdentifierAt(line, column).In(line)); };
  EXPECT_EQ(at(0), "move");
  EXPECT_EQ(at(4), "move");
  EXPECT_EQ(at(5), "ship_1");
  EXPECT_EQ(at(12), "");
  EXPECT_EQ(at(15),
            "\xFC"
            "ber");
  EXPECT_EQ(at(99), "");
  EXPECT_EQ(IdentifierAt("", -3).end, 0);
}

}  // namespace
}  // namespace quill
