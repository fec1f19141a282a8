#include "shell/ProfileLineFlagStore.h"

#include <gtest/gtest.h>

#include "settings/MemorySettingsStore.h"
#include "settings/SqliteSettingsStore.h"
#include "support/TempFolder.h"

namespace quill {
namespace {

using namespace std::string_literals;

TEST(ProfileLineFlagStore, BulkAndSingleWritesLeaveTheSameWords) {
  using Words = std::vector<LineFlagStore::Word>;
  const std::string section = "/home/u/Lander.vsl";
  const auto sorted = [&](ProfileLineFlagStore& flags) {
    Words words = flags.ReadAll(section);
    std::sort(words.begin(), words.end());
    return words;
  };
  Words before, after, expected;
  for (int32_t line = -1; line < 300; ++line) {
    before.emplace_back(line, line % 3 == 0 ? 0x80000u : 0u);
    if (line % 2 == 0) after.emplace_back(line, line % 5 == 0 ? 0xFFFFFFFFu : 0u);
    const uint32_t word = line % 2 == 0 ? after.back().second : before.back().second;
    if (word != 0) expected.emplace_back(line, word);
  }
  MemorySettingsStore bulkStore, singleStore;
  ProfileLineFlagStore bulk{AppProfile(bulkStore)}, single{AppProfile(singleStore)};
  for (const Words& words : {before, after}) {
    bulk.Write(section, words);
    for (const LineFlagStore::Word& word : words) single.Write(section, {word});
  }
  EXPECT_EQ(sorted(bulk), expected);
  EXPECT_EQ(sorted(single), expected);
}

TEST(ProfileLineFlagStore, OnlyDoubleWordsUnderPlainDecimalsAreWords) {
  MemorySettingsStore store;
  AppProfile profile(store);
  for (const char* name : {"7", "007", "+8", " 9", "1x", "", "-0", "2147483648", "-1"}) {
    profile.WriteInteger("f", name, 1);
  }
  profile.WriteText("f", "5", "1");
  profile.WriteInteger("f", "6", 0);
  EXPECT_EQ(ProfileLineFlagStore(profile).ReadAll("f"), (std::vector<LineFlagStore::Word>{{-1, 1}, {7, 1}}));
}

}  // namespace
}  // namespace quill
