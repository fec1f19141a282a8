#include <filesystem>
#include <set>

#include "shell/ui/Documents.h"
#include "shell/ui/FileOperations.h"
#include "shell/ui/QuillDoc.h"
#include "shell/ui/QuillView.h"
#include "shell/ui/TimerService.h"
#include "shell/ui/Workspace.h"
#include "ui/ShellFixture.h"

namespace quill {
namespace {

using Action = Prompts::RecoveryAction;

class Recovery : public ShellFixture {
 protected:
  bool AnythingKept() const {
    const std::filesystem::path folder = m_folder.Path("recovery");
    return std::filesystem::exists(folder) && !std::filesystem::is_empty(folder);
  }
};

TEST_F(Recovery, TextThatWasNotSavedComesBackAtTheNextStart) {
  Start();
  Open("a.vsl", "old");
  Type("typed ");
  Press("Ctrl+N");
  Type("unnamed");
  Parts().documents.FlushJournals();
  Crash();
  EXPECT_EQ(m_folder.Read("a.vsl"), "old");

  m_prompts.ExpectRecovery(Action::kRecover, {m_folder.Path("a.vsl"), "Untitled2"});
  Start();
  ASSERT_EQ(Parts().documents.All().size(), 2U);
  std::set<std::string> texts;
  for (CQuillDoc* document : Parts().documents.All()) {
    texts.insert(TextOf(*document));
    EXPECT_TRUE(document->File().IsModified());
  }
  EXPECT_EQ(texts, (std::set<std::string>{"typed old", "unnamed"}));

  for (size_t i = 0; i < 2; ++i) {
    CQuillDoc& document = *Parts().documents.All()[0];
    if (document.File().HoldsUnsavedText()) {
      m_prompts.Expect("Save the changes to \"" + document.File().Title() + "\"?", Prompts::Answer::kDiscard);
    }
    Parts().files.Close(document);
    Pump();
  }
  Quit();
  EXPECT_FALSE(AnythingKept()) << "the user has decided";
  Start();
}

TEST_F(Recovery, WhatIsNotChosenIsOfferedAgainAndWhatIsDiscardedIsNot) {
  Start();
  for (const char* text : {"second", "third", "fourth"}) {
    Press("Ctrl+N");
    Type(text);
  }
  Parts().documents.FlushJournals();
  m_prompts.ExpectRecovery(Action::kLater);
  Start();
  m_prompts.ExpectRecovery(Action::kDiscard, {"Untitled3"});
  Start();
  m_prompts.ExpectRecovery(Action::kRecover, {"Untitled4"});
  Start();
  EXPECT_EQ(m_prompts.LastRecovery(), (std::set<std::string>{"Untitled2", "Untitled4"}));
  EXPECT_EQ(ActiveText(), "fourth");
}

TEST_F(Recovery, SeveralTextsOfOneFileAllComeBack) {
  Start();
  Open("a.vsl", "old");
  Type("first ");
  Parts().documents.FlushJournals();
  Crash();
  for (const char* text : {"second ", "third "}) {
    m_prompts.ExpectRecovery(Action::kLater);
    Start({m_folder.Path("a.vsl")});
    Type(text);
    Parts().documents.FlushJournals();
    Crash();
  }
  // Which of them is the file's, when all are of one second, is open.
  const auto texts = [this] {
    std::set<std::string> all;
    for (CQuillDoc* document : Parts().documents.All()) {
      all.insert(document->File().Title());
      all.insert(TextOf(*document));
    }
    return all;
  };
  const std::set<std::string> wanted = {"a.vsl",     "a.vsl (recovered 2)", "a.vsl (recovered 3)",
                                        "first old", "second old",          "third old"};
  const std::string path = m_folder.Path("a.vsl");
  m_prompts.ExpectRecovery(Action::kRecover, {path});
  Start();
  EXPECT_EQ(texts(), wanted);
  Parts().documents.FlushJournals();
  Crash();
  m_prompts.ExpectRecovery(Action::kRecover, {path, "a.vsl (recovered 2)", "a.vsl (recovered 3)"});
  Start();
  EXPECT_EQ(texts(), wanted) << "and once more";
  EXPECT_EQ(m_folder.Read("a.vsl"), "old");
}

TEST_F(Recovery, ABackupCopyIsNoSave) {
  Start();
  Open("a.vsl", "old");
  Type("new ");
  Parts().documents.FlushJournals();
  Parts().timers.Fire(timer_id::kAutoSave);
  EXPECT_FALSE(Document().File().IsModified());
  Crash();
  m_prompts.ExpectRecovery(Action::kRecover, {m_folder.Path("a.vsl")});
  Start();
  EXPECT_EQ(ActiveText(), "new old");
  Press("Ctrl+S");
  EXPECT_EQ(m_folder.Read("a.vsl"), "new old");
  Crash();
  EXPECT_FALSE(AnythingKept());
}

}  // namespace
}  // namespace quill
