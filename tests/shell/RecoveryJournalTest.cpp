#include "shell/RecoveryJournal.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <memory>
#include <random>

#include "shell/FileText.h"
#include "shell/RecoveryFolder.h"
#include "support/FileSizeLimit.h"
#include "support/TempFolder.h"
#include "text/buffer/CrystalTextBuffer.h"

namespace quill {
namespace {

std::string TextOf(const CCrystalTextBuffer& buffer) {
  std::string text;
  buffer.CopyRange({{0, 0}, buffer.EndOfText()}, text, "\n");
  return text;
}

void Insert(CCrystalTextBuffer& buffer, TextPosition at, std::string_view text) {
  TextPosition end;
  ASSERT_TRUE(buffer.InsertTextAt(nullptr, at, text, end));
}

/// A document as a process has it open; `Die` leaves what a killed process leaves.
struct Session {
  Session(const std::string& folder, const std::string& path) : journal(new RecoveryJournal(buffer, folder)) {
    if (path.empty()) {
      buffer.NewBuffer();
    } else {
      EXPECT_TRUE(buffer.LoadFile(path));
    }
    journal->Restart(path, path.empty() ? "Untitled1" : "", FileIdentity::Of(path));
  }
  void Die() { journal.reset(); }

  CCrystalTextBuffer buffer;
  std::unique_ptr<RecoveryJournal> journal;
};

std::string LargeText() {
  std::string text;
  while (text.size() <= RecoveryJournal::kSnapshotBytes) text += "line " + std::to_string(text.size()) + "\n";
  return text;
}

class RecoveryJournalTest : public ::testing::Test {
 protected:
  TempFolder temp;
  std::string folder = temp.Path("state/recovery");
};

TEST_F(RecoveryJournalTest, TextTypedIntoANewDocumentComesBack) {
  Session session(folder, "");
  EXPECT_TRUE(session.journal->Flush());
  EXPECT_FALSE(std::filesystem::exists(folder)) << "nothing changed, nothing written";
  Insert(session.buffer, {0, 0}, "one\rtwo\nstill two");
  EXPECT_TRUE(session.journal->Flush());
  Insert(session.buffer, {1, 0}, "2: ");
  EXPECT_TRUE(FindRecoverable(folder).empty()) << "its process lives";
  session.Die();

  auto found = FindRecoverable(folder);
  ASSERT_EQ(found.size(), 1u);
  EXPECT_EQ(found[0].Path(), "");
  EXPECT_EQ(found[0].Title(), "Untitled1");
  EXPECT_FALSE(found[0].CutShort());
  EXPECT_TRUE(FindRecoverable(folder).empty()) << "offered to one process only";
  CCrystalTextBuffer text;
  EXPECT_EQ(found[0].Read(text), RecoveredText::kWhole);
  EXPECT_EQ(TextOf(text), "one\n2: two\nstill two");
  found[0].Discard();
  EXPECT_TRUE(std::filesystem::is_empty(folder));
}

TEST_F(RecoveryJournalTest, AKilledProcessLosesNothingThatWasFlushed) {
  const std::string path = temp.Write("a.vsl", "old\r\n");
  const pid_t child = fork();
  if (child == 0) {
    Session session(folder, path);
    Insert(session.buffer, {0, 0}, "new ");
    if (session.journal->Flush()) kill(getpid(), SIGKILL);
    _exit(1);
  }
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  ASSERT_TRUE(WIFSIGNALED(status));
  auto found = FindRecoverable(folder);
  ASSERT_EQ(found.size(), 1u);
  EXPECT_EQ(found[0].Path(), path);
  EXPECT_FALSE(found[0].FileChangedSince());
  CCrystalTextBuffer text;
  EXPECT_EQ(found[0].Read(text), RecoveredText::kWhole);
  EXPECT_EQ(TextOf(text), "new old\n");
}

/// Random edits, undo and redo of all sizes, against the same text kept in a buffer.
void EditAtRandom(CCrystalTextBuffer& buffer, RecoveryJournal& journal, uint32_t seed) {
  std::minstd_rand random(seed);
  const auto place = [&] {
    const auto line = static_cast<int32_t>(random() % static_cast<uint32_t>(buffer.LineCount()));
    return TextPosition{
        line, static_cast<int32_t>(random() % (static_cast<uint32_t>(buffer.LineLength(line)) + 1))};
  };
  const std::string_view texts[] = {"x", "\r\n", "a\nb", "longer text\rof two lines", "\xE4\t"};
  TextPosition ignored;
  for (int i = 0; i < 300; ++i) {
    switch (random() % 8) {
      case 0:
      case 1:
        buffer.DeleteRange(nullptr, TextRange::Between(place(), place()));
        break;
      case 2:
        buffer.Undo(ignored);
        break;
      case 3:
        buffer.Redo(ignored);
        break;
      default:
        Insert(buffer, place(), texts[random() % std::size(texts)]);
    }
    if (random() % 20 == 0) {
      EXPECT_TRUE(journal.Flush());
    }
  }
}

TEST_F(RecoveryJournalTest, AnyEditsUndoAndRedoIncludedComeBack) {
  // A file whose lines hold CR characters: its first line end makes LF the style.
  const std::string small = temp.Write("small.vsl", "one\ntwo\r\nthree\r\nfour\r\r\nfive");
  const std::string large = temp.Write("large.vsl", LargeText() + "a\r\nb\r\nc\r\n");
  for (const std::string& path : {std::string(), small, large}) {
    for (uint32_t seed = 1; seed <= 5; ++seed) {
      Session session(folder, path);
      EditAtRandom(session.buffer, *session.journal, seed);
      session.buffer.SetLineEndStyle(line_end::kLfCr);
      session.Die();
      auto found = FindRecoverable(folder);
      ASSERT_EQ(found.size(), 1u) << path << " " << seed;
      CCrystalTextBuffer text;
      EXPECT_EQ(found[0].Read(text), RecoveredText::kWhole);
      EXPECT_EQ(TextOf(text), TextOf(session.buffer)) << path << " " << seed;
      EXPECT_EQ(text.LineCount(), session.buffer.LineCount());
      EXPECT_EQ(text.LineEndStyle(), line_end::kLfCr);
      found[0].Discard();
    }
  }
}

TEST_F(RecoveryJournalTest, EveryPrefixGivesAStateThatOnceWasAndDamageEndsThereToo) {
  Session session(folder, temp.Write("a.vsl", "0\r\n"));
  std::set<std::string> states;
  const auto note = [&] {
    ASSERT_TRUE(session.journal->Flush());
    states.insert(TextOf(session.buffer));
  };
  for (const char* text : {"1", "\r", "22", "3\r\r3"}) {
    Insert(session.buffer, session.buffer.EndOfText(), text);
    note();
  }
  session.buffer.DeleteRange(nullptr, {{0, 0}, {1, 1}});
  note();
  session.Die();
  const std::string name = std::filesystem::directory_iterator(folder)->path().string();
  std::ifstream file(name, std::ios::binary);
  const std::string journal{std::istreambuf_iterator<char>(file), {}};

  const BaseLoader noBase = [](const journal::Header&, CCrystalTextBuffer&) {
    return IoResult::Failure("no file");
  };
  CCrystalTextBuffer text;
  std::set<std::string> seen;
  for (size_t length = 0; length <= journal.size(); ++length) {
    const ReplayResult result = ReplayJournal(std::string_view(journal).substr(0, length), noBase, text);
    if (result.text == RecoveredText::kWhole) seen.insert(TextOf(text));
    EXPECT_TRUE(length < journal.size() || !result.cutShort);
  }
  EXPECT_EQ(seen, states);
  for (size_t at = 0; at < journal.size(); ++at) {
    std::string damaged = journal;
    damaged[at] = static_cast<char>(damaged[at] ^ 0x81);
    const ReplayResult result = ReplayJournal(damaged, noBase, text);
    EXPECT_TRUE(result.cutShort) << at;
    EXPECT_TRUE(result.text != RecoveredText::kWhole || states.count(TextOf(text)) == 1) << at;
  }
}

TEST_F(RecoveryJournalTest, SizesThatAFileClaimsTakeNoMemory) {
  const BaseLoader noBase = [](const journal::Header&, CCrystalTextBuffer&) {
    return IoResult::Failure("no file");
  };
  std::string bytes(journal::kMagic);
  journal::AppendHeader(bytes, {});
  const std::string start = bytes;
  const std::string huge(4, '\xFF');  // a count of 4,294,967,295
  EXPECT_FALSE(journal::ReadLines(huge));
  EXPECT_FALSE(journal::ReadInsert(std::string(8, '\0') + huge));
  EXPECT_FALSE(journal::ReadHeader(huge));
  // A record longer than the file, and positions outside the text.
  CCrystalTextBuffer text;
  EXPECT_TRUE(ReplayJournal(start + std::string(9, '\xFF'), noBase, text).cutShort);
  bytes = start;
  journal::AppendInsert(bytes, {0, 1}, {"x"});
  EXPECT_TRUE(ReplayJournal(bytes, noBase, text).cutShort);
}

TEST_F(RecoveryJournalTest, ALargeFileIsNotCopiedAndIsFoundAgainByIdentityOrItsSecondLink) {
  const std::string bytes = LargeText();
  const std::string path = temp.Write("large.vsl", bytes);
  enum Fate { kUntouched, kReplaced, kDeleted, kWrittenInto };
  for (const Fate fate : {kUntouched, kReplaced, kDeleted, kWrittenInto}) {
    temp.Write("large.vsl", bytes);
    Session session(folder, path);
    Insert(session.buffer, {1, 0}, "typd");
    session.buffer.DeleteRange(nullptr, {{1, 3}, {1, 4}});
    Insert(session.buffer, {1, 3}, "ed");
    Insert(session.buffer, {5, 0}, "elsewhere\r");
    ASSERT_TRUE(session.journal->Flush());
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
      EXPECT_TRUE(entry.path().extension() == ".base" || entry.file_size() < 2000);
    }
    session.Die();
    if (fate == kReplaced) {
      temp.Write("other", "other text");
      std::filesystem::rename(temp.Path("other"), path);
    }
    if (fate == kDeleted) std::filesystem::remove(path);
    if (fate == kWrittenInto) std::ofstream(path, std::ios::app) << "more";

    auto found = FindRecoverable(folder);
    ASSERT_EQ(found.size(), 1u) << fate;
    EXPECT_EQ(found[0].FileChangedSince(), fate != kUntouched);
    CCrystalTextBuffer text;
    if (fate == kWrittenInto) {
      EXPECT_EQ(found[0].Read(text), RecoveredText::kTypedOnly);
      EXPECT_EQ(TextOf(text), "typed\nelsewhere\n");
    } else {
      EXPECT_EQ(found[0].Read(text), RecoveredText::kWhole) << fate;
      EXPECT_EQ(TextOf(text), TextOf(session.buffer)) << fate;
    }
    found[0].Discard();
    EXPECT_TRUE(std::filesystem::is_empty(folder)) << fate;
  }
}

TEST_F(RecoveryJournalTest, AJournalThatOutgrowsItsTextBecomesTheText) {
  Session session(folder, "");
  const std::string line(1000, 'x');
  for (int i = 0; i < 20000; ++i) {
    Insert(session.buffer, {0, 0}, line);
    session.buffer.DeleteRange(nullptr, {{0, 0}, {0, 1000}});
  }
  Insert(session.buffer, {0, 0}, "what stays");
  session.Die();
  EXPECT_LT(std::filesystem::file_size(*std::filesystem::directory_iterator(folder)),
            2 * RecoveryJournal::kPendingBytes);
  auto found = FindRecoverable(folder);
  ASSERT_EQ(found.size(), 1u);
  CCrystalTextBuffer text;
  EXPECT_EQ(found[0].Read(text), RecoveredText::kWhole);
  EXPECT_EQ(TextOf(text), "what stays");
}

TEST_F(RecoveryJournalTest, ABackupCopyKeepsTheJournalAndASaveEndsIt) {
  const std::string path = temp.Write("a.vsl", "old");
  Session session(folder, path);
  Insert(session.buffer, {0, 0}, "new ");
  ASSERT_TRUE(session.journal->Sync());
  ASSERT_TRUE(session.buffer.SaveFile(temp.Path("copy.vsl")));
  EXPECT_FALSE(session.buffer.IsModified());
  EXPECT_FALSE(std::filesystem::is_empty(folder));
  ASSERT_TRUE(session.buffer.SaveFile(path));
  EXPECT_TRUE(FileHoldsText(path, session.buffer));
  session.journal->Restart(path, "", FileIdentity::Of(path));
  EXPECT_TRUE(std::filesystem::is_empty(folder));
}

TEST_F(RecoveryJournalTest, WhatTheFileHoldsIsNotOfferedAndLeftoversAreCleanedUp) {
  const std::string path = temp.Write("a.vsl", "text");
  Session session(folder, path);
  TextPosition ignored;
  Insert(session.buffer, {0, 0}, "typed and undone");
  session.buffer.Undo(ignored);
  session.Die();
  temp.Write("state/recovery/0123.tmp", "cut off while writing");
  temp.Write("state/recovery/0123.base", "of no journal");
  temp.Write("state/recovery/4567.journal", "not a journal at all");
  EXPECT_TRUE(FindRecoverable(folder).empty());
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), {}), 1)
      << "only the unknown file stays";
}

