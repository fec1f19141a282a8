#pragma once
#include <QObject>
#include <functional>
#include <map>

namespace quill {

/// Numbers of the main window's timers.
namespace timer_id {
enum Id : int {
  kDeferredStart = 107,
  kWatchRefresh = 109,
  kErrorFile = 110,
  kAutoSave = 260,
};
}  // namespace timer_id

/// The numbered timers of the main window. `Fire` does what the passing of a timer's period does, for
/// whoever does not want to wait for it.
class TimerService : public QObject {
 public:
  using Action = std::function<void()>;

  using QObject::QObject;

  void SetAction(int id, Action action) { m_timers[id].action = std::move(action); }
  /// Starts a timer, or a running one anew.
  void Start(int id, int milliseconds);
  void Kill(int id);
  bool IsRunning(int id) const { return PeriodOf(id) > 0; }
  /// Milliseconds; 0 while the timer does not run.
  int PeriodOf(int id) const;
  /// Calls the action of a running timer; false when it does not run.
  bool Fire(int id);

 protected:
  void timerEvent(QTimerEvent* event) override;

 private:
  struct Timer {
    Action action;
    int handle = 0;
    int period = 0;
  };
  std::map<int, Timer> m_timers;
};

}  // namespace quill
