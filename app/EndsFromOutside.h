#pragma once
#include <functional>

class QSocketNotifier;

namespace quill {

/// What is told before the process is ended by somebody else: by SIGTERM, SIGHUP or SIGINT (logging out, a
/// closed terminal), or because the display has gone. One at a time. A signal ends the process as it would
/// have done otherwise, three seconds later at the latest.
class EndsFromOutside {
 public:
  /// `beforeEnd` runs on the window's thread, and once.
  explicit EndsFromOutside(std::function<void()> beforeEnd);
  EndsFromOutside(const EndsFromOutside&) = delete;
  EndsFromOutside& operator=(const EndsFromOutside&) = delete;
  /// From now on the process ends by itself.
  ~EndsFromOutside();

 private:
  void OnSignal();
  void RunOnce();
  static void AtExit();

  std::function<void()> m_beforeEnd;
  QSocketNotifier* m_notifier = nullptr;
};

}  // namespace quill
