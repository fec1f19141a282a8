#include "settings/HistoryList.h"

#include <gtest/gtest.h>

#include "settings/MemorySettingsStore.h"

namespace quill {
namespace {

using Strings = std::vector<std::string>;

class HistoryListTest : public ::testing::Test {
 protected:
  HistoryList List(const std::string& prefix = "VSLFiles") { return {m_profile, "Settings", prefix}; }
  Strings Loaded() {
    HistoryList list = List();
    list.Load();
    return list.Entries();
  }
  void Store(int index, const std::string& text) {
    m_profile.WriteText("Settings", "VSLFiles" + std::to_string(index), text);
  }
  bool Stored(int index) { return m_profile.ValueExists("Settings", "VSLFiles" + std::to_string(index)); }

  MemorySettingsStore m_store;
  AppProfile m_profile{m_store};
};

TEST_F(HistoryListTest, LoadingStopsAtTheFirstEmptyOrMissingEntry) {
  for (int i : {0, 1, 3}) Store(i, "e" + std::to_string(i));
  EXPECT_EQ(Loaded(), (Strings{"e0", "e1"}));
  Store(1, "");
  EXPECT_EQ(Loaded(), Strings{"e0"});
}

TEST_F(HistoryListTest, SavingMovesTheTrimmedTextToTheTop) {
  const struct {
    const char* text;
    Strings entries;
  } rows[] = {
      {"a", {"a"}},
      {" b\t", {"b", "a"}},
      {"", {"b", "a"}},
      {"  ", {"b", "a"}},
      {"a", {"a", "b"}},
      {"A", {"A", "a", "b"}},
      {"\xC3\xA0", {"\xC3\xA0", "A", "a", "b"}},
  };
  HistoryList list = List();
  for (const auto& row : rows) {
    EXPECT_TRUE(list.Save(row.text));
    EXPECT_EQ(list.Entries(), row.entries) << row.text;
    EXPECT_EQ(Loaded(), row.entries) << row.text;
    EXPECT_EQ(m_profile.ReadText("Settings", "VSLFiles"), row.text) << "the text itself is kept as typed";
  }
}

TEST_F(HistoryListTest, ElevenEntriesAreStoredAndTenLoaded) {
  HistoryList list = List();
  for (int i = 0; i < 15; ++i) list.Save("e" + std::to_string(i));
  EXPECT_TRUE(Stored(10));
  EXPECT_FALSE(Stored(11));
  list.Load();
  EXPECT_EQ(list.Entries().size(), 10u);
  EXPECT_EQ(list.Entries().back(), "e5");
  list.Save("e14");
  EXPECT_FALSE(Stored(10)) << "a save of ten entries removes the eleventh";
}

TEST_F(HistoryListTest, StaleEntriesGoUpToTheFirstGapAndBelowIndex1000) {
  for (int i : {0, 1, 2, 3, 5}) Store(i, "old");
  HistoryList list = List();
  list.Save("new");
  for (int i : {1, 2, 3}) EXPECT_FALSE(Stored(i)) << i;
  EXPECT_TRUE(Stored(5));
  for (int i = 0; i < 1002; ++i) Store(i, "old");
  list.Save("new");
  EXPECT_FALSE(Stored(999));
  EXPECT_TRUE(Stored(1000));
}

TEST_F(HistoryListTest, WithoutAPrefixTheLastTextHasANameOfItsOwn) {
  List("").Save("x");
  EXPECT_EQ(m_profile.ReadText("Settings", "0"), "x");
  EXPECT_EQ(m_profile.ReadText("Settings", "Last"), "x");
  HistoryList list = List("");
  list.Load();
  EXPECT_EQ(list.LastText(), "x");
}

}  // namespace
}  // namespace quill
