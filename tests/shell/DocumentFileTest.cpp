#include "shell/DocumentFile.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <memory>

#include "shell/BackupCopies.h"
#include "shell/RecoveryFolder.h"
#include "shell/RunLog.h"
#include "shell/UntitledNames.h"
#include "support/FileSizeLimit.h"
#include "support/TempFolder.h"

namespace quill {
namespace {

/// Writes down what a document tells, one word a call.
class Recorder : public DocumentObserver {
 public:
  void OnModifiedChanged(bool modified) override { said += modified ? "modified " : "clean "; }
  void OnFileRecorded(const std::string& path) override { said += "file:" + Name(path) + " "; }
  void OnPathSet(const std::string& path) override { said += "path:" + Name(path) + " "; }
  void OnDiskStateChanged() override { said += "disk "; }
  std::string Take() { return std::exchange(said, ""); }

 private:
  static std::string Name(const std::string& path) { return std::filesystem::path(path).filename(); }
  std::string said;
};

class DocumentFileTest : public ::testing::Test {
 protected:
  void Type(std::string_view text, TextPosition at = {}) {
    TextPosition end;
    document->Buffer().InsertTextAt(nullptr, at, text, end);
  }
  std::string Text() const {
    std::string text;
    document->Buffer().CopyRange({{0, 0}, document->Buffer().EndOfText()}, text, "|");
    return text;
  }
  void SetTime(const std::string& path, int64_t seconds) {
    const timespec times[] = {{seconds, 0}, {seconds, 0}};
    ASSERT_EQ(utimensat(AT_FDCWD, path.c_str(), times, 0), 0);
  }
  /// Ends the document as a killed process does, and starts a new one.
  void Crash() {
    (void)document->FlushJournal();
    Restart();
  }
  void Restart() {
    document.reset();
    document = std::make_unique<DocumentFile>(services);
    recorder.Take();
  }

