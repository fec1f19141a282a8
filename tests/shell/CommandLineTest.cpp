#include "shell/CommandLine.h"

#include <gtest/gtest.h>

#include "shell/FrameTitle.h"

namespace quill {
namespace {

using Arguments = std::vector<std::string>;

std::string Print(const CommandLine& line) {
  switch (line.action) {
    case CommandLine::Action::kShowHelp:
      return "help";
    case CommandLine::Action::kShowVersion:
      return "version";
    case CommandLine::Action::kRefuse:
      return "refused: " + line.error;
    default:
      break;
  }
  std::string text;
  for (const auto& file : line.files) text += "[" + file.path + " " + std::to_string(file.line) + "]";
  return text;
}

TEST(CommandLine, NamesFilesLinesAndOptions) {
  const std::pair<Arguments, const char*> rows[] = {
      {{}, ""},
      {{"a.vsl", "b c.vsl:12"}, "[a.vsl 0][b c.vsl 12]"},
      {{"there:7", "there:7:8"}, "[there:7 0][there:7 8]"},
      {{"a:", "a:0", "a:-1", "a:1x", ":5", "a:99999999999", ""},
       "[a: 0][a:0 0][a:-1 0][a:1x 0][:5 0][a:99999999999 0]"},
      {{"a", "--help"}, "help"},
      {{"-v", "-h"}, "version"},
      {{"--wrong"}, "refused: Unknown option \"--wrong\". Try quill --help."},
      {{"--", "--help", "-"}, "[--help 0][- 0]"},
  };
  for (const auto& [arguments, expected] : rows) {
    EXPECT_EQ(Print(CommandLine::Parse(arguments, [](const std::string& path) { return path == "there:7"; })),
              expected);
  }
}

TEST(CommandLine, NothingRemainsAfterTheFirstBlankOnlyWithoutArguments) {
  EXPECT_EQ(DropProgramName(JoinCommandLine(Arguments{"/opt/my editor/quill"})), "");
  EXPECT_EQ(DropProgramName(JoinCommandLine(Arguments{"bin/quill", "a b.vsl", "c"})), "a b.vsl c");
  EXPECT_EQ(DropProgramName("quill"), "quill") << "no blank, nothing lost";
  EXPECT_EQ(DropProgramName("quill  a"), " a") << "the first blank only";
}

TEST(FrameTitle, NamesProjectAndPathAsAsked) {
  EXPECT_EQ(FrameTitle("", "/a.vsl", false), "Vesper Editor");
  EXPECT_EQ(FrameTitle("Lander", "", true), "Vesper Editor - [Lander]");
  EXPECT_EQ(FrameTitle("", "/a.vsl", true), "Vesper Editor - [/a.vsl]");
  EXPECT_EQ(FrameTitle("Lander", "/a.vsl", true), "Vesper Editor - [Lander] - [/a.vsl]");
}

}  // namespace
}  // namespace quill
