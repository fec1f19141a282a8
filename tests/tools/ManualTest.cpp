#include <gtest/gtest.h>

#include "intel/vocabulary/CommandDatabase.h"
#include "intel/vocabulary/KeywordDatabase.h"
#include "intel/writing/ObjectMembers.h"
#include "support/TempFolder.h"
#include "tools/manual/Manual.h"

namespace quill::manual {
namespace {

class ManualTest : public testing::Test {
 protected:
  void SetUp() override {
    m_source.AddFile(
        "a.txt",
        "field Movement & time\n\nmove(vector way)\n  Moves. Then turn is next.\n  | move(1 < 2);\n\n"
        "turn()\n  Turns. That is all.\n  | turn(); // now\n");
    ASSERT_TRUE(m_source.Problems().empty());
    m_commands.Append(m_source.Triples());
    m_folder.Write("Keywords.db", "while\r\nvar\r\n");
    m_folder.Write("cKeywords.db", "");
    ASSERT_TRUE(m_keywords.LoadKeywordSets(m_folder.Folder().string()));
  }
  Vocabulary Words() { return {m_keywords, m_commands, m_kinds}; }
  std::string Markdown(std::string_view text) { return ReadMarkdown(text, Words(), CommandPageName).html; }

  TempFolder m_folder;
  CommandSource m_source;
  CommandDatabase m_commands;
  KeywordDatabase m_keywords;
  std::vector<ObjectKind> m_kinds;
};

/// The beginning of a PNG file of this size, with `more` bytes behind it.
std::string Png(unsigned char width, unsigned char height, size_t more = 0) {
  std::string png("\x89PNG\r\n\x1A\n\0\0\0\x0DIHDR\0\0\1\0\0\0\0\0", 24);
  png[19] = static_cast<char>(width);
  png[23] = static_cast<char>(height);
  return png + std::string(more, 'x');
}

TEST_F(ManualTest, ColoursCodeAndLinksPagesAndCommands) {
  EXPECT_EQ(Markdown("## `while` and \"x\"\n[p](page.md#a-b) `move` `<b>` <i>\n"),
            "<h2><a name=\"while-and-x\"></a><code>while</code> and &quot;x&quot;</h2>\n"
            "<p><a href=\"page.html#a-b\">p</a> <a href=\"command-move.html\"><code>move</code></a> "
            "<code>&lt;b&gt;</code> &lt;i&gt;</p>\n");
  const std::string code = Markdown("```vesper\nwhile (a < 1)\n/* move\n*/ move(\"x\");\n```\n");
  EXPECT_NE(code.find("<pre><span class=\"keyword\">while</span> (a &lt; <span class=\"number\">1</span>)\n"
                      "<span class=\"comment\">/* move</span>\n"
                      "<span class=\"comment\">*/</span> "
                      "<a class=\"command\" href=\"command-move.html\">move</a>("
                      "<span class=\"string\">&quot;x&quot;</span>);</pre>"),
            std::string::npos)
      << code;
}

TEST_F(ManualTest, SaysWhatCodeIsThatIsNoScript) {
  const std::string page = Markdown("```output\na < b\n```\n\n```errors\nc\n```\n\n```text\nd\n```\n");
  const size_t prints = page.find("<p class=\"caption\">It prints:</p>");
  const size_t errors = page.find("<p class=\"caption\">The error list has:</p>");
  EXPECT_LT(prints, page.find("a &lt; b")) << page;
  EXPECT_LT(page.find("a &lt; b"), errors) << page;
  EXPECT_LT(errors, page.find("c\n")) << page;
  EXPECT_EQ(page.find("caption", errors + 12), std::string::npos) << page;
}

TEST_F(ManualTest, HasAPageForEachCommandAndAnIndexOfAllWords) {
  Manual manual(Words(), m_source.Commands());
  manual.AddPage("index.md", "# Start\n[w](words.md) [c](commands.md) [k](keys.md)\n");
  manual.AddPage("words.md", "# Words\n## `while`\n## `var` & more\n![p](images/p.png)\n");
  manual.AddPicture("images/p.png", Png(44, 100));
  manual.Finish();
  EXPECT_EQ(manual.Problems(), std::vector<std::string>{});
  const std::string& page = manual.Files().at("command-move.html");
  EXPECT_NE(page.find("<h1>move</h1>\n<p class=\"signature\"><code>move(vector way)</code></p>\n<p>Moves. "
                      "Then <a href=\"command-turn.html\">turn</a> is next.</p>"),
            std::string::npos)
      << page;
  const std::string& project = manual.Files().at("quill.qhp");
  for (const char* part :
       {"<section title=\"var &amp; more\" ref=\"words.html#var-more\">",
        "<section title=\"Movement &amp; time\"",
        "<keyword name=\"var\" id=\"var\" ref=\"words.html#var-more\"/>",
        "<keyword name=\"turn\" id=\"turn\" ref=\"command-turn.html\"/>", "<file>command-turn.html</file>",
        "<file>images/p.png</file>", "<file>manual.css</file>"}) {
    EXPECT_NE(project.find(part), std::string::npos) << part;
  }
  EXPECT_NE(manual.Files()
                .at("words.html")
                .find("<img src=\"images/p.png\" width=\"150\" height=\"50\" alt=\"p\">"),
            std::string::npos);
  const std::string& keys = manual.Files().at("keys.html");
  EXPECT_NE(keys.find("<td>Ctrl+S</td><td>Save</td>"), std::string::npos);
  EXPECT_NE(keys.find("<td>Ctrl+0 to Ctrl+9</td><td>Go to Bookmark 0 to 9</td>"), std::string::npos);
}

TEST_F(ManualTest, MembersAreIndexedUnderTheirKindByTheTablesThatExplainThem) {
  const MarkdownPage page = ReadMarkdown(
      "| `panel.` | |\n|---|---|\n| `x`, `y` | `no` |\n| `s1` to `s4` | |\n| `string[0]` | |\n| plain | |\n\n"
      "| `other` | |\n|---|---|\n| `z` | |\n",
      Words(), CommandPageName);
  std::string rows;
  for (const MemberRow& row : page.members) {
    rows += row.anchor + ":";
    for (const std::string& word : row.words) rows += " " + word;
    rows += "\n";
  }
  EXPECT_EQ(rows,
            "panel-x: panel.x panel.y\npanel-s1: panel.s1 panel.s2 panel.s3 panel.s4\n"
            "panel-string: panel.string\n");
  EXPECT_NE(page.html.find("<td><a name=\"panel-x\"></a><code>x</code>"), std::string::npos) << page.html;
}

TEST_F(ManualTest, ReportsWhatLeadsNowhereAndWhatIsMissing) {
  static constexpr ObjectMember kMembers[] = {{"x", "place"}, {"y", "place"}};
  m_kinds = {{OutlineRoot::kPanels, "panel.", kMembers}};
  Manual manual(Words(), m_source.Commands());
  manual.AddPage("index.md",
                 "# S\n[c](commands.md) [k](keys.md#file) [x](none.md) [y](index.md#no) [z](http://a.b/)\n");
  manual.AddPage(
      "lost.md",
      "# `while` and `While`\n![p](p.png)\n![p](big.png)\n\n| `panel.` | |\n|---|---|\n| `y` | |\n");
  manual.AddPicture("big.png", Png(1, 1, 70000));
  manual.AddPicture("unused.png", Png(1, 1));
  manual.AddPicture("no.png", "GIF89a");
  manual.Finish();
  EXPECT_EQ(
      manual.Problems(),
      (std::vector<std::string>{
          "big.png: the picture is too large", "no.png: this is no PNG file",
          "index.md: the link to none.md leads nowhere", "index.md: the link to index.md#no leads nowhere",
          "index.md: the link to http://a.b/ leads nowhere", "lost.md: the start page does not lead there",
          "lost.md: there is no picture p.png", "no page shows the picture unused.png",
          "two places explain While", "no heading explains the keyword var",
          "no table explains the member panel.x"}));
}

}  // namespace
}  // namespace quill::manual
