#include "res/Strings.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <stdexcept>

namespace quill {
namespace {

TEST(StringTable, NumbersAreUniqueAndTextsAreAscii) {
  int previous = 0;
  for (const StringRow& row : StringTable()) {
    EXPECT_LT(previous, static_cast<int>(row.id)) << row.name;
    previous = static_cast<int>(row.id);
    EXPECT_FALSE(row.text.empty()) << row.name;
    for (char c : row.text) EXPECT_TRUE(c == '\n' || c == '\t' || (c >= ' ' && c <= '~')) << row.name;
  }
}

TEST(StringTable, FixedNumbersGiveTheFixedTexts) {
  EXPECT_EQ(TextByNumber(8606), "Cannot find string\"%s\"");
  EXPECT_EQ(TextByNumber(123), "Command Database does not exist, please reinstall Vesper Editor");
  EXPECT_EQ(TextByNumber(137), "Keywords does not exist, please reinstall Vesper Editor");
  EXPECT_EQ(TextByNumber(1), std::nullopt);
  EXPECT_THROW(Text(StringId{1}), std::invalid_argument);
}

TEST(StringTable, PlaceholdersTakeTheArgumentsInOrder) {
  EXPECT_EQ(FormatText(StringId::kCannotFind, {"50%s"}), "Cannot find string\"50%s\"");
  EXPECT_EQ(FormatText(StringId::kCaretPane, {"12", "1"}), "Ln 12, Col 1");
  EXPECT_EQ(FormatText(StringId::kZoomPane, {"110"}), "110%");
  EXPECT_EQ(FormatText(StringId::kSkillWatch, {"12", "0.50"}), "Skill12: 0.50");
  EXPECT_EQ(FormatText(StringId::kReady, {}), "Ready");
  EXPECT_THROW(FormatText(StringId::kCaretPane, {"12"}), std::invalid_argument);
  EXPECT_THROW(FormatText(StringId::kReady, {"x"}), std::invalid_argument);
}

TEST(StringTable, UndoActionsAreNamedByTheirCodes) {
  EXPECT_EQ(UndoActionText(0), "Unknown");
  EXPECT_EQ(UndoActionText(4), "Typing");
  EXPECT_EQ(UndoActionText(9), "Delete");
  EXPECT_EQ(UndoActionText(10), "Auto Indent");
  EXPECT_EQ(UndoActionText(-1), std::nullopt);
  EXPECT_EQ(UndoActionText(11), std::nullopt);
}

}  // namespace
}  // namespace quill
