// Every piece of script in the language's reference and in the manual runs and does what stands beside it.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "support/Paths.h"
#include "tests/documents/Sample.h"

namespace documents {
namespace {

namespace fs = std::filesystem;

const fs::path kSource = QUILL_SOURCE_DIR;

std::string ReadAll(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

std::string Stage() {
  return ReadAll(kSource / "tests/documents/stage.vsl");
}

std::string VerdictOn(const std::string& document) {
  std::vector<std::string> problems;
  std::string all;
  for (const Sample& sample : SamplesOf("page.md", document, problems)) all += Verdict(sample, Stage());
  for (const std::string& problem : problems) all += problem + "\n";
  return all;
}

class Documents : public testing::TestWithParam<fs::path> {};

TEST_P(Documents, HoldOnlySamplesThatDoWhatStandsBesideThem) {
  std::vector<std::string> problems;
  const std::string stage = Stage();
  for (const Sample& sample : SamplesOf(GetParam().filename().string(), ReadAll(GetParam()), problems)) {
    EXPECT_EQ(Verdict(sample, stage), "");
  }
  EXPECT_EQ(problems, std::vector<std::string>{});
}

std::vector<fs::path> Pages() {
  std::vector<fs::path> pages = {kSource / "docs/vesper.md"};
  for (const auto& entry : fs::directory_iterator(kSource / "docs/manual")) {
    if (entry.path().extension() == ".md") pages.push_back(entry.path());
  }
  std::sort(pages.begin(), pages.end());
  return pages;
}

INSTANTIATE_TEST_SUITE_P(All, Documents, testing::ValuesIn(Pages()),
                         [](const auto& info) { return info.param.stem().string(); });

TEST(Samples, OfEachKindRunAndTheirFaultsAreFound) {
  // A piece that is right, of each kind.
  EXPECT_EQ(VerdictOn("```vesper script\nfunction main() { print(\"a\"); }\n```\n\n```output\na\n```\n"), "");
  EXPECT_EQ(VerdictOn("```vesper body\nprint(\"b\");\n```\n```output\nb\n```\n"), "");
  EXPECT_EQ(
      VerdictOn("```vesper action\nme.x += 2;\nprint_num(\"x\", me.x);\n```\n```output\nx: 2.000\n```\n"),
      "");
  EXPECT_EQ(
      VerdictOn(
          "```vesper definitions\nfunction inner(a) { print(\"no\"); }\n"
          "function outer() { print(\"started\"); inner2(); }\nfunction inner2() { print(\"once\"); }\n"
          "action fly { print_num(\"me\", me != null); }\n```\n```output\nstarted\nonce\nme: 1.000\n```\n"),
      "");
  EXPECT_EQ(
      VerdictOn(
          "```vesper body keys=65\nprint_num(\"key\", key_wait());\n```\n```output\nkey: 65.000\n```\n"),
      "");
  EXPECT_EQ(VerdictOn("```vesper body\nif (lives = 2) { }\n```\n```errors\n"
                      "main.vsl(1): Error: An assignment is not a value; did you mean \"==\"?\n```\n"),
            "");
  // What is wrong with one is told.
  EXPECT_EQ(VerdictOn("```vesper body\nprint(\"b\");\n```\n```output\nc\n```\n"), "page.md:2\noutput:\nb\n");
  EXPECT_EQ(VerdictOn("\n```vesper body\nx = 1;\n```\n"),
            "page.md:3\nerrors:\nmain.vsl(1): Error: The name \"x\" is unknown.\n");
  EXPECT_EQ(VerdictOn("```vesper action\nyou.x = 1;\n```\n"),
            "page.md:2\nerrors:\nmain.vsl(1): Error: null has no members.\n");
  EXPECT_EQ(VerdictOn("```vesper body\nwhile (1) { }\n```\n"), "page.md:2\nerrors:\nit never waits\n");
  EXPECT_EQ(VerdictOn("```vesper body\nwait(1);\n```\n```errors\nany\n```\n"), "page.md:2\nerrors:\n");
  EXPECT_EQ(VerdictOn("```vesper\n```\n```c\n```\n```vesper body\n"),
            "page.md:2: \"\" is no kind of sample\npage.md:4: \"c\" is no language of a piece\n"
            "page.md:6: the piece has no end\n");
}

}  // namespace
}  // namespace documents
