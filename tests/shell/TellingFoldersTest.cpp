#include "shell/TellingFolders.h"

#include <gtest/gtest.h>

namespace quill {
namespace {

using Texts = std::vector<std::string>;

TEST(TellingFolders, AreAsShortAsTellsAlikeNamesApart) {
  const struct {
    Texts paths;
    Texts folders;
  } rows[] = {
      {{}, {}},
      {{"/a/x.vsl", "/a/y.vsl", ""}, {"", "", ""}},
      {{"/a/x.vsl", "/b/x.vsl", "/a/y.vsl"}, {"a", "b", ""}},
      {{"/1/a/x.vsl", "/2/a/x.vsl", "/2/b/x.vsl"}, {"1/a", "2/a", "b"}},
      {{"/a/x.vsl", "/b/a/x.vsl"}, {"/a", "b/a"}},
      {{"/x.vsl", "/a/x.vsl"}, {"/", "a"}},
      {{"/a/x.vsl", "/a/x.vsl"}, {"", ""}},
      {{"", ""}, {"", ""}},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(TellingFolders(row.paths), row.folders) << testing::PrintToString(row.paths);
  }
}

}  // namespace
}  // namespace quill