TEST_F(RecoveryJournalTest, AFolderThatCannotBeMadeIsReportedAndTriedAgain) {
  temp.Write("state", "a file in place of the folder");
  Session session(folder, "");
  Insert(session.buffer, {0, 0}, "kept");
  const IoResult failed = session.journal->Flush();
  EXPECT_FALSE(failed);
  EXPECT_NE(failed.Message().find(folder), std::string::npos) << failed.Message();
  std::filesystem::remove(temp.Path("state"));
  EXPECT_TRUE(session.journal->Flush());
  session.Die();
  EXPECT_EQ(FindRecoverable(folder).size(), 1u);
}

TEST_F(RecoveryJournalTest, AWriteThatFailsHalfWayIsMadeUpForLater) {
  Session session(folder, "");
  Insert(session.buffer, {0, 0}, "one");
  ASSERT_TRUE(session.journal->Flush());
  const auto size = std::filesystem::file_size(*std::filesystem::directory_iterator(folder));
  {
    const FileSizeLimit limit(size + 5);
    Insert(session.buffer, {0, 3}, " two");
    EXPECT_FALSE(session.journal->Flush());
  }
  EXPECT_EQ(std::filesystem::file_size(*std::filesystem::directory_iterator(folder)), size);
  Insert(session.buffer, {0, 7}, " three");
  EXPECT_TRUE(session.journal->Flush());
  session.Die();
  auto found = FindRecoverable(folder);
  ASSERT_EQ(found.size(), 1u);
  CCrystalTextBuffer text;
  EXPECT_EQ(found[0].Read(text), RecoveredText::kWhole);
  EXPECT_EQ(TextOf(text), "one two three");
}

