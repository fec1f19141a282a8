#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>

#include "shell/AttemptMark.h"
#include "support/TempFolder.h"

namespace quill {
namespace {

TEST(AttemptMark, TellsOfAProcessThatDiedAndOfNoOther) {
  const TempFolder folder;
  const std::string path = folder.Path("state/x.attempt");
  const auto dieWithMark = [&] {
    const pid_t child = fork();
    if (child == 0) {
      const AttemptMark mark(path);
      ::kill(::getpid(), SIGKILL);
    }
    ::waitpid(child, nullptr, 0);
  };
  EXPECT_FALSE(AttemptMark(path).FailedBefore());
  EXPECT_FALSE(std::filesystem::exists(path));
  dieWithMark();
  dieWithMark();
  EXPECT_TRUE(AttemptMark(path).FailedBefore());
  EXPECT_FALSE(AttemptMark(path).FailedBefore()) << "left out once";
  const AttemptMark first(path);
  EXPECT_FALSE(AttemptMark(path).FailedBefore()) << "another copy is trying";
  EXPECT_TRUE(std::filesystem::exists(path));

  const std::string pipe = folder.Path("pipe");
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  EXPECT_FALSE(AttemptMark(pipe).FailedBefore());
  EXPECT_FALSE(AttemptMark(folder.Path("")).FailedBefore());
  EXPECT_TRUE(std::filesystem::exists(pipe)) << "not ours";
}

}  // namespace
}  // namespace quill
