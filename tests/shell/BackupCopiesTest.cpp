#include "shell/BackupCopies.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "support/TempFolder.h"
#include "text/buffer/CrystalTextBuffer.h"

namespace quill {
namespace {

constexpr int64_t kDay = 86400;
constexpr int64_t kNow = 1'800'000'000;

class BackupCopiesTest : public ::testing::Test {
 protected:
  BackupCopiesTest() {
    buffer.NewBuffer();
    TextPosition end;
    buffer.InsertTextAt(nullptr, {0, 0}, "first\rsecond", end);
  }
  void SetTime(const std::string& name, int64_t seconds) const {
    const timespec times[] = {{seconds, 0}, {seconds, 0}};
    ASSERT_EQ(utimensat(AT_FDCWD, folder.Path(name).c_str(), times, 0), 0) << name;
  }
  std::set<std::string> Backups() const {
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(copies.Folder())) {
      names.insert(entry.path().filename().string());
    }
    return names;
  }

  TempFolder folder;
  BackupCopies copies{folder.Folder().string(), [] { return kNow; }};
  CCrystalTextBuffer buffer;
};

TEST_F(BackupCopiesTest, ACopyIsReadOnlyClearsTheModifiedFlagAndIsReplacedByTheNext) {
  const BackupCopies today(folder.Folder().string());  // what is copied now is new by the real clock
  buffer.SetCreateBackup(true);
  const std::string views[] = {"/one/a.vsl", "/one/a.vsl"};
  today.BackUp(buffer, views, {});
  EXPECT_FALSE(buffer.IsModified());
  EXPECT_EQ(folder.Read("qil_backup/a.vsl"), "first\r\nsecond");
  const auto writeBits = std::filesystem::perms::owner_write | std::filesystem::perms::group_write |
                         std::filesystem::perms::others_write;
  EXPECT_EQ(std::filesystem::status(folder.Path("qil_backup/a.vsl")).permissions() & writeBits,
            std::filesystem::perms::none);

  buffer.NewBuffer();
  today.BackUp(buffer, std::vector<std::string>{"/two/a.vsl"}, {});
  EXPECT_EQ(folder.Read("qil_backup/a.vsl"), "") << "files named alike share one copy";
  EXPECT_EQ(Backups(), std::set<std::string>{"a.vsl"}) << "no .bak of a copy";
  EXPECT_TRUE(buffer.CreatesBackup()) << "the document's own wish is as it was";
}

TEST_F(BackupCopiesTest, ACopyIsAsPrivateAsItsScriptAndNoLinkIsFollowed) {
  const BackupCopies today(folder.Folder().string());
  const auto mode = [this](const char* name) {
    struct stat status {};
    EXPECT_EQ(::lstat(folder.Path(name).c_str(), &status), 0) << name;
    return status.st_mode & (S_IFMT | 0777);
  };
  const std::vector<std::string> scripts = {folder.Write("a.vsl", ""), folder.Write("b.vsl", "")};
  std::filesystem::create_directory(folder.Path("qil_backup"));
  folder.Write("qil_backup/a.vsl", "older");
  folder.Write("kept.txt", "kept");
  std::filesystem::create_symlink(folder.Path("kept.txt"), folder.Path("qil_backup/b.vsl"));
  for (const mode_t wanted : {0600, 0640, 0644}) {
    for (const std::string& script : scripts) ASSERT_EQ(::chmod(script.c_str(), wanted), 0);
    today.BackUp(buffer, scripts, {});
    EXPECT_EQ(mode("qil_backup/a.vsl"), S_IFREG | (wanted & ~0222U));
    EXPECT_EQ(mode("qil_backup/b.vsl"), S_IFREG | (wanted & ~0222U));
  }
  EXPECT_EQ(folder.Read("kept.txt"), "kept");
  EXPECT_EQ(folder.Read("qil_backup/b.vsl"), "first\r\nsecond");
}

TEST_F(BackupCopiesTest, NothingHappensWhenSwitchedOff) {
  copies.BackUp(buffer, std::vector<std::string>{"/one/a.vsl"}, {.enabled = false});
  EXPECT_TRUE(buffer.IsModified());
  EXPECT_EQ(folder.Names(), std::set<std::string>{});
}

TEST_F(BackupCopiesTest, AnUnnamedTextAndAFolderThatCannotBeMadeArePassedOver) {
  copies.BackUp(buffer, std::vector<std::string>{""}, {});
  EXPECT_TRUE(buffer.IsModified());
  EXPECT_EQ(Backups(), std::set<std::string>{});
  std::filesystem::remove(copies.Folder());
  folder.Write("qil_backup", "a file");
  copies.BackUp(buffer, std::vector<std::string>{"/one/a.vsl"}, {});
  EXPECT_TRUE(buffer.IsModified());
  EXPECT_EQ(folder.Read("qil_backup"), "a file");
}

TEST_F(BackupCopiesTest, CopiesGoWhenTheirAgeInWholeDaysIsAboveTheLimit) {
  std::filesystem::create_directories(folder.Path("qil_backup/old folder"));
  const std::pair<const char*, int64_t> files[] = {
      {"30 days", kNow - 31 * kDay + 1}, {"31 days", kNow - 31 * kDay}, {"tomorrow", kNow + kDay}};
  for (const auto& [name, time] : files) {
    folder.Write(std::string("qil_backup/") + name, "x");
    SetTime(std::string("qil_backup/") + name, time);
  }
  std::filesystem::permissions(folder.Path("qil_backup/31 days"), std::filesystem::perms::owner_read);
  SetTime("qil_backup/old folder", kNow - 400 * kDay);
  copies.Prune(30);
  EXPECT_EQ(Backups(), (std::set<std::string>{"30 days", "tomorrow", "old folder"}));
  copies.Prune(29);
  EXPECT_EQ(Backups(), (std::set<std::string>{"tomorrow", "old folder"}));
}

TEST_F(BackupCopiesTest, TimesBeforeTheCalendarCountAsZeroAndTimesBeyondItEndThePruning) {
  // Only some file systems keep such times; the usual memory disk does.
  if (!std::filesystem::is_directory("/dev/shm")) GTEST_SKIP() << "no file system for odd times";
  std::string root = "/dev/shm/quill-backup-XXXXXX";
  ASSERT_NE(mkdtemp(root.data()), nullptr);
  const BackupCopies odd(root, [] { return kNow; });
  const std::string file = root + "/qil_backup/a.vsl";
  const auto makeFileOfTime = [&](int64_t seconds) {
    std::filesystem::create_directory(odd.Folder());
    std::ofstream(file) << "x";
    const timespec times[] = {{seconds, 0}, {seconds, 0}};
    utimensat(AT_FDCWD, file.c_str(), times, 0);
    struct stat info {};
    return stat(file.c_str(), &info) == 0 && info.st_mtim.tv_sec == seconds;
  };
  constexpr int64_t kYear1870 = -3'155'760'000;
  constexpr int32_t kDaysSince1970 = kNow / kDay;
  if (makeFileOfTime(kYear1870)) {
    odd.Prune(kDaysSince1970);
    EXPECT_TRUE(std::filesystem::exists(file));
  }
  if (makeFileOfTime(int64_t{1} << 60)) {
    EXPECT_THROW(odd.Prune(30), std::invalid_argument);
    EXPECT_TRUE(std::filesystem::exists(file));
  }
  std::filesystem::remove_all(root);
}

}  // namespace
}  // namespace quill
