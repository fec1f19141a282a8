#pragma once
#include <QObject>
#include <atomic>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>

namespace quill {

/// Work on a thread of its own, the latest that was asked for. The work sees only values that it was given;
/// what it returns is done on the thread of this object. Everything here is called from that thread.
class BackgroundTask : public QObject {
  Q_OBJECT

 public:
  using Finish = std::function<void()>;
  /// `stop` is set when nobody waits for the outcome any more; what is returned then is forgotten.
  using Work = std::function<Finish(const std::atomic<bool>& stop)>;

  using QObject::QObject;
  /// Waits for the end of work that is under way.
  ~BackgroundTask() override;

  /// Forgets what was begun before. The thread is made for the first work.
  void Start(Work work);
  void Cancel();
  bool IsRunning() const { return m_isRunning; }
  /// Waits for the work and finishes it now; nothing happens when there is none.
  void Wait();

 private:
  void Run();
  void FinishIfDone();

  std::mutex m_mutex;
  std::condition_variable m_changed;
  // Behind the mutex.
  Work m_work;
  std::shared_ptr<std::atomic<bool>> m_stop;  ///< of the last work
  Finish m_finish;                            ///< of the last work, when it is done
  bool m_isDone = false;
  bool m_quits = false;

  bool m_isRunning = false;  ///< for the thread of this object alone
  std::thread m_thread;
};

}  // namespace quill
