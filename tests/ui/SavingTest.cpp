// No text is lost or written over behind the user's back, whatever became of file and modified flag.
#include <QApplication>
#include <QDialog>
#include <QMenu>
#include <QPushButton>
#include <QScreen>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>
#include <filesystem>
#include <functional>

#include "res/ui/UiText.h"
#include "shell/ui/DialogPrompts.h"
#include "shell/ui/Documents.h"
#include "shell/ui/QuillDoc.h"
#include "shell/ui/QuillView.h"
#include "shell/ui/TimerService.h"
#include "ui/ScreenFixture.h"

namespace quill {
namespace {

namespace fs = std::filesystem;
using Answer = Prompts::Answer;

constexpr char kReload[] = "This file has been modified, do you want to reload?";
constexpr char kSave[] = "Save the changes to \"a.vsl\"?";
constexpr char kLose[] = "Reload \"a.vsl\" and lose the changes made since it was saved?";

class Saving : public ScreenFixture {
 protected:
  Saving() { Start(); }

  void BackUp() {
    Parts().timers.Fire(timer_id::kAutoSave);
    Pump();
  }
  void ChangeOnDisk(const std::string& name, const std::string& text) {
    m_seconds += 10;
    m_folder.Write(name, text);
    fs::last_write_time(m_folder.Path(name),
                        fs::file_time_type::clock::now() + std::chrono::seconds(m_seconds));
  }
  /// As by a click into the text; what follows the event waits for `Pump`.
  void Focus() {
    View().clearFocus();
    View().setFocus();
  }
  void FocusAgain() {
    Focus();
    Pump();
  }
  std::string File(const std::string& name) { return m_folder.Read(name); }
  /// The lines of the active document with a bookmark.
  std::string Bookmarks() {
    std::string lines;
    for (int32_t line = 0; line < View().Buffer()->LineCount(); ++line) {
      if (View().Buffer()->LineFlags(line) != 0) lines += std::to_string(line);
    }
    return lines;
  }

