#include "engine/show/WindowHost_posix.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <time.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>

#include "engine/memory/Undisturbed_posix.h"
#include "engine/run/Session.h"

extern char** environ;

namespace korvel {
namespace {

constexpr int64_t kMillisecond = 1000;
/// How long the end of a game waits for its window, and a picture for being drawn.
constexpr int64_t kForEnd = 300 * kMillisecond;
constexpr int64_t kForPicture = 10'000 * kMillisecond;
constexpr uint64_t kBetweenLooks = 30;

// The program that shows the window stands beside this library. The loader has locks, so it is asked when the
// library is loaded.
struct WindowProgram {
  char path[1200] = "";
  WindowProgram() {
    Dl_info info{};
    if (dladdr(static_cast<const void*>(&kBetweenLooks), &info) == 0 || info.dli_fname == nullptr) return;
    char library[1000] = "";
    if (realpath(info.dli_fname, whole_) == nullptr) return;
    std::snprintf(library, sizeof library, "%.990s", whole_);
    if (char* slash = std::strrchr(library, '/')) slash[0] = 0;
    std::snprintf(path, sizeof path, "%s/engine_window", library);
  }

 private:
  char whole_[4096] = "";
};
const WindowProgram kProgram;

bool HasDisplay() {
  const auto set = [](const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr && *value != 0;
  };
  return set("DISPLAY") || set("WAYLAND_DISPLAY") || set("SDL_VIDEODRIVER");
}

// When the calling thread began, in the system's ticks: the 22nd word of its line of facts, the 20th behind
// the name, which stands in brackets.
uint64_t ThreadBegin() {
  char text[1024] = "";
  const int file = open("/proc/thread-self/stat", O_RDONLY | O_CLOEXEC);
  if (file < 0) return 0;
  const ssize_t count = read(file, text, sizeof text - 1);
  close(file);
  if (count <= 0) return 0;
  const char* at = std::strrchr(text, ')');
  for (int i = 0; at != nullptr && i < 20; ++i) at = std::strchr(at + 1, ' ');
  return at != nullptr ? std::strtoull(at + 1, nullptr, 10) : 0;
}

}  // namespace

void WindowHost::Reset() {
  const Undisturbed undisturbed;
  Reap(true);
  if (shared_ != nullptr) munmap(shared_, wire::kAllBytes);
  if (descriptor_ >= 0) close(descriptor_);
  shared_ = nullptr;
  descriptor_ = -1;
  recorder_ = nullptr;
  arena_ = nullptr;
  seen_ = false;
  told_close_ = false;
}

void WindowHost::Begin(Arena& arena, const Options& options) {
  arena_ = &arena;
  if (!HasDisplay()) return;
  char words[8] = "";
  char* end = words;
  if (options.in_window) *end++ = 'w';
  if (options.no_sound) *end++ = 's';
  if (options.no_music) *end++ = 'm';
  if (options.no_joystick) *end++ = 'j';
  *end = 0;
  seen_ = Connect(words);
}

// The memory has no name, and the child gets no descriptor: it opens this process's own.
bool WindowHost::Connect(const char* options) {
  const Undisturbed undisturbed;
  if (kProgram.path[0] == 0 || access(kProgram.path, X_OK) != 0) return false;
  descriptor_ = memfd_create("korvel", MFD_CLOEXEC);
  if (descriptor_ < 0) return false;
  void* memory = MAP_FAILED;
  if (ftruncate(descriptor_, static_cast<off_t>(wire::kAllBytes)) == 0) {
    memory =
        mmap(nullptr, wire::kAllBytes, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_NORESERVE, descriptor_, 0);
  }
  if (memory == MAP_FAILED) return false;
  shared_ = static_cast<wire::Shared*>(memory);
  shared_->magic = wire::kMagic;
  shared_->version = wire::kVersion;
  shared_->process = getpid();
  shared_->thread = static_cast<int32_t>(syscall(SYS_gettid));
  shared_->thread_begin = ThreadBegin();
  shared_->session = ++session_;
  writer_ = {};
  sequence_ = 0;
  recorder_ = arena_->New<Recorder>(*arena_, shared_);

  char process[16], file[16], session[24], how[16];
  std::snprintf(process, sizeof process, "%d", static_cast<int>(getpid()));
  std::snprintf(file, sizeof file, "%d", descriptor_);
  std::snprintf(session, sizeof session, "%llu", static_cast<unsigned long long>(session_));
  std::snprintf(how, sizeof how, "-%s", options);
  char name[] = "engine_window";
  char* const words[] = {name, process, file, session, how, nullptr};
  posix_spawnattr_t facts;
  posix_spawnattr_init(&facts);
  sigset_t signals;
  sigemptyset(&signals);
  posix_spawnattr_setsigmask(&facts, &signals);
  sigfillset(&signals);
  posix_spawnattr_setsigdefault(&facts, &signals);
  posix_spawnattr_setflags(&facts, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
  pid_t child = 0;
  if (posix_spawn(&child, kProgram.path, nullptr, &facts, words, environ) != 0) child = 0;
  child_ = child;
  return child_ != 0;
}

bool WindowHost::IsAlive() {
  if (child_ == 0) return false;
  const Undisturbed undisturbed;
  if (waitpid(child_, nullptr, WNOHANG) == 0) return true;
  child_ = 0;
  return false;
}

// A child that has not been waited for keeps its number, so it is no other process that is ended here.
void WindowHost::Reap(bool at_once) {
  if (child_ == 0) return;
  if (at_once) kill(child_, SIGKILL);
  while (waitpid(child_, nullptr, 0) < 0 && errno == EINTR) {
  }
  child_ = 0;
}

void WindowHost::End() {
  if (shared_ != nullptr) shared_->ended.store(1, std::memory_order_release);
  for (const int64_t until = Now() + kForEnd; IsAlive() && Now() < until;) SleepUntil(Now() + kMillisecond);
  Reset();
}

bool WindowHost::NextEvent(InputEvent* event) {
  if (!seen_) return false;
  wire::Event wired;
  if (wire::TakeEvent(shared_, &wired)) {
    *event = {static_cast<InputEvent::Kind>(wired.kind), wired.code, wired.x, wired.y};
    return true;
  }
  if (sequence_ % kBetweenLooks != 0 || child_ == 0 || told_close_ || IsAlive()) return false;
  // A window that never came is no reason to end the game.
  told_close_ = true;
  if (shared_->state.load(std::memory_order_acquire) != wire::kOpen) {
    seen_ = false;
    return false;
  }
  *event = {InputEvent::kClose, 0, 0, 0};
  return true;
}

void WindowHost::Present(Session& session, bool stopped) {
  // The window shows the last frame again by itself.
  if (stopped || !seen_) {
    if (stopped) ++sequence_;
    return;
  }
  ++sequence_;
  recorder_->Write(session, writer_.Begin(shared_), sequence_);
  writer_.Publish(shared_);
}

ScreenSize WindowHost::Desktop() {
  if (!seen_ || shared_->state.load(std::memory_order_acquire) != wire::kOpen) return HeadlessHost::Desktop();
  const int32_t width = shared_->desktop_width.load(std::memory_order_relaxed);
  const int32_t height = shared_->desktop_height.load(std::memory_order_relaxed);
  return width > 0 && height > 0 ? ScreenSize{width, height} : HeadlessHost::Desktop();
}

Picture WindowHost::TakePicture(Session& session) {
  if (!seen_ || !IsAlive()) {
    // Nobody sees the game: the same program draws this frame without a window.
    if (shared_ == nullptr && !Connect("p")) return {};
    if (!IsAlive()) return {};
    ++sequence_;
    recorder_->Write(session, writer_.Begin(shared_), sequence_);
    writer_.Publish(shared_);
  }
  shared_->shot_wanted.store(sequence_, std::memory_order_release);
  for (const int64_t until = Now() + kForPicture; Now() < until && IsAlive();
       SleepUntil(Now() + kMillisecond)) {
    if (shared_->shot_done.load(std::memory_order_acquire) != sequence_) continue;
    const int width = shared_->shot_width;
    const int height = shared_->shot_height;
    if (width < 1 || height < 1 || width > Screen::kLargest || height > Screen::kLargest) return {};
    const char* pixels = reinterpret_cast<const char*>(shared_) + wire::kFirstShot;
    return {reinterpret_cast<const uint32_t*>(pixels), width, height};
  }
  return {};
}

}  // namespace korvel
