// What an empty window offers.
#include <QAbstractButton>
#include <QTest>
#include <filesystem>

#include "res/ui/UiText.h"
#include "shell/ui/Documents.h"
#include "shell/ui/QuillDoc.h"
#include "shell/ui/QuillView.h"
#include "shell/ui/Workspace.h"
#include "ui/ScreenFixture.h"

namespace quill {
namespace {

class EmptyWindow : public ScreenFixture {
 protected:
  std::vector<QAbstractButton*> Buttons() {
    std::vector<QAbstractButton*> shown;
    auto* page = Frame().findChild<QWidget*>("StartPage");
    if (page == nullptr || !page->isVisible()) return shown;
    for (auto* button : page->findChildren<QAbstractButton*>()) {
      if (button->isVisible()) shown.push_back(button);
    }
    return shown;
  }
  /// The rows, the one with the focus in brackets.
  std::string Rows() {
    std::string rows;
    Pump();  // the page follows when everything else is done
    for (const QAbstractButton* button : Buttons()) {
      const std::string text = ToBytes(button->text());
      rows += (rows.empty() ? "" : "|") + (button->hasFocus() ? "[" + text + "]" : text);
    }
    return rows;
  }
  void ClickRow(const std::string& text) {
    for (QAbstractButton* button : Buttons()) {
      if (ToBytes(button->text()) == text) return QTest::mouseClick(button, Qt::LeftButton), Pump();
    }
    ADD_FAILURE() << "no row " << text;
  }
};

TEST_F(EmptyWindow, OffersWhatOneMayBeginWith) {
  WriteFlag(m_settings, settings::kStartBlank, false);
  Start();
  EXPECT_EQ(Rows(), "[New]|Open");
  EXPECT_EQ(Buttons()[1]->accessibleName(), "Open, Ctrl+O");
  Press("Return");
  EXPECT_EQ(Rows(), "");
  Type("x");
  EXPECT_EQ(ActiveText(), "x") << "the focus is in the text";
  Press("Ctrl+Z");
  Press("Ctrl+W");
  EXPECT_EQ(Rows(), "[New]|Open");

  const std::string path = m_folder.Write("a.vsl", "text of a");
  m_prompts.ExpectFile(path);
  Press("Down");
  EXPECT_EQ(Rows(), "New|[Open]");
  Press("Return");
  EXPECT_EQ(ActiveText(), "text of a");
  Open("b.vsl", "text of b");
  EXPECT_TRUE(Choose("File > Close All"));
  EXPECT_EQ(Rows(), "[New]|Open|b.vsl|a.vsl");
  ClickRow("a.vsl");
  EXPECT_EQ(ActiveText(), "text of a");
  EXPECT_EQ(Rows(), "");
  Press("Ctrl+W");

  std::filesystem::remove(path);
  m_prompts.Expect("The file \"" + path + "\" does not exist any more. It was removed from the list.",
                   Prompts::Answer::kOk);
  ClickRow("a.vsl");
  EXPECT_EQ(Rows(), "[New]|Open|b.vsl") << "it says how it is now";
}

TEST_F(EmptyWindow, OffersTheSampleAndWhatWasLeftUnsavedWhereThereIsSome) {
  const std::string samples = "share/quill/samples/lander/";
  std::filesystem::create_directories(m_folder.Path(samples));
  Start();
  EXPECT_FALSE(Choose("Help > Open Sample Game")) << "it is not there yet";
  Press("Ctrl+N");
  Type("unsaved");
  Parts().documents.FlushJournals();
  m_folder.Write(samples + "main.vsl", "the sample");
  m_prompts.ExpectRecovery(Prompts::RecoveryAction::kLater);
  Start();
  Press("Ctrl+W");
  EXPECT_EQ(Rows(), "[New]|Open|Recover Unsaved Text|Open Sample Game");
  ClickRow("Open Sample Game");
  EXPECT_EQ(ActiveText(), "the sample");
  Press("Ctrl+W");
  m_prompts.ExpectRecovery(Prompts::RecoveryAction::kLater);
  ClickRow("Recover Unsaved Text");
  EXPECT_EQ(Rows(), "[New]|Open|Recover Unsaved Text|Open Sample Game|main.vsl") << "it is still there";
  m_prompts.ExpectRecovery(Prompts::RecoveryAction::kDiscard, {"Untitled2"});
  ClickRow("Recover Unsaved Text");
  EXPECT_EQ(Rows(), "[New]|Open|Open Sample Game|main.vsl");
  m_prompts.Expect("There is nothing to recover.", Prompts::Answer::kOk);
  EXPECT_TRUE(Choose("File > Recover Unsaved Text"));
}

}  // namespace
}  // namespace quill
