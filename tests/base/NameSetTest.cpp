#include "base/NameSet.h"

#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <set>

namespace quill {
namespace {

TEST(NameSet, KnowsExactlyTheWordsThatWereInserted) {
  std::mt19937 random(3);
  NameSet set;
  std::set<std::string> twin;
  const auto word = [&random] {
    std::string text(random() % 40, 'a');
    for (char& c : text) c = static_cast<char>(random() % 4 == 0 ? 0 : 'a' + random() % 2);
    return text;
  };
  for (int round = 0; round < 20000; ++round) {
    const std::string added = word();
    EXPECT_EQ(set.Insert(added), twin.insert(added).second);
    const std::string asked = word();
    ASSERT_EQ(set.Contains(asked), twin.contains(asked));
  }
  EXPECT_EQ(set.Size(), twin.size());
  for (const std::string& each : twin) ASSERT_TRUE(set.Contains(each));
  set.Clear();
  for (const std::string& each : twin) ASSERT_FALSE(set.MayContain(NameSet::Hash(each)));
}

TEST(NameSet, FilterTurnsMostOtherWordsAway) {
  NameSet set;
  for (int i = 0; i < 2000; ++i) set.Insert("v" + std::to_string(i * 3) + "_x");
  int passed = 0;
  for (int i = 0; i < 10000; ++i) passed += set.MayContain(NameSet::Hash("w" + std::to_string(i)));
  EXPECT_LT(passed, 700);
}

TEST(NameSet, HashOfAShortWordIsThatOfItsHalves) {
  for (const std::string_view word : {"k", "wait", "eight_ch", "nine_char", "sixteen_letters_"}) {
    uint64_t halves[2] = {};
    std::memcpy(halves, word.data(), word.size());
    EXPECT_EQ(NameSet::HashOfShort(halves[0], halves[1]), NameSet::Hash(word)) << word;
  }
}

}  // namespace
}  // namespace quill
