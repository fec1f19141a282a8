// Scripts of several files: where they are found, what they share, how deep they go.
#include "tests/engine/TestHost.h"

namespace korvel {
namespace {

TEST(Includes, AreReadWhereTheyAreMetAndShareDefines) {
  GameInFolder game;
  game.Write(
      "sizes.h",
      "#ifndef SIZES_H\n#define SIZES_H\n#define SIZE 4\nvar times;\n#endif\ndefine HOW_OFTEN, times;\n");
  game.Write(
      "part.vsl",
      "include <SIZES.H>;\n#ifdef EARLY\nfunction from_part() { print_num(\"size\", SIZE); in_main(); }\n"
      "#endif\n#ifdef LATE\nnonsense\n#endif\n#define AFTER SIZE + 1\n");
  EXPECT_EQ(game.Run("#define EARLY\ninclude <sizes.h>;\ninclude <part.vsl>;\n#define LATE\n"
                     "var n = AFTER;\nfunction in_main() { print_num(\"n\", n + HOW_OFTEN); }\n"
                     "function main() { from_part(); }\n"),
            "size: 4.000\nn: 5.000\n")
      << game.Errors();
  // Without a guard what is read twice is there twice.
  game.Write("twice.vsl", "var twice;\n");
  EXPECT_EQ(game.Run("include <twice.vsl>;\ninclude <twice.vsl>;\nfunction main() { }\n"), "");
  EXPECT_EQ(game.Errors(),
            "twice.vsl(1): Error: \"twice\" is defined twice: here and in twice.vsl, line 1.\n");
}

TEST(Includes, AreFoundBesideTheFileThenBesideTheMainScriptThenInPaths) {
  GameInFolder game;
  game.Write("main_side.vsl", "function main_side() { print(\"beside main\"); }\n");
  game.Write("lib/one.vsl", "include <two.vsl>;\ninclude <main_side.vsl>;\ninclude <far.vsl>;\n");
  game.Write("lib/two.vsl", "function two() { print(\"beside the file\"); }\n");
  game.Write("two.vsl", "function two() { print(\"wrong\"); }\n");
  game.Write("first/far.vsl", "function far() { print(\"first path\"); }\n");
  game.Write("second/far.vsl", "function far() { print(\"wrong\"); }\n");
  EXPECT_EQ(game.Run("path \"first\";\npath \"second\";\ninclude <lib\\one.vsl>;\n"
                     "function main() { two(); main_side(); far(); }\n"),
            "beside the file\nbeside main\nfirst path\n")
      << game.Errors();
}

TEST(Includes, AndConditionsGoThirtyTwoDeep) {
  GameInFolder game;
  const auto nested = [](int depth) {
    std::string script;
    for (int i = 0; i < depth; ++i) script += i % 2 == 0 ? "#ifndef NO\n" : "ifndef NO;\n";
    script += "function main() { print(\"inside\"); }\n";
    for (int i = 0; i < depth; ++i) script += i % 3 == 0 ? "#endif\n" : "endif;\n";
    return script;
  };
  EXPECT_EQ(game.Run(nested(32)), "inside\n") << game.Errors();
  EXPECT_EQ(game.Run(nested(33)), "");
  EXPECT_NE(game.Errors().find("32"), std::string::npos) << game.Errors();
  game.Write("self.vsl", "include <self.vsl>;\n");
  EXPECT_EQ(game.Run("include <self.vsl>;\nfunction main() { }\n"), "");
  EXPECT_EQ(
      game.Errors(),
      "self.vsl(1): Error: Files include one another more than 32 deep; does <self.vsl> include itself?\n");
  // Each file ends what it begins.
  game.Write("open.vsl", "#ifdef NO\n");
  game.Write("close.vsl", "#endif\n");
  EXPECT_EQ(game.Run("include <open.vsl>;\ninclude <close.vsl>;\nfunction main() { print(\"read\"); }\n"),
            "");
  EXPECT_NE(game.Errors().find("open.vsl(1): "), std::string::npos) << game.Errors();
  EXPECT_NE(game.Errors().find("close.vsl(1): "), std::string::npos) << game.Errors();
}

}  // namespace
}  // namespace korvel
