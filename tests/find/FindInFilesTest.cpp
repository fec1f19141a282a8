#include "find/FindInFiles.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <random>
#include <vector>

#include "base/CodePage1252.h"
#include "find/ResultLine.h"
#include "support/TempFolder.h"

namespace quill {
namespace {

namespace fs = std::filesystem;

struct Found {
  std::vector<std::string> entries;
  std::vector<std::string> matches;  ///< what stands where a result says that the match is
  GrepTotals totals;
};

Found Grep(const std::string& directory, std::string_view what) {
  Found found;
  found.totals = FindInFiles(directory, what, [&](std::span<const GrepResult> results) {
    for (const GrepResult& result : results) {
      found.entries.emplace_back(result.entry);
      found.matches.emplace_back(result.entry.substr(result.matchStart, what.size()));
    }
  });
  return found;
}

TEST(FindInFiles, SearchesNamesWhoseFirstDotBeginsAScriptExtension) {
  const char* const searched[] = {"a.vsl", "A.VSL", "a.Vsc", ".vsl", "\xE4\xFF.vsl", "a (1).vsl"};
  const char* const passed[] = {"a.vslx", "a.b.vsl", "a", "vsl", "a.vsl.bak", "a.txt", "a.vs", ""};
  for (const char* name : searched) EXPECT_TRUE(IsSearchedFile(name)) << name;
  for (const char* name : passed) EXPECT_FALSE(IsSearchedFile(name)) << name;
}

TEST(FindInFiles, ListsPathLineAndTextWithBlanksForTabs) {
  const TempFolder folder;
  const std::string path =
      folder.Write("a.vsl", "none\r\n\tFoo\tand FOO\r\nnone\nfo\no \xC4\xD6\r\nlast foo");
  folder.Write("a.b.vsl", "foo");
  const Found foo = Grep(folder.Path("") + "/", "fOO");
  EXPECT_EQ(foo.entries, (std::vector<std::string>{path + " (2) Foo and FOO ", path + " (6)last foo"}));
  EXPECT_EQ(foo.matches, (std::vector<std::string>{"Foo", "foo"}));
  EXPECT_EQ(foo.totals.StatusText(), "2 lines in 1 of 1 files");
  EXPECT_EQ(Grep(folder.Path(""), "\xE4\xF6").entries, std::vector<std::string>{path + " (5)o \xC4\xD6 "});
  EXPECT_EQ(Grep("", "foo").totals.files, 0);
  EXPECT_EQ(Grep(folder.Path(""), "").totals.files, 0);
}

TEST(FindInFiles, WalksFoldersLinksAndOddNamesOnce) {
  const TempFolder folder;
  fs::create_directories(folder.Path("deep/er"));
  folder.Write("deep/er/x.vsc", "hit");
  folder.Write("deep/bad\xFF\xFEname.vsl", "hit");
  fs::create_directory(folder.Path("folder.vsl"));
  fs::create_directory_symlink("..", folder.Path("deep/er/up"));
  fs::create_directory_symlink(".", folder.Path("self"));
  fs::create_directory_symlink("deep", folder.Path("again"));
  fs::create_symlink("deep/er/x.vsc", folder.Path("link.vsl"));
  fs::create_symlink("nowhere", folder.Path("broken.vsl"));
  fs::create_symlink("/proc/self/mem", folder.Path("fails when read.vsl"));
  fs::create_symlink("loop.vsl", folder.Path("loop.vsl"));
  ASSERT_EQ(mkfifo(folder.Path("pipe.vsl").c_str(), 0600), 0);
  Found found = Grep(folder.Path(""), "hit");
  // The folder may be met as "deep" or as "again".
  for (std::string& entry : found.entries) {
    entry.erase(0, folder.Path("").size());
    if (entry.starts_with("again")) entry.replace(0, 5, "deep");
  }
  std::sort(found.entries.begin(), found.entries.end());
  EXPECT_EQ(found.entries, (std::vector<std::string>{"deep/bad\xFF\xFEname.vsl (1)hit",
                                                     "deep/er/x.vsc (1)hit", "link.vsl (1)hit"}));
  EXPECT_EQ(found.totals.StatusText(), "3 lines in 3 of 4 files, 2 could not be read");
  EXPECT_EQ(Grep(folder.Path("missing"), "hit").totals.StatusText(),
            "0 lines in 0 of 0 files, 1 could not be read");
}

/// What a reader with room for 1023 characters that turns CR LF into LF hands out, piece by piece.
std::vector<std::string> NaivePieces(std::string_view bytes) {
  std::vector<std::string> pieces(1);
  for (size_t i = 0; i < bytes.size(); ++i) {
    if (bytes[i] == '\r' && i + 1 < bytes.size() && bytes[i + 1] == '\n') continue;
    if (pieces.back().size() == 1023 || (!pieces.back().empty() && pieces.back().back() == '\n'))
      pieces.emplace_back();
    pieces.back() += bytes[i];
  }
  return pieces;
}

TEST(FindInFiles, CountsThePiecesOfLongLinesLikeANaiveReader) {
  const TempFolder folder;
  std::mt19937 random(17);
  // The lengths around multiples of the limit, and short lines around the hits; files of up to several
  // buffers.
  const size_t lengths[] = {0, 1, 5, 60, 500, 1021, 1022, 1023, 1024, 1025, 2045, 2046, 2047, 5000, 70000};
  const char* const ends[] = {"\n", "\r\n", "\n\r", "\r", "\r\r\n"};
  for (int round = 0; round < 60; ++round) {
    const bool longLines = round % 3 != 0;
    std::string bytes;
    for (size_t lines = random() % (round % 4 == 0 ? 3000 : 60); lines > 0; --lines) {
      std::string line(lengths[random() % (longLines ? std::size(lengths) : 5)], "ab\t"[random() % 3]);
      if (random() % 4 == 0 && line.size() > 3) line.replace(random() % (line.size() - 3), 3, "hIt");
      bytes += line + ends[random() % (round % 2 == 0 ? 2 : 5)];
    }
    const std::string path = folder.Write("a.vsl", bytes);
    std::vector<std::string> expected;
    int64_t number = 0;
    for (const std::string& piece : NaivePieces(bytes)) {
      ++number;
      if (cp1252::ToLower(piece).find("hit") == std::string::npos) continue;
      expected.emplace_back();
      AppendResultLine(expected.back(), path, number, piece);
    }
    const Found found = Grep(folder.Path(""), "hit");
    ASSERT_EQ(found.entries.size(), expected.size()) << round;
    for (size_t i = 0; i < expected.size(); ++i) ASSERT_EQ(found.entries[i], expected[i]) << round;
    EXPECT_TRUE(std::all_of(found.matches.begin(), found.matches.end(),
                            [](const std::string& match) { return match == "hIt"; }));
  }
}

TEST(FindInFiles, CountsLineEndsThatLieInTwoBlocks) {
  constexpr size_t kBlock = size_t{256} * 1024;
  const TempFolder folder;
  const size_t lengths[] = {0, 1, 1021, 1022, 1023, 1024, 2044, 2045, 2046, 2047};
  for (const size_t fillLine : {size_t{64}, size_t{1000}, 2 * kBlock}) {
    for (const size_t length : lengths) {
      for (size_t cr = kBlock - 4; cr < kBlock + 4; ++cr) {
        std::string bytes(cr - length, 'x');
        for (size_t at = fillLine - 1; at < bytes.size(); at += fillLine) bytes[at] = '\n';
        if (fillLine < kBlock) bytes.back() = '\n';
        bytes += std::string(length, 'y') + "\r\nhit\r\n\nhit";
        const std::string path = folder.Write("a.vsl", bytes);
        std::vector<std::string> expected;
        int64_t number = 0;
        for (const std::string& piece : NaivePieces(bytes)) {
          ++number;
          if (piece.find("hit") == std::string::npos) continue;
          AppendResultLine(expected.emplace_back(), path, number, piece);
        }
        EXPECT_EQ(Grep(folder.Path(""), "hit").entries, expected) << fillLine << " " << length << " " << cr;
      }
    }
  }
}

TEST(ResultLine, OpensWhatItsFirstParenthesesSay) {
  struct Row {
    const char* entry;
    const char* place;
  };
  const Row rows[] = {
      {"/s/a.vsl (12)call(3);", "/s/a.vsl:12"},
      {"/s/my (old)/a.vsl (12)x", "/s/my:0"},
      {"/s/f(7)/a.vsl (12)x", "/s/f(7)/a.vsl:7"},
      {"/s/a.vsl (99999999999999999999)x", "/s/a.vsl:0"},
      {"/s/a.vsl (12", "none"},
      {"a(1)", "none"},
      {"", "none"},
  };
  for (const Row& row : rows) {
    const auto place = ParseResultLine(row.entry);
    EXPECT_EQ(place ? place->path + ":" + std::to_string(place->line) : "none", row.place) << row.entry;
  }
}

}  // namespace
}  // namespace quill