  TempFolder temp;
  std::string recovery = temp.Path("recovery");
  Recorder recorder;
  RunLog log{temp.Folder().string(), [] { return int64_t{0}; }};
  DocumentServices services{nullptr, &log, &recorder, recovery};
  std::unique_ptr<DocumentFile> document = std::make_unique<DocumentFile>(services);
};

TEST_F(DocumentFileTest, OpeningTellsLogAndViewsAndSavingKeepsTheLineEnds) {
  const std::string path = temp.Write("a.vsl", "one\n\rtwo");
  ASSERT_TRUE(document->Open(path));
  EXPECT_EQ(recorder.Take(), "file:a.vsl path:a.vsl ");
  const std::string lines = temp.Read("qil.log");
  EXPECT_NE(lines.find("Loading file: " + path + "\n"), std::string::npos) << lines;
  EXPECT_NE(lines.find(" Path set\n"), std::string::npos) << lines;
  Type("x");
  ASSERT_TRUE(document->Save(false));
  EXPECT_EQ(recorder.Take(), "modified clean path:a.vsl file:a.vsl ");
  EXPECT_EQ(temp.Read("a.vsl"), "xone\n\rtwo");
  Type("y");
  ASSERT_TRUE(document->Save(true));
  EXPECT_EQ(temp.Read("a.vsl.bak"), "xone\n\rtwo");
  EXPECT_EQ(temp.Read("a.vsl"), "yxone\n\rtwo");
}

TEST_F(DocumentFileTest, ANewDocumentGetsTheScriptExtensionWhenFirstSavedWithoutOne) {
  UntitledNames names;
  names.Next();
  document->New(names.Next());
  EXPECT_EQ(document->Title(), "Untitled2");
  EXPECT_EQ(document->SuggestedName(), "Untitled2.vsl");
  EXPECT_EQ(document->PathForSave(temp.Path("b.txt")), temp.Path("b.txt"));
  EXPECT_FALSE(document->CheckOnDisk());
  Type("text");
  ASSERT_TRUE(document->SaveAs(temp.Path("b"), false));
  EXPECT_EQ(document->Path(), temp.Path("b.vsl"));
  EXPECT_EQ(document->Title(), "b.vsl");
  ASSERT_TRUE(document->SaveAs(temp.Path("c"), false));
  EXPECT_EQ(document->Path(), temp.Path("c"));
  EXPECT_EQ(temp.Read("c"), "text");
  EXPECT_TRUE(document->HoldsFile(temp.Path("../") + temp.Folder().filename().string() + "/c"));
  EXPECT_FALSE(document->HoldsFile(temp.Path("b.vsl")));
}

TEST_F(DocumentFileTest, AFailedSaveNamesTheFileAndLeavesTextPathAndModifiedFlag) {
  const std::string path = temp.Write("a.vsl", "old");
  ASSERT_TRUE(document->Open(path));
  Type("new ");
  recorder.Take();
  temp.Write("file", "");
  std::filesystem::create_directory(temp.Path("folder"));
  for (const std::string& target : {temp.Path("folder"), temp.Path("file/x"), temp.Path("none/x")}) {
    const IoResult saved = document->SaveAs(target, true);
    ASSERT_FALSE(saved) << target;
    EXPECT_NE(DocumentPrompt::SaveFailed(saved).detail.find(target), std::string::npos);
    EXPECT_EQ(document->Path(), path);
    EXPECT_TRUE(document->IsModified());
    EXPECT_EQ(recorder.Take(), "");
  }
  {
    const FileSizeLimit full(3);
    EXPECT_FALSE(document->Save(true));
    EXPECT_TRUE(document->IsModified());
  }
  EXPECT_EQ(temp.Read("a.vsl"), "old");
  EXPECT_EQ(temp.Names(), (std::set<std::string>{"a.vsl", "file", "folder", "qil.log"}));
}

TEST_F(DocumentFileTest, AFileThatCannotBeOpenedLeavesTheTextAsItWas) {
  const std::string path = temp.Write("a.vsl", "old");
  ASSERT_TRUE(document->Open(path));
  Type("new ");
  EXPECT_FALSE(document->Open(temp.Folder().string()));
  std::filesystem::remove(path);
  const IoResult reloaded = document->Reload();
  EXPECT_NE(reloaded.Message().find(path), std::string::npos);
  EXPECT_EQ(Text(), "new old");
  EXPECT_TRUE(document->IsModified());
}

TEST_F(DocumentFileTest, AReloadThatFailsHalfWayKeepsEverything) {
  const std::string path = temp.Write("a.vsl", "old");
  ASSERT_TRUE(document->Open(path));
  Type("new ");
  recorder.Take();
  // Can be opened and has a size, but gives no bytes.
  std::filesystem::remove(path);
  std::filesystem::create_symlink("/proc/self/mem", path);
  for (int i = 0; i < 2; ++i) EXPECT_FALSE(document->Reload());
  EXPECT_EQ(Text(), "new old");
  EXPECT_EQ(document->Path(), path);
  EXPECT_TRUE(document->IsModified());
  EXPECT_TRUE(document->HoldsUnsavedText());
  std::filesystem::remove(path);
  temp.Write("a.vsl", "old");
  Crash();
  std::vector<RecoverableDocument> lost = FindRecoverable(recovery);
  ASSERT_EQ(lost.size(), 1U) << "the journal is still there";
  TextPosition place;
  ASSERT_TRUE(document->Recover(lost.front()));
  EXPECT_EQ(Text(), "new old");
  EXPECT_TRUE(document->Buffer().Undo(place));
  EXPECT_EQ(Text(), "old");
}

TEST_F(DocumentFileTest, AChangeOnDiskIsAskedAboutOnceAndReloadTakesIt) {
  const std::string path = temp.Write("a.vsl", "old");
  SetTime(path, 1000);
  ASSERT_TRUE(document->Open(path));
  EXPECT_EQ(document->LastWriteTime(), 1000);
  EXPECT_FALSE(document->CheckOnDisk());
  temp.Write("a.vsl", "changed");
  SetTime(path, 500);
  const auto question = document->CheckOnDisk();
  ASSERT_TRUE(question);
  EXPECT_EQ(question->text, "This file has been modified, do you want to reload?");
  EXPECT_EQ(question->caption, "Modified file");
  EXPECT_EQ(question->buttons, DocumentPrompt::Buttons::kYesNo);
  EXPECT_FALSE(document->CheckOnDisk()) << "No was the answer";
  EXPECT_EQ(Text(), "old");
  Type("typed ");
  EXPECT_TRUE(document->QuestionBeforeReload());
  ASSERT_TRUE(document->Reload());
  EXPECT_EQ(Text(), "changed");
  EXPECT_FALSE(document->IsModified());
  std::filesystem::remove(path);
  EXPECT_FALSE(document->CheckOnDisk()) << "the file has gone";
}

TEST_F(DocumentFileTest, TogglingReadOnlySaysSoOnTheWayInOnly) {
  document->New("Untitled1");
  const auto message = document->ToggleReadOnly();
  ASSERT_TRUE(message);
  EXPECT_EQ(message->text, "Document now read-only!");
  EXPECT_EQ(message->buttons, DocumentPrompt::Buttons::kOk);
  Type("refused");
  EXPECT_EQ(Text(), "");
  EXPECT_FALSE(document->ToggleReadOnly());
  EXPECT_FALSE(document->Buffer().IsReadOnly());
}

TEST_F(DocumentFileTest, TheJournalGoesWithASaveOrADecisionButNotWithABackupCopy) {
  const auto journals = [&] { return FindRecoverable(recovery).size(); };
  const std::string path = temp.Write("a.vsl", "old");
  const BackupCopies copies(temp.Folder().string());

  ASSERT_TRUE(document->Open(path));
  Type("new ");
  copies.BackUp(document->Buffer(), std::vector<std::string>{path}, {});
  EXPECT_FALSE(document->IsModified());
  EXPECT_TRUE(document->QuestionBeforeClose());
  EXPECT_TRUE(document->QuestionBeforeReload());
  document->Close(DocumentFile::CloseReason::kNotAsked);
  Restart();
  EXPECT_EQ(journals(), 1u) << "nobody was asked, and the file does not hold the text";
  FindRecoverable(recovery).front().Discard();

  ASSERT_TRUE(document->Open(path));
  Type("new ");
  EXPECT_EQ(document->QuestionBeforeClose()->buttons, DocumentPrompt::Buttons::kSaveDiscardCancel);
  EXPECT_TRUE(document->FlushJournal());
  document->Close(DocumentFile::CloseReason::kDiscarded);
  Restart();
  EXPECT_EQ(journals(), 0u);

  ASSERT_TRUE(document->Open(path));
  Type("new ");
  EXPECT_TRUE(document->FlushJournal());
  ASSERT_TRUE(document->Save(false));
  document->Close(DocumentFile::CloseReason::kNotAsked);
  Restart();
  EXPECT_EQ(journals(), 0u);
}

TEST_F(DocumentFileTest, RecoveredTextIsOneUndoStepAwayFromItsFile) {
  const std::string path = temp.Write("a.vsl", "1\n2\n3\r\n4");
  struct Row {
    const char* name;
    TextRange deleted;
    const char* inserted;
  };
  const Row rows[] = {
      {"within a line", {{1, 0}, {1, 0}}, "x"},  {"a line more", {{1, 0}, {1, 0}}, "x\r"},
      {"at the end", {{3, 1}, {3, 1}}, "\rx"},   {"a line less", {{1, 0}, {2, 0}}, ""},
      {"the end less", {{2, 2}, {3, 1}}, ""},    {"nothing left", {{0, 0}, {3, 1}}, ""},
      {"in front", {{0, 0}, {0, 0}}, "\r\r"},    {"around a CR", {{1, 0}, {2, 0}}, "a\r"},
      {"doubled line", {{0, 1}, {0, 1}}, "\r1"},
  };
  for (const Row& row : rows) {
    ASSERT_TRUE(document->Open(path));
    document->Buffer().DeleteRange(nullptr, row.deleted);
    Type(row.inserted, row.deleted.start);
    const std::string wanted = Text();
    Crash();
    auto found = FindRecoverable(recovery);
    ASSERT_EQ(found.size(), 1u) << row.name;
    ASSERT_TRUE(document->Recover(found[0]));
    EXPECT_EQ(document->Path(), path);
    EXPECT_EQ(Text(), wanted) << row.name;
    EXPECT_TRUE(document->IsModified()) << row.name;
    EXPECT_TRUE(FindRecoverable(recovery).empty()) << "the new journal has a running process";
    TextPosition ignored;
    EXPECT_TRUE(document->Buffer().Undo(ignored));
    EXPECT_EQ(Text(), "1|2|3\r|4") << row.name;
    EXPECT_FALSE(document->IsModified()) << row.name;
    document->Close(DocumentFile::CloseReason::kDiscarded);
  }
}

TEST_F(DocumentFileTest, ALostTextIsKeptWhenRecoveringItCannotBeWrittenDown) {
  document->New("Untitled1");
  Type("precious");
  Crash();
  {
    auto found = FindRecoverable(recovery);
    ASSERT_EQ(found.size(), 1u);
    const FileSizeLimit full(10);
    ASSERT_TRUE(document->Recover(found[0]));
    EXPECT_EQ(Text(), "precious");
    Restart();
  }
  auto found = FindRecoverable(recovery);
  ASSERT_EQ(found.size(), 1u);
  ASSERT_TRUE(document->Recover(found[0]));
  EXPECT_EQ(Text(), "precious");
}

TEST_F(DocumentFileTest, RecoveredTextOfAFileThatHasGoneKeepsItsPath) {
  const std::string path = temp.Write("a.vsl", "old");
  ASSERT_TRUE(document->Open(path));
  Type("new ");
  Crash();
  std::filesystem::remove(path);
  auto found = FindRecoverable(recovery);
  ASSERT_EQ(found.size(), 1u);
  ASSERT_TRUE(document->Recover(found[0]));
  Crash();
  found = FindRecoverable(recovery);
  ASSERT_EQ(found.size(), 1u) << "and once more";
  ASSERT_TRUE(document->Recover(found[0]));
  ASSERT_TRUE(document->Save(false));
  EXPECT_EQ(temp.Read("a.vsl"), "new old");
}

}  // namespace
}  // namespace quill
