// Functions and time.
#include "engine/commands/Arguments.h"
#include "engine/commands/Tables.h"

namespace korvel {
namespace {

constexpr int32_t kFrameCountEnd = 2'000'000;

Value Wait(Session& s, const Value* a) {
  s.Suspend(Task::kWaiting, s.frame_count() + std::max(1, Whole(a[0])));
  return 0;
}

Value Sleep(Session& s, const Value* a) {
  if (Number(a[0]) <= 0) {
    s.Suspend(Task::kWaiting, s.frame_count() + 1);
  } else {
    s.Suspend(Task::kSleeping, s.game_time() + int64_t{Number(a[0])} * 1'000'000 / kOne);
  }
  return 0;
}

Value Start(Session& s, const Value* a, Value argument) {
  if (IsNull(a[0])) return 0;
  const Task& task = *s.machine.task;
  return GiveBool(s.StartFunction(As<Function>(a[0]), task.me, task.you, argument));
}

Value FnStart(Session& s, const Value* a) {
  return Start(s, a, 0);
}
Value FnStartWith(Session& s, const Value* a) {
  return Start(s, a, a[1]);
}
Value FnStop(Session& s, const Value* a) {
  return GiveWhole(s.scheduler.Stop(As<Function>(a[0])));
}
Value FnRunning(Session&, const Value* a) {
  return GiveWhole(As<Function>(a[0]).copies);
}

Value FnEachFrame(Session& s, const Value* a) {
  s.each_frame = ToObject<Function>(a[0]);
  return 0;
}

Value FnAtExit(Session& s, const Value* a) {
  s.at_exit = ToObject<Function>(a[0]);
  return 0;
}

Value FrameTime(Session& s, const Value*) {
  return s.frame_time();
}
Value FrameCount(Session& s, const Value*) {
  return GiveWhole(s.frame_count() % kFrameCountEnd);
}

Value FrameRate(Session& s, const Value* a) {
  s.frame_limit = std::clamp(Whole(a[0]), 0, 1000);
  return 0;
}

Value TotalTime(Session& s, const Value*) {
  return Cut(s.real_time() * kOne / 1'000'000);
}

Value TimeScale(Session& s, const Value* a) {
  s.time_factor = std::clamp(Number(a[0]), 0, 10 * kOne);
  return 0;
}

Value TimerStart(Session& s, const Value* a) {
  const int32_t slot = Whole(a[0]);
  if (slot >= 0 && slot < 16) s.timers[slot] = s.real_time() + 1;
  return 0;
}

Value TimerRead(Session& s, const Value* a) {
  const int32_t slot = Whole(a[0]);
  if (slot < 0 || slot >= 16 || s.timers[slot] == 0) return 0;
  return Cut((s.real_time() + 1 - s.timers[slot]) * kOne / 1000);
}

Value ClockHour(Session& s, const Value*) {
  return GiveWhole(s.host.Clock().hour);
}
Value ClockMinute(Session& s, const Value*) {
  return GiveWhole(s.host.Clock().minute);
}
Value ClockSecond(Session& s, const Value*) {
  return GiveWhole(s.host.Clock().second);
}

Value GamePause(Session& s, const Value* a) {
  s.paused = Flag(a[0]);
  return 0;
}
Value GamePaused(Session& s, const Value*) {
  return GiveBool(s.paused);
}

Value GameExit(Session& s, const Value*) {
  s.exit_wanted = true;
  return 0;
}

constexpr Command kRows[] = {
    {"wait", "~-:n", Wait},
    {"sleep", "*-:n", Sleep},
    {"fn_start", "*n:f?", FnStart},
    {"fn_start_with", "*n:f?n", FnStartWith},
    {"fn_stop", "n:f", FnStop},
    {"fn_running", "n:f", FnRunning},
    {"fn_each_frame", "-:f?", FnEachFrame},
    {"fn_at_exit", "-:f?", FnAtExit},
    {"frame_time", "n:", FrameTime},
    {"frame_count", "n:", FrameCount},
    {"frame_rate", "-:n", FrameRate},
    {"total_time", "n:", TotalTime},
    {"time_scale", "-:n", TimeScale},
    {"timer_start", "-:n", TimerStart},
    {"timer_read", "n:n", TimerRead},
    {"clock_hour", "n:", ClockHour},
    {"clock_minute", "n:", ClockMinute},
    {"clock_second", "n:", ClockSecond},
    {"game_pause", "-:n", GamePause},
    {"game_paused", "n:", GamePaused},
    {"game_exit", "-:", GameExit},
};

}  // namespace

const CommandTable kControlCommands = TableOf(kRows);

}  // namespace korvel
