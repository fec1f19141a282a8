#include <filesystem>

#include "shell/ui/QuillDoc.h"
#include "ui/ViewEvents.h"

namespace quill {
namespace {

namespace fs = std::filesystem;
using Answer = Prompts::Answer;

constexpr char kQuestion[] = "This file has been modified, do you want to reload?";

class Reload : public ViewFixture {
 protected:
  static std::string Lines(int count) {
    std::string text;
    for (int i = 0; i < count; ++i) text += "line " + std::to_string(i) + "\r\n";
    return text;
  }
  void ChangeOnDisk(const std::string& text) {
    m_seconds += 10;
    m_folder.Write("a.vsl", text);
    fs::last_write_time(m_folder.Path("a.vsl"),
                        fs::file_time_type::clock::now() + std::chrono::seconds(m_seconds));
  }
  void GiveFocusAgain() {
    View().clearFocus();
    View().setFocus();
    Pump();
  }
  /// Caret and first line of the active view, as the status bar counts them.
  std::string Place() {
    const TextPosition caret = View().CaretPos();
    return std::to_string(caret.line + 1) + ":" + std::to_string(caret.character + 1) + " from " +
           std::to_string(View().TopLine() + 1);
  }

 private:
  int m_seconds = 0;
};

TEST_F(Reload, EveryViewKeepsItsPlaceAsFarAsTheTextReaches) {
  Open("a.vsl", Lines(300));
  View().SetCaretPos({149, 3});
  for (int i = 0; i < 12; ++i) ViewMouse().Wheel(-120);
  ASSERT_GT(View().TopLine(), 149) << "the caret is out of sight";
  const std::string first = Place();
  EXPECT_TRUE(Choose("Window > New Window"));
  View().SetCaretPos({249, 2});
  for (int i = 0; i < 4; ++i) Press("Ctrl+Up");
  const std::string second = Place();
  ASSERT_NE(first, second);

  ChangeOnDisk(Lines(280));
  m_prompts.Expect(kQuestion, Answer::kYes);
  GiveFocusAgain();
  EXPECT_EQ(View().Buffer()->LineCount(), 281);
  EXPECT_EQ(Place(), second);
  Press("Ctrl+Tab");
  EXPECT_EQ(Place(), first);
  Press("Ctrl+R");
  EXPECT_EQ(Place(), first) << "asked for by the user";

  ChangeOnDisk("one\r\ntwo");
  m_prompts.Expect(kQuestion, Answer::kYes);
  GiveFocusAgain();
  EXPECT_EQ(Place(), "2:4 from 1");
  ChangeOnDisk("");
  m_prompts.Expect(kQuestion, Answer::kYes);
  GiveFocusAgain();
  EXPECT_EQ(Place(), "1:1 from 1");
}

TEST_F(Reload, IsNotAskedAboutAgainWhileTheQuestionIsOpen) {
  Open("a.vsl", "old");
  ChangeOnDisk("new");
  m_prompts.Expect(kQuestion, Answer::kNo);
  int open = 0;
  m_prompts.WhileOpen([this, &open] {
    ++open;
    ChangeOnDisk("newer");
    GiveFocusAgain();
    GiveFocusAgain();
  });
  GiveFocusAgain();
  EXPECT_EQ(open, 1);
  EXPECT_EQ(ActiveText(), "old");
  m_prompts.WhileOpen({});
  m_prompts.Expect(kQuestion, Answer::kYes);
  GiveFocusAgain();
  EXPECT_EQ(ActiveText(), "newer") << "the change since is asked about afterwards";
}

}  // namespace
}  // namespace quill