TEST_F(RecoveryJournalTest, TheOldJournalStaysWhileTheNewOneCannotBeWritten) {
  enum Obstacle { kFullDisk, kNameIsTaken };
  for (const Obstacle obstacle : {kFullDisk, kNameIsTaken}) {
    Session session(folder, "");
    Insert(session.buffer, {0, 0}, "kept");
    ASSERT_TRUE(session.journal->Flush());
    std::filesystem::path temporary = *std::filesystem::directory_iterator(folder);
    temporary.replace_extension(".tmp");
    const auto failToWrite = [&] {
      // A text from outside has to be written whole.
      session.buffer.NewBuffer(line_end::kCrLf, std::string(300'000, 'x'));
      EXPECT_FALSE(session.journal->Flush());
      EXPECT_FALSE(session.journal->Flush());
      session.Die();
    };
    if (obstacle == kFullDisk) {
      const FileSizeLimit limit(1000);
      failToWrite();
    } else {
      std::ofstream(temporary) << "of somebody else";
      failToWrite();
    }
    auto found = FindRecoverable(folder);
    ASSERT_EQ(found.size(), 1u) << obstacle;
    CCrystalTextBuffer text;
    EXPECT_EQ(found[0].Read(text), RecoveredText::kWhole) << obstacle;
    EXPECT_EQ(TextOf(text), "kept") << obstacle;
    found[0].Discard();
  }
}

TEST(RecoveryFolder, FollowsTheStateHomeUnlessItIsRelative) {
  setenv("HOME", "/home/u", 1);
  const std::pair<const char*, const char*> rows[] = {
      {"/state", "/state/quill/recovery"},
      {"relative", "/home/u/.local/state/quill/recovery"},
      {"", "/home/u/.local/state/quill/recovery"},
  };
  for (const auto& [state, expected] : rows) {
    setenv("XDG_STATE_HOME", state, 1);
    EXPECT_EQ(DefaultRecoveryFolder(), expected);
  }
  unsetenv("XDG_STATE_HOME");
}

}  // namespace
}  // namespace quill