 private:
  int m_seconds = 0;
};

TEST_F(Saving, TheMinutesBackupTakesNothingAway) {
  Open("a.vsl", "old");
  for (const char* save : {"File > Save", "File > Save All"}) {
    m_folder.Write("a.vsl", "old");
    Press("Ctrl+R");
    Press("Ctrl+Home");
    Type("new ");
    BackUp();
    EXPECT_EQ(Tabs(), "[a.vsl]") << "what was backed up does not count as modified";
    m_prompts.Expect(kLose, Answer::kNo);
    Press("Ctrl+R");
    m_prompts.Expect(kSave, Answer::kCancel);
    Press("Ctrl+W");
    m_prompts.Expect(kSave, Answer::kCancel);
    EXPECT_FALSE(Frame().close());
    EXPECT_EQ(ActiveText(), "new old");
    EXPECT_TRUE(Choose(save)) << save;
    EXPECT_EQ(File("a.vsl"), "new old") << save;
    EXPECT_FALSE(Choose("File > Save All"));
    Press("Ctrl+R");
  }
  Type("x");
  BackUp();
  Press("Ctrl+Z");
  EXPECT_EQ(ActiveText(), File("a.vsl"));
  Press("Ctrl+W");
  EXPECT_EQ(TabBar().count(), 0) << "nothing is asked: the file holds the text";
}

TEST_F(Saving, ATextWhoseFileWasChangedAndThatWasKeptIsUnsaved) {
  Open("a.vsl", "mine");
  ChangeOnDisk("a.vsl", "theirs");
  m_prompts.Expect(kReload, Answer::kNo);
  FocusAgain();
  EXPECT_EQ(Tabs(), "[a.vsl*]");
  m_prompts.Expect(kSave, Answer::kCancel);
  Press("Ctrl+W");
  m_prompts.Expect(kLose, Answer::kNo);
  Press("Ctrl+R");
  Parts().documents.FlushJournals();
  Crash();
  m_prompts.ExpectRecovery(Prompts::RecoveryAction::kRecover, {m_folder.Path("a.vsl")});
  Start();
  EXPECT_EQ(ActiveText(), "mine");
  EXPECT_TRUE(Choose("File > Save All"));
  EXPECT_EQ(File("a.vsl"), "mine");
  EXPECT_EQ(Tabs(), "[a.vsl]");

  ChangeOnDisk("a.vsl", "theirs");
  m_prompts.Expect(kReload, Answer::kYes);
  FocusAgain();
  EXPECT_EQ(Tabs(), "[a.vsl]");
  Press("Ctrl+W");
  EXPECT_EQ(TabBar().count(), 0);
  EXPECT_EQ(File("a.vsl"), "theirs");
}

TEST_F(Saving, ATextWhoseFileWasDeletedIsNowhereButHere) {
  Open("a.vsl", "text");
  Open("b.vsl", "b");
  fs::remove(m_folder.Path("a.vsl"));
  FocusAgain();
  EXPECT_EQ(Tabs(), "a.vsl (deleted)* [b.vsl]");
  Press("Ctrl+W");
  m_prompts.Expect(kSave, Answer::kCancel);
  Press("Ctrl+W");
  Press("Ctrl+S");
  EXPECT_EQ(File("a.vsl"), "text");
  EXPECT_EQ(Tabs(), "[a.vsl]");
  fs::rename(m_folder.Path("a.vsl"), m_folder.Path("c.vsl"));
  FocusAgain();
  fs::rename(m_folder.Path("c.vsl"), m_folder.Path("a.vsl"));
  FocusAgain();
  EXPECT_EQ(Tabs(), "[a.vsl]") << "it is there again, and as it was";

  fs::remove(m_folder.Path("a.vsl"));
  FocusAgain();
  Parts().documents.FlushJournals();
  Crash();
  m_prompts.ExpectRecovery(Prompts::RecoveryAction::kRecover, {m_folder.Path("a.vsl")});
  Start();
  EXPECT_EQ(ActiveText(), "text");
  EXPECT_EQ(Tabs(), "[a.vsl (deleted)*]");
  m_prompts.Expect(kSave, Answer::kSave);
  Press("Ctrl+W");
  EXPECT_EQ(File("a.vsl"), "text");

  Open("a.vsl", "text");
  fs::remove(m_folder.Path("a.vsl"));
  m_prompts.Expect(kSave, Answer::kDiscard);
  Press("Ctrl+W");
  EXPECT_FALSE(fs::exists(m_folder.Path("a.vsl"))) << "though nobody had noticed before";
}

TEST_F(Saving, WhatAnotherProgramWroteIsNotWrittenOverByDocumentsThatNobodyTouched) {
  Open("a.vsl", "1");
  Open("b.vsl", "1");
  Type("x");
  ChangeOnDisk("a.vsl", "2");
  EXPECT_TRUE(Choose("File > Save All"));
  EXPECT_EQ(File("a.vsl") + File("b.vsl"), "2x1");
  EXPECT_TRUE(Choose("File > Close All"));
  EXPECT_EQ(File("a.vsl"), "2");
}

// The name to save under

TEST_F(Saving, TheExtensionThatIsAddedWritesOverNothingUnasked) {
  m_folder.Write("f5.vsl", "precious");
  const std::string question =
      "\"" + m_folder.Path("f5.vsl") + "\" exists already. Do you want to replace it?";
  Type("new");
  m_prompts.ExpectFile(m_folder.Path("f5"));
  m_prompts.Expect(question, Answer::kNo);
  m_prompts.ExpectFile("");
  Press("Ctrl+S");
  EXPECT_EQ(File("f5.vsl"), "precious");
  EXPECT_EQ(Tabs(), "[Untitled1*]");
  m_prompts.ExpectFile(m_folder.Path("f5"));
  m_prompts.Expect(question, Answer::kNo);
  m_prompts.ExpectFile(m_folder.Path("f6"));
  Press("Ctrl+S");
  EXPECT_EQ(File("f6.vsl"), "new");
  Press("Ctrl+N");
  Type("newer");
  m_prompts.ExpectFile(m_folder.Path("f5"));
  m_prompts.Expect(question, Answer::kYes);
  Press("Ctrl+S");
  EXPECT_EQ(File("f5.vsl") + File("f5.vsl.bak"), "newerprecious");
}

TEST_F(Saving, AFileThatIsOpenIsReplacedOnlyWithItsWindowClosed) {
  Open("a.vsl", "a");
  Type("typed ");
  EXPECT_TRUE(Choose("Window > New Window"));
  Open("b.vsl", "b");
  const std::string question = "\"" + m_folder.Path("a.vsl") +
                               "\" is open in another window. Do you want to close that window and replace "
                               "the file?";
  m_prompts.ExpectFile(m_folder.Path("a.vsl"));
  m_prompts.Expect(question, Answer::kNo);
  m_prompts.ExpectFile("");
  Press("Ctrl+Shift+S");
  EXPECT_EQ(Tabs(), "a.vsl:1* a.vsl:2* [b.vsl]");
  EXPECT_EQ(File("a.vsl"), "a");

  fs::create_symlink(m_folder.Path("a.vsl"), m_folder.Path("link.vsl"));
  m_prompts.ExpectFile(m_folder.Path("link.vsl"));
  m_prompts.Expect("\"" + m_folder.Path("link.vsl") +
                       "\" is open in another window. Do you want to close that window and replace the file?",
                   Answer::kNo);
  m_prompts.ExpectFile(m_folder.Path("a.vsl"));
  m_prompts.Expect(question, Answer::kYes);
  Press("Ctrl+Shift+S");
  EXPECT_EQ(Tabs(), "[a.vsl]");
  EXPECT_EQ(ActiveText(), "b");
  EXPECT_EQ(File("a.vsl"), "b");
  m_prompts.ExpectFile(m_folder.Path("a.vsl"));
  Press("Ctrl+Shift+S");
  EXPECT_EQ(Tabs(), "[a.vsl]") << "its own file is no other";
}

TEST_F(Saving, ADocumentThatASaveHasClosedIsNotSavedOverIt) {
  for (const char* how : {"File > Save All", "File > Close All"}) {
    Press("Ctrl+Shift+W");
    Press("Ctrl+N");
    Type("fresh");
    const std::string untitled = ToBytes(Document().Title());
    Open("a.vsl", "a");
    Type("typed ");
    if (std::string(how) == "File > Close All") m_prompts.ExpectSaveAll(untitled + ", a.vsl", Answer::kSave);
    m_prompts.ExpectFile(m_folder.Path("a.vsl"));
    m_prompts.Expect(
        "\"" + m_folder.Path("a.vsl") +
            "\" is open in another window. Do you want to close that window and replace the file?",
        Answer::kYes);
    EXPECT_TRUE(Choose(how));
    EXPECT_EQ(File("a.vsl"), "fresh") << how;
  }
  EXPECT_EQ(TabBar().count(), 0);
}

TEST_F(Saving, MarksOfATextThatWasSavedUnderAnotherNameAreKeptWithThatOne) {
  Open("a.vsl", "0\r\n1\r\n2");
  Press("Ctrl+F2");
  m_prompts.ExpectFile(m_folder.Path("b.vsl"));
  Press("Ctrl+Shift+S");
  Press("Ctrl+F2");
  Press("Down");
  Press("Ctrl+F2");
  EXPECT_EQ(Bookmarks(), "1");
  Crash();
  Start({m_folder.Path("a.vsl"), m_folder.Path("b.vsl")});
  EXPECT_EQ(Bookmarks(), "1");
  Press("Ctrl+Tab");
  EXPECT_EQ(Bookmarks(), "0") << "those of the old file are as they were when it was left";
}

// Questions

TEST_F(Saving, TheReloadQuestionWaitsForDialogsAndMenus) {
  Open("a.vsl", "old");
  ChangeOnDisk("a.vsl", "new");
  Focus();
  {
    QDialog dialog(&Frame());
    dialog.open();
    Pump();
    Focus();
    Pump();
    dialog.close();
  }
  m_prompts.Expect(kReload, Answer::kNo);
  QApplication::setActiveWindow(&Frame());
  FocusAgain();
  FocusAgain();

  ChangeOnDisk("a.vsl", "newer");
  Focus();
  QMenu menu(&Frame());
  menu.addAction("entry");
  menu.popup(Frame().mapToGlobal(QPoint(50, 50)));
  Pump();
  m_prompts.Expect(kReload, Answer::kYes);
  menu.close();
  Pump();
  EXPECT_EQ(ActiveText(), "newer") << "asked when the menu had gone";
}

TEST_F(Saving, ClosingSavesWhatIsTickedAndNothingElse) {
  for (const char* name : {"a.vsl", "b.vsl", "c.vsl"}) {
    Open(name, "");
    Type(name);
  }
  m_prompts.ExpectSaveSome("a.vsl, b.vsl, c.vsl", {"b.vsl"});
  EXPECT_TRUE(Choose("File > Close All"));
  EXPECT_EQ(TabBar().count(), 0);
  EXPECT_EQ(File("a.vsl") + "|" + File("b.vsl") + "|" + File("c.vsl"), "|b.vsl|");
  Crash();
  Start();
  EXPECT_EQ(Tabs(), "[Untitled1]") << "the others are not offered again";
}

TEST(SaveList, FitsTheScreenAndHasAChoiceForEachFile) {
  std::vector<std::string> names = {"/game/a/main.vsl", "/game/b/main.vsl", "Untitled3"};
  for (int i = 3; i < 60; ++i) names.push_back("/game/" + std::to_string(i) + ".vsl");
  DialogPrompts prompts;
  using Keys = std::vector<Qt::Key>;
  const auto answer = [&](const Keys& keys, const std::function<void(QDialog&)>& look = {}) {
    QTimer::singleShot(0, [&] {
      auto* dialog = dynamic_cast<QDialog*>(QApplication::activeModalWidget());
      ASSERT_NE(dialog, nullptr);
      QApplication::setActiveWindow(dialog);
      if (look) look(*dialog);
      for (const Qt::Key key : keys) {
        QWidget* focus = dialog->focusWidget();
        QTest::keyClick(focus == nullptr ? dialog : focus, key);
      }
      if (dialog->isVisible()) dialog->reject();
    });
    return prompts.ChooseWhatToSave(names);
  };
  const auto all = answer({Qt::Key_Return}, [](QDialog& dialog) {
    EXPECT_LE(dialog.frameGeometry().height(), dialog.screen()->availableSize().height());
    const auto* list = dialog.findChild<QTreeWidget*>();
    const auto row = [list](int i) {
      return ToBytes(list->topLevelItem(i)->text(0) + u'|' + list->topLevelItem(i)->text(1));
    };
    EXPECT_EQ(row(0) + " " + row(1) + " " + row(2), "main.vsl|/game/a main.vsl|/game/b Untitled3|");
  });
  ASSERT_TRUE(all.has_value());
  EXPECT_EQ(all->size(), names.size());
  const auto some = answer({Qt::Key_Space, Qt::Key_Down, Qt::Key_Down, Qt::Key_Space, Qt::Key_Return});
  ASSERT_TRUE(some.has_value());
  ASSERT_EQ(some->size(), names.size() - 2);
  EXPECT_EQ(some->front(), 1U);
  EXPECT_EQ((*some)[1], 3U);
  EXPECT_EQ(answer({Qt::Key_Escape}), std::nullopt);
  const auto none = answer({}, [](QDialog& dialog) {
    auto* list = dialog.findChild<QTreeWidget*>();
    for (int i = 0; i < list->topLevelItemCount(); ++i) {
      list->topLevelItem(i)->setCheckState(0, Qt::Unchecked);
    }
    for (QPushButton* button : dialog.findChildren<QPushButton*>()) {
      EXPECT_EQ(button->isEnabled(), button->text() != "&Save") << "nothing to save";
    }
    for (QPushButton* button : dialog.findChildren<QPushButton*>()) {
      if (button->text() == "&Discard All") QTest::mouseClick(button, Qt::LeftButton);
    }
  });
  EXPECT_EQ(none, std::vector<size_t>());
}

// Recovery that does not work

TEST_F(Saving, JournalsThatCannotBeWrittenAreToldAboutOnceAndLoggedOncePerChange) {
  const auto logged = [this](const std::string& line) {
    const std::string log = LogMessages();
    int count = 0;
    for (size_t at = log.find(line); at != std::string::npos; at = log.find(line, at + 1)) ++count;
    return count;
  };
  const auto flush = [this](int turns) {
    for (int i = 0; i < turns; ++i) Parts().documents.FlushJournals();
  };
  m_folder.Write("recovery", "in the way");
  Open("a.vsl", "old");
  m_prompts.Expect(
      "What you type cannot be kept for recovery at the moment. Save often: if the program or the machine "
      "comes to a sudden end, changes that are not saved are lost.",
      Answer::kOk);
  Type("x");
  flush(20);
  EXPECT_EQ(logged("Cannot create a recovery journal in \"" + m_folder.Path("recovery") + "\""), 1);
  Press("Ctrl+S");
  flush(2);
  Type("z");
  flush(2);
  EXPECT_EQ(logged("recovery journal"), 1) << "nothing has changed";

  fs::remove(m_folder.Path("recovery"));
  flush(2);
  EXPECT_EQ(logged("Recovery journals are written again"), 1);
  Press("Ctrl+S");
  fs::remove_all(m_folder.Path("recovery"));
  m_folder.Write("recovery", "in the way");
  Type("x");
  flush(5);
  EXPECT_EQ(logged("Cannot create a recovery journal"), 2);
  m_prompts.Expect(kSave, Answer::kDiscard);
  Press("Ctrl+W");
}

}  // namespace
}  // namespace quill
