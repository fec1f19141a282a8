#include "shell/LineMarks.h"

#include <gtest/gtest.h>

#include <map>

#include "support/TempFolder.h"
#include "text/buffer/CrystalTextBuffer.h"
#include "text/buffer/LineFlagStore.h"

namespace quill {
namespace {

/// Keeps words in memory and counts what is written.
class MemoryStore : public LineFlagStore {
 public:
  std::vector<Word> ReadAll(const std::string& section) override {
    return {sections[section].begin(), sections[section].end()};
  }
  void Write(const std::string& section, const std::vector<Word>& words) override {
    ++transactions;
    for (const auto& [line, flags] : words) {
      ++values;
      sections[section].erase(line);
      if (flags != 0) sections[section][line] = flags;
    }
  }

  std::map<std::string, std::map<int32_t, uint32_t>> sections;
  int transactions = 0;
  int values = 0;
};

using Words = std::map<int32_t, uint32_t>;

class LineMarksTest : public ::testing::Test {
 protected:
  LineMarksTest() {
    buffer.NewBuffer();
    TextPosition end;
    buffer.InsertTextAt(nullptr, {0, 0}, "0\r1\r2\r3", end);
  }
  TempFolder folder;
  MemoryStore store;
  CCrystalTextBuffer buffer;
};

TEST_F(LineMarksTest, SavingMakesTheFullPathsSectionAgreeInOneTransactionOfTheDifferences) {
  const std::string path = folder.Write("a.vsl", "");
  store.sections[path] = {{0, 8}, {1, line_flag::kBookmark}, {2, 4}, {9, 7}};
  buffer.RestoreFlags(1, line_flag::kBookmark);
  buffer.RestoreFlags(2, line_flag::kBreakpoint | line_flag::kBlockStart);
  buffer.RestoreFlags(3, line_flag::kBlockEnd);
  line_marks::Save(buffer, path, store);
  EXPECT_EQ(store.sections[path], (Words{{1, line_flag::kBookmark},
                                         {2, line_flag::kBreakpoint | line_flag::kBlockStart},
                                         {3, line_flag::kBlockEnd},
                                         {9, 7}}))
      << "words of lines beyond the text stay";
  EXPECT_EQ(store.transactions, 1);
  EXPECT_EQ(store.values, 3);
  line_marks::Save(buffer, path, store);
  EXPECT_EQ(store.transactions, 1) << "nothing differs";
}

TEST_F(LineMarksTest, NothingIsSavedForAFileThatIsNotThere) {
  buffer.RestoreFlags(1, line_flag::kBookmark);
  line_marks::Save(buffer, folder.Path("gone.vsl"), store);
  EXPECT_TRUE(store.sections.empty());
}

TEST_F(LineMarksTest, RestoringReadsTheFileNamesSectionAndLeavesTheLastLineOut) {
  store.sections["/folder/a.vsl"] = {{0, 1}};
  store.sections["a.vsl"] = {{-1, 2}, {1, 4}, {2, 8}, {3, 16}};
  line_marks::Restore(buffer, "/folder/a.vsl", store);
  const uint32_t flags[] = {buffer.LineFlags(0), buffer.LineFlags(1), buffer.LineFlags(2),
                            buffer.LineFlags(3)};
  EXPECT_EQ(std::vector<uint32_t>(std::begin(flags), std::end(flags)), (std::vector<uint32_t>{0, 4, 8, 0}));
}

}  // namespace
}  // namespace quill
