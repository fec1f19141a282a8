// Where jumps lead, what is seen around their place, and what the status bar says when there is none.
#include <QStatusBar>
#include <QTest>
#include <filesystem>

#include "shell/ui/QuillDoc.h"
#include "shell/ui/QuillView.h"
#include "ui/ScreenFixture.h"

namespace quill {
namespace {

class JumpPlaces : public ScreenFixture {
 protected:
  std::string File() {
    const std::string& path = View().FilePath();
    return path.substr(path.rfind('/') + 1);
  }
};

TEST_F(JumpPlaces, GoToDefinitionFindsWhatIncludedFilesDefineWithoutListingIt) {
  m_folder.Write("part.vsl", "include <sub/deep.vsl>;\r\nfunction part()\r\n{\r\n}\r\n");
  std::filesystem::create_directory(m_folder.Path("sub"));
  m_folder.Write("sub/deep.vsl", "// deep\r\nvar deep;\r\n");
  for (const bool listed : {false, true}) {
    WriteFlag(m_settings, settings::kLoadIncluded, listed);
    Start();
    Open("a.vsl",
         "include <part.vsl>;\r\nvar own;\r\nfunction f()\r\n{\r\n\tpart();\r\n\tdeep = own;\r\n}\r\n");
    const auto isListed = [this] { return Names().find("deep") != std::string::npos; };
    EXPECT_EQ(QTest::qWaitFor(isListed, listed ? 30000 : 0), listed);
    const struct {
      TextPosition from;
      const char* file;
      const char* caret;
    } rows[] = {
        {{4, 3}, "part.vsl", "2:10"},
        {{5, 2}, "deep.vsl", "2:5"},
        {{5, 9}, "a.vsl", "2:5"},
    };
    for (const auto& row : rows) {
      View().SetCaretPos(row.from);
      Press("F12");
      EXPECT_EQ(File(), row.file) << row.from.line;
      EXPECT_EQ(Caret(), row.caret) << row.from.line;
      Press("Alt+Left");
      EXPECT_EQ(File(), "a.vsl");
      EXPECT_EQ(View().CaretPos(), row.from);
    }
  }
}

TEST_F(JumpPlaces, AnIncludeLineOpensItsFile) {
  m_folder.Write("part.vsl", "\r\n");
  std::filesystem::create_directory(m_folder.Path("media"));
  m_folder.Write("media/far.h", "\r\n");
  Start();
  Open("a.vsl",
       "path \"media\";\r\n\tinclude <part.vsl>; // yes\r\ninclude <far.h>;\r\ninclude <gone.vsl>;\r\n"
       "// include <part.vsl>;\r\n");
  const struct {
    TextPosition from;
    const char* file;
    const char* message;
  } rows[] = {
      {{1, 14}, "part.vsl", ""},
      {{1, 0}, "part.vsl", ""},
      {{2, 10}, "far.h", ""},
      {{3, 12},
       "a.vsl",
       "The file \"gone.vsl\" is neither beside the script nor in a folder of its path lines."},
      {{4, 14}, "a.vsl", "Neither the script nor its included files define \"part\"."},
      {{5, 0}, "a.vsl", "There is no name at the caret."},
  };
  for (const auto& row : rows) {
    Frame().statusBar()->clearMessage();
    View().SetCaretPos(row.from);
    Press("F12");
    EXPECT_EQ(File(), row.file) << row.from.line;
    EXPECT_EQ(Message(), row.message) << row.from.line;
    if (File() != "a.vsl") Press("Alt+Left");
    EXPECT_EQ(View().CaretPos(), row.from);
  }
  Click(2, 11, Qt::ControlModifier);
  EXPECT_EQ(File(), "far.h");
}

TEST_F(JumpPlaces, CommandsThatLeadNowhereSaySo) {
  Start();
  Open("a.vsl", "one\r\ntwo\r\nthree\r\n");
  const auto press = [this](const char* key) {
    Frame().statusBar()->clearMessage();
    Press(key);
    return Message();
  };
  EXPECT_EQ(press("Alt+Left"), "There is no place to go back to.");
  EXPECT_EQ(press("Ctrl+Z"), "There is nothing to undo.");
  EXPECT_EQ(press("F2"), "There is no bookmark below this line.");
  EXPECT_EQ(press("Shift+F2"), "There is no bookmark above this line.");
  EXPECT_TRUE(Choose("Edit > Bookmarks > Toggle bookmark"));
  EXPECT_EQ(press("F2"), "There is no bookmark below this line.");
  EXPECT_EQ(Caret(), "1:1");
  Press("Down");
  EXPECT_EQ(press("Shift+F2"), "") << "there it is";
  EXPECT_EQ(Caret(), "1:1");
  EXPECT_EQ(press("Ctrl+3"), "This bookmark is not set.");
}

TEST_F(JumpPlaces, AFoundPlaceHasLinesAroundIt) {
  Start();
  Open("a.vsl", "");
  const int32_t page = View().PageRows();
  ASSERT_GE(page, 16);
  std::string text = "needle\r\n";
  for (int32_t i = 1; i < 6 * page; ++i) {
    // Right below the view, at the edge of it, far away.
    const bool found = i == page - 1 || i == page + 20 || i == 4 * page;
    text += found ? "needle\r\n" : "//\r\n";
  }
  Open("b.vsl", text);
  const auto expectAround = [this, page](const char* what) {
    const int32_t above = CaretLine() - View().TopLine();
    EXPECT_GE(above, 4) << what << CaretLine();
    EXPECT_GE(page - 1 - above, 4) << what << CaretLine();
  };
  Press("Ctrl+F3");
  for (int i = 0; i < 2; ++i) {
    expectAround("down ");
    Press("F3");
  }
  expectAround("down ");
  EXPECT_EQ(CaretLine(), 4 * page);
  for (int i = 0; i < 2; ++i) {
    Press("Shift+F3");
    expectAround("up ");
  }
  const int32_t top = View().TopLine();
  View().SelectFound({top + 5, 0}, 2);
  EXPECT_EQ(View().TopLine(), top) << "there is enough around it";
  View().SelectFound({top + 1, 0}, 2);
  expectAround("at the upper edge ");
}

}  // namespace
}  // namespace quill
