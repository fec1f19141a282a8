#include "base/AtomicFile.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/xattr.h>
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

/// While it lives, root is somebody who owns nothing here.
class Somebody {
 public:
  Somebody() { EXPECT_EQ(::seteuid(kNobody), 0); }
  Somebody(const Somebody&) = delete;
  Somebody& operator=(const Somebody&) = delete;
  ~Somebody() { EXPECT_EQ(::seteuid(0), 0); }

 private:
  static constexpr uid_t kNobody = 65534;
};

ino_t NumberOf(const std::string& path) {
  struct stat info {};
  EXPECT_EQ(::stat(path.c_str(), &info), 0) << path;
  return info.st_ino;
}

TEST(AtomicFile, AFileWithOtherNamesKeepsThem) {
  const TempFolder folder;
  const std::string path = folder.Write("a.vsl", "the old text");
  ASSERT_EQ(::link(path.c_str(), folder.Path("other").c_str()), 0);
  const ino_t number = NumberOf(path);
  for (const std::string text : {"shorter", "longer than the old text was"}) {
    const std::string before = folder.Read("a.vsl");
    ASSERT_TRUE(WriteFile(path, text, ".bak"));
    EXPECT_EQ(folder.Read("other"), text);
    EXPECT_EQ(folder.Read("a.vsl.bak"), before);
    EXPECT_EQ(NumberOf(path), number);
    EXPECT_NE(NumberOf(folder.Path("a.vsl.bak")), number);
  }
  EXPECT_EQ(folder.Names(), (std::set<std::string>{"a.vsl", "a.vsl.bak", "other"}));
}

TEST(AtomicFile, WhatMayBeWrittenButNotReplacedIsWrittenInPlace) {
  if (::geteuid() != 0) GTEST_SKIP() << "needs files of several users";
  for (const mode_t mode : {01777, 0555}) {
    const TempFolder folder;
    const TempFolder state;
    ASSERT_EQ(::chmod(folder.Folder().c_str(), mode), 0);
    ASSERT_EQ(::chmod(state.Folder().c_str(), 0777), 0);
    ::setenv("XDG_STATE_HOME", state.Folder().c_str(), 1);
    const std::string path = folder.Write("a.vsl", "old");
    ASSERT_EQ(::chmod(path.c_str(), 0666), 0);
    const ino_t number = NumberOf(path);
    for (const char* text : {"new", "newer text"}) {
      const Somebody somebody;
      const IoResult written = WriteFile(path, text, ".bak");
      EXPECT_TRUE(written) << written.Message();
    }
    EXPECT_EQ(folder.Read("a.vsl"), "newer text");
    EXPECT_EQ(NumberOf(path), number);
    std::set<std::string> names = folder.Names();
    names.erase("a.vsl.bak");  // where the folder takes it
    EXPECT_EQ(names, std::set<std::string>{"a.vsl"});
    EXPECT_EQ(folder.Names().size(), mode == 0555 ? 1U : 2U);
    EXPECT_TRUE(!fs::exists(state.Path("quill")) || fs::is_empty(state.Path("quill")));
    ::unsetenv("XDG_STATE_HOME");
  }
}

TEST(AtomicFile, KeepsAttributesAndGoesWithoutABackupWhoseNameIsTooLong) {
  const TempFolder folder;
  const std::string name = std::string(250, 'n');
  const std::string path = folder.Write(name, "old");
  const bool knowsAttributes = ::setxattr(path.c_str(), "user.mark", "blue", 4, 0) == 0;
  ASSERT_TRUE(WriteFile(path, "new", ".backup"));
  EXPECT_EQ(folder.Read(name), "new");
  EXPECT_EQ(folder.Names(), std::set<std::string>{name});
  if (!knowsAttributes) return;
  char value[8] = {};
  EXPECT_EQ(::getxattr(path.c_str(), "user.mark", value, sizeof value), 4);
  EXPECT_STREQ(value, "blue");
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
