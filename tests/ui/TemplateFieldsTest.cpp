// The places of a template that are filled in: equal ones, their boxes, and where they stand in the view.
#include <QTest>
#include <filesystem>

#include "shell/ui/QuillDoc.h"
#include "ui/ViewEvents.h"

namespace quill {
namespace {

class TemplateFields : public ViewFixture {
 protected:
  void Write(const std::string& name, const std::string& text) {
    std::filesystem::create_directories(m_folder.Path("bin/qil_templates"));
    m_folder.Write("bin/qil_templates/" + name + ".txt", text);
  }
};

TEST_F(TemplateFields, EqualOnesSayTheSameWhereverOneWrites) {
  Write("loop", "for ($1 = 0; $1 < $2; $1 += 1)\r\n{\r\n\t$1;\r\n}");
  Write("outer", "$1 ${inner} $1");
  Write("inner", "<$1$1>");
  Open("a.vsl", "");
  const struct {
    std::vector<const char*> keys;
    const char* shown;
  } rows[] = {
      {{"i"}, "for (i| = 0; i < ; i += 1)\n{\n\ti;\n}"},
      {{"a", "b", "c", "Backspace"}, "for (ab| = 0; ab < ; ab += 1)\n{\n\tab;\n}"},
      {{"a", "b", "c", "Left", "Backspace"}, "for (a|c = 0; ac < ; ac += 1)\n{\n\tac;\n}"},
      {{"a", "b", "Ctrl+Backspace", "x"}, "for (x| = 0; x < ; x += 1)\n{\n\tx;\n}"},
      {{"a", "Tab", "9"}, "for (a = 0; a < 9|; a += 1)\n{\n\ta;\n}"},
      // In the second, in front of the first on its line, and in the last, on another line.
      {{"a", "Right", "Right", "Right", "Right", "Right", "Right", "Right", "b"},
       "for (ab = 0; ab| < ; ab += 1)\n{\n\tab;\n}"},
      {{"a", "b", "c", "Ctrl+Z"}, "for (| = 0;  < ;  += 1)\n{\n\t;\n}"},
      {{"a", "b", "Backspace", "Backspace", "Ctrl+Z"}, "for (ab| = 0; ab < ; ab += 1)\n{\n\tab;\n}"},
      {{"a", "Right", "Right", "Right", "Right", "Right", "Right", "Right", "b", "c", "Ctrl+Z"},
       "for (a = 0; a| < ; a += 1)\n{\n\ta;\n}"},
      {{"a", "Down", "Down", "Home", "b"}, "for (ba = 0; ba < ; ba += 1)\n{\n\tb|a;\n}"},
      {{"a", "Ctrl+Z"}, "for (| = 0;  < ;  += 1)\n{\n\t;\n}"},
      {{"a", "Ctrl+Z", "Ctrl+Y", "Escape", "Ctrl+Home"}, "|for (a = 0; a < ; a += 1)\n{\n\ta;\n}"},
      {{"a", "Escape", "b"}, "for (ab| = 0; a < ; a += 1)\n{\n\ta;\n}"},
      {{"a", "Tab", "9", "Tab", "Up"}, "for (a = 0; a < 9; a += 1)\n{\n|\ta;\n}"},
  };
  for (const auto& row : rows) {
    PressKeys({"Escape", "Ctrl+A", "Del"});
    Type("loop");
    Press("Tab");
    PressKeys(row.keys);
    std::string label;
    for (const char* key : row.keys) label += std::string(key) + " ";
    EXPECT_EQ(Shown(), row.shown) << label;
  }
  PressKeys({"Escape", "Ctrl+A", "Del"});
  Type("outer");
  PressKeys({"Tab", "a", "Tab", "b", "c"});
  EXPECT_EQ(Shown(), "a <bc|bc> a") << "numbers of one file mean nothing in another";
  Press("Ctrl+Z");
  EXPECT_EQ(Shown(), "a <|> a") << "a word and its copies are one step";
  for (int i = 0; i < 6 && Shown() != "outer|"; ++i) Press("Ctrl+Z");
  EXPECT_EQ(Shown(), "outer|") << "the copies went with their steps";
}

TEST_F(TemplateFields, ABracketBehindAFieldIsPassedByTypingIt) {
  Write("list", "a[$1] = f($2, [$3]);");
  Open("a.vsl", "");
  Type("list");
  PressKeys({"Tab", "1", "]", "Tab", "2", "Tab", "b", "[", "3", "]", "]", ")", ";", ";"});
  EXPECT_EQ(Shown(), "a[1] = f(2, [b[3]]);;|);");
}

TEST_F(TemplateFields, StandInBoxesUntilTheTemplateIsLeft) {
  Write("pair", "($1, $2)");
  Open("a.vsl", "");
  const QRgb box = qRgb(128, 128, 128);
  Type("pair");
  EXPECT_EQ(Count(Repainted(), RowOf(0), box), 0);
  Press("Tab");
  const int empty = Count(Repainted(), RowOf(0), box);
  EXPECT_GT(empty, 2 * View().LineHeight()) << "two of them";
  EXPECT_EQ(Count(OnScreen(), RowOf(0), box), empty);
  Type("mmmmm");
  const int wide = View().PointOf({0, 6}).x() - View().PointOf({0, 1}).x();
  EXPECT_NEAR(Count(Repainted(), RowOf(0), box), empty + 2 * wide, 4) << "as wide as what stands in it";
  EXPECT_EQ(Count(OnScreen(), RowOf(0), box), Count(Repainted(), RowOf(0), box));
  Press("Escape");
  EXPECT_EQ(Count(OnScreen(), RowOf(0), box), 0);
  PressKeys({"Ctrl+A", "Del"});
  Type("pair");
  PressKeys({"Tab", "Tab", "Tab"});
  EXPECT_EQ(Count(OnScreen(), RowOf(0), box), 0) << "the last place was reached";
  PressKeys({"Ctrl+A", "Del"});
  Type("pair");
  PressKeys({"Tab", "Ctrl+Z"});
  EXPECT_EQ(Count(OnScreen(), RowOf(0), box), 0) << "undone";
}

TEST_F(TemplateFields, AreScrolledIntoViewWithTheirBlock) {
  Write("block", "while ($1)\r\n{\r\n\t1;\r\n\t2;\r\n\t3;\r\n\t4;\r\n}");
  std::string tall = "$1";
  for (int i = 0; i < 300; ++i) tall += "\r\n//";
  Write("tall", tall);
  std::string text;
  for (int i = 0; i < 200; ++i) text += "//\r\n";
  Open("a.vsl", text);
  View().SetCaretPos({100, 0});
  View().ScrollToLine(100 - View().PageRows() + 1);
  Type("block");
  Press("Tab");
  EXPECT_GE(View().TopLine() + View().PageRows(), 107) << "its last line";
  EXPECT_LE(View().TopLine(), 100);
  PressKeys({"Escape", "Ctrl+End"});
  Type("tall");
  Press("Tab");
  const int32_t line = View().CaretPos().line;
  EXPECT_GE(line, View().TopLine()) << "the place to begin at";
  EXPECT_LT(line, View().TopLine() + View().PageRows());
}

}  // namespace
}  // namespace quill
