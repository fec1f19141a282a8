#include "base/AtomicFile.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>

#include "support/TempFolder.h"

namespace quill {
namespace {

namespace fs = std::filesystem;

IoResult WriteFile(const std::string& path, std::string_view bytes, const std::string& backup = {}) {
  AtomicFile file(path);
  if (IoResult opened = file.Open(); !opened) return opened;
  if (IoResult written = file.Write(bytes); !written) return written;
  return file.Commit(backup);
}

TEST(AtomicFile, KeepsTheOldFileUnderTheBackupName) {
  const TempFolder folder;
  const std::string path = folder.Write("a.vsl", "old");
  folder.Write("a.vsl.bak", "older");
  ASSERT_TRUE(WriteFile(path, "new", ".bak"));
  EXPECT_EQ(folder.Read("a.vsl"), "new");
  EXPECT_EQ(folder.Read("a.vsl.bak"), "old");
  ASSERT_TRUE(WriteFile(path, "newest"));
  EXPECT_EQ(folder.Read("a.vsl.bak"), "old");
  EXPECT_EQ(folder.Names(), (std::set<std::string>{"a.vsl", "a.vsl.bak"}));
}

TEST(AtomicFile, ABackupThatCannotBeKeptLeavesTheTargetAlone) {
  const TempFolder folder;
  const std::string path = folder.Write("a.vsl", "old");
  fs::create_directories(folder.Path("a.vsl.bak/full"));
  EXPECT_FALSE(WriteFile(path, "new", ".bak"));
  EXPECT_EQ(folder.Read("a.vsl"), "old");
  EXPECT_EQ(folder.Names(), (std::set<std::string>{"a.vsl", "a.vsl.bak"}));
}

TEST(AtomicFile, FollowsLinksAndKeepsPermissions) {
  const TempFolder folder;
  fs::create_directory(folder.Path("real"));
  const std::string path = folder.Write("real/a.vsl", "old");
  ASSERT_EQ(chmod(path.c_str(), 0640), 0);
  fs::create_symlink("real/a.vsl", folder.Path("one"));
  fs::create_symlink(folder.Path("one"), folder.Path("two"));
  ASSERT_TRUE(WriteFile(folder.Path("two"), "new"));
  EXPECT_TRUE(fs::is_symlink(folder.Path("two")));
  EXPECT_TRUE(fs::is_symlink(folder.Path("one")));
  EXPECT_EQ(folder.Read("real/a.vsl"), "new");
  struct stat info {};
  ASSERT_EQ(stat(path.c_str(), &info), 0);
  EXPECT_EQ(info.st_mode & 07777, 0640u);

  fs::create_symlink("not-yet", folder.Path("dangling"));
  ASSERT_TRUE(WriteFile(folder.Path("dangling"), "made"));
  EXPECT_EQ(folder.Read("not-yet"), "made");
}

TEST(AtomicFile, WhatItRefusesStaysAsItWas) {
  const TempFolder folder;
  fs::create_directory(folder.Path("folder"));
  ASSERT_EQ(mkfifo(folder.Path("pipe").c_str(), 0600), 0);
  fs::create_symlink("loop", folder.Path("loop"));
  folder.Write("file", "old");
  const auto before = folder.Names();
  for (const char* name : {"folder", "pipe", "loop", "file/below", "missing/a.vsl"}) {
    const IoResult result = WriteFile(folder.Path(name), "new");
    EXPECT_FALSE(result) << name;
    EXPECT_NE(result.Message().find(folder.Path(name)), std::string::npos) << result.Message();
  }
  EXPECT_EQ(folder.Names(), before);
  EXPECT_TRUE(fs::is_symlink(folder.Path("loop")));
}

TEST(AtomicFile, AWriteThatFailsLeavesTheOldFileAndNoOther) {
  const TempFolder folder;
  const std::string path = folder.Write("a.vsl", "old");
  rlimit before{};
  getrlimit(RLIMIT_FSIZE, &before);
  const rlimit small{100000, before.rlim_max};
  auto* handler = std::signal(SIGXFSZ, SIG_IGN);
  for (const size_t bytes : {size_t{200000}, size_t{3000000}}) {  // fails at the end; fails at once
    setrlimit(RLIMIT_FSIZE, &small);
    const IoResult result = WriteFile(path, std::string(bytes, 'x'), ".bak");
    setrlimit(RLIMIT_FSIZE, &before);
    EXPECT_FALSE(result);
    EXPECT_NE(result.Message().find("Cannot write"), std::string::npos) << result.Message();
  }
  std::signal(SIGXFSZ, handler);
  EXPECT_EQ(folder.Read("a.vsl"), "old");
  EXPECT_EQ(folder.Names(), std::set<std::string>{"a.vsl"});
}

TEST(AtomicFile, WritesPiecesOfAnySizeInOrder) {
  const TempFolder folder;
  AtomicFile file(folder.Path("a"));
  ASSERT_TRUE(file.Open());
  std::string all;
  for (const size_t size : {1, 200000, 100000, 5, 600000, 0, 7}) {
    const std::string piece(size, static_cast<char>('a' + all.size() % 26));
    ASSERT_TRUE(file.Write(piece));
    all += piece;
  }
  ASSERT_TRUE(file.Commit());
  EXPECT_EQ(folder.Read("a"), all);
}

TEST(AtomicFile, WithoutACommitNothingIsLeft) {
  const TempFolder folder;
  {
    AtomicFile file(folder.Path("a.vsl"));
    ASSERT_TRUE(file.Open());
    EXPECT_EQ(folder.Names().begin()->substr(0, 3), "CRE");
    ASSERT_TRUE(file.Write("text"));
  }
  EXPECT_TRUE(folder.Names().empty());
}

}  // namespace
}  // namespace quill
