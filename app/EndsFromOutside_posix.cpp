#include <fcntl.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <csignal>
#include <cstdlib>
#include <utility>

#include "app/EndsFromOutside.h"

namespace quill {
namespace {

constexpr int kSignals[] = {SIGTERM, SIGHUP, SIGINT};
constexpr unsigned kMostSeconds = 3;  ///< for a window's thread that does not come

int s_pipe[2] = {-1, -1};
EndsFromOutside* s_watch = nullptr;

/// Only what may be done within a signal.
void Tell(int signal) {
  const auto number = static_cast<unsigned char>(signal);
  [[maybe_unused]] const ssize_t ignored = write(s_pipe[1], &number, 1);
  alarm(kMostSeconds);
}

}  // namespace

EndsFromOutside::EndsFromOutside(std::function<void()> beforeEnd) : m_beforeEnd(std::move(beforeEnd)) {
  s_watch = this;
  // The toolkit ends the process by `exit` when the display has gone.
  static const int registered = std::atexit(AtExit);
  if (registered != 0 || pipe2(s_pipe, O_CLOEXEC | O_NONBLOCK) != 0) return;
  m_notifier = new QSocketNotifier(s_pipe[0], QSocketNotifier::Read);
  QObject::connect(m_notifier, &QSocketNotifier::activated, m_notifier, [this] { OnSignal(); });
  struct sigaction action {};
  action.sa_handler = Tell;
  action.sa_flags = SA_RESTART;
  for (const int signal : kSignals) {
    struct sigaction before {};
    sigaction(signal, nullptr, &before);
    if (before.sa_handler != SIG_IGN) sigaction(signal, &action, nullptr);  // as "nohup" wants it
  }
}

EndsFromOutside::~EndsFromOutside() {
  s_watch = nullptr;
  if (m_notifier == nullptr) return;
  for (const int signal : kSignals) {
    struct sigaction now {};
    sigaction(signal, nullptr, &now);
    if (now.sa_handler == Tell) std::signal(signal, SIG_DFL);
  }
  delete m_notifier;
  for (int& end : s_pipe) close(std::exchange(end, -1));
}

void EndsFromOutside::OnSignal() {
  unsigned char signal = SIGTERM;
  if (read(s_pipe[0], &signal, 1) != 1) return;
  RunOnce();
  std::signal(signal, SIG_DFL);
  std::raise(signal);
}

void EndsFromOutside::RunOnce() {
  if (const auto run = std::exchange(m_beforeEnd, nullptr)) run();
}

void EndsFromOutside::AtExit() {
  if (s_watch != nullptr) s_watch->RunOnce();
}

}  // namespace quill
