#include <gtest/gtest.h>

#include "intel/vocabulary/CommandDatabase.h"
#include "intel/vocabulary/HelpText.h"

namespace quill {
namespace {

CommandDatabase SomeCommands() {
  CommandDatabase commands;
  commands.Append(std::vector<std::string>{
      "move", "move(vector <way>)",
      "Moves & <b>turns</b>.#10#13Use Turn, not <script>.#10#13Example:#10#13move(\"a\");#10#13turn(b);",
      "turn", "", "Gr\xFC\xDF\x80#10#13#10#13#10", "x\"y", "p", std::string("move turned _turn nul\0.", 23)});
  return commands;
}

TEST(CommandHelpHtml, ShowsMarkupAsTextAndLinksTheOtherCommands) {
  const CommandDatabase commands = SomeCommands();
  EXPECT_EQ(CommandHelpHtml(commands, 0),
            "<h2>move(vector &lt;way&gt;)</h2>\n"
            "<p>Moves &amp; &lt;b&gt;turns&lt;/b&gt;.<br>\n"
            "Use <a href=\"command:turn\">Turn</a>, not &lt;script&gt;.</p>\n"
            "<h3>Example</h3>\n"
            "<pre>move(&quot;a&quot;);\n<a href=\"command:turn\">turn</a>(b);</pre>\n");
  EXPECT_EQ(CommandHelpHtml(commands, 1), "<h2>turn</h2>\n<p>Gr&#252;&#223;&#8364;<br>\n<br>\n#10</p>\n")
      << "without parameters the name is the heading";
  EXPECT_EQ(CommandHelpHtml(commands, 2, [](std::string_view name) { return std::string(name) + "\".html"; }),
            "<h2>p</h2>\n<p><a href=\"move&quot;.html\">move</a> turned _turn nul.</p>\n");
  EXPECT_THROW(CommandHelpHtml(commands, 3), std::invalid_argument);
  EXPECT_EQ(LinkedCommand("command:turn"), "turn");
  EXPECT_EQ(LinkedCommand("http://turn"), "");
}

}  // namespace
}  // namespace quill
