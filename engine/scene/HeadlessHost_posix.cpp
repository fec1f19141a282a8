#include <time.h>
#include <unistd.h>

#include "engine/scene/Host.h"

namespace korvel {
namespace {

// The rules of the time zone are behind a lock, so its offset is read when the library is loaded.
const long kZone = [] {
  const time_t now = time(nullptr);
  tm local{};
  localtime_r(&now, &local);
  return local.tm_gmtoff;
}();

}  // namespace

int64_t HeadlessHost::Now() {
  timespec now;
  clock_gettime(CLOCK_MONOTONIC, &now);
  return int64_t{now.tv_sec} * 1'000'000 + now.tv_nsec / 1000;
}

void HeadlessHost::SleepUntil(int64_t time) {
  timespec until;
  until.tv_sec = time / 1'000'000;
  until.tv_nsec = time % 1'000'000 * 1000;
  clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &until, nullptr);
}

ClockTime HeadlessHost::Clock() {
  timespec now;
  clock_gettime(CLOCK_REALTIME, &now);
  const int64_t seconds = now.tv_sec + kZone;
  const int64_t day = ((seconds % 86400) + 86400) % 86400;
  return {static_cast<int>(day / 3600), static_cast<int>(day / 60 % 60), static_cast<int>(day % 60)};
}

void HeadlessHost::Line(std::string_view line) {
  if (auto* take = take_) return take(line.data());
  size_t done = 0;
  while (done < line.size()) {
    const ssize_t count = write(STDOUT_FILENO, line.data() + done, line.size() - done);
    if (count <= 0) return;
    done += static_cast<size_t>(count);
  }
  (void)!write(STDOUT_FILENO, "\n", 1);
}

}  // namespace korvel
