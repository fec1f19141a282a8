#include <QDropEvent>
#include <QMimeData>
#include <QTabBar>
#include <QTest>
#include <QUrl>
#include <filesystem>

#include "res/ui/UiText.h"
#include "shell/ui/ChildFrame.h"
#include "shell/ui/Documents.h"
#include "shell/ui/FileOperations.h"
#include "shell/ui/QuillDoc.h"
#include "shell/ui/QuillView.h"
#include "shell/ui/StatusPanes.h"
#include "shell/ui/TimerService.h"
#include "shell/ui/Workspace.h"
#include "ui/ShellFixture.h"

namespace quill {
namespace {

namespace fs = std::filesystem;
using Answer = Prompts::Answer;

class DocumentWindows : public ShellFixture {
 protected:
  DocumentWindows() { Start(); }

  QTabBar& Tabs() { return *Parts().workspace.findChild<QTabBar*>(); }
  /// Tab titles from left to right, the current one in brackets.
  std::string TabTexts() {
    std::string texts;
    for (int i = 0; i < Tabs().count(); ++i) {
      const std::string title = ToBytes(Tabs().tabText(i));
      texts += (texts.empty() ? "" : " ") + (i == Tabs().currentIndex() ? "[" + title + "]" : title);
    }
    return texts;
  }
  void ChangeOnDisk(const std::string& name, const std::string& text, int seconds) {
    m_folder.Write(name, text);
    fs::last_write_time(m_folder.Path(name),
                        fs::file_time_type::clock::now() + std::chrono::seconds(seconds));
  }
  void GiveFocusAgain() {
    View().clearFocus();
    View().setFocus();
    Pump();
  }
};

TEST_F(DocumentWindows, TypingSavingAndTheBytesOnDisk) {
  Type("main()");
  Press("Return");
  EXPECT_EQ(TabTexts(), "[Untitled1*]");
  m_prompts.ExpectFile(m_folder.Path("game"));
  Press("Ctrl+S");
  EXPECT_EQ(m_folder.Read("game.vsl"), "main()\r\n") << "the first save adds the extension";
  EXPECT_EQ(TabTexts(), "[game.vsl]");
  Type("x");
  Press("Ctrl+S");
  EXPECT_EQ(m_folder.Read("game.vsl"), "main()\r\nx");
  EXPECT_EQ(m_folder.Read("game.vsl.bak"), "main()\r\n");
  fs::remove(m_folder.Path("game.vsl"));
  EXPECT_TRUE(Choose("File > Save")) << "at any time";
  EXPECT_EQ(m_folder.Read("game.vsl"), "main()\r\nx");
  m_folder.Write("game.vsl.bak", "older");
  Press("Ctrl+S");
  EXPECT_EQ(m_folder.Read("game.vsl.bak"), "older") << "a second save of the same text costs no older copy";
}

TEST_F(DocumentWindows, AFailedSaveTellsWhyAndKeepsTheTextModified) {
  CQuillDoc& document = Open("a.vsl", "old");
  Type("new ");
  fs::remove(m_folder.Path("a.vsl"));
  fs::create_directory(m_folder.Path("a.vsl"));
  m_prompts.Expect(
      "The file could not be saved. The text is still in the editor, and the old file is unchanged.",
      Answer::kOk);
  Press("Ctrl+S");
  EXPECT_TRUE(document.File().IsModified());
  EXPECT_EQ(TextOf(document), "new old");
}

TEST_F(DocumentWindows, AFileOpensOnceAndTakesThePlaceOfAnUntouchedNewDocument) {
  Open("a.vsl", "a");
  Open("b.vsl", "b");
  EXPECT_EQ(TabTexts(), "a.vsl [b.vsl]");
  Parts().files.Open(m_folder.Path("bin/../a.vsl"), 1);
  EXPECT_EQ(TabTexts(), "[a.vsl] b.vsl");
  m_prompts.ExpectFile(m_folder.Write("c.vsl", "c"));
  Press("Ctrl+O");
  EXPECT_EQ(m_prompts.LastSuggestion(), m_folder.Folder().string()) << "beside the active document";
  EXPECT_EQ(TabTexts(), "a.vsl b.vsl [c.vsl]");
}

TEST_F(DocumentWindows, ClosingAsksAboutUnsavedTextAndDoesAsTold) {
  Open("a.vsl", "a");
  Type("1");
  m_prompts.Expect("Save the changes to \"a.vsl\"?", Answer::kCancel);
  Press("Ctrl+W");
  EXPECT_EQ(TabTexts(), "[a.vsl*]");
  m_prompts.Expect("Save the changes to \"a.vsl\"?", Answer::kDiscard);
  Press("Ctrl+W");
  EXPECT_EQ(m_folder.Read("a.vsl"), "a");
  EXPECT_TRUE(Parts().documents.All().empty());
  EXPECT_EQ(Parts().workspace.ActiveView(), nullptr);
  Open("a.vsl", "a");
  Type("2");
  m_prompts.Expect("Save the changes to \"a.vsl\"?", Answer::kSave);
  Press("Ctrl+W");
  EXPECT_EQ(m_folder.Read("a.vsl"), "2a");
}

TEST_F(DocumentWindows, ClosingEverythingAsksOnceAndACancelKeepsAll) {
  for (const char* name : {"a.vsl", "b.vsl", "c.vsl"}) {
    Open(name, "");
    if (*name != 'b') Type("x");
  }
  m_prompts.ExpectSaveAll("a.vsl, c.vsl", Answer::kCancel);
  EXPECT_FALSE(Frame().close());
  EXPECT_EQ(Parts().documents.All().size(), 3U);
  EXPECT_TRUE(Parts().timers.IsRunning(timer_id::kWatchRefresh));
  m_prompts.ExpectSaveAll("a.vsl, c.vsl", Answer::kSave);
  EXPECT_TRUE(Frame().close());
  EXPECT_EQ(m_folder.Read("a.vsl") + m_folder.Read("b.vsl") + m_folder.Read("c.vsl"), "xx");
}

TEST_F(DocumentWindows, TwoWindowsOfADocumentStayInStepAndOnlyTheLastOneAsks) {
  Open("a.vsl", "one\r\ntwo");
  Choose("Window > New Window");
  EXPECT_EQ(TabTexts(), "a.vsl:1 [a.vsl:2]");
  Press("Ctrl+End");
  Type("!");
  for (CChildFrame* frame : Parts().workspace.Frames()) {
    EXPECT_EQ(frame->View().Buffer()->Line(1), "two!");
  }
  EXPECT_EQ(TabTexts(), "a.vsl:1* [a.vsl:2*]");
  Press("Ctrl+W");
  EXPECT_EQ(TabTexts(), "[a.vsl*]");
  m_prompts.Expect("Save the changes to \"a.vsl\"?", Answer::kDiscard);
  Press("Ctrl+W");
}

TEST_F(DocumentWindows, AFileChangedOnDiskIsAskedAboutOnceAChange) {
  CQuillDoc& document = Open("a.vsl", "1\r\n2\r\n3");
  View().SetCaretPos({2, 1});
  ChangeOnDisk("a.vsl", "A\r\nB\r\nC", 10);
  m_prompts.Expect("This file has been modified, do you want to reload?", Answer::kNo);
  GiveFocusAgain();
  GiveFocusAgain();
  EXPECT_EQ(TextOf(document), "1|2|3");
  ChangeOnDisk("a.vsl", "A\r\nB\r\nC", 20);
  m_prompts.Expect("This file has been modified, do you want to reload?", Answer::kYes);
  GiveFocusAgain();
  EXPECT_EQ(TextOf(document), "A|B|C");
  EXPECT_EQ(View().CaretPos(), (TextPosition{2, 1}));
  ChangeOnDisk("a.vsl", "x", 30);
  Parts().workspace.ActiveFrame()->SetNoReload(true);
  GiveFocusAgain();
  EXPECT_EQ(TextOf(document), "A|B|C");
}

TEST_F(DocumentWindows, ReloadAsksOnlyWhenChangesWouldGo) {
  CQuillDoc& document = Open("a.vsl", "old");
  Type("x");
  m_prompts.Expect("Reload \"a.vsl\" and lose the changes made since it was saved?", Answer::kNo);
  Press("Ctrl+R");
  EXPECT_EQ(TextOf(document), "xold");
  m_prompts.Expect("Reload \"a.vsl\" and lose the changes made since it was saved?", Answer::kYes);
  Press("Ctrl+R");
  EXPECT_EQ(TextOf(document), "old");
  m_folder.Write("a.vsl", "new");
  Press("Ctrl+R");
  EXPECT_EQ(TextOf(document), "new");
}

TEST_F(DocumentWindows, ReadOnlyIsToldOnceAndRefusesEdits) {
  Open("a.vsl", "text");
  m_prompts.Expect("Document now read-only!", Answer::kOk);
  Choose("File > Read-Only");
  EXPECT_TRUE(MenuAction("File > Read-Only")->isChecked());
  EXPECT_EQ(Parts().statusBar.PaneTexts()[3], "READ");
  Type("x");
  EXPECT_EQ(ActiveText(), "text");
  EXPECT_EQ(Parts().statusBar.currentMessage(),
            "The document is read-only. File > Read-Only makes it writable.");
  EXPECT_FALSE(Choose("Edit > Comment Line"));
  Choose("File > Read-Only");
  Type("x");
  EXPECT_EQ(ActiveText(), "xtext");
}

TEST_F(DocumentWindows, TheAutoSaveTimerCopiesTheActiveDocument) {
  CQuillDoc& document = Open("a.vsl", "old");
  Type("new ");
  WriteFlag(m_settings, settings::kEnableBackups, false);
  Parts().timers.Fire(timer_id::kAutoSave);
  EXPECT_FALSE(fs::exists(m_folder.Path("bin/qil_backup")));
  WriteFlag(m_settings, settings::kEnableBackups, true);
  Parts().timers.Fire(timer_id::kAutoSave);
  EXPECT_EQ(m_folder.Read("bin/qil_backup/a.vsl"), "new old");
  EXPECT_EQ(m_folder.Read("a.vsl"), "old");
  EXPECT_FALSE(document.File().IsModified());
}

TEST_F(DocumentWindows, RecentFilesOpenAgainAndOnesThatHaveGoneAreRemoved) {
  Open("a.vsl", "a");
  Open("b.vsl", "b");
  Press("Ctrl+Shift+W");
  EXPECT_TRUE(Choose("File > 2 " + m_folder.Path("a.vsl")));
  EXPECT_EQ(ActiveText(), "a");
  fs::remove(m_folder.Path("b.vsl"));
  m_prompts.Expect(
      "The file \"" + m_folder.Path("b.vsl") + "\" does not exist any more. It was removed from the list.",
      Answer::kOk);
  EXPECT_TRUE(Choose("File > 2 " + m_folder.Path("b.vsl")));
  EXPECT_EQ(MenuAction("File > 2 " + m_folder.Path("b.vsl")), nullptr);
}

TEST_F(DocumentWindows, DroppedFilesOpen) {
  QMimeData files;
  files.setUrls({QUrl::fromLocalFile(FromBytes(m_folder.Write("a.vsl", "a"))),
                 QUrl::fromLocalFile(FromBytes(m_folder.Write("b.vsl", "b")))});
  // Over the text, which leaves files to the window.
  QWidget* target = View().viewport();
  QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(target, &enter);
  QDropEvent drop(QPoint(5, 5), Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(target, &drop);
  EXPECT_EQ(TabTexts(), "a.vsl [b.vsl]");
}

TEST_F(DocumentWindows, TabsCloseByTheMiddleButtonAndAreSwitchedByKeys) {
  Open("a.vsl", "a");
  Open("b.vsl", "b");
  Open("c.vsl", "c");
  Press("Ctrl+Tab");
  EXPECT_EQ(TabTexts(), "a.vsl [b.vsl] c.vsl") << "the one used before";
  Press("Ctrl+Shift+Tab");
  EXPECT_EQ(TabTexts(), "[a.vsl] b.vsl c.vsl") << "the one used longest ago";
  QTest::mouseClick(&Tabs(), Qt::MiddleButton, Qt::NoModifier, Tabs().tabRect(0).center());
  Pump();
  EXPECT_EQ(TabTexts(), "[b.vsl] c.vsl");
  EXPECT_EQ(View().hasFocus(), true);
}

TEST_F(DocumentWindows, WithoutTabsWindowsAreArrangedAndKeepTheirPlaces) {
  Open("a.vsl", "a");
  Open("b.vsl", "b");
  Choose("Window > Tabbed");
  EXPECT_FALSE(Parts().workspace.IsTabbed());
  EXPECT_TRUE(Choose("Window > Tile Vertically"));
  const auto frames = Parts().workspace.Frames();
  ASSERT_EQ(frames.size(), 2U);
  EXPECT_EQ(frames[0]->geometry().right() + 1, frames[1]->geometry().left());
  EXPECT_EQ(frames[0]->height(), Parts().workspace.viewport()->height());
  EXPECT_TRUE(Choose("Window > Tile Horizontally"));
  EXPECT_EQ(frames[0]->geometry().bottom() + 1, frames[1]->geometry().top());
  EXPECT_TRUE(Choose("Window > Cascade"));
  const QRect place(10, 20, 300, 200);
  frames[1]->setGeometry(place);
  frames[1]->close();
  Pump();
  Open("b.vsl", "b");
  EXPECT_EQ(Parts().workspace.ActiveFrame()->geometry(), place);
  EXPECT_EQ(Frame().windowTitle(), "Vesper Editor");
}

TEST_F(DocumentWindows, ThePanesFollowTheActiveView) {
  const auto panes = [this] { return ToBytes(Parts().statusBar.PaneTexts().join("|")); };
  Open("a.vsl", "one\ntwo\n");
  EXPECT_EQ(panes(), "Ln 1, Col 1|MAC|INS||100%");
  Press("Down");
  Press("End");
  Press("Ins");
  Press("Ctrl++");
  EXPECT_EQ(panes(), "Ln 2, Col 4|MAC|OVR||110%");
  Open("b.vsl", "one\n\rtwo");
  EXPECT_EQ(panes(), "Ln 1, Col 1|UNIX|INS||100%");
  m_prompts.ExpectLine(2);
  Press("Ctrl+G");
  EXPECT_EQ(panes(), "Ln 2, Col 1|UNIX|INS||100%");
  Press("Ctrl+Shift+W");
  EXPECT_EQ(panes(), "||||");
  EXPECT_FALSE(Parts().statusBar.IsLineEndPaneEnabled());
}

}  // namespace
}  // namespace quill
