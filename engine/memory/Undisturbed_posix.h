// Keeps a thread from being ended by force for some instructions.
#pragma once

#include <pthread.h>
#include <signal.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstdint>

namespace korvel {

/// While it lives, neither a signal nor a cancellation ends the thread: between a descriptor's opening and
/// its closing, or being noted, nobody would close it.
class Undisturbed {
 public:
  Undisturbed() {
    pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &cancel_before_);
    // The library's own function leaves out the signal by which threads are canceled.
    uint64_t all = ~uint64_t{0};
    for (int fault : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGTRAP, SIGABRT})
      all &= ~(uint64_t{1} << (fault - 1));
    syscall(SYS_rt_sigprocmask, SIG_BLOCK, &all, &before_, sizeof all);
  }
  ~Undisturbed() {
    syscall(SYS_rt_sigprocmask, SIG_SETMASK, &before_, nullptr, sizeof before_);
    pthread_setcancelstate(cancel_before_, nullptr);
  }
  Undisturbed(const Undisturbed&) = delete;
  Undisturbed& operator=(const Undisturbed&) = delete;

 private:
  uint64_t before_ = 0;
  int cancel_before_ = PTHREAD_CANCEL_ENABLE;
};

}  // namespace korvel
