#include "text/search/FindOpening.h"

#include <gtest/gtest.h>

#include "text/buffer/CrystalTextBuffer.h"
#include "text/search/DialogPlace.h"

namespace quill {

void PrintTo(const SearchRequest& request, std::ostream* out) {
  *out << request.what << " flags " << request.flags;
}
void PrintTo(const ScreenRectangle& r, std::ostream* out) {
  *out << r.x << ',' << r.y << ' ' << r.width << 'x' << r.height;
}

namespace {

TEST(FindOpening, TheLastSearchGoesBeforeTheStoredOneAndSelectedTextBeforeBoth) {
  const SearchRequest last{"last", search_flag::kUpwards | search_flag::kWholeWord};
  const SearchRequest stored{"stored", search_flag::kMatchCase | search_flag::kUpwards};
  EXPECT_EQ(SearchToBeginWith(last, stored, {}), last);
  EXPECT_EQ(SearchToBeginWith({}, stored, {}), (SearchRequest{"stored", search_flag::kMatchCase}));
  EXPECT_EQ(SearchToBeginWith(last, stored, "sel"), (SearchRequest{"sel", last.flags}));
}

TEST(FindOpening, SelectionsAndWordsComeFromOneLine) {
  CCrystalTextBuffer buffer;
  buffer.NewBuffer();
  TextPosition end;
  buffer.InsertTextAt(nullptr, {0, 0}, "set_me (x)\r\nnext", end);
  EXPECT_EQ(SelectedWithinLine(buffer, {{0, 4}, {0, 6}}), "me");
  EXPECT_EQ(SelectedWithinLine(buffer, {{0, 4}, {0, 4}}), std::nullopt);
  EXPECT_EQ(SelectedWithinLine(buffer, {{0, 4}, {1, 2}}), std::nullopt);
  EXPECT_EQ(WordAround(buffer, {0, 2}), (TextRange{{0, 0}, {0, 6}}));
  EXPECT_EQ(WordAround(buffer, {0, 6}), (TextRange{{0, 0}, {0, 6}})) << "right behind it";
  EXPECT_TRUE(WordAround(buffer, {0, 7}).IsEmpty());
  EXPECT_EQ(WordAround(buffer, {1, 4}), (TextRange{{1, 0}, {1, 4}}));
}

TEST(DialogPlace, MovesNoFurtherThanNeededAndStaysOnTheScreen) {
  const ScreenRectangle screen{0, 0, 1000, 800};
  const ScreenRectangle dialog{400, 300, 300, 200};
  struct Row {
    const char* name;
    ScreenRectangle keepClear, place;
  };
  const Row rows[] = {
      {"not covered", {100, 100, 80, 20}, dialog},
      {"touching is not covering", {350, 310, 50, 20}, dialog},
      {"near the top edge: down", {450, 310, 80, 20}, {400, 330, 300, 200}},
      {"near the bottom edge: up", {450, 470, 80, 20}, {400, 270, 300, 200}},
      {"near the left edge: right", {380, 390, 40, 20}, {420, 300, 300, 200}},
      {"a line as wide as the screen", {0, 390, 1000, 20}, {400, 190, 300, 200}},
      {"nothing beside it", {0, 100, 1000, 600}, dialog},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(PlaceAside(dialog, row.keepClear, screen), row.place) << row.name;
  }
  EXPECT_EQ(PlaceAside({400, 10, 300, 200}, {0, 180, 1000, 20}, screen),
            (ScreenRectangle{400, 200, 300, 200}))
      << "no room above";
  EXPECT_EQ(PlaceAside({900, 700, 300, 200}, {880, 650, 80, 200}, screen),
            (ScreenRectangle{580, 600, 300, 200}))
      << "from half outside to wholly inside";
}

}  // namespace
}  // namespace quill
