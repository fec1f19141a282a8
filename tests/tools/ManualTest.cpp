#include <gtest/gtest.h>

#include "intel/CommandDatabase.h"
#include "intel/KeywordDatabase.h"
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
    ASSERT_TRUE(m_keywords.Load(m_folder.Folder().string()));
  }
  std::string Markdown(std::string_view text) {
    return ReadMarkdown(text, {m_keywords, m_commands}, CommandPageName).html;
  }

  TempFolder m_folder;
  CommandSource m_source;
  CommandDatabase m_commands;
  KeywordDatabase m_keywords;
};

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

TEST_F(ManualTest, HasAPageForEachCommandAndAnIndexOfAllWords) {
  Manual manual({m_keywords, m_commands}, m_source.Commands());
  manual.AddPage("index.md", "# Start\n[w](words.md) [c](commands.md) [k](keys.md)\n");
  manual.AddPage("words.md", "# Words\n## `while`\n## `var` & more\n![p](images/p.png)\n");
  manual.AddImage("images/p.png");
  manual.Finish();
  EXPECT_EQ(manual.Problems(), std::vector<std::string>{});
  const std::string& page = manual.Files().at("command-move.html");
  EXPECT_NE(
      page.find(
          "<h1>move(vector way)</h1>\n<p>Moves. Then <a href=\"command-turn.html\">turn</a> is next.</p>"),
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
  EXPECT_NE(manual.Files().at("keys.html").find("<td>Ctrl+S</td><td>Save</td>"), std::string::npos);
}

TEST_F(ManualTest, ReportsWhatLeadsNowhereAndWhatIsMissing) {
  Manual manual({m_keywords, m_commands}, m_source.Commands());
  manual.AddPage("index.md", "# S\n[c](commands.md) [k](keys.md#file) [x](none.md) [y](index.md#no)\n");
  manual.AddPage("lost.md", "# `while`\n![p](p.png)\n");
  manual.Finish();
  EXPECT_EQ(manual.Problems(),
            (std::vector<std::string>{
                "index.md: the link to none.md leads nowhere",
                "index.md: the link to index.md#no leads nowhere", "lost.md: there is no picture p.png",
                "lost.md: the start page does not lead there", "no heading explains the keyword var"}));
}

}  // namespace
}  // namespace quill::manual
