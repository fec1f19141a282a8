#include "shell/RunLog.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "support/TempFolder.h"

namespace quill {
namespace {

/// Seconds since 1970 of a local time, as the log shows it.
int64_t LocalTime(int year, int month, int day, int hour, int minute, int second) {
  std::tm local{};
  local.tm_year = year - 1900;
  local.tm_mon = month - 1;
  local.tm_mday = day;
  local.tm_hour = hour;
  local.tm_min = minute;
  local.tm_sec = second;
  local.tm_isdst = -1;
  return std::mktime(&local);
}

TEST(RunLog, EachRunStartsAFreshFileOfTimedLines) {
  TempFolder folder;
  folder.Write("qil.log", "of the run before\n");
  int64_t now = LocalTime(2026, 1, 2, 3, 4, 5);
  const RunLog log(folder.Folder().string(), [&now] { return now; });
  EXPECT_FALSE(std::filesystem::exists(log.Path()));
  log.Line("Creating MainFrame...");
  now += 60;
  log.Line("");
  EXPECT_EQ(folder.Read("qil.log"), "2026-01-02 03:04:05 Creating MainFrame...\n2026-01-02 03:05:05 \n");
}

TEST(RunLog, AFileThatCannotBeWrittenIsPassedOver) {
  TempFolder folder;
  std::filesystem::create_directory(folder.Path("qil.log"));
  RunLog(folder.Folder().string()).Line("into a folder");
  RunLog(folder.Path("missing")).Line("into nowhere");
  const RunLog log(folder.Folder().string());
  std::filesystem::remove_all(folder.Path("qil.log"));
  ASSERT_EQ(mkfifo(folder.Path("qil.log").c_str(), 0600), 0);
  log.Line("into a pipe without a reader");
  EXPECT_EQ(folder.Names(), std::set<std::string>{"qil.log"});
}

}  // namespace
}  // namespace quill
