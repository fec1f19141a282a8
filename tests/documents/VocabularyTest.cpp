// What the editor knows of the language is what the engine knows.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <map>
#include <set>
#include <string>

#include "engine/korvel.h"
#include "engine/language/Keywords.h"
#include "intel/writing/ObjectMembers.h"
#include "support/Paths.h"

namespace documents {
namespace {

using Words = std::set<std::string>;

TEST(Vocabulary, OfTheEditorHasTheKeywordsOfTheEngine) {
  Words listed;
  std::ifstream file(std::string(QUILL_SOURCE_DIR) + "/data/Keywords.db", std::ios::binary);
  for (std::string line; std::getline(file, line);) {
    std::erase(line, '\r');
    listed.insert(line);
  }
  Words known;
  for (const korvel::KeywordText& keyword : korvel::kKeywords) known.insert(std::string(keyword.text));
  EXPECT_EQ(listed, known);
}

TEST(Vocabulary, OfTheEditorHasTheMembersOfTheEngine) {
  const std::map<std::string_view, int> kinds = {
      {"bmap.", kKorvelBitmap},       {"entity.", kKorvelEntity}, {"font.", kKorvelFont},
      {"material.", kKorvelMaterial}, {"panel.", kKorvelPanel},   {"sky.", kKorvelSky},
      {"text.", kKorvelText},         {"view.", kKorvelView},     {"window.", kKorvelWindow}};
  ASSERT_EQ(quill::ObjectKinds().size(), kinds.size());
  for (const quill::ObjectKind& kind : quill::ObjectKinds()) {
    Words offered, known;
    for (const quill::ObjectMember& member : kind.members) offered.insert(std::string(member.name));
    const KorvelLayout* layout = korvel_layout(kinds.at(kind.prefix));
    ASSERT_NE(layout, nullptr) << kind.prefix;
    for (size_t i = 0; i < layout->count; ++i) known.insert(layout->members[i].name);
    // An entity's file stands in its definition only, and is no member in memory.
    if (kind.prefix == "entity.") known.insert("model");
    EXPECT_EQ(offered, known) << kind.prefix;
  }
}

}  // namespace
}  // namespace documents
