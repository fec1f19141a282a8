#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

#include "text/parse/Folding.h"
#include "text/view/ColumnMetrics.h"
#include "text/view/MouseSelection.h"
#include "text/view/Navigation.h"
#include "text/view/PrintLayout.h"
#include "text/view/TextViewModel.h"
#include "text/view/WidthIndex.h"

namespace quill {
namespace {

constexpr int32_t kCell = 640;

ColumnMetrics::Advances Fixed() {
  ColumnMetrics::Advances advances;
  advances.fill(kCell);
  return advances;
}

ColumnMetrics::Advances Proportional() {
  ColumnMetrics::Advances advances;
  for (size_t i = 0; i < advances.size(); ++i) advances[i] = static_cast<int32_t>(200 + (i * 37) % 500);
  return advances;
}

void Fill(CCrystalTextBuffer& buffer, std::string_view text) {
  buffer.NewBuffer();
  TextPosition end;
  buffer.InsertTextAt(nullptr, {0, 0}, text, end);
}

/// Places by the plainest walk: the slow twin.
std::vector<int64_t> PlacesOf(const ColumnMetrics& metrics, std::string_view text) {
  std::vector<int64_t> places{0};
  for (const char c : text) {
    const int64_t x = places.back();
    places.push_back(c == '\t' ? (x / metrics.TabWidth() + 1) * metrics.TabWidth() : x + metrics.Advance(c));
  }
  return places;
}

TEST(ColumnMetrics, LongLinesGiveTheSamePlacesAsAPlainWalk) {
  std::mt19937 random(7);
  for (const ColumnMetrics::Advances& advances : {Fixed(), Proportional()}) {
    ColumnMetrics metrics;
    metrics.Set(advances, 3);
    std::string text;
    for (int i = 0; i < 30'000; ++i)
      text += random() % 9 == 0 ? '\t' : static_cast<char>('a' + random() % 26);
    LongLinePlaces places(metrics);
    for (int round = 0; round < 3; ++round) {
      const std::vector<int64_t> expected = PlacesOf(metrics, text);
      for (const int32_t column : {0, 1, 4095, 4096, 4097, 12'345, 29'999, 30'000}) {
        EXPECT_EQ(places.XOf(5, text, column), expected[static_cast<size_t>(column)]) << column;
        const int64_t x = expected[static_cast<size_t>(column)];
        EXPECT_EQ(places.CharacterAt(5, text, x, false), column);
        EXPECT_EQ(places.CharacterAt(5, text, x, true), column);
      }
      EXPECT_EQ(places.CharacterAt(5, text, expected.back() + 99'999, true), 30'000);
      const size_t changed = 5000 + static_cast<size_t>(round) * 9000;
      text[changed] = text[changed] == '\t' ? 'w' : '\t';
      places.OnLineChanged(5, static_cast<int32_t>(changed));
    }
  }
}

TEST(ColumnMetrics, APointerBeyondTheMiddleOfACharacterMeansTheNextOne) {
  ColumnMetrics metrics;
  metrics.Set(Fixed(), 4);
  LongLinePlaces places(metrics);
  const std::string text = "a\tb";
  EXPECT_EQ(places.CharacterAt(0, text, kCell / 2 - 1, true), 0);
  EXPECT_EQ(places.CharacterAt(0, text, kCell / 2 + 1, true), 1);
  EXPECT_EQ(places.CharacterAt(0, text, kCell * 2, true), 1) << "the first half of the tab";
  EXPECT_EQ(places.CharacterAt(0, text, kCell * 3, true), 2);
  EXPECT_EQ(places.CharacterAt(0, text, kCell * 3, false), 1) << "the character under the pointer";
}

TEST(WidthIndex, KnowsTheWidestLineAfterAnyEdits) {
  std::mt19937 random(11);
  CCrystalTextBuffer buffer;
  TextViewModel model;
  model.SetMetrics(Proportional(), 3);
  Fill(buffer, "one\r\ntwo\tlong line here\r\nthree");
  model.SetBuffer(&buffer);
  for (int edit = 0; edit < 400; ++edit) {
    const auto line = static_cast<int32_t>(random() % static_cast<uint32_t>(buffer.LineCount()));
    const auto column = static_cast<int32_t>(random() % static_cast<uint32_t>(buffer.LineLength(line) + 1));
    TextPosition end;
    const char* const texts[] = {"x", "\t", "\r\n", "wide wide wide\r\nthen\r\n", "abc"};
    if (random() % 2 == 0) {
      buffer.InsertTextAt(&model, {line, column}, texts[random() % 5], end);
    } else {
      const int32_t lastLine = std::min(line + static_cast<int32_t>(random() % 3), buffer.LineCount() - 1);
      const TextPosition last{lastLine, lastLine == line ? column : 0};
      buffer.DeleteRange(&model, {{line, column}, std::max(last, TextPosition{line, column})});
    }
    if (random() % 3 != 0) continue;
    while (model.Widths().Continue(1 + static_cast<int64_t>(random() % 40))) {
    }
    int64_t widest = 0;
    for (int32_t i = 0; i < buffer.LineCount(); ++i) {
      widest = std::max(widest, PlacesOf(model.Metrics(), buffer.Line(i)).back());
    }
    ASSERT_EQ(model.Widths().Width(), widest) << "after edit " << edit;
  }
}

TEST(Navigation, MovesAsAnEditorsUserExpects) {
  CCrystalTextBuffer buffer;
  Fill(buffer, "  int foo = bar(1);\r\n\r\n\tx\r\nlast line");
  TextViewModel model;
  model.SetMetrics(Fixed(), 4);
  model.SetBuffer(&buffer);
  struct Row {
    TextPosition from;
    Motion motion;
    TextPosition to;
  };
  const Row rows[] = {
      {{0, 5}, Motion::kLineStart, {0, 2}},   {{0, 2}, Motion::kLineStart, {0, 0}},
      {{0, 0}, Motion::kLineStart, {0, 2}},   {{0, 0}, Motion::kLineEnd, {0, 19}},
      {{0, 0}, Motion::kLeft, {0, 0}},        {{1, 0}, Motion::kLeft, {0, 19}},
      {{0, 19}, Motion::kRight, {1, 0}},      {{3, 9}, Motion::kRight, {3, 9}},
      {{0, 2}, Motion::kWordRight, {0, 6}},   {{0, 10}, Motion::kWordRight, {0, 12}},
      {{0, 12}, Motion::kWordRight, {0, 15}}, {{0, 19}, Motion::kWordRight, {1, 0}},
      {{0, 12}, Motion::kWordLeft, {0, 10}},  {{0, 9}, Motion::kWordLeft, {0, 6}},
      {{2, 0}, Motion::kWordLeft, {1, 0}},    {{0, 7}, Motion::kUp, {0, 0}},
      {{3, 2}, Motion::kDown, {3, 9}},        {{0, 0}, Motion::kTextEnd, {3, 9}},
      {{3, 4}, Motion::kTextStart, {0, 0}},   {{0, 4}, Motion::kPageDown, {2, 1}},
  };
  for (const Row& row : rows) {
    Navigator navigator(model);
    const TextPosition to = navigator.Target(row.from, row.motion, 2);
    EXPECT_TRUE(to == row.to) << "from " << row.from.line << "," << row.from.character << " motion "
                              << static_cast<int>(row.motion) << " to " << to.line << "," << to.character;
  }
}

TEST(Navigation, KeepsTheWantedPlaceOverShorterLinesAndTabs) {
  CCrystalTextBuffer buffer;
  Fill(buffer, "0123456789\r\n\r\n\t\tab\r\n0123456789");
  TextViewModel model;
  model.SetMetrics(Fixed(), 4);
  model.SetBuffer(&buffer);
  Navigator navigator(model);
  TextPosition at{0, 9};
  const TextPosition expected[] = {{1, 0}, {2, 3}, {3, 9}};
  for (const TextPosition& next : expected) {
    at = navigator.Target(at, Motion::kDown, 1);
    EXPECT_TRUE(at == next) << at.line << "," << at.character;
  }
}

TEST(Navigation, WordsAreFoundUnderAndBehindTheCaret) {
  struct Row {
    const char* text;
    int32_t column;
    int32_t start;
    int32_t end;
  };
  const Row rows[] = {{"foo(bar)", 0, 0, 3}, {"foo(bar)", 3, 0, 3}, {"foo(bar)", 4, 4, 7},
                      {"foo(bar)", 8, 7, 8}, {"a  b", 1, 0, 1},     {"a  b", 2, 1, 3},
                      {"", 0, 0, 0},         {"my_var1+2", 9, 8, 9}};
  for (const Row& row : rows) {
    const WordRange word = WordAt(row.text, row.column);
    EXPECT_EQ(word.start, row.start) << row.text << " at " << row.column;
    EXPECT_EQ(word.end, row.end) << row.text << " at " << row.column;
  }
}

TEST(TextViewModel, TheCaretSkipsCollapsedBlocksAndMovesWithForeignEdits) {
  CCrystalTextBuffer buffer;
  Fill(buffer, "a\r\nfunction f()\r\n{\r\n\tx;\r\n\ty;\r\n}\r\nb");
  TextViewModel model;
  model.SetMetrics(Fixed(), 4);
  model.SetBuffer(&buffer);
  model.ParseThrough(buffer.LineCount() - 1);
  ASSERT_TRUE(ToggleFold(buffer, 2, 5));
  EXPECT_EQ(model.RowCount(), 4);
  Navigator navigator(model);
  EXPECT_TRUE((navigator.Target({2, 0}, Motion::kDown, 1) == TextPosition{6, 0}));
  EXPECT_TRUE((navigator.Target({6, 0}, Motion::kLeft, 1) == TextPosition{2, 1}));

  model.SetSelection({6, 0}, {6, 1});
  TextPosition end;
  buffer.InsertTextAt(nullptr, {0, 1}, "new\r\nline", end);
  EXPECT_TRUE((model.Caret() == TextPosition{7, 1}));
  buffer.DeleteRange(nullptr, {{0, 0}, {7, 1}});
  EXPECT_TRUE((model.Selection() == TextRange{{0, 0}, {0, 0}}));
  EXPECT_EQ(model.RowCount(), 1);
}

TEST(TextViewModel, OnlyWhatChangedIsDamaged) {
  CCrystalTextBuffer buffer;
  Fill(buffer, "a\r\nb\r\nc */ d\r\ne");
  TextViewModel model;
  int woken = 0;
  model.SetDamageCallback([&] { ++woken; });
  model.SetMetrics(Fixed(), 4);
  model.SetBuffer(&buffer);
  model.ParseThrough(3);
  model.TakeDamage();
  woken = 0;
  TextPosition end;
  buffer.InsertTextAt(&model, {1, 0}, "x", end);
  buffer.InsertTextAt(&model, {1, 0}, "y", end);
  EXPECT_EQ(woken, 1) << "once until the damage is taken";
  model.ParseThrough(3);
  ViewDamage damage = model.TakeDamage();
  EXPECT_FALSE(damage.everything);
  EXPECT_EQ(damage.first, 1);
  EXPECT_EQ(damage.last, 1);

  buffer.InsertTextAt(&model, {0, 0}, "/*", end);
  model.ParseThrough(3);
  damage = model.TakeDamage();
  EXPECT_EQ(damage.first, 0);
  EXPECT_EQ(damage.last, 2) << "the comment ends on line 2, line 3 looks as before";
}

TEST(MouseSelection, GrowsByUnitsAndKeepsWhatThePressSelected) {
  MouseSelection mouse;
  mouse.Begin(MouseSelection::Unit::kWord, {{1, 4}, {1, 8}});
  auto ends = mouse.ExtendTo({{1, 10}, {1, 13}});
  EXPECT_TRUE((ends.anchor == TextPosition{1, 4}) && (ends.caret == TextPosition{1, 13}));
  ends = mouse.ExtendTo({{0, 2}, {0, 5}});
  EXPECT_TRUE((ends.anchor == TextPosition{1, 8}) && (ends.caret == TextPosition{0, 2}));
  ends = mouse.ExtendTo({{1, 4}, {1, 8}});
  EXPECT_TRUE((ends.anchor == TextPosition{1, 4}) && (ends.caret == TextPosition{1, 8}));
}

TEST(PrintLayout, EveryCharacterIsPrintedOnceAndNoRowIsTooWide) {
  CCrystalTextBuffer buffer;
  std::string text;
  for (int i = 0; i < 57; ++i) text += std::string(static_cast<size_t>(i * 7 % 50), 'x') + "\ty\r\n";
  Fill(buffer, text);
  ColumnMetrics metrics;
  metrics.Set(Fixed(), 4);
  const int64_t width = 20 * kCell;
  const TextCopy copy(buffer);
  PrintLayout layout(copy, metrics, width, 10);
  while (layout.Continue(70)) {
  }
  std::vector<std::string> lines(static_cast<size_t>(buffer.LineCount()));
  for (int32_t page = 0; page < layout.PageCount(); ++page) {
    const auto rows = layout.Rows(page);
    EXPECT_LE(rows.size(), 10U);
    EXPECT_FALSE(rows.empty());
    for (const PrintLayout::Row& row : rows) {
      const auto piece = buffer.Line(row.line).substr(static_cast<size_t>(row.start),
                                                      static_cast<size_t>(row.end - row.start));
      EXPECT_LE(metrics.Walk(piece, row.x) - row.x, width);
      lines[static_cast<size_t>(row.line)] += piece;
    }
  }
  for (int32_t line = 0; line < buffer.LineCount(); ++line) {
    EXPECT_EQ(lines[static_cast<size_t>(line)], buffer.Line(line));
  }
  CCrystalTextBuffer empty;
  empty.NewBuffer();
  const TextCopy none(empty);
  PrintLayout nothing(none, metrics, 0, 0);
  EXPECT_FALSE(nothing.Continue(1000));
  EXPECT_EQ(nothing.PageCount(), 1);
}

}  // namespace
}  // namespace quill
