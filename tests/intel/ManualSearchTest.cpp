#include "intel/manual/ManualSearch.h"

#include <gtest/gtest.h>

namespace quill {
namespace {

std::string Described(const std::vector<ManualSection>& sections) {
  std::string text;
  for (const ManualSection& s : sections)
    text += s.target + "|" + s.page + "|" + s.heading + "|" + s.text + "\n";
  return text;
}

TEST(ManualSections, AreThePartsOfAPageBetweenItsHeadings) {
  EXPECT_EQ(
      Described(SectionsOf(
          "k.html",
          "<html><head><title>Key &amp; words</title></head>\n<body>\n<div class=\"related\"><a>up</a></div>"
          "<h1><a name=\"k\"></a>Key &amp; words</h1>\n<p>All of\n them.</p>"
          "<h2><a name=\"if-a\"></a><code>if</code> a</h2><table><thead><tr><th>no</th></tr></thead>"
          "<tr><td>one</td><td>1 &lt; 2</td></tr></table>"
          "<h3>Example</h3><pre><span class=\"keyword\">if</span> (Gr&#252;n &#8364; &x; &#0;)</pre>"
          "<div class=\"related\"><h3>In the same field</h3></div>")),
      "k.html|Key & words|Key & words|All of them.\n"
      "k.html#if-a|Key & words|if a|one 1 < 2 Example if (Gr\xC3\xBCn \xE2\x82\xAC &x; &#0;)\n");
}

TEST(ManualSections, OfBrokenMarkupAreRead) {
  for (const char* html : {"", "<", "<body", "<body><h1", "<body><h2><a name=\"x", "<div class=\"related\">a",
                           "<body><h1></h2><h3><a name=\"\"></a>", "<body>&", "<body>&#", "a<thead>"}) {
    EXPECT_FALSE(SectionsOf("p", html).empty()) << html;
  }
}

class ManualSearchTest : public testing::Test {
 protected:
  ManualSearchTest() {
    m_search.Add({{"start", "Start", "Start", "wait and see; loops wait, wait, wait"},
                  {"c1", "vec_set", "vec_set", "Sets a vector."},
                  {"c2", "wait", "wait", "Pauses."},
                  {"k1", "Keywords", "while", "Repeats. The distance is 3."},
                  {"k2", "Keywords", "wait_state", "nothing"}});
  }
  std::string Found(std::string_view query) {
    std::string targets;
    for (const size_t at : m_search.Find(query)) targets += m_search.Section(at).target + " ";
    return targets;
  }
  ManualSearch m_search;
};

TEST_F(ManualSearchTest, PutsHeadingsFirstAndNeedsEveryWord) {
  const std::pair<const char*, const char*> rows[] = {
      {"WAIT", "c2 k2 start "},
      {"set", "c1 "},  // "_" separates words
      {"vec_s", "c1 "},
      {"istance", ""},  // not the beginning of a word
      {"pauses wait", "c2 "},
      {"keywords while", "k1 "},  // the page's title holds for its sections
      {"keywords", ""},           // but is not enough
      {"while pauses", ""},
      {"", ""},
      {"  ;,", ""},
  };
  for (const auto& [query, targets] : rows) EXPECT_EQ(Found(query), targets) << query;
}

TEST(ManualSearch, RanksHeadingsThenNumberOfPlacesThenTheManualsOrder) {
  std::string often;
  for (int i = 0; i < 200; ++i) often += "wait ";
  ManualSearch search;
  // Each before those that are better, so that the manual's order does not help.
  search.Add({{"once", "Wait", "other", "long wait"},
              {"twice", "P", "other", "wait for long and wait"},
              {"often", "P", "other", often},
              {"oftener", "P", "other", often + often},  // so many count as equal
              {"inside", "P", "do wait", "Pauses."},
              {"inside and often", "P", "do wait", often},
              {"begins", "P", "wait long", ""},
              {"begins and once", "P", "waiting", "wait"},
              {"begins and often", "P", "waiting", often},
              {"whole", "P", "Wait", ""}});
  const auto found = [&search](std::string_view query) {
    std::vector<std::string> targets;
    for (const size_t at : search.Find(query)) targets.push_back(search.Section(at).target);
    return targets;
  };
  using Targets = std::vector<std::string>;
  EXPECT_EQ(found("wAit"), (Targets{"whole", "begins and often", "begins and once", "begins",
                                    "inside and often", "inside", "often", "oftener", "twice", "once"}));
  for (const char* query : {"long wait", "wait long"}) {
    EXPECT_EQ(found(query), (Targets{"begins", "twice", "once"})) << "what the words earn is added up";
  }
}

TEST_F(ManualSearchTest, ExcerptsShowTheFirstPlaceAndMarkAll) {
  const auto marked = [this](size_t position, std::string_view query) {
    const ManualExcerpt excerpt = m_search.Excerpt(position, query);
    std::string text = excerpt.text;
    for (auto match = excerpt.matches.rbegin(); match != excerpt.matches.rend(); ++match) {
      text.insert(match->end, "]");
      text.insert(match->start, "[");
    }
    return text;
  };
  EXPECT_EQ(marked(0, "WAI loop"), "[wai]t and see; [loop]s [wai]t, [wai]t, [wai]t");
  EXPECT_EQ(marked(2, "wait"), "Pauses.");
  m_search.Add({{"t", "Title", "Title", ""}, {"t#a", "Title", "A", "First."}, {"u", "U", "U", ""}});
  EXPECT_EQ(marked(5, "title"), "First.");
  EXPECT_EQ(marked(7, "u"), "");
  std::string large;
  for (int i = 0; i < 100; ++i) large += "\xC3\xBC\xC3\xBC\xC3\xBC ";
  m_search.Add(
      {{"l", "L", "L", large + "needle " + large}, {"o", "O", "O", std::string(300, '\xBC') + "needle"}});
  const ManualExcerpt excerpt = m_search.Excerpt(8, "needle");
  EXPECT_NE(excerpt.text.find("needle"), std::string::npos);
  EXPECT_LT(excerpt.text.size(), 200u);
  EXPECT_EQ(excerpt.text.front(), '\xC3');
  EXPECT_NE(excerpt.text.back(), '\xC3');
  EXPECT_LT(m_search.Excerpt(9, "needle").text.size(), 400u);
}

}  // namespace
}  // namespace quill
