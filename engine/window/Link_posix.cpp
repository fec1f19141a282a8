#include "engine/window/Link_posix.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace korvel::window {
namespace {

volatile sig_atomic_t asked = 0;

// When a thread began, in the system's ticks; 0 when there is none.
uint64_t BeginOf(int process, int thread) {
  char path[64];
  std::snprintf(path, sizeof path, "/proc/%d/task/%d/stat", process, thread);
  char text[1024] = "";
  const int file = open(path, O_RDONLY | O_CLOEXEC);
  if (file < 0) return 0;
  const ssize_t count = read(file, text, sizeof text - 1);
  close(file);
  if (count <= 0) return 0;
  const char* at = std::strrchr(text, ')');
  // A thread that has ended, and one that nobody has waited for, are as good as gone.
  if (at == nullptr || at[1] == 0 || at[2] == 'Z' || at[2] == 'X') return 0;
  for (int i = 0; at != nullptr && i < 20; ++i) at = std::strchr(at + 1, ' ');
  return at != nullptr ? std::strtoull(at + 1, nullptr, 10) : 0;
}

}  // namespace

bool Link::Open(int process, int descriptor, uint64_t session) {
  char path[64];
  std::snprintf(path, sizeof path, "/proc/%d/fd/%d", process, descriptor);
  const int file = open(path, O_RDWR | O_CLOEXEC);
  if (file < 0) return false;
  struct stat facts;
  void* memory = MAP_FAILED;
  if (fstat(file, &facts) == 0 && facts.st_size == static_cast<off_t>(wire::kAllBytes))
    memory = mmap(nullptr, wire::kAllBytes, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_NORESERVE, file, 0);
  close(file);
  if (memory == MAP_FAILED) return false;
  shared_ = static_cast<wire::Shared*>(memory);
  return shared_->magic == wire::kMagic && shared_->version == wire::kVersion &&
         shared_->session == session && shared_->process == process && IsWanted();
}

bool Link::IsWanted() const {
  return shared_->ended.load(std::memory_order_acquire) == 0 && asked == 0 &&
         BeginOf(shared_->process, shared_->thread) == shared_->thread_begin;
}

void EndWithParent() {
  struct sigaction action {};
  action.sa_handler = [](int) {
    asked = 1;
    // Whatever holds it up, it does not stay.
    alarm(1);
  };
  sigaction(SIGTERM, &action, nullptr);
  prctl(PR_SET_PDEATHSIG, SIGTERM);
}

bool AskedToEnd() {
  return asked != 0;
}

}  // namespace korvel::window
