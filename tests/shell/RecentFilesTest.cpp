#include "shell/RecentFiles.h"

#include <gtest/gtest.h>

#include "settings/MemorySettingsStore.h"

namespace quill {
namespace {

using Paths = std::vector<std::string>;

TEST(RecentFiles, TheNewestFourAreKeptEachOnce) {
  MemorySettingsStore store;
  AppProfile profile(store);
  RecentFiles files(profile);
  files.Load();
  EXPECT_EQ(files.Paths(), Paths{});
  for (const char* path : {"/a", "/b", "/c", "/d", "/e", "/c", ""}) files.Add(path);
  files.Add(files.Paths().back());
  EXPECT_EQ(files.Paths(), (Paths{"/b", "/c", "/e", "/d"}));
  EXPECT_EQ(profile.ReadText("Recent File List", "File1"), "/b");
  files.Remove(files.Paths()[1]);
  EXPECT_FALSE(profile.ValueExists("Recent File List", "File4"));

  RecentFiles next(profile);
  next.Load();
  EXPECT_EQ(next.Paths(), (Paths{"/b", "/e", "/d"}));
  profile.DeleteValue("Recent File List", "File2");
  profile.WriteText("Recent File List", "File4", "/b");
  next.Load();
  EXPECT_EQ(next.Paths(), (Paths{"/b", "/d"})) << "gaps close, doubles go";
}

}  // namespace
}  // namespace quill
