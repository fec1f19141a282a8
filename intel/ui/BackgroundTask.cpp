#include "intel/ui/BackgroundTask.h"

#include <utility>

namespace quill {

BackgroundTask::~BackgroundTask() {
  Cancel();
  {
    const std::lock_guard lock(m_mutex);
    m_quits = true;
  }
  m_changed.notify_all();
  if (m_thread.joinable()) m_thread.join();
}

void BackgroundTask::Start(Work work) {
  Cancel();
  {
    const std::lock_guard lock(m_mutex);
    m_work = std::move(work);
    m_stop = std::make_shared<std::atomic<bool>>(false);
  }
  m_isRunning = true;
  m_changed.notify_all();
  if (!m_thread.joinable()) m_thread = std::thread([this] { Run(); });
}

void BackgroundTask::Cancel() {
  m_isRunning = false;
  Work work;  // let go behind the lock
  Finish finish;
  const std::lock_guard lock(m_mutex);
  if (m_stop != nullptr) m_stop->store(true);
  work = std::exchange(m_work, nullptr);
  finish = std::exchange(m_finish, nullptr);
  m_isDone = false;
}

void BackgroundTask::Wait() {
  if (!m_isRunning) return;
  {
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [this] { return m_isDone; });
  }
  FinishIfDone();
}

void BackgroundTask::Run() {
  std::unique_lock lock(m_mutex);
  for (;;) {
    m_changed.wait(lock, [this] { return m_quits || m_work != nullptr; });
    if (m_quits) return;
    Work work = std::exchange(m_work, nullptr);
    const std::shared_ptr<std::atomic<bool>> stop = m_stop;
    lock.unlock();
    Finish finish = work(*stop);
    work = nullptr;  // what it held is let go here, not on the other thread
    lock.lock();
    if (stop->load()) {
      lock.unlock();
      finish = nullptr;
      lock.lock();
      continue;
    }
    m_finish = std::move(finish);
    m_isDone = true;
    QMetaObject::invokeMethod(this, &BackgroundTask::FinishIfDone, Qt::QueuedConnection);
    m_changed.notify_all();
  }
}

void BackgroundTask::FinishIfDone() {
  Finish finish;
  {
    const std::lock_guard lock(m_mutex);
    if (!m_isDone) return;
    m_isDone = false;
    finish = std::exchange(m_finish, nullptr);
  }
  m_isRunning = false;
  finish();
}

}  // namespace quill
