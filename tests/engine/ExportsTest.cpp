// The library as a host opens it, and threads that are ended by force in the middle of a game.
#include <dlfcn.h>
#include <link.h>
#include <pthread.h>
#include <signal.h>
#include <sys/syscall.h>
#include <ucontext.h>

#include <atomic>
#include <cstdlib>
#include <thread>

#include "tests/engine/TestHost.h"

namespace korvel {
namespace {

struct Library {
  void* handle = dlopen(kEngineLibrary, RTLD_NOW);
  template <class F>
  F Get(const char* name) const {
    return reinterpret_cast<F>(dlsym(handle, name));
  }
  decltype(&engine_open) open = Get<decltype(&engine_open)>("engine_open");
  decltype(&engine_frame) frame = Get<decltype(&engine_frame)>("engine_frame");
  decltype(&engine_close) close = Get<decltype(&engine_close)>("engine_close");
  decltype(&engine_getobj) getobj = Get<decltype(&engine_getobj)>("engine_getobj");
  decltype(&engine_getfunc) getfunc = Get<decltype(&engine_getfunc)>("engine_getfunc");
  decltype(&_str) str = Get<decltype(&_str)>("_str");
  decltype(&engine_debugbreakpoint) breakpoint =
      Get<decltype(&engine_debugbreakpoint)>("engine_debugbreakpoint");
  decltype(&engine_debugposition) position = Get<decltype(&engine_debugposition)>("engine_debugposition");
  decltype(&engine_kind) kind = Get<decltype(&engine_kind)>("engine_kind");
  decltype(&engine_setoutput) setoutput = Get<decltype(&engine_setoutput)>("engine_setoutput");
};

const Library& Engine() {
  // The window has tests of its own.
  for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "SDL_VIDEODRIVER"}) unsetenv(name);
  static const Library library;
  return library;
}

std::string printed;

TEST(Exports, PlayAGameFromACommandLine) {
  const Library& engine = Engine();
  ASSERT_NE(engine.handle, nullptr) << dlerror();
  GameInFolder game;
  game.Write("my game.vsl",
             "var n = 2.5;\nfunction execute(what) { }\nfunction main()\n{\n  print(\"hello\");\n  "
             "game_exit();\n}\n");
  engine.setoutput([](const char* line) { printed += line; });
  printed.clear();
  ASSERT_NE(engine.open((" " + game.path("My Game.vsl") + " -eq -wnd -nx 80").c_str(), nullptr), nullptr);
  EXPECT_EQ(*static_cast<int32_t*>(engine.getobj("N")), 2560);
  EXPECT_EQ(engine.kind(engine.getobj("n")), 0);
  EXPECT_NE(engine.getfunc("execute"), nullptr);
  EXPECT_STREQ(static_cast<KorvelStringObject*>(engine.str("wait(1);"))->text, "wait(1);");
  EXPECT_EQ(engine.breakpoint("my game.vsl", 4, 1), 1);
  EXPECT_NE(engine.frame(), 0);
  const char* file = nullptr;
  int line = 0;
  engine.position(&file, nullptr, &line);
  EXPECT_STREQ(file, "my game.vsl");
  EXPECT_EQ(line, 5);
  *static_cast<int32_t*>(engine.getobj("debug_mode")) = 0;
  while (engine.frame() != 0) {
  }
  EXPECT_EQ(printed, "hello");
  engine.close();
  EXPECT_EQ(engine.getobj("n"), nullptr);
}

// What the editor does to a thread that it ends: the signal's handler leaves the thread at once when it is
// inside of the library.
std::atomic<uintptr_t> code_begin, code_end;
std::atomic<bool> ended;

void EndThread(int, siginfo_t*, void* context) {
  const auto pc = static_cast<uintptr_t>(static_cast<ucontext_t*>(context)->uc_mcontext.gregs[REG_RIP]);
  if (pc < code_begin || pc >= code_end) return;
  ended = true;
  syscall(SYS_exit, 0);
}

int FindLibrary(dl_phdr_info* info, size_t, void*) {
  if (std::string(info->dlpi_name).find("korvel.dll") == std::string::npos) return 0;
  for (int i = 0; i < info->dlpi_phnum; ++i) {
    const auto& part = info->dlpi_phdr[i];
    if (part.p_type != PT_LOAD || (part.p_flags & PF_X) == 0) continue;
    code_begin = info->dlpi_addr + part.p_vaddr;
    code_end = code_begin + part.p_memsz;
  }
  return 1;
}

size_t ResidentPages() {
  std::ifstream file("/proc/self/statm");
  size_t size = 0, resident = 0;
  file >> size >> resident;
  return resident;
}

size_t OpenDescriptorCount() {
  size_t count = 0;
  for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) ++count;
  return count;
}

TEST(Exports, SurviveAThousandForcedEnds) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
  GTEST_SKIP() << "a sanitizer does not survive the forced end of a thread";
#endif
  const Library& engine = Engine();
  ASSERT_NE(engine.handle, nullptr);
  engine.setoutput([](const char*) {});
  dl_iterate_phdr(FindLibrary, nullptr);
  ASSERT_NE(code_begin, 0u);
  struct sigaction action {};
  action.sa_sigaction = EndThread;
  action.sa_flags = SA_SIGINFO;
  sigaction(SIGUSR2, &action, nullptr);

  static GameInFolder game;
  game.Write("box.dat", "x");
  game.Write(
      "main.vsl",
      "string s = \"\";\n"
      "function spark() { wait(1); ent_remove(me); }\n"
      "function main()\n{\n  var h;\n  frame_rate(0);\n  while (1)\n  {\n"
      "    ent_create(\"box.dat\", camera.x, spark);\n    str_from_num(s, \"%d\", frame_count());\n"
      "    h = file_open_append(\"log.txt\");\n    file_write_line(h, s);\n    file_close(h);\n    "
      "print(s);\n"
      "    if (frame_count() % 7 == 3) wait(1);\n    if (frame_count() > 40) file_remove(\"log.txt\");\n"
      "    wait(1);\n  }\n}\n");
  static std::string command_line;
  command_line = game.path("main.vsl");
  size_t pages = 0;
  size_t descriptors = 0;
  for (int i = 0; i < 1000; ++i) {
    ended = false;
    pthread_t thread;
    pthread_create(
        &thread, nullptr,
        [](void*) -> void* {
          Engine().open(command_line.c_str(), nullptr);
          while (Engine().frame() != 0) {
          }
          return nullptr;
        },
        nullptr);
    std::this_thread::sleep_for(std::chrono::microseconds(100 * (i % 23)));
    while (!ended) {
      pthread_kill(thread, SIGUSR2);
      std::this_thread::sleep_for(std::chrono::microseconds(200));
    }
    pthread_join(thread, nullptr);
    if (i == 100) {
      pages = ResidentPages();
      descriptors = OpenDescriptorCount();
    }
  }
  EXPECT_LT(ResidentPages(), pages + 2000) << "less than eight megabytes more";
  EXPECT_LE(OpenDescriptorCount(), descriptors + 5);
}

}  // namespace
}  // namespace korvel
