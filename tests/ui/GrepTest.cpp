#include "find/ui/Grep.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QListView>
#include <filesystem>

#include "res/ui/UiText.h"
#include "shell/ui/QuillDoc.h"
#include "shell/ui/QuillView.h"
#include "ui/ShellFixture.h"

namespace quill {
namespace {

class FindInFilesDialog : public ShellFixture {
 protected:
  FindInFilesDialog() { std::filesystem::create_directory(m_folder.Path("game")); }

  CGrep& Dialog() { return *Frame().findChild<CGrep*>(); }
  QListView& List() { return *Dialog().findChild<QListView*>(); }
  /// The results as they are listed, each behind a line end, without the folder.
  std::string Results() {
    std::string lines;
    for (int i = 0; i < List().model()->rowCount(); ++i) {
      lines += ToBytes(List().model()->index(i, 0).data().toString()) + "\n";
    }
    const std::string folder = m_folder.Path("game") + "/";
    for (size_t at = lines.find(folder); at != std::string::npos; at = lines.find(folder)) {
      lines.erase(at, folder.size());
    }
    return lines;
  }
  std::string Status() {
    for (const auto* label : Dialog().findChildren<QLabel*>()) {
      if (label->text().contains(" files")) return label->text().toStdString();
    }
    return {};
  }
  void Find(const std::string& what) {
    Press("Ctrl+Shift+F");
    Dialog().findChild<QComboBox*>()->setFocus();
    Press("Ctrl+A");
    Type(m_folder.Path("game"));
    PressAll({"Tab", "Tab"});
    Type(what);
    Press("Return");
  }
  void PressAll(std::initializer_list<const char*> keys) {
    for (const char* key : keys) Press(key);
  }
};

TEST_F(FindInFilesDialog, EnterSearchesAndEnterOnAResultOpensItsLine) {
  const std::string path = m_folder.Write("game/a.vsl", "one\r\n\tTwo\tb\r\nend two");
  m_folder.Write("game/b.txt", "two");
  Start();
  Find("two");
  EXPECT_EQ(Dialog().windowTitle(), QString("Find in Files"));
  EXPECT_EQ(Results(), "a.vsl (2) Two b \na.vsl (3)end two\n");
  EXPECT_EQ(Status(), "2 lines in 1 of 1 files");
  PressAll({"Tab", "Tab", "Return"});
  EXPECT_EQ(ActiveText(), "one|\tTwo\tb|end two");
  EXPECT_EQ(View().CaretPos(), (TextPosition{1, 0}));
  EXPECT_EQ(QApplication::focusWidget(), &View());
  EXPECT_TRUE(Dialog().isVisible());
  Dialog().activateWindow();
  Pump();
  List().setFocus();
  PressAll({"Down", "Return"});
  EXPECT_EQ(View().CaretPos(), (TextPosition{2, 0}));
}

TEST_F(FindInFilesDialog, NothingIsSearchedWithoutADirectoryOrAText) {
  Start();
  Press("Ctrl+Shift+F");
  const auto combos = Dialog().findChildren<QComboBox*>();
  const auto enabled = [&](const char* directory, const char* text) {
    combos[0]->setEditText(QString::fromLatin1(directory));
    combos[1]->setEditText(QString::fromLatin1(text));
    for (const auto* button : Dialog().findChildren<QAbstractButton*>()) {
      if (button->text() == "&Search") return button->isEnabled();
    }
    return false;
  };
  EXPECT_FALSE(enabled("", "x"));
  EXPECT_FALSE(enabled("/", ""));
  Press("Return");
  EXPECT_EQ(Status(), "");
  EXPECT_TRUE(enabled("/", "x"));
}

TEST_F(FindInFilesDialog, NamesOfAnyBytesAreShownAndOpened) {
  m_folder.Write("game/\xE4\xFF.vsl", "here\r\n");
  Start();
  Find("HERE");
  EXPECT_EQ(Results(), "\xE4\xFF.vsl (1)here \n");
  PressAll({"Tab", "Tab", "Return"});
  EXPECT_EQ(Document().File().Path(), m_folder.Path("game/\xE4\xFF.vsl"));
}

TEST_F(FindInFilesDialog, HistoriesAndPlaceAreKept) {
  Start();
  Find("first");
  Dialog().setGeometry(30, 40, 500, 300);
  Press("Escape");
  Quit();
  const AppProfile profile(m_settings);
  EXPECT_EQ(profile.ReadText("Settings", "TextsToFind0"), "first");
  EXPECT_EQ(profile.ReadText("Settings", "GrepDirectories0"), m_folder.Path("game"));
  Start();
  Press("Ctrl+Shift+F");
  EXPECT_EQ(Dialog().geometry(), QRect(30, 40, 500, 300));
  Type("second");
  Dialog().accept();
  EXPECT_EQ(profile.ReadText("Settings", "TextsToFind0"), "second");
  EXPECT_EQ(profile.ReadText("Settings", "TextsToFind1"), "first");
  EXPECT_EQ(profile.ReadText("Settings", "TextsToFind"), "second");
}

TEST_F(FindInFilesDialog, BrowsingBeginsWhereTheFieldPointsAndFillsIt) {
  Start();
  Find("two");
  auto* field = Dialog().findChild<QComboBox*>();
  for (const auto& [chosen, shown] : {std::pair{m_folder.Path("game/sub"), m_folder.Path("game/sub")},
                                      {std::string(), m_folder.Path("game/sub")}}) {
    const std::string before = field->currentText().toStdString();
    m_prompts.ExpectFile(chosen);
    for (auto* button : Dialog().findChildren<QAbstractButton*>()) {
      if (button->text() == "...") button->click();
    }
    EXPECT_EQ(m_prompts.LastSuggestion(), before);
    EXPECT_EQ(field->currentText().toStdString(), shown);
  }
}

}  // namespace
}  // namespace quill
