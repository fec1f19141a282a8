// Scripts that are damaged in thousands of ways: each ends in errors, or runs within its budget.
#include <random>

#include "tests/engine/TestHost.h"

namespace korvel {
namespace {

std::string Damage(std::string text, std::mt19937& random) {
  const auto below = [&random](size_t limit) { return limit == 0 ? 0 : random() % limit; };
  const char* const parts[] = {"(",         ")",          "{",
                               "}",         ";",          "[",
                               "]",         ".",          "=",
                               "==",        "&&",         "||",
                               "-",         "!",          "\"",
                               "1",         "0",          "me",
                               "null",      "main",       "wait(1);",
                               "while (1)", "#ifdef A\n", "#else\n",
                               "#endif\n",  "return",     "function f(a) {",
                               "var x[3];", "goto a;",    "a:",
                               "case 1:",   "2097151",    "*/"};
  for (size_t changes = 1 + below(6); changes > 0; --changes) {
    const size_t at = below(text.size());
    const size_t length = below(30);
    switch (below(5)) {
      case 0:
        text.erase(at, length);
        break;
      case 1:
        text.insert(at, text.substr(below(text.size()), length));
        break;
      case 2:
        text.insert(at, parts[below(std::size(parts))]);
        break;
      case 3:
        text[at] = static_cast<char>(random());
        break;
      default:
        text.replace(at, length, parts[below(std::size(parts))]);
        break;
    }
    if (text.empty()) text = " ";
  }
  return text;
}

TEST(Mutations, OfProgramsEndInErrorsOrRun) {
  std::mt19937 random(7);
  GameInFolder game;
  game.Write("box.dat", "x");
  int ran = 0;
  for (const auto& entry : std::filesystem::directory_iterator(std::string(kEnginePrograms))) {
    if (entry.path().extension() != ".vsl") continue;
    std::ifstream file(entry.path(), std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    for (int i = 0; i < 150; ++i) {
      Session& session = game.Open(Damage(text, random));
      session.machine.budget = 20'000;
      int frames = 0;
      while (frames < 8 && session.Frame()) ++frames;
      ran += frames > 0;
    }
  }
  EXPECT_GT(ran, 50) << "some of them still run";
}

}  // namespace
}  // namespace korvel
