#include "text/buffer/UndoHistory.h"

#include <gtest/gtest.h>

#include <random>

namespace quill {
namespace {

void Add(UndoHistory& history, const std::string& text, bool startsGroup) {
  history.Add(UndoRecord::kInsert | (startsGroup ? UndoRecord::kGroupStart : 0), action::kTyping, {},
              {text, nullptr});
}

TEST(UndoHistory, TheRecordAfterTheLimitDropsTheOldestWholeGroup) {
  UndoHistory history;
  Add(history, "a", true);
  Add(history, "b", false);
  Add(history, "c", false);
  for (size_t i = 3; i < UndoHistory::kDefaultLimit; ++i) Add(history, "x", true);
  EXPECT_EQ(history.Count(), UndoHistory::kDefaultLimit);
  EXPECT_EQ(history.At(0).text, "a");
  Add(history, "last", true);
  EXPECT_EQ(history.Count(), UndoHistory::kDefaultLimit - 2);
  EXPECT_EQ(history.At(0).text, "x");
  EXPECT_TRUE(history.At(0).StartsGroup());
  EXPECT_EQ(history.Last()->text, "last");
}

TEST(UndoHistory, AGroupLongerThanTheLimitStaysWholeAndLeavesWhole) {
  constexpr size_t kRecords = 2000000;  // a walk over the history for each would not end
  UndoHistory history;
  Add(history, "before", true);
  Add(history, "first", true);
  for (size_t i = 1; i < kRecords; ++i) Add(history, "", false);
  EXPECT_EQ(history.Count(), kRecords);
  EXPECT_EQ(history.At(0).text, "first");
  Add(history, "next", true);
  EXPECT_EQ(history.Count(), kRecords + 1);
  Add(history, "after", true);
  EXPECT_EQ(history.Count(), 2u);
  EXPECT_EQ(history.At(0).text, "next");
}

TEST(UndoHistory, ANewRecordEndsTheRedoChain) {
  UndoHistory history;
  for (const char* text : {"a", "b", "c"}) Add(history, text, true);
  history.StepBack();
  history.StepBack();
  Add(history, "d", true);
  EXPECT_EQ(history.Count(), 2u);
  EXPECT_FALSE(history.Next());
  EXPECT_EQ(history.Last()->text, "d");
}

TEST(UndoHistory, KnowsWhetherTheSavedTextCanStillBeReached) {
  UndoHistory history;
  Add(history, "a", true);
  history.MarkSaved();
  Add(history, "b", true);
  EXPECT_FALSE(history.IsAtSaved());
  history.StepBack();
  EXPECT_TRUE(history.IsAtSaved());
  history.StepBack();
  Add(history, "c", true);  // the saved text went with the redo chain
  EXPECT_FALSE(history.IsAtSaved());

  history.Clear(2);
  Add(history, "a", true);
  history.MarkSaved();
  Add(history, "b", true);
  Add(history, "c", true);
  history.StepBack();
  history.StepBack();
  EXPECT_EQ(history.Position(), 0u);
  EXPECT_TRUE(history.IsAtSaved());  // the dropped record lay before it
}

TEST(UndoHistory, GivesBackTheTextsOfAllRecordsThatAreLeft) {
  constexpr size_t kLimit = 40;
  std::mt19937 random(4);
  UndoHistory history;
  history.Clear(kLimit);
  std::vector<std::pair<std::string, size_t>> added;  // and the number of pieces; in their order
  for (int step = 0; step < 5000; ++step) {
    while (random() % 4 == 0 && history.Position() > 0) history.StepBack();
    added.resize(added.size() - (history.Count() - history.Position()));
    const size_t length = random() % 10 == 0 ? 4090 + random() % 20 : random() % 3;
    RecordText text{std::string(length, "ab"[random() % 2]), nullptr};
    const size_t pieces = random() % 20 == 0 ? 1 + random() % 3 : 0;
    if (pieces != 0) text.pieceLengths = std::make_unique<std::vector<int32_t>>(pieces);
    added.emplace_back(text.text, pieces);
    const uint32_t group = random() % 5 == 0 ? UndoRecord::kGroupStart : 0;
    const TextRange range{{step, 1}, {step, 2}};
    const int32_t code = random() % 9 == 0 ? 70000 - step * 40 : step % 11;
    history.Add(group, code, range, std::move(text));
    ASSERT_EQ(history.Last()->action, code);
    ASSERT_EQ(history.Last()->range, range);
    ASSERT_EQ(history.Last()->flags, group);
    const size_t gone = added.size() - history.Count();
    for (size_t i = 0; i < history.Count(); ++i) {
      const UndoRecord record = history.At(i);
      ASSERT_EQ(record.text, added[gone + i].first) << step << " " << i;
      ASSERT_EQ(record.pieceLengths == nullptr ? 0 : record.pieceLengths->size(), added[gone + i].second);
    }
  }
}

TEST(UndoHistory, DescribesTheFixedActionCodes) {
  EXPECT_STREQ(action::Description(0), "Unknown");
  EXPECT_STREQ(action::Description(7), "Drag And Drop");
  EXPECT_STREQ(action::Description(10), "Auto Indent");
  EXPECT_EQ(action::Description(11), nullptr);
  EXPECT_EQ(action::Description(-1), nullptr);
}

}  // namespace
}  // namespace quill
