#include "base/CodePage1252.h"

#include <gtest/gtest.h>

namespace quill {
namespace {

TEST(CodePage1252, EveryByteSurvivesTheWayToUnicodeAndBack) {
  for (int byte = 0; byte < 256; ++byte) {
    EXPECT_EQ(cp1252::FromUnicode(cp1252::ToUnicode(static_cast<char>(byte))), byte);
  }
  EXPECT_EQ(cp1252::FromUnicode(U'\u0391'), -1) << "Greek capital alpha is not in the code page";
  EXPECT_EQ(cp1252::FromUnicode(U'\u20AC'), 0x80);
}

TEST(CodePage1252, CaseAndClassesFollowUnicodeNotTheLocale) {
  struct Row {
    int byte;
    int lower;
    bool letter;
    bool space;
  };
  const Row rows[] = {
      {'A', 'a', true, false},    {'_', '_', false, false},   {'7', '7', false, false},
      {0xC4, 0xE4, true, false},  {0xD7, 0xD7, false, false}, {0x8A, 0x9A, true, false},
      {0x9F, 0xFF, true, false},  {0xDF, 0xDF, true, false},  {0xA0, 0xA0, false, true},
      {0x85, 0x85, false, false}, {0x81, 0x81, false, false}, {'\v', '\v', false, true},
  };
  for (const Row& row : rows) {
    const char c = static_cast<char>(row.byte);
    EXPECT_EQ(static_cast<uint8_t>(cp1252::ToLower(c)), row.lower) << row.byte;
    EXPECT_EQ(cp1252::ToUpper(cp1252::ToLower(c)), cp1252::ToUpper(c)) << row.byte;
    EXPECT_EQ(cp1252::IsLetter(c), row.letter) << row.byte;
    EXPECT_EQ(cp1252::IsSpace(c), row.space) << row.byte;
  }
  EXPECT_TRUE(cp1252::EqualNoCase("STRASSE\xC4", "strasse\xE4"));
}

}  // namespace
}  // namespace quill
