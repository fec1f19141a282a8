#include <gtest/gtest.h>

#include "base/CodePage1252.h"
#include "intel/vocabulary/CommandDatabase.h"
#include "intel/vocabulary/CommandSource.h"
#include "intel/vocabulary/KeywordDatabase.h"
#include "intel/vocabulary/StringListArchive.h"
#include "support/Paths.h"
#include "support/TempFolder.h"

namespace quill {
namespace {

using Strings = std::vector<std::string>;

TEST(CommandDatabase, FindsTheCommandAtPositionZeroLast) {
  CommandDatabase commands;
  EXPECT_EQ(commands.FindCommandIndex("move"), -1);
  commands.Append(Strings{"move", "move(a)", "first"});
  EXPECT_EQ(commands.FindCommandIndex("move"), 0);
  commands.Append(Strings{"Turn", "Turn()", "t", "move", "move(b)", "second", "MOVE", "", "third"});
  EXPECT_EQ(commands.FindCommandIndex("Move"), 2);
  EXPECT_EQ(commands.GetCommandParameters(2), "move(b)");
  EXPECT_EQ(commands.GetCommandHelp(3), "third");
  EXPECT_EQ(commands.FindCommandIndex("turn"), 1);
  EXPECT_EQ(commands.FindCommandIndex("tur"), -1);
  EXPECT_EQ(commands.Count(), 4);
  EXPECT_TRUE(commands.IsCommand("mOvE"));
  EXPECT_FALSE(commands.IsCommand("Turn")) << "stored with a capital letter";
  EXPECT_THROW(commands.GetCommandHelp(-1), std::invalid_argument);
  EXPECT_THROW(commands.GetCommandHelp(4), std::invalid_argument);
}

TEST(CommandDatabase, TellsMissingDamagedAndIncompleteFilesApart) {
  TempFolder folder;
  CommandDatabase commands;
  const DatabaseResult missing = commands.LoadCommandDatabase(folder.Path(""));
  EXPECT_EQ(missing.state, DatabaseResult::State::kMissing);
  EXPECT_EQ(missing.message, "Command Database does not exist, please reinstall Vesper Editor");
  folder.Write(kCommandsFileName, std::string("\x03\x00\x04wa", 5));
  EXPECT_EQ(commands.LoadCommandDatabase(folder.Path("")).state, DatabaseResult::State::kUnreadable);
  folder.Write(kCommandsFileName, WriteStringList(Strings{"a", "b", "c", "d"}));
  EXPECT_THROW((void)commands.LoadCommandDatabase(folder.Path("")), std::invalid_argument);
  EXPECT_EQ(commands.Count(), 0);
  folder.Write(kCommandsFileName, WriteStringList({}));
  EXPECT_TRUE(commands.LoadCommandDatabase(folder.Path("")));
  EXPECT_EQ(commands.Count(), 0);
}

TEST(CommandSource, JoinsHelpLinesAndBreaksTheExample) {
  CommandSource source;
  source.AddFile("a.txt",
                 "# note\r\nfield Sound\r\n\r\nsnd_stop(number handle, string s)\r\n  One.\r\n"
                 "  Two at 0.5.\r\n  | if (1)\r\n  |   x();\r\n");
  EXPECT_EQ(source.Problems(), Strings{});
  EXPECT_EQ(source.Triples(), (Strings{"snd_stop", "snd_stop(number handle, string s)",
                                       "One. Two at 0.5.#10#13Example:#10#13if (1)#10#13  x();"}));
  EXPECT_EQ(source.Commands()[0].field, "Sound");
  EXPECT_EQ(source.Commands()[0].place, "a.txt:4");
}

TEST(CommandSource, NamesTheLineOfEachFault) {
  const std::string help = "\n  One. Two.\n  | x();\n";
  const struct {
    std::string text;
    const char* problem;
  } rows[] = {
      {"stop()" + help, "f:1: the command stands before the first \"field\" line"},
      {"field A\nstop" + help, "f:2: expected \"name(type argument, ...)\""},
      {"field A\nStop()" + help, "f:2: the name \"Stop\" is not made of a to z, 0 to 9 and \"_\""},
      {"field A\nstop(handle)" + help, "f:2: the argument \"handle\" is not \"type name\""},
      {"field A\nstop(int a)" + help, "f:2: the argument \"int a\" has an unknown type"},
      {"field A\nstop(number a, )" + help, "f:2: an argument is missing after the last comma"},
      {"field A\nstop()" + help + "\nstop()" + help, "f:6: the command \"stop\" is already at f:2"},
      {"field A\n  lost\n", "f:2: an indented line without a command before it"},
      {"field A\nstop()\n  One.\n  | x();\n", "f:2: the help text has 1 sentences, wanted are 2 to 6"},
      {"field A\nstop()\n  One. Two.\n", "f:2: the help text has no example"},
      {"field A\nstop()" + help + "  Three.\n", "f:5: the help text goes on after the example"},
      {"field A\nstop()\n  One.#10#13\n" + help.substr(1),
       "f:3: the line break \"#10#13\" is written by the build, not here"},
      {"field A\n\tstop()\n", "f:2: the line holds a tab or a character that is not plain ASCII"},
  };
  for (const auto& row : rows) {
    CommandSource source;
    source.AddFile("f", row.text);
    EXPECT_EQ(source.Problems(), Strings{row.problem}) << row.text;
  }
}

TEST(ShippedDatabases, LoadAndAgreeWithOneAnother) {
  KeywordDatabase keywords;
  CommandDatabase commands;
  ASSERT_TRUE(keywords.LoadKeywordSets(QUILL_BIN_DIR));
  ASSERT_TRUE(commands.LoadCommandDatabase(QUILL_BIN_DIR));
  EXPECT_GE(commands.Count(), 120);
  for (int32_t i = 0; i < commands.Count(); ++i) {
    const std::string& name = commands.GetCommandName(i);
    EXPECT_EQ(commands.FindCommandIndex(name), i);
    EXPECT_TRUE(commands.IsCommand(name));
    EXPECT_FALSE(keywords.IsKeyword("main.vsl", name)) << name;
  }
  for (const NameSet* set : {&keywords.ScriptKeywords(), &keywords.CKeywords()}) {
    EXPECT_GT(set->Size(), 30u);
    for (const std::string& word : set->Words()) EXPECT_EQ(word, cp1252::ToLower(word));
  }
}

}  // namespace
}  // namespace quill
