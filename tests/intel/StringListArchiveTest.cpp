#include "intel/vocabulary/StringListArchive.h"

#include <gtest/gtest.h>

#include "support/TempFolder.h"

namespace quill {
namespace {

using namespace std::string_literals;
using Strings = std::vector<std::string>;

TEST(StringListArchive, WritesTheShortestPrefixThatFits) {
  EXPECT_EQ(WriteStringList(Strings{"wait", ""}), "\x02\x00\x04wait\x00"s);
  EXPECT_EQ(WriteStringList(Strings{std::string(254, 'a')}), "\x01\x00\xFE"s + std::string(254, 'a'));
  EXPECT_EQ(WriteStringList(Strings{std::string(255, 'a')}), "\x01\x00\xFF\xFF\x00"s + std::string(255, 'a'));
  EXPECT_EQ(WriteStringList(Strings{std::string(0xFFFD, 'a')}).substr(0, 5), "\x01\x00\xFF\xFD\xFF"s);
  EXPECT_EQ(WriteStringList(Strings{std::string(0xFFFE, 'a')}).substr(0, 9),
            "\x01\x00\xFF\xFF\xFF\xFE\xFF\x00\x00"s);
  EXPECT_EQ(WriteStringList(Strings(0xFFFE)).substr(0, 3), "\xFE\xFF\x00"s);
  EXPECT_EQ(WriteStringList(Strings(0xFFFF)).substr(0, 7), "\xFF\xFF\xFF\xFF\x00\x00\x00"s);
}

TEST(StringListArchive, ReadsBackWhatItWrites) {
  for (const Strings& list :
       {Strings{}, Strings{""}, Strings{"\0\r\n\xFF\x80"s, std::string(255, 'b'), std::string(70000, 'c')},
        Strings(0xFFFF, "x")}) {
    Strings again{"old"};
    EXPECT_TRUE(ReadStringList(WriteStringList(list) + "bytes after the list", again));
    EXPECT_EQ(again, list);
  }
}

TEST(StringListArchive, AcceptsStringsOf16BitCharacters) {
  Strings list;
  ASSERT_TRUE(ReadStringList("\x02\x00\xFF\xFE\xFF\x03"s + "A\x00\xAC\x20\x53\x30"s + "\x01z"s, list));
  EXPECT_EQ(list, (Strings{"A\x80?", "z"}));
  const std::string wide300 = std::string("\x01\x00\xFF\xFE\xFF\xFF\x2C\x01", 8) + std::string(600, '\0');
  ASSERT_TRUE(ReadStringList(wide300, list));
  EXPECT_EQ(list, Strings{std::string(300, '\0')});
}

TEST(StringListArchive, EveryTruncationIsAnErrorAndLeavesNothing) {
  const std::string wide = "\xFF\xFE\xFF\x02"s + "a\0b\0"s;
  const std::string longForm = "\xFF\xFF\xFF\x03\x00\x00\x00"s + "abc";
  const std::string whole = "\x06\x00"s +
                            WriteStringList(Strings{"move", std::string(300, 'p'), "", "end"}).substr(2) +
                            wide + longForm;
  Strings list;
  ASSERT_TRUE(ReadStringList(whole, list));
  for (size_t size = 0; size < whole.size(); ++size) {
    list = {"old"};
    const ArchiveStatus status = ReadStringList(std::string_view(whole).substr(0, size), list);
    ASSERT_EQ(status.code, ArchiveCode::kTruncated) << size;
    ASSERT_TRUE(status.message.starts_with("The string list is cut off: ")) << status.message;
    ASSERT_TRUE(list.empty());
  }
}

TEST(StringListArchive, AbsurdNumbersAreRefusedBeforeMemoryIsTaken) {
  const struct {
    std::string bytes;
    std::string message;
  } rows[] = {
      {"\xFF\xFF\xFF\xFF\xFF\xFF"s + "\0\0\0\0"s,
       "The string list is cut off: it announces 4294967295 strings, but only 4 bytes follow"},
      {"\x10\x27"s, "The string list is cut off: it announces 10000 strings, but only 0 bytes follow"},
      {"\x01\x00\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s + "ab",
       "The string list is cut off: string 1 has 4294967295 bytes, but only 2 follow"},
      {"\x01\x00\xFF\xFE\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s + "ab",
       "The string list is cut off: string 1 has 8589934590 bytes, but only 2 follow"},
      {"\x01\x00\xFF\xFE\xFF\xFF\xFE\xFF\x00"s,
       "The string list is damaged: string 1 has the mark of 16-bit characters twice"},
  };
  for (const auto& row : rows) {
    Strings list;
    EXPECT_EQ(ReadStringList(row.bytes, list).message, row.message);
    EXPECT_LE(list.capacity(), 1u) << row.message;
  }
}

TEST(StringListArchive, FilesAreReadThroughTheSameRules) {
  TempFolder folder;
  const Strings list{"one", std::string(10000, 'x'), "three"};
  ASSERT_TRUE(WriteStringListFile(folder.Path("list"), list));
  Strings again;
  ASSERT_TRUE(ReadStringListFile(folder.Path("list"), again));
  EXPECT_EQ(again, list);

  folder.Write("cut", WriteStringList(list).substr(0, 5000));
  const ArchiveStatus cut = ReadStringListFile(folder.Path("cut"), again);
  EXPECT_EQ(cut.code, ArchiveCode::kTruncated);
  EXPECT_NE(cut.message.find("cut\""), std::string::npos) << cut.message;
  EXPECT_EQ(ReadStringListFile(folder.Path("missing"), again).code, ArchiveCode::kCannotRead);
  EXPECT_EQ(ReadStringListFile(folder.Path(""), again).code, ArchiveCode::kCannotRead);
}

}  // namespace
}  // namespace quill
