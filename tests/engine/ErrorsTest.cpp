#include "tests/engine/TestHost.h"

namespace korvel {
namespace {

struct Wrong {
  const char* script;
  const char* errors;
};

std::string ErrorsOf(const std::string& script) {
  GameInFolder game;
  Session& session = game.Open(script);
  EXPECT_FALSE(session.Frame()) << script;
  return game.Errors();
}

TEST(Errors, SayWhatHelps) {
  const Wrong rows[] = {
      {"function main() {\n  ent_mov(me, me.x);\n}",
       "main.vsl(2): Error: The function or command \"ent_mov\" is unknown; did you mean ent_move?\n"},
      {"function main() { var a; if (a = 1) wait(1); }",
       "main.vsl(1): Error: An assignment is not a value; did you mean \"==\"?\n"},
      {"function main() { var a; a = 1 ? 2; }",
       "main.vsl(1): Error: There is no ?: here; write if and else.\n"},
      {"string s = \"a\";\nfunction main() { s = \"b\"; }",
       "main.vsl(2): Error: A string gets its content with str_copy(target, source), not with \"=\".\n"},
      {"string s = \"a\";\nfunction main() { if (s == \"b\") wait(1); }",
       "main.vsl(2): Error: Texts are compared with str_compare(a, b), not with \"==\".\n"},
      {"function main() {\n  wait(1)\n  wait(2);\n}",
       "main.vsl(2): Error: A \";\" is missing at the end of this statement; here is \"wait\".\n"},
      {"var wait;\nfunction main() { }",
       "main.vsl(1): Error: \"wait\" is a command; give this definition another name.\n"},
      {"var Lives;\nvar lives;\nfunction main() { }",
       "main.vsl(2): Error: \"Lives\" is defined twice: here and in main.vsl, line 1.\n"},
      {"define LIVES, 3;\nvar lives;\nfunction main() { }",
       "main.vsl(2): Error: \"LIVES\" is a define (main.vsl, line 1); give this definition another name.\n"},
      {"function main() { wait(1, 2); }", "main.vsl(1): Error: \"wait\" takes 1 argument; here are 2.\n"},
      {"panel p { alhpa = 3; }\nfunction main() { }",
       "main.vsl(1): Error: A panel has no member \"alhpa\"; did you mean alpha?\n"},
      {"function f(a) { return a; }\nfunction main() { f(); goto nowhere; }",
       "main.vsl(2): Error: \"f\" takes 1 argument; here are 0.\n"
       "main.vsl(2): Error: There is no label \"nowhere\" in this function.\n"},
      {"int a;\nfunction main() { int b; }",
       "main.vsl(1): Error: There is no \"int\"; a number is defined with var.\n"
       "main.vsl(2): Error: There is no \"int\"; a number is defined with var at the begin of the "
       "function.\n"},
      {"#ifdef A\nfunction main() { }",
       "main.vsl(1): Error: This condition is not closed: #endif is missing.\n"
       "main.vsl(1): Error: There is no function \"main\", with which a game begins.\n"},
      {"include <missing.vsl>;\nfunction main() { }",
       "main.vsl(1): Error: The file <missing.vsl> was not found.\n"},
      {"include <main.vsl>;\nfunction main() { }",
       "main.vsl(1): Error: Files include one another more than 32 deep; does <main.vsl> include itself?\n"
       "main.vsl(2): Error: \"main\" is defined twice: here and in main.vsl, line 2.\n"},
      {"function a() {\n  if (1) {\n}\nfunction main() { }",
       "main.vsl(1): Error: A \"}\" is missing at the end of \"a\".\n"},
      {"var a = 2097152;\nfunction main() { }",
       "main.vsl(1): Error: This number is too large; numbers go from -2097152 to 2097151.\n"},
      {"function main() { print(\"no end); }", ""},
      {"function main() { var v[2]; vec_fill(v, 1, 2, 3); str_copy(\"a\", \"b\"); }", ""},
  };
  for (const Wrong& row : rows) {
    const std::string seen = ErrorsOf(row.script);
    EXPECT_NE(seen, "") << row.script;
    if (*row.errors != 0) {
      EXPECT_EQ(seen, row.errors) << row.script;
    }
  }
}

TEST(Errors, OfAConditionLeaveItsOtherHalfAlone) {
  const std::string unknown = "Error: The function or command ";
  for (const char* body :
       {"if (nope()) { wait(1); }\nelse { wait(2); }", "if (1) { nope(); }\nelse { wait(2); }",
        "if (nope()) wait(1);\nelse if (0) wait(2); else { wait(3); }"}) {
    const std::string seen = ErrorsOf("function main() {\n" + std::string(body) + "\nalso();\n}");
    EXPECT_EQ(seen, "main.vsl(2): " + unknown + "\"nope\" is unknown.\nmain.vsl(4): " + unknown +
                        "\"also\" is unknown.\n")
        << body;
  }
}

TEST(Errors, AreAllFoundInOnePass) {
  const std::string seen = ErrorsOf(
      "var a = ;\n"
      "function one() { b = 1; }\n"
      "function two() { if (a) { else; } }\n"
      "panel p { picture = nothing; }\n"
      "function main() { a = \"text\"; }\n");
  for (const char* line : {"(1)", "(2)", "(3)", "(4)", "(5)"})
    EXPECT_NE(seen.find(line), std::string::npos) << seen;
}

TEST(Errors, OfAnEarlierRunGo) {
  GameInFolder game;
  game.Open("nonsense");
  EXPECT_NE(game.Errors(), "");
  game.Run("function main() { }");
  EXPECT_EQ(game.Errors(), "");
}

TEST(Errors, WhileRunningAreToldOnceAPlaceAndTheGameGoesOn) {
  GameInFolder game;
  EXPECT_EQ(
      game.Run(
          "var n;\nfunction main()\n{\n  var i;\n  for (i = 0; i < 50; i++) n = i / 0;\n  print(\"on\");\n}"),
      "on\n");
  EXPECT_EQ(game.Errors(), "main.vsl(5): Error: A division by zero gives 0.\n");
}

TEST(Errors, AreWhatAnyNonsenseEndsIn) {
  std::string deep = "function main() { var a; a = ";
  for (int i = 0; i < 100'000; ++i) deep += "(";
  std::string nested = "function main() { ";
  for (int i = 0; i < 100'000; ++i) nested += "if (1) { ";
  std::string many;
  for (int i = 0; i < 300'000; ++i) many += "var v" + std::to_string(i) + ";\n";
  std::string laughs = "#define A0\n";
  for (int i = 1; i < 60; ++i) {
    laughs +=
        "#define A" + std::to_string(i) + " A" + std::to_string(i - 1) + " A" + std::to_string(i - 1) + "\n";
  }
  laughs += "A59";
  std::string wrong;
  std::string jumps = "function main() {\n";
  for (int i = 0; i < 20'000; ++i) {
    const std::string number = std::to_string(i);
    wrong += "var v" + number + " = nothing" + number + ";\n";
    jumps += "l" + number + ": goto k" + number + ";\n";
  }
  for (const std::string& script :
       {deep, nested, many, laughs, wrong, jumps, std::string(5'000'000, '@'), std::string(1 << 20, '"'),
        std::string(1 << 20, '{'), std::string("\0\0\0", 3), std::string("#")}) {
    EXPECT_NE(ErrorsOf(script), "") << script.substr(0, 40);
  }
}

TEST(Errors, EndFunctionsThatStartThemselvesWithoutAWait) {
  GameInFolder game;
  EXPECT_EQ(game.Run("var n;\nvar waits;\n"
                     "function again()\n{\n  n = n + 1;\n  fn_start(again);\n}\n"
                     "function later()\n{\n  waits = waits + 1;\n  wait(1);\n  fn_start(later);\n}\n"
                     "function main()\n{\n  fn_start(again);\n  print_num(\"copies\", n);\n  wait(1);\n"
                     "  print_num(\"left\", fn_running(again));\n  fn_start(later);\n  wait(500);\n"
                     "  print_num(\"waits\", waits);\n  game_exit();\n}\n",
                     1000),
            "copies: 200.000\nleft: 0.000\nwaits: 500.000\n");
  EXPECT_EQ(
      game.Errors(),
      "main.vsl(6): Error: Functions start one another more than 200 deep without a wait; this one ends "
      "here.\n");
}

}  // namespace
}  // namespace korvel
