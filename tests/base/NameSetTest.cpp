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
  for (const std::string& each : twin) ASSERT_FALSE(set.Contains(each));
}

TEST(NameSet, VersionTellsChanges) {
  NameSet set, other;
  EXPECT_EQ(set.Version(), other.Version());
  set.Insert("a");
  const uint64_t one = set.Version();
  set.Insert("a");
  EXPECT_EQ(set.Version(), one);
  other.Insert("b");
  EXPECT_NE(other.Version(), one);
  const NameSet copy = set;
  set.Clear();
  EXPECT_NE(set.Version(), one);
  EXPECT_EQ(copy.Version(), one);
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
