#include <fcntl.h>
#include <unistd.h>

#include <ctime>
#include <filesystem>
#include <optional>

#include "base/LocalTime.h"
#include "shell/RunLog.h"

namespace quill {
namespace {

std::string TimeStamp(int64_t seconds) {
  const std::optional<std::tm> local = LocalTime(static_cast<std::time_t>(seconds));
  if (!local) return {};
  char text[64];
  return {text, std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S ", &*local)};
}

}  // namespace

RunLog::RunLog(const std::string& programFolder, Clock clock)
    : m_path((std::filesystem::path(programFolder) / "qil.log").string()), m_clock(std::move(clock)) {
  unlink(m_path.c_str());
}

void RunLog::Line(std::string_view message) const {
  std::string line = TimeStamp(m_clock());
  line.append(message).append(1, '\n');
  // Not blocking: a pipe of that name without a reader must not hold up the program.
  const int file = open(m_path.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC | O_NONBLOCK, 0666);
  if (file < 0) return;
  [[maybe_unused]] const ssize_t written = write(file, line.data(), line.size());
  close(file);
}

}  // namespace quill
