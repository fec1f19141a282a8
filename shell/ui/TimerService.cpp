#include "shell/ui/TimerService.h"

#include <QTimerEvent>

namespace quill {

void TimerService::Start(int id, int milliseconds) {
  Kill(id);
  Timer& timer = m_timers[id];
  timer.period = milliseconds;
  timer.handle = startTimer(milliseconds);
}

void TimerService::Kill(int id) {
  Timer& timer = m_timers[id];
  if (timer.handle != 0) killTimer(timer.handle);
  timer.handle = 0;
  timer.period = 0;
}

int TimerService::PeriodOf(int id) const {
  const auto found = m_timers.find(id);
  return found == m_timers.end() ? 0 : found->second.period;
}

bool TimerService::Fire(int id) {
  const auto found = m_timers.find(id);
  if (found == m_timers.end() || found->second.handle == 0) return false;
  if (found->second.action) found->second.action();
  return true;
}

void TimerService::timerEvent(QTimerEvent* event) {
  for (const auto& [id, timer] : m_timers) {
    if (timer.handle == event->timerId()) {
      Fire(id);
      return;
    }
  }
}

}  // namespace quill
