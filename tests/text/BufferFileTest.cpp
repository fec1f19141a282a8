// Loading and saving: the bytes on the disk, the styles, the faults.

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>
#include <map>
#include <random>

#include "support/TempFolder.h"
#include "text/buffer/CrystalTextBuffer.h"
#include "text/buffer/LineFlagStore.h"

namespace quill {
namespace {

namespace fs = std::filesystem;
constexpr size_t kChunk = 32768;

std::vector<std::string> LinesOf(const CCrystalTextBuffer& buffer) {
  std::vector<std::string> lines;
  lines.reserve(static_cast<size_t>(buffer.LineCount()));
  for (int32_t i = 0; i < buffer.LineCount(); ++i) lines.emplace_back(buffer.Line(i));
  return lines;
}

TEST(BufferFile, CutsLinesAtTheEndsOfTheDetectedStyle) {
  const std::string fill(kChunk - 1, 'x');
  struct Case {
    const char* name;
    std::string bytes;
    int32_t asked;
    int32_t style;
    std::vector<std::string> lines;
  };
  const Case cases[] = {
      {"empty file", "", -1, 0, {""}},
      {"no line end", "abc", -1, 0, {"abc"}},
      {"a line end at the end", "a\r\n", -1, 0, {"a", ""}},
      {"CR only", "a\rb\r", -1, 0, {"a\rb\r"}},
      {"LF CR", "a\n\rb\n\r", -1, 1, {"a", "b", ""}},
      {"LF", "a\nb\r\nc\n", -1, 2, {"a", "b\r", "c", ""}},
      {"the first LF decides", "a\r\nb\nc", -1, 0, {"a", "b\nc"}},
      {"CR before the line end", "a\r\r\nb", -1, 0, {"a\r", "b"}},
      {"LF in the first place", "\n\n", -1, 2, {"", "", ""}},
      {"CR LF asked as LF CR", "a\r\nb\r\nc", 1, 1, {"a\r\nb\r\nc"}},
      {"CR LF CR LF asked as LF CR", "a\r\n\r\nb", 1, 1, {"a\r", "\nb"}},
      {"CR LF asked as LF", "a\r\nb", 2, 2, {"a\r", "b"}},
      {"a line end's last byte starts no other", "\n\r\r\n\r", 1, 1, {"", "\r", ""}},
      {"CR and LF in two chunks", fill + "\r\nb\r\n", -1, 0, {fill, "b", ""}},
      {"CR and LF in two chunks, style asked", fill + "\r\nb", 0, 0, {fill, "b"}},
      {"LF is the first chunk's last byte", fill + "\n\rb", -1, 2, {fill, "\rb"}},
      {"the same, LF CR asked", fill + "\n\rb", 1, 1, {fill, "b"}},
      {"LF and CR in two chunks after a first pair",
       "\n\r" + fill.substr(2) + "\n\rb",
       -1,
       1,
       {"", fill.substr(2), "b"}},
      {"no LF in the first chunk", fill + "x\nb\r\nc", -1, 0, {fill + "x\nb", "c"}},
      {"a chunk exactly", fill + "x", -1, 0, {fill + "x"}},
  };
  const TempFolder folder;
  for (const Case& c : cases) {
    CCrystalTextBuffer buffer;
    const std::string path = folder.Write("a", c.bytes);
    ASSERT_TRUE(buffer.LoadFile(path, c.asked)) << c.name;
    EXPECT_EQ(buffer.LineEndStyle(), c.style) << c.name;
    EXPECT_EQ(LinesOf(buffer), c.lines) << c.name;
    ASSERT_TRUE(buffer.SaveFile(path));
    EXPECT_EQ(folder.Read("a"), c.bytes) << c.name;
  }
}

TEST(BufferFile, LoadAndSaveGiveTheSameBytesForEveryFile) {
  const TempFolder folder;
  std::mt19937 random(11);
  std::string every;
  for (int i = 0; i < 256; ++i) every += static_cast<char>(i);
  std::vector<std::string> files = {every, every + every, std::string(3 * kChunk, '\0')};
  files.push_back(std::string(5'000'000, 'a') + "\r\n" + std::string(3'000'000, '\r') + "\r\nend");
  for (int i = 0; i < 60; ++i) {
    const std::string_view alphabet = i % 2 == 0 ? "\r\n" : "ab\r\n\0";
    std::string bytes(random() % (3 * kChunk), ' ');
    for (char& c : bytes) c = alphabet[random() % alphabet.size()];
    files.push_back(bytes);
  }
  for (const std::string& bytes : files) {
    const std::string path = folder.Write("a", bytes);
    for (const int32_t style : {-1, 0, 1, 2}) {
      CCrystalTextBuffer buffer;
      ASSERT_TRUE(buffer.LoadFile(path, style));
      ASSERT_TRUE(buffer.SaveFile(folder.Path("b")));
      ASSERT_TRUE(folder.Read("b") == bytes) << bytes.size() << " bytes, style " << style;
    }
  }
}

TEST(BufferFile, EditsOfLoadedLinesReachTheFile) {
  const TempFolder folder;
  const std::string path = folder.Write("a", "one\ntwo\n\nfour");
  CCrystalTextBuffer buffer;
  ASSERT_TRUE(buffer.LoadFile(path));
  TextPosition end;
  ASSERT_TRUE(buffer.InsertTextAt(nullptr, {3, 4}, "!", end));
  ASSERT_TRUE(buffer.DeleteRange(nullptr, 0, 0, 0, 2));
  ASSERT_TRUE(buffer.InsertTextAt(nullptr, {1, 1}, std::string(40, 'x') + "\r", end));
  EXPECT_TRUE(buffer.IsModified());
  ASSERT_TRUE(buffer.SaveFile(path, 0, false));
  EXPECT_EQ(folder.Read("a"), "e\r\nt" + std::string(40, 'x') + "\r\nwo\r\n\r\nfour!");
  EXPECT_TRUE(buffer.IsModified());
  ASSERT_TRUE(buffer.SaveFile(path));
  EXPECT_EQ(folder.Read("a"), "e\nt" + std::string(40, 'x') + "\nwo\n\nfour!");
  EXPECT_FALSE(buffer.IsModified());
  ASSERT_TRUE(buffer.Undo(end));
  EXPECT_TRUE(buffer.IsModified());
  ASSERT_TRUE(buffer.Redo(end));
  EXPECT_FALSE(buffer.IsModified());
}

TEST(BufferFile, KeepsABackupOnlyWhenAsked) {
  const TempFolder folder;
  CCrystalTextBuffer buffer;
  buffer.NewBuffer();
  TextPosition end;
  const auto saveWith = [&](const char* text) {
    EXPECT_TRUE(buffer.InsertTextAt(nullptr, {0, 0}, text, end));
    return static_cast<bool>(buffer.SaveFile(folder.Path("a.vsl")));
  };
  EXPECT_TRUE(saveWith("1"));
  EXPECT_TRUE(saveWith("2"));
  EXPECT_EQ(folder.Names(), std::set<std::string>{"a.vsl"});
  buffer.SetCreateBackup(true);
  EXPECT_TRUE(saveWith("3"));
  EXPECT_TRUE(saveWith("4"));
  EXPECT_EQ(folder.Read("a.vsl"), "4321");
  EXPECT_EQ(folder.Read("a.vsl.bak"), "321");
}

TEST(BufferFile, ReadOnlyFollowsTheFilesAttribute) {
  const TempFolder folder;
  const std::string path = folder.Write("a", "x");
  ASSERT_EQ(chmod(path.c_str(), 0444), 0);
  CCrystalTextBuffer buffer;
  ASSERT_TRUE(buffer.LoadFile(path));
  EXPECT_TRUE(buffer.IsReadOnly());
  ASSERT_EQ(chmod(path.c_str(), 0644), 0);
  ASSERT_TRUE(buffer.LoadFile(buffer.ProfileSection()));  // a reload by the buffer's own name
  EXPECT_FALSE(buffer.IsReadOnly());
  EXPECT_EQ(buffer.ProfileSection(), path);
}

TEST(BufferFile, WhatComesAfterAReadOnlyFileCanBeWritten) {
  const TempFolder folder;
  const std::string path = folder.Write("a", "x");
  ASSERT_EQ(chmod(path.c_str(), 0444), 0);
  CCrystalTextBuffer buffer;
  TextPosition end;
  ASSERT_TRUE(buffer.LoadFile(path));
  ASSERT_FALSE(buffer.InsertTextAt(nullptr, {0, 0}, "y", end));
  buffer.NewBuffer();
  EXPECT_TRUE(buffer.InsertTextAt(nullptr, {0, 0}, "y", end));
  ASSERT_TRUE(buffer.LoadFile(path));
  EXPECT_FALSE(buffer.LoadFile(folder.Path("missing")));
  EXPECT_FALSE(buffer.IsReadOnly()) << "nothing is left of the file before";
}

TEST(BufferFile, IsUnmodifiedExactlyWhileItHoldsTheSavedText) {
  const TempFolder folder;
  const std::string path = folder.Path("a.vsl");
  std::mt19937 random(23);
  CCrystalTextBuffer buffer;
  buffer.NewBuffer();
  std::string saved;
  TextPosition end;
  // Every step types what was never typed before, so that equal texts are the same place of the history;
  // in the second half more is typed than the history holds.
  for (int step = 0; step < 6000; ++step) {
    const uint32_t what = random() % 100;
    const bool muchIsTyped = step > 2000;
    if (what < 1) {
      ASSERT_TRUE(buffer.SaveFile(path));
      saved = buffer.Line(0);
    } else if (what < (muchIsTyped ? 25 : 45)) {
      buffer.Undo(end);
    } else if (what < (muchIsTyped ? 30 : 70)) {
      buffer.Redo(end);
    } else {
      ASSERT_TRUE(buffer.InsertTextAt(nullptr, {0, 0}, std::to_string(step) + ",", end));
    }
    ASSERT_EQ(buffer.IsModified(), buffer.Line(0) != saved) << step;
  }
  ASSERT_TRUE(buffer.SaveFile(path));
  ASSERT_TRUE(buffer.Undo(end));
  ASSERT_TRUE(buffer.InsertTextAt(nullptr, {0, 0}, "other", end));
  while (buffer.Undo(end)) ASSERT_TRUE(buffer.IsModified());
  while (buffer.Redo(end)) ASSERT_TRUE(buffer.IsModified());
}

struct ResetCounter : BufferObserver {
  void OnBufferUpdate(const BufferObserver*, const TextChange*, uint32_t hints, int32_t) override {
    resets += hints == hint::kReset ? 1 : 0;
  }
  int resets = 0;
};

TEST(BufferFile, WhatCannotBeLoadedIsNamedAndLeavesTheBufferEmpty) {
  const TempFolder folder;
  fs::create_directory(folder.Path("folder"));
  ASSERT_EQ(mkfifo(folder.Path("pipe").c_str(), 0600), 0);
  const std::pair<const char*, const char*> cases[] = {
      {"folder", "it is a folder"},
      {"missing", "No such file"},
      {"pipe", "it is not a regular file"},
  };
  for (const auto& [name, reason] : cases) {
    CCrystalTextBuffer buffer;
    ResetCounter view;
    buffer.NewBuffer();
    buffer.SetModified(true);
    buffer.AddView(&view);
    const IoResult result = buffer.LoadFile(folder.Path(name));
    EXPECT_FALSE(result);
    EXPECT_NE(result.Message().find(folder.Path(name).append("\": ").append(reason)), std::string::npos)
        << result.Message();
    EXPECT_EQ(buffer.LineCount(), 0);
    EXPECT_FALSE(buffer.IsInitialised());
    EXPECT_FALSE(buffer.IsModified());
    EXPECT_EQ(view.resets, 1);
    const std::string other = folder.Write("other", "precious");
    EXPECT_FALSE(buffer.SaveFile(other));  // no text is not an empty text
    EXPECT_EQ(folder.Read("other"), "precious");
  }
}

TEST(BufferFile, ASaveThatFailsLeavesFileTextAndModifiedMark) {
  const TempFolder folder;
  const std::string path = folder.Write("a.vsl", "old");
  CCrystalTextBuffer buffer;
  ASSERT_TRUE(buffer.LoadFile(path));
  TextPosition end;
  ASSERT_TRUE(buffer.InsertTextAt(nullptr, {0, 0}, std::string(300000, 'x'), end));
  rlimit before{};
  getrlimit(RLIMIT_FSIZE, &before);
  const rlimit small{1000, before.rlim_max};
  auto* handler = std::signal(SIGXFSZ, SIG_IGN);
  setrlimit(RLIMIT_FSIZE, &small);
  const IoResult full = buffer.SaveFile(path);
  setrlimit(RLIMIT_FSIZE, &before);
  std::signal(SIGXFSZ, handler);
  EXPECT_FALSE(full);
  EXPECT_EQ(folder.Read("a.vsl"), "old");
  EXPECT_TRUE(buffer.IsModified());

  fs::remove(path);
  fs::create_directory(path);
  const IoResult overFolder = buffer.SaveFile(path);
  EXPECT_NE(overFolder.Message().find("directory"), std::string::npos) << overFolder.Message();
  EXPECT_FALSE(buffer.SaveFile(folder.Path("gone/a.vsl")));
  EXPECT_TRUE(buffer.IsModified());
  EXPECT_EQ(buffer.LineLength(0), 300003);
  EXPECT_EQ(folder.Names(), std::set<std::string>{"a.vsl"});
}

struct MemoryStore : LineFlagStore {
  std::vector<Word> ReadAll(const std::string& section) override {
    ++reads;
    const auto& words = sections[section];
    return {words.begin(), words.end()};
  }
  void Write(const std::string& section, const std::vector<Word>& words) override {
    ++writes;
    for (const auto& [line, word] : words) {
      sections[section].erase(line);
      if (word != 0) sections[section][line] = word;
    }
  }
  std::map<std::string, std::map<int32_t, uint32_t>> sections;
  int reads = 0;
  int writes = 0;
};

TEST(BufferFile, KeepsFlagWordsPerFileAndLine) {
  const TempFolder folder;
  MemoryStore store;
  const std::string path = folder.Write("a", "1\n2\n3\n4");
  store.sections[path] = {{1, line_flag::kBookmark}, {3, 1u << 31}, {77, 5}, {-2, 5}};
  CCrystalTextBuffer buffer(&store);
  buffer.NewBuffer();
  buffer.SetFlagOnLine(0, line_flag::kBookmark, true);  // no name: kept nowhere
  EXPECT_EQ(store.writes, 0);
  ASSERT_TRUE(buffer.LoadFile(path));
  EXPECT_EQ(store.reads, 1);
  EXPECT_EQ(buffer.LineFlags(1), line_flag::kBookmark);
  EXPECT_EQ(buffer.LineFlags(3), 1u << 31);
  EXPECT_EQ(buffer.LineFlags(0) | buffer.LineFlags(2), 0u);

  buffer.SetFlagOnLine(1, line_flag::kBookmark, false);
  buffer.ChangeFlagsOnLines(2, 3, line_flag::kHidden, 1u << 31);
  EXPECT_EQ(store.writes, 2);
  EXPECT_EQ(store.sections[path], (std::map<int32_t, uint32_t>{
                                      {-2, 5}, {2, line_flag::kHidden}, {3, line_flag::kHidden}, {77, 5}}));
}

}  // namespace
}  // namespace quill
