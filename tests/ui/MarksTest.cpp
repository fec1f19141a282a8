// Marks of lines in the margin: set, seen and removed.
#include <QTest>
#include <QWindow>

#include "shell/ui/QuillDoc.h"
#include "ui/PopupMenu.h"
#include "ui/ViewEvents.h"

namespace quill {
namespace {

class Marks : public ViewFixture {
 protected:
  /// Clicks with the right button beside a line; its entries, as far as they are for the line's marks.
  std::string Menu(int32_t line, const std::string& label = {}) {
    return ChooseFromPopup(
        [&] {
          const QPoint place = Viewport().mapTo(&Frame(), BesideLine(line));
          QTest::mousePress(Frame().windowHandle(), Qt::RightButton, {}, place);
          Pump();
          QTest::mouseRelease(Frame().windowHandle(), Qt::RightButton, {}, place);
        },
        label);
  }
  /// Where the caret goes to by these keys from the first line, one after the other.
  std::string Stops(std::initializer_list<const char*> keys) {
    std::string lines;
    for (const char* key : keys) {
      View().SetCaretPos({0, 0});
      Press(key);
      lines += std::to_string(View().CaretPos().line) + " ";
    }
    return lines;
  }
};

TEST_F(Marks, NumberedBookmarksAreRemovedByCommandAndByTheMarksMenu) {
  Open("a.vsl", "0\r\n1\r\n2\r\n3\r\n4");
  View().SetCaretPos({2, 0});
  for (const char* key : {"Ctrl+Shift+3", "Ctrl+Shift+7", "Ctrl+F2"}) Press(key);
  View().SetCaretPos({4, 0});
  EXPECT_FALSE(Choose("Edit > Bookmarks > Remove Numbered Bookmark")) << "this line has none";
  Press("Ctrl+Shift+5");
  EXPECT_EQ(Stops({"Ctrl+3", "Ctrl+7", "Ctrl+5", "F2"}), "2 2 4 2 ");

  EXPECT_EQ(Menu(2, "Remove Bookmark 3"),
            "Remove Bookmark|Remove Bookmark 3|Remove Bookmark 7|Set Numbered Bookmark|Set Breakpoint");
  EXPECT_EQ(Stops({"Ctrl+3", "Ctrl+7", "Ctrl+5", "F2"}), "0 2 4 2 ");
  View().SetCaretPos({2, 0});
  EXPECT_TRUE(Choose("Edit > Bookmarks > Remove Numbered Bookmark"));
  EXPECT_EQ(Stops({"Ctrl+3", "Ctrl+7", "Ctrl+5", "F2"}), "0 0 4 2 ") << "the plain one stays";
  Menu(3, "Set Numbered Bookmark > 7");
  Menu(2, "Remove Bookmark");
  Menu(1, "Set Bookmark");
  EXPECT_EQ(Stops({"Ctrl+7", "Ctrl+5", "F2"}), "3 4 1 ") << "for the line that was clicked";
  EXPECT_TRUE(Choose("Edit > Bookmarks > Clear Numbered Bookmarks"));
  EXPECT_EQ(Stops({"Ctrl+7", "Ctrl+5", "F2"}), "0 0 1 ");
  EXPECT_EQ(Shown().find('['), std::string::npos) << "nothing was selected by all that";
}

TEST_F(Marks, NoMarkHidesAnother) {
  Open("a.vsl", "0\r\n1\r\n2");
  const char* const marks[] = {"Set Bookmark", "Set Numbered Bookmark > 3", "Set Numbered Bookmark > 8",
                               "Set Breakpoint"};
  std::vector<QImage> pictures;
  for (unsigned set = 0; set < 16; ++set) {
    Menu(1, "Remove Bookmark");
    Menu(1, "Remove Breakpoint");
    Choose("Edit > Bookmarks > Clear Numbered Bookmarks");
    for (unsigned i = 0; i < 4; ++i) {
      if ((set >> i & 1U) != 0) Menu(1, marks[i]);
    }
    EXPECT_EQ(OnScreen(), Repainted()) << set;
    pictures.push_back(OnScreen().copy(0, View().PointOf({1, 0}).y(), 18, View().LineHeight()));
    for (unsigned other = 0; other < set; ++other) {
      EXPECT_NE(pictures[set], pictures[other]) << set << " looks like " << other;
    }
  }
}

}  // namespace
}  // namespace quill
