#include "text/UndoHistory.h"

#include <gtest/gtest.h>

namespace quill {
namespace {

UndoRecord Record(const std::string& text, bool startsGroup) {
  return {UndoRecord::kInsert | (startsGroup ? UndoRecord::kGroupStart : 0), action::kTyping, {}, text, {}};
}

TEST(UndoHistory, TheRecordAfterTheLimitDropsTheOldestWholeGroup) {
  UndoHistory history;
  history.Add(Record("a", true));
  history.Add(Record("b", false));
  history.Add(Record("c", false));
  for (size_t i = 3; i < UndoHistory::kDefaultLimit; ++i) history.Add(Record("x", true));
  EXPECT_EQ(history.Count(), UndoHistory::kDefaultLimit);
  EXPECT_EQ(history.At(0).text, "a");
  history.Add(Record("last", true));
  EXPECT_EQ(history.Count(), UndoHistory::kDefaultLimit - 2);
  EXPECT_EQ(history.At(0).text, "x");
  EXPECT_TRUE(history.At(0).StartsGroup());
  EXPECT_EQ(history.Last()->text, "last");
}

TEST(UndoHistory, AGroupLongerThanTheLimitStaysWholeAndLeavesWhole) {
  constexpr size_t kRecords = 2000000;  // a walk over the history for each would not end
  UndoHistory history;
  history.Add(Record("before", true));
  history.Add(Record("first", true));
  for (size_t i = 1; i < kRecords; ++i) history.Add(Record("", false));
  EXPECT_EQ(history.Count(), kRecords);
  EXPECT_EQ(history.At(0).text, "first");
  history.Add(Record("next", true));
  EXPECT_EQ(history.Count(), kRecords + 1);
  history.Add(Record("after", true));
  EXPECT_EQ(history.Count(), 2u);
  EXPECT_EQ(history.At(0).text, "next");
}

TEST(UndoHistory, ANewRecordEndsTheRedoChain) {
  UndoHistory history;
  for (const char* text : {"a", "b", "c"}) history.Add(Record(text, true));
  history.StepBack();
  history.StepBack();
  history.Add(Record("d", true));
  EXPECT_EQ(history.Count(), 2u);
  EXPECT_EQ(history.Next(), nullptr);
  EXPECT_EQ(history.Last()->text, "d");
}

TEST(UndoHistory, KnowsWhetherTheSavedTextCanStillBeReached) {
  UndoHistory history;
  history.Add(Record("a", true));
  history.MarkSaved();
  history.Add(Record("b", true));
  EXPECT_FALSE(history.IsAtSaved());
  history.StepBack();
  EXPECT_TRUE(history.IsAtSaved());
  history.StepBack();
  history.Add(Record("c", true));  // the saved text went with the redo chain
  EXPECT_FALSE(history.IsAtSaved());

  history.Clear(2);
  history.Add(Record("a", true));
  history.MarkSaved();
  history.Add(Record("b", true));
  history.Add(Record("c", true));
  history.StepBack();
  history.StepBack();
  EXPECT_EQ(history.Position(), 0u);
  EXPECT_TRUE(history.IsAtSaved());  // the dropped record lay before it
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
