#include <gtest/gtest.h>

#include "intel/writing/ScriptTools.h"
#include "intel/writing/TemplateSession.h"
#include "intel/writing/ToDoList.h"
#include "support/FileSizeLimit.h"
#include "support/Paths.h"
#include "support/TempFolder.h"

namespace quill {
namespace {

TEST(CommentBanner, HasThirtySlashesAndNoLastLineBreak) {
  EXPECT_EQ(CommentBanner("The ship"),
            "//////////////////////////////\r\n// The ship\r\n//////////////////////////////");
  EXPECT_EQ(CommentBanner(""), "//////////////////////////////\r\n// \r\n//////////////////////////////");
}

TEST(ImageDefinition, UsesTheUpperCaseFileNameWithoutItsFolder) {
  EXPECT_EQ(ImageDefinition("/games/my.game/wall.bmp"), "BMAP IM_WALL =<WALL.BMP>;");
  EXPECT_EQ(ImageDefinition("c:\\pictures\\wall.tga.bmp"), "BMAP IM_WALL =<WALL.TGA.BMP>;");
  EXPECT_EQ(ImageDefinition("t\xFCr"), "BMAP IM_T\xDCR =<T\xDCR>;");
  EXPECT_EQ(ImageDefinition(".bmp"), "BMAP IM_ =<.BMP>;");
}

TEST(VariableDefinition, IsOneLineForEachType) {
  const std::pair<VariableDraft, const char*> cases[] = {
      {{"var", "speed", "", ""}, "var speed;"},
      {{"var_nsave", " pos[3] ", "1, 2, 3", " where "}, "var_nsave pos[3] = 1, 2, 3; // where"},
      {{"string", "s", "a;b", ""}, "string s = \"a;b\";"},
      {{"string", "s", "\"a\"", ""}, "string s = \"a\";"},
      {{"bmap", "b", "b.bmp", ""}, "bmap b = <b.bmp>;"},
      {{"define", "MAX", "12", ""}, "define MAX, 12;"},
      {{"entity*", "ship", "", "x"}, "entity* ship; // x"},
      {{"string*", "best_str", "", ""}, "string* best_str;"},
      {{"font*", "small", "", ""}, "font* small;"},
      {{"window*", "shown", "", ""}, "window* shown;"},
  };
  for (const auto& [draft, text] : cases) {
    EXPECT_EQ(VariableProblem(draft), "") << text;
    EXPECT_EQ(VariableDefinition(draft), text);
  }
  const VariableDraft refused[] = {
      {"int", "a", "", ""},       {"var", "", "", ""},      {"var", "1a", "", ""},
      {"var", "a b", "", ""},     {"var", "a[", "", ""},    {"var", "a[x]", "", ""},
      {"string", "a[3]", "", ""}, {"var", "a", "1;2", ""},  {"string", "s", "a\"b", ""},
      {"var", "a", "1\n2", ""},   {"var", "a", "", "x\ry"}, {"bmap", "b", " ", ""}};
  for (const VariableDraft& draft : refused) {
    EXPECT_NE(VariableProblem(draft), "") << draft.type << ' ' << draft.name << ' ' << draft.value;
  }
}

TEST(ToDoList, KeepsTheWholeTextEvenWhenItIsHuge) {
  const TempFolder folder;
  ToDoList list(folder.Folder().string());
  EXPECT_EQ(list.Load(), "") << "a missing file is an empty list";
  ASSERT_TRUE(list.Save("first\nsecond\n"));
  EXPECT_EQ(folder.Read("todo.dat"), "first\r\nsecond\r\n");
  EXPECT_EQ(list.Load(), "first\nsecond\n");
  folder.Write("todo.dat", "a\rb\nc\r\n\r");
  EXPECT_EQ(list.Load(), "a\nb\nc\n\n");

  std::string huge;
  while (huge.size() < 50'000'000) huge += "one more thing to do\n";
  ASSERT_TRUE(list.Save(huge));
  EXPECT_TRUE(list.Load() == huge);
  ASSERT_TRUE(list.Save(""));
  EXPECT_EQ(folder.Read("todo.dat"), "");
}

TEST(ToDoList, LosesNothingWhenTheFileCannotBeReadOrWritten) {
  const TempFolder folder;
  ToDoList list(folder.Folder().string());
  ASSERT_TRUE(list.Save("old"));
  {
    const FileSizeLimit full(16);
    EXPECT_FALSE(list.Save(std::string(100'000, 'x')));
  }
  EXPECT_EQ(folder.Read("todo.dat"), "old");
  EXPECT_EQ(folder.Names(), std::set<std::string>{"todo.dat"});

  std::filesystem::remove(folder.Path("todo.dat"));
  std::filesystem::create_directory(folder.Path("todo.dat"));
  EXPECT_EQ(list.Load(), "");
  EXPECT_FALSE(list.Save(""));
}

CodeTemplates Make(std::initializer_list<std::pair<const char*, const char*>> texts) {
  CodeTemplates templates;
  for (const auto& [name, text] : texts) templates.Add(name, text);
  return templates;
}

/// The text with "|n|" at the n-th stop.
std::string Marked(const TemplateText& expanded) {
  std::string marked;
  TextPosition at;
  for (size_t i = 0; i <= expanded.text.size(); ++i) {
    if (i < expanded.text.size() && expanded.text[i] == '\n') {
      marked += '\n';
      at = {at.line + 1, 0};
      continue;
    }
    for (size_t n = 0; n < expanded.fields.size(); ++n) {
      for (const TextPosition place : expanded.fields[n]) {
        if (place == at) marked += "|" + std::to_string(n + 1) + "|";
      }
    }
    if (i == expanded.text.size()) break;
    if (expanded.text[i] != '\r') marked += expanded.text[i];
    ++at.character;
  }
  return marked;
}

TEST(CodeTemplates, ExpandStopsNamesAndIndentation) {
  const CodeTemplates templates = Make({{"loop", "while ($2)\r\n{\r\n\t$0\r\n\r\n\t$1;\r\n}\r\n"},
                                        {"outer", "a $$5 $x\n\t${loop} ${none}\n$"},
                                        {"plain", "text"},
                                        {"same", "$1 $2 $1$0 ${inner}$0"},
                                        {"inner", "($1$1)"}});
  EXPECT_EQ(Marked(templates.Expand("LOOP")), "while (|2|)\n{\n\t|3|\n\n\t|1|;\n}");
  EXPECT_EQ(Marked(templates.Expand("loop", {"  ", "   "})), "while (|2|)\n  {\n     |3|\n\n     |1|;\n  }");
  const TemplateText outer = templates.Expand("outer", {"\t", "\t"});
  EXPECT_EQ(Marked(outer), "a $5 $x\n\t\twhile (|2|)\n\t\t{\n\t\t\t|3|\n\n\t\t\t|1|;\n\t\t} \n\t$");
  EXPECT_EQ(outer.problem, "There is no template \"none\"");
  EXPECT_EQ(Marked(templates.Expand("plain")), "text|1|");
  EXPECT_EQ(Marked(templates.Expand("same")), "|1| |3| |1||4| (|2||2|)|5|") << "equal numbers of one file";
  EXPECT_THROW(templates.Expand("none"), std::invalid_argument);
}

TEST(CodeTemplates, StopAtThemselvesAndAtTheirLimits) {
  CodeTemplates templates = Make({{"self", "a${self}b"}, {"x", "1${y}"}, {"y", "2${x}"}});
  EXPECT_EQ(templates.Expand("self").text, "ab");
  EXPECT_EQ(templates.Expand("self").problem, "The template \"self\" includes itself");
  EXPECT_EQ(templates.Expand("x").text, "12");

  std::string twenty;
  for (int i = 0; i < 20; ++i) {
    const std::string next = "${t" + std::to_string(i + 1) + "}";
    templates.Add("t" + std::to_string(i), next + next + next);
  }
  templates.Add("t20", std::string(CodeTemplates::kLargestTemplate, 'x'));
  EXPECT_EQ(templates.Expand("t0").problem, "Too many templates include one another");
  EXPECT_EQ(templates.Expand("t19").text.size(), 3 * CodeTemplates::kLargestTemplate);
  EXPECT_LE(templates.Expand("t15").text.size(), CodeTemplates::kLargestText);
  templates.Add("large", std::string(CodeTemplates::kLargestTemplate + 1, 'x'));
  EXPECT_FALSE(templates.Has("large"));
}

TEST(CodeTemplates, AreTheTextFilesOfTheFolder) {
  const TempFolder folder;
  CodeTemplates templates;
  templates.Load(folder.Folder().string());
  EXPECT_TRUE(templates.Names().empty()) << "no folder, no templates";
  std::filesystem::create_directories(folder.Path("qil_templates/sub.txt"));
  folder.Write("qil_templates/while.txt", "w");
  folder.Write("qil_templates/Banner.txt", "b");
  folder.Write("qil_templates/notes.md", "n");
  folder.Write("qil_templates/big.txt", std::string(100'000, 'x'));
  templates.Load(folder.Folder().string());
  EXPECT_EQ(templates.Names(), (std::vector<std::string>{"Banner", "while"}));
  EXPECT_EQ(templates.NameBefore("\tx while", 8)->start, 3);
  EXPECT_FALSE(templates.NameBefore("\tx while", 7));
  EXPECT_FALSE(templates.NameBefore("\tx whiles", 9));
}

TEST(CodeTemplates, ThatComeWithTheProgramHaveNoProblems) {
  CodeTemplates templates;
  templates.Load(QUILL_BIN_DIR);
  EXPECT_GE(templates.Names().size(), 8u);
  for (const std::string& name : templates.Names()) EXPECT_EQ(templates.Expand(name).problem, "") << name;
}

TEST(TemplateSession, KeepsItsStopsWhileTextIsTyped) {
  const CodeTemplates templates = Make({{"t", "f($1, $2)\n$0"}});
  TemplateSession session({5, 10}, templates.Expand("t"));
  EXPECT_EQ(session.Next(), (TextPosition{5, 12}));
  session.OnTextChange({true, {{5, 12}, {5, 15}}});
  EXPECT_EQ(session.Next(), (TextPosition{5, 17}));
  session.OnTextChange({true, {{0, 0}, {2, 0}}});
  EXPECT_EQ(session.Places()[0].range, (TextRange{{7, 12}, {7, 15}}));
  EXPECT_EQ(session.Next(), (TextPosition{8, 0}));
  EXPECT_FALSE(session.IsActive());
  EXPECT_THROW(session.Next(), std::invalid_argument);
}

}  // namespace
}  // namespace quill
