#include "text/edit/IndentAll.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <random>
#include <string>
#include <vector>

#include "FakeEditor.h"
#include "support/Paths.h"

namespace quill {
namespace {

EditSettings Blanks(int32_t tabSize) {
  EditSettings settings;
  settings.tabSize = tabSize;
  settings.keepSpaces = true;
  return settings;
}

std::string Indented(const std::string& text, const EditSettings& settings) {
  FakeEditor editor("|" + text);
  editor.settings = settings;
  EXPECT_TRUE(edit::IndentAll(editor));
  return editor.Text();
}

/// The lines without their indentation.
std::string Flat(const std::string& text) {
  std::string flat;
  bool atStart = true;
  for (const char c : text) {
    if (atStart && (c == ' ' || c == '\t')) continue;
    flat += c;
    atStart = c == '\n';
  }
  return flat;
}

TEST(IndentAll, GivesFlatScriptsTheShapeOfTheirStatements) {
  const struct {
    const char* name;
    const char* shape;
  } cases[] = {
      {"if", "if (a)\n  b;\nc;"},
      {"else", "if (a)\n  b;\nelse\n  c;\nd;"},
      {"else if", "if (a)\n  b;\nelse if (c)\n  d;\nelse\n  e;\nf;"},
      {"else below if below else", "if (a)\n  if (b)\n    c;\n  else\n    d;\nelse\n  e;\nf;"},
      {"loops", "while (a)\n  for (i = 0; i < 3; i += 1)\n    b;\nc;"},
      {"on one line", "if (a) b;\nwhile (a) { b; }\nelse c;\nd;"},
      {"braces after all", "if (a)\n  while (b)\n  {\n    c;\n  }\nd;"},
      {"braces at the line's end", "if (a) {\n  b;\n} else {\n  c;\n}\nd;"},
      {"an else with braces", "{\n  if (a)\n    b;\n  else\n  {\n    c;\n  }\n  d;\n}"},
      {"else on a line of its own", "if (a)\n{\n  b;\n}\nelse\n  if (c)\n    d;\ne;"},
      {"a header on two lines", "if (a\n  && b)\n  c;\nd;"},
      {"do", "do\n  a;\nwhile (b);\nc;"},
      {"an empty loop", "while (a);\nb;"},
      {"cases",
       "switch (a)\n{\n  case 0:\n    b;\n    break;\n  case 1:\n  case 'x':\n    if (c)\n      d;\n  "
       "default:\n    e;\n}\nf;"},
      {"braces in cases",
       "switch (a) {\n  case 0: {\n    b;\n  }\n    c;\n  case 1:\n  {\n    d;\n  }\n}\ne;"},
      {"a switch in a case",
       "switch (a)\n{\n  case 0:\n    switch (b)\n    {\n      case 1:\n        c;\n    }\n    d;\n}"},
      {"comments",
       "if (a) // b\n// {\n{\n  // c\n  d;\n}\n// else\nelse\n  // e\n  f;\nswitch (a)\n{\n  // one\n  case "
       "1:\n    b;\n  /* two */\n  case 2:\n    c;\n}"},
      {"arguments", "{\n  f(\n    a,\n    g(b,\n      c),\n    d\n  );\n  e;\n}"},
      {"indices", "a[\n  1\n] = b;\nc;"},
      {"operators", "a = b +\n  c\n  - d;\ne;"},
      {"lists", "var a[3] = {\n  1,\n  2,\n  3\n};\nb;"},
      {"what has no semicolon", "endif\nif (a)\n  b;\nendif\nfunction f()\n{\n  c;\n}"},
      {"words that only begin alike", "iffy(a);\nelsewhere = 1;\nformat(b);\nc;"},
      {"strings and comments", "if (\"(\" == a) /* ( { */\n  b = '(';\nc;"},
      {"a lost parenthesis", "{\n  f(a;\n    b;\n}\nc;"},
      {"a lost semicolon", "{\n  if (a)\n    b\n    c;\n  d;\n}"},
      {"capitals", "IF (a)\n  b;\nELSE\n  c;"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    const std::string shape = Indented(Flat(c.shape), Blanks(2));
    EXPECT_EQ(shape, c.shape);
    EXPECT_EQ(Indented(shape, Blanks(2)), shape) << "twice";
    EXPECT_EQ(Indented("{\n" + shape + "\n}", Blanks(2)), Indented("{\n" + Flat(shape) + "\n}", Blanks(2)));
  }
}

TEST(IndentAll, KeepsArgumentsBelowTheFirstOne) {
  const struct {
    const char* name;
    const char* before;
    const char* after;
  } cases[] = {
      {"moved along", "{\nfoo(a,\n    b,\n    bar(c,\n        d));\n}",
       "{\n  foo(a,\n      b,\n      bar(c,\n          d));\n}"},
      {"not quite below", "foo(a,\n   b);", "foo(a,\n  b);"},
      {"the bracket below its other end", "  foo(a,\n      b\n     );", "foo(a,\n    b\n   );"},
      {"a condition", "{\n if (a &&\n     b)\n c;\n}", "{\n  if (a &&\n      b)\n    c;\n}"},
      {"a sum", "{\nx = a +\n    b;\n}", "{\n  x = a +\n      b;\n}"},
      {"behind tabs", "\tfoo(a,\n\t    b);", "foo(a,\n    b);"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(Indented(c.before, Blanks(2)), c.after);
    EXPECT_EQ(Indented(c.after, Blanks(2)), c.after) << "twice";
  }
  EditSettings tabs;
  tabs.tabSize = 4;
  EXPECT_EQ(Indented("{\nfoo(a,\n    b);\n}", tabs), "{\n\tfoo(a,\n\t\tb);\n}");
  EXPECT_EQ(Indented("{\n\tfoobar(a,\n\t       b);\n}", tabs), "{\n\tfoobar(a,\n\t\t   b);\n}");
}

TEST(IndentAll, LeavesScriptsThatArePutInOrderAsTheyAre) {
  int scripts = 0;
  for (const auto& entry :
       std::filesystem::recursive_directory_iterator(std::filesystem::path(QUILL_SOURCE_DIR) / "samples")) {
    if (entry.path().extension() != ".vsl") continue;
    FakeEditor editor;
    ASSERT_TRUE(editor.buffer.LoadFile(entry.path().string()));
    editor.settings = Blanks(4);
    const std::string before = editor.Text();
    ASSERT_TRUE(edit::IndentAll(editor));
    EXPECT_EQ(editor.Text(), before) << entry.path();
    ++scripts;
  }
  EXPECT_GT(scripts, 3);
}

TEST(IndentAll, ChangesNothingTheSecondTimeWhateverTheTextIs) {
  const char* const pieces[] = {
      "if (a)", "else",  "{",        "}",        "x = 1;", "case 1:",   "switch (b)", "f(",  ")",
      "a,",     "\t",    "  ",       "\n",       "\n",     "\n",        "// c",       "/*",  "*/",
      "\"s",    "\" + ", "default:", "for (;;)", "#if {",  "while (c)", "foo(bar(x,", "= {", "endif",
      "'",      ";",     " ",        "do",       "[",      "]"};
  std::mt19937 random(3);
  for (int round = 0; round < 3000; ++round) {
    std::string text;
    for (unsigned i = 0, count = random() % 40; i < count; ++i) text += pieces[random() % std::size(pieces)];
    EditSettings settings = Blanks(1 + static_cast<int32_t>(random() % 5));
    settings.keepSpaces = random() % 2 == 0;
    FakeEditor editor;
    editor.buffer.NewBuffer(line_end::kCrLf, text);
    editor.settings = settings;
    editor.Select({}, {});
    ASSERT_TRUE(edit::IndentAll(editor));
    const std::string once = editor.Text();
    ASSERT_TRUE(edit::IndentAll(editor));
    ASSERT_EQ(editor.Text(), once) << text;
    ASSERT_EQ(Flat(once), Flat(text)) << text;
  }
}

}  // namespace
}  // namespace quill
