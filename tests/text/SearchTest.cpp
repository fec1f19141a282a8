#include "text/search/Search.h"

#include <gtest/gtest.h>

#include <optional>
#include <random>

#include "base/CodePage1252.h"
#include "support/ScriptText.h"
#include "text/search/SearchMatches.h"

namespace quill {
namespace {

using search_flag::kMatchCase;
using search_flag::kUpwards;
using search_flag::kWholeWord;

std::string Show(bool found, TextPosition at) {
  return found ? std::to_string(at.line) + "," + std::to_string(at.character) : "none";
}

TEST(FindInLine, ReportsTheColumnsOfItsRules) {
  struct Row {
    const char* text;
    const char* what;
    bool wholeWord;
    int32_t column;
  };
  const Row rows[] = {
      {"xab ab", "ab", false, 1},
      {"xab ab", "ab", true, 3},                 // true column 4: one skip for a letter before
      {"xab yab ab", "ab", true, 6},             // true column 8: two such skips
      {"abx ab", "ab", true, 4},                 // a letter behind: no loss
      {"xabx ab", "ab", true, 4},                // true column 5; the letter before counts first
      {"_ab 1ab ab_ ab2 (ab)", "ab", true, 15},  // true column 17
      {"aaa", "a", true, 2},                     // right behind a skip, the character before is not looked at
      {"\xE4"
       "ab",
       "ab", true, 1},  // no word character: the test is ASCII's
      {"ab", "AB", false, -1},
      {"ab", "", false, -1},
      {"", "ab", true, -1},
      {"xab", "ab", true, -1},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(FindInLine(row.text, row.what, row.wholeWord), row.column) << row.what << " in " << row.text;
  }
}

TEST(FindInRange, FollowsBlockDirectionAndWrap) {
  const ScriptText text("ab x ab\n\nxab ab Ab\nlast AB ab");
  const TextPosition all{3, 10};
  struct Row {
    const char* name;
    const char* what;
    TextPosition start, begin, end;
    uint32_t flags;
    bool wrap;
    const char* found;
  };
  const Row rows[] = {
      {"from the start", "ab", {0, 0}, {0, 0}, all, 0, false, "0,0"},
      {"behind a match's first character", "ab", {0, 1}, {0, 0}, all, 0, false, "0,5"},
      {"next lines from column 0", "ab", {0, 6}, {0, 0}, all, 0, false, "2,1"},
      {"case matters", "Ab", {0, 0}, {0, 0}, all, kMatchCase, false, "2,7"},
      {"case does not matter", "aB", {2, 5}, {0, 0}, all, 0, false, "2,7"},
      {"whole word, reported one too low", "ab", {1, 0}, {0, 0}, all, kWholeWord, false, "2,3"},
      {"whole word does not see what is before the start",
       "ab",
       {2, 1},
       {0, 0},
       all,
       kWholeWord,
       false,
       "2,1"},
      {"start before the block moves into it", "ab", {0, 0}, {0, 2}, all, 0, false, "0,5"},
      {"a match at the block's end is outside", "ab", {0, 2}, {0, 0}, {0, 5}, 0, false, "none"},
      {"a match that starts before the block's end is inside", "ab", {0, 2}, {0, 0}, {0, 6}, 0, false, "0,5"},
      {"wrap restarts at the block's start", "ab", {3, 9}, {0, 2}, all, 0, true, "0,5"},
      {"no wrap", "ab", {3, 9}, {0, 2}, all, 0, false, "none"},
      {"empty block", "ab", {0, 0}, {2, 1}, {2, 1}, 0, true, "none"},
      {"upwards: right of the start on its line first", "ab", {2, 4}, {0, 0}, all, kUpwards, false, "2,4"},
      {"upwards: then leftmost on earlier lines", "ab", {2, 9}, {0, 0}, all, kUpwards, false, "0,0"},
      {"upwards: not held by the block's start", "x ab", {3, 0}, {3, 0}, all, kUpwards, false, "0,3"},
      {"upwards: the block's end plays no part", "last", {3, 0}, {0, 0}, {1, 0}, kUpwards, false, "3,0"},
      {"upwards: wrap from column 0 of the last line", "last", {1, 0}, {0, 0}, all, kUpwards, true, "3,0"},
      {"upwards: no wrap", "last", {1, 0}, {0, 0}, all, kUpwards, false, "none"},
      {"start behind the text", "ab", {9, 9}, {0, 0}, {20, 0}, 0, true, "0,0"},
      {"upwards from behind the text", "AB", {9, 9}, {0, 0}, all, kUpwards | kMatchCase, false, "3,5"},
      {"empty string", "", {0, 0}, {0, 0}, all, 0, true, "none"},
  };
  for (const Row& row : rows) {
    TextPosition at;
    const bool found = FindInRange(text, row.what, row.start, row.begin, row.end, row.flags, row.wrap, at);
    EXPECT_EQ(Show(found, at), row.found) << row.name;
  }
}

/// The rules again, a character at a time.
std::optional<TextPosition> NaiveFind(const CCrystalTextBuffer& text, const std::string& what,
                                      TextPosition start, TextRange block, uint32_t flags) {
  const bool up = (flags & kUpwards) != 0;
  start = std::max(start, block.start);
  for (int32_t line = start.line; up ? line >= 0 : line <= block.end.line; line += up ? -1 : 1) {
    const int32_t base = line == start.line ? start.character : 0;
    for (int32_t at = base; at + static_cast<int32_t>(what.size()) <= text.LineLength(line); ++at) {
      const std::string_view there = text.Line(line).substr(static_cast<size_t>(at), what.size());
      if ((flags & kMatchCase) != 0 ? there != what : !cp1252::EqualNoCase(there, what)) continue;
      if (up || line != block.end.line || at < block.end.character) return TextPosition{line, at};
      break;
    }
  }
  return std::nullopt;
}

TEST(FindInRange, FindsWhatANaiveSearchFinds) {
  std::mt19937 random(11);
  for (int round = 0; round < 3000; ++round) {
    ScriptText text;
    std::string content;
    for (size_t n = random() % 200; n > 0; --n) content += "aAbB\xC4\xE4 \n"[random() % 8];
    text.Insert({0, 0}, content);
    const auto anywhere = [&] {
      const auto line = static_cast<int32_t>(random() % static_cast<uint32_t>(text.LineCount()));
      return TextPosition{line, static_cast<int32_t>(random() % (text.Line(line).size() + 1))};
    };
    std::string what;
    for (size_t n = random() % 3 + 1; n > 0; --n) what += "aAbB\xC4\xE4"[random() % 6];
    const TextRange block = TextRange::Between(anywhere(), anywhere());
    const TextPosition start = anywhere();
    const uint32_t flags = (random() % 2 == 0 ? kMatchCase : 0) | (random() % 3 == 0 ? kUpwards : 0);
    const auto naive = block.IsEmpty() ? std::nullopt : NaiveFind(text, what, start, block, flags);
    TextPosition at;
    const bool found = FindInRange(text, what, start, block.start, block.end, flags, false, at);
    EXPECT_EQ(Show(found, at), Show(naive.has_value(), naive.value_or(TextPosition{})))
        << what << " in " << content;
  }
}

TEST(SearchMatches, AreTrueColumnsThatDoNotOverlap) {
  const ScriptText text("xab ab aab\nab");
  const auto show = [&](const char* what, uint32_t flags) {
    std::string shown;
    for (const TextRange& m : MatchesInLines(text, TextSearch(what, flags), 0, 99)) {
      shown += Show(true, m.start) + " ";
    }
    return shown;
  };
  EXPECT_EQ(show("AB", 0), "0,1 0,4 0,8 1,0 ");
  EXPECT_EQ(show("ab", kWholeWord), "0,4 1,0 ");
  EXPECT_EQ(show("", 0), "");
  EXPECT_EQ(MatchesInLines(ScriptText("aaaaa"), TextSearch("aa", 0), 0, 0).size(), 2u);
}

/// Hands the buffer's hints to a counter, as a view does.
struct CountingView : BufferObserver {
  explicit CountingView(const CCrystalTextBuffer& buffer) : counter(buffer) {}
  void OnBufferUpdate(const BufferObserver*, const TextChange*, uint32_t hints, int32_t line) override {
    counter.OnTextChanged(hints, line);
  }
  MatchCounter counter;
};

TEST(MatchCounter, NumbersMatchesThatTouchEachOther) {
  const ScriptText text("aaaaa aa\naaaa");
  MatchCounter counter(text);
  counter.Start(TextSearch("aa", 0));
  while (!counter.Advance(256)) continue;
  const std::pair<TextRange, const char*> rows[] = {
      {{{0, 0}, {0, 2}}, "1 of 5"}, {{{0, 2}, {0, 4}}, "2 of 5"}, {{{0, 6}, {0, 8}}, "3 of 5"},
      {{{1, 0}, {1, 2}}, "4 of 5"}, {{{1, 2}, {1, 4}}, "5 of 5"}, {{{1, 4}, {1, 4}}, "5"},
      {{{0, 1}, {0, 3}}, "1 of 5"},  // across two: the one that ends behind its start
      {{{0, 0}, {0, 1}}, "5"},      {{{0, 4}, {0, 6}}, "5"},      {{{0, 0}, {1, 2}}, "5"},
  };
  for (const auto& [selection, status] : rows) {
    EXPECT_EQ(counter.StatusText(selection), status)
        << selection.start.line << "," << selection.start.character;
  }
}

TEST(MatchCounter, NumbersWhateverASearchSelects) {
  std::mt19937 random(5);
  for (int round = 0; round < 2000; ++round) {
    std::string content;
    for (size_t n = random() % 40; n > 0; --n) content += "abB  _"[random() % 6];
    const ScriptText text(content);
    const TextSearch search(random() % 2 == 0 ? "b" : "ab", static_cast<uint32_t>(random() % 4));
    MatchCounter counter(text);
    counter.Start(search);
    while (!counter.Advance(256)) continue;
    const int32_t length = search.Length();
    const auto size = static_cast<int32_t>(content.size());
    if ((search.Flags() & search_flag::kWholeWord) != 0) continue;
    for (int32_t at = 0; at + length <= size; ++at) {
      const bool numbered = counter.OrdinalOf({{0, at}, {0, at + length}}) > 0;
      EXPECT_EQ(numbered, search.FindInBufferLine(text, 0, at) == at) << content << " " << at;
    }
  }
  const ScriptText text("xab xab ab");
  MatchCounter counter(text);
  counter.Start(TextSearch("ab", search_flag::kWholeWord));
  while (!counter.Advance(256)) continue;
  for (int32_t at = 0; at <= 8; ++at) {
    EXPECT_EQ(counter.OrdinalOf({{0, at}, {0, at + 2}}), at >= 6 ? 1 : 0)
        << "each word passed over moves what is selected by one: " << at;
  }
}

TEST(MatchCounter, AgreesWithAFreshCountAfterAnyEdits) {
  std::mt19937 random(3);
  std::string content;
  for (int i = 0; i < 2000; ++i) content += i % 7 == 0 ? "ab and AB\n" : "none\n";
  ScriptText text(content);
  CountingView view(text);
  text.AddView(&view);
  const TextSearch search("ab", 0);
  view.counter.Start(search);
  EXPECT_FALSE(view.counter.Advance(300)) << "a slice is not the whole text";
  for (int round = 0; round < 300; ++round) {
    const auto line = static_cast<int32_t>(random() % static_cast<uint32_t>(text.LineCount()));
    TextPosition unused;
    switch (random() % 4) {
      case 0:
        text.Insert({line, 0}, "ab");
        break;
      case 1:
        text.Insert({line, text.LineLength(line)}, "\nab ab\n");
        break;
      case 2:
        text.DeleteRange(nullptr, {{line, 0}, {std::min(line + 3, text.LineCount() - 1), 0}});
        break;
      default:
        text.Undo(unused);
    }
    if (random() % 2 == 0) view.counter.Advance(static_cast<int32_t>(random() % 3000));
    if (round % 10 != 0) continue;
    while (!view.counter.Advance(256)) continue;
    const std::vector<TextRange> all = MatchesInLines(text, search, 0, text.LineCount());
    ASSERT_EQ(view.counter.Count(), static_cast<int64_t>(all.size()));
    const size_t some = random() % all.size();
    EXPECT_EQ(view.counter.StatusText(all[some]),
              std::to_string(some + 1) + " of " + std::to_string(all.size()));
  }
  EXPECT_EQ(view.counter.OrdinalOf({}), 0) << "no selection";
  text.RemoveView(&view);
}

}  // namespace
}  // namespace quill
