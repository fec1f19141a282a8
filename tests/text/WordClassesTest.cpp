#include "text/parse/WordClasses.h"

#include <gtest/gtest.h>

#include <map>
#include <random>

#include "base/CodePage1252.h"
#include "base/HashFilter.h"
#include "text/parse/CharMasks.h"
#include "text/parse/ColourTable.h"

namespace quill {
namespace {

int32_t ColourOfShort(const WordClasses& classes, std::string_view word) {
  const std::string padded = std::string(word) + std::string(ShortWord::kLongest, 'x');
  return classes.ColourOf(ShortWord::Of({padded.data(), word.size()}));
}

TEST(WordClasses, FindsExactlyTheNamesOfTheFirstSetThatHasThem) {
  std::mt19937 random(5);
  const auto word = [&random] {
    std::string text(1 + random() % ShortWord::kLongest, '_');
    for (char& c : text) c = "ab_7"[random() % 4];
    return text;
  };
  NameSet sets[4];
  std::map<std::string, int32_t> twin;
  constexpr int32_t kColours[] = {kColourKeyword, kColourCommand, kColourFunction, kColourVariable};
  for (size_t i = 0; i < 4; ++i) {
    for (int n = 0; n < 1000; ++n) {
      const std::string name = word();
      sets[i].Insert(name);
      twin.try_emplace(name, kColours[i]);
    }
  }
  const WordClasses classes({&sets[0], &sets[1], &sets[2], &sets[3]});
  for (int n = 0; n < 20000; ++n) {
    const std::string asked = word();
    const auto known = twin.find(asked);
    const int32_t colour = known == twin.end() ? WordClasses::kNone : known->second;
    ASSERT_EQ(ColourOfShort(classes, asked), colour) << asked;
    ASSERT_EQ(ColourOfShort(classes, cp1252::ToUpper(asked)), colour) << asked;
    ASSERT_EQ(classes.ColourOf(asked), colour) << asked;
  }
}

TEST(WordClasses, NamesThatAreNoWordsInLowerCaseMatchNothing) {
  NameSet names;
  for (const std::string_view name :
       {std::string_view("If"), std::string_view("x\0", 2), std::string_view("a\x7F"),
        std::string_view("a b"), std::string_view(), std::string_view("gr\xFC\xDF")})
    names.Insert(name);
  const WordClasses classes({&names});
  for (const std::string_view word : {"if", "IF", "x", "a_", "a"}) {
    EXPECT_EQ(ColourOfShort(classes, word), WordClasses::kNone) << word;
    EXPECT_EQ(classes.ColourOf(word), WordClasses::kNone) << word;
  }
  EXPECT_EQ(classes.ColourOf("GR\xDC\xDF"), kColourKeyword);
}

TEST(WordClasses, FollowsItsSets) {
  NameSet names, others;
  WordClasses classes({nullptr, &names});
  names.Insert("late");
  classes.Refresh();
  EXPECT_EQ(ColourOfShort(classes, "late"), kColourCommand);
  others.Insert("other");
  classes.Use({&others});
  EXPECT_EQ(ColourOfShort(classes, "late"), WordClasses::kNone);
  EXPECT_EQ(ColourOfShort(classes, "other"), kColourKeyword);
  others.Clear();
  classes.Refresh();
  EXPECT_EQ(ColourOfShort(classes, "other"), WordClasses::kNone);
}

TEST(HashFilter, TurnsMostOtherWordsAway) {
  HashFilter filter;
  const auto word = [](char first, size_t i) { return NameSet::Hash(first + std::to_string(i * 3) + "_x"); };
  for (size_t i = 0; i < HashFilter::kGoodFor; ++i) filter.Add(word('v', i));
  int passed = 0;
  for (size_t i = 0; i < 10000; ++i) passed += filter.MayHave(word('w', i));
  EXPECT_LT(passed, 500);
}

TEST(CharMasks, AreThoseOfTheSingleCharacters) {
  std::mt19937 random(9);
  for (int round = 0; round < 3000; ++round) {
    char text[kMaskedChars + char_masks::kStep];
    for (char& c : text) c = static_cast<char>(random() % (round % 2 == 0 ? 256 : 128));
    const auto count = static_cast<int32_t>(1 + random() % kMaskedChars);
    const uint64_t inside = ~uint64_t{0} >> (kMaskedChars - count);
    const auto bits = [inside](const CharMasks& m) {
      return std::vector{m.word,
                         m.beyondAscii,
                         m.digit & inside,
                         m.bracket & inside,
                         m.openBrace & inside,
                         m.closeBrace & inside,
                         m.marker & inside};
    };
    ASSERT_EQ(bits(MasksOf(text, count)), bits(char_masks::ByCharacter(text, count)));
  }
}

}  // namespace
}  // namespace quill
