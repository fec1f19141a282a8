// The window as a process of its own, on a driver that shows nothing.
#include <dlfcn.h>
#include <pthread.h>
#include <signal.h>

#include <cstdlib>
#include <set>
#include <thread>

#include "tests/engine/TestHost.h"

namespace korvel {
namespace {

struct Engine {
  void* handle = dlopen(kEngineLibrary, RTLD_NOW);
  decltype(&engine_open) open = reinterpret_cast<decltype(&engine_open)>(dlsym(handle, "engine_open"));
  decltype(&engine_frame) frame = reinterpret_cast<decltype(&engine_frame)>(dlsym(handle, "engine_frame"));
  decltype(&engine_close) close = reinterpret_cast<decltype(&engine_close)>(dlsym(handle, "engine_close"));
  decltype(&engine_setoutput) setoutput =
      reinterpret_cast<decltype(&engine_setoutput)>(dlsym(handle, "engine_setoutput"));
};

const Engine& Library() {
  static const Engine engine;
  return engine;
}

// The processes that this one has started, without those that have ended and wait for being noticed.
std::set<int> RunningChildren() {
  std::set<int> running;
  for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
    const int process = std::atoi(entry.path().filename().c_str());
    std::ifstream facts(entry.path() / "stat");
    std::string line;
    if (process == 0 || !std::getline(facts, line)) continue;
    const size_t name = line.rfind(')');
    if (name == std::string::npos || line[name + 2] == 'Z' || line[name + 2] == 'X') continue;
    if (std::atoi(line.c_str() + name + 4) == getpid()) running.insert(process);
  }
  return running;
}

template <class Condition>
bool Becomes(const Condition& condition) {
  for (int i = 0; i < 3000; ++i) {
    if (condition()) return true;
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  return false;
}

size_t Descriptors() {
  size_t count = 0;
  for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) ++count;
  return count;
}

size_t ResidentPages() {
  std::ifstream file("/proc/self/statm");
  size_t size = 0, resident = 0;
  file >> size >> resident;
  return resident;
}

// The display that the engine finds, put back afterwards.
class Display {
 public:
  explicit Display(const char* driver) {
    Set("DISPLAY", nullptr);
    Set("WAYLAND_DISPLAY", nullptr);
    Set("SDL_VIDEODRIVER", driver);
    Set("SDL_AUDIODRIVER", "dummy");
  }
  ~Display() {
    for (const auto& [name, value] : before_) {
      if (value.empty()) {
        unsetenv(name.c_str());
      } else {
        setenv(name.c_str(), value.c_str(), 1);
      }
    }
  }
  Display(const Display&) = delete;

 private:
  void Set(const char* name, const char* value) {
    const char* before = std::getenv(name);
    before_[name] = before != nullptr ? before : "";
    if (value != nullptr) {
      setenv(name, value, 1);
    } else {
      unsetenv(name);
    }
  }
  std::map<std::string, std::string> before_;
};

// A pixel of a bitmap file of 24 bits that is 640 x 480, from the upper left corner, as RRGGBB.
std::string PixelOf(const std::string& file, int x, int y) {
  const size_t at = 54 + static_cast<size_t>(479 - y) * 1920 + static_cast<size_t>(x) * 3;
  if (at + 3 > file.size()) return "none";
  char text[32];
  const auto byte = [&file, at](size_t i) {
    return static_cast<unsigned>(static_cast<uint8_t>(file[at + i]));
  };
  std::snprintf(text, sizeof text, "%02x%02x%02x", byte(2), byte(1), byte(0));
  return text;
}

TEST(GameWindow, TakesPicturesWithAndWithoutADisplay) {
  const Engine& engine = Library();
  ASSERT_NE(engine.handle, nullptr) << dlerror();
  for (const char* driver : {"dummy", static_cast<const char*>(nullptr)}) {
    const Display display(driver);
    GameInFolder game;
    game.Write("main.vsl",
               "function mark() { draw_color(255, 128, 0); draw_box(100, 50, 20, 10); }\n"
               "function main()\n{\n  screen_color(0, 0, 32); fn_each_frame(mark); wait(2);\n"
               "  screen_shot(\"one.bmp\"); wait(2); screen_shot(\"two.bmp\"); wait(2); game_exit();\n}\n");
    ASSERT_NE(engine.open((game.path("main.vsl") + " -wnd").c_str(), nullptr), nullptr);
    while (engine.frame() != 0) {
    }
    engine.close();
    EXPECT_TRUE(RunningChildren().empty()) << "closed in order";
    for (const char* name : {"one.bmp", "two.bmp"}) {
      const std::string file = game.Read(name);
      EXPECT_EQ(file.size(), 54u + 640 * 480 * 3);
      EXPECT_EQ(
          PixelOf(file, 99, 50) + PixelOf(file, 100, 50) + PixelOf(file, 119, 59) + PixelOf(file, 119, 60),
          "000020ff8000ff8000000020")
          << (driver != nullptr ? driver : "no display");
    }
    EXPECT_EQ(game.Errors(), "");
  }
}

TEST(GameWindow, ItsLossClosesTheGame) {
  const Engine& engine = Library();
  ASSERT_NE(engine.handle, nullptr);
  const Display display("dummy");
  GameInFolder game;
  game.Write("main.vsl",
             "function leave() { print(\"left\"); }\n"
             "function main() { fn_at_exit(leave); screen_shot(\"seen.bmp\"); while (1) wait(1); }\n");
  static std::string printed;
  printed.clear();
  engine.setoutput([](const char* line) { printed += line; });
  ASSERT_NE(engine.open((game.path("main.vsl") + " -wnd").c_str(), nullptr), nullptr);
  // The picture tells that the window is there.
  for (int i = 0; i < 5; ++i) ASSERT_NE(engine.frame(), 0);
  ASSERT_EQ(RunningChildren().size(), 1u);
  kill(*RunningChildren().begin(), SIGKILL);
  EXPECT_TRUE(Becomes([&engine] { return engine.frame() == 0; }));
  engine.close();
  EXPECT_EQ(printed, "left");
  engine.setoutput([](const char*) {});
}

TEST(GameWindow, EndsWithTheThreadThatIsEndedByForce) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
  GTEST_SKIP() << "a sanitizer does not survive the forced end of a thread";
#endif
  const Engine& engine = Library();
  ASSERT_NE(engine.handle, nullptr);
  engine.setoutput([](const char*) {});
  const Display display("dummy");
  static GameInFolder game;
  game.Write("box.dat", "x");
  game.Write(
      "main.vsl",
      "entity* e; var v[3]; bmap* sheet; panel* p; string s = \"\";\n"
      "function mark() { draw_box(frame_count() % 600, 5, 30, 30); }\n"
      "function main()\n{\n  sheet = bmap_blank(64, 64); p = pan_create(sheet, 1); pan_show(p, 1);\n"
      "  fn_each_frame(mark); frame_rate(0);\n  while (1)\n  {\n"
      "    vec_fill(v, 200, random(50), random(50)); bmap_set_pixel(sheet, random(64), random(64), v);\n"
      "    e = ent_create(\"box.dat\", v, null); wait(1); ent_remove(e); str_from_num(s, \"%d\", v[1]);\n"
      "  }\n}\n");
  const char* wanted = std::getenv("ENGINE_WINDOW_ROUNDS");
  const int rounds = wanted != nullptr ? std::atoi(wanted) : 50;
  static std::string command_line;
  command_line = game.path("main.vsl") + " -wnd";
  size_t pages = 0, descriptors = 0;
  for (int i = 0; i < rounds; ++i) {
    pthread_t thread;
    pthread_create(
        &thread, nullptr,
        [](void*) -> void* {
          pthread_setcanceltype(PTHREAD_CANCEL_ASYNCHRONOUS, nullptr);
          Library().open(command_line.c_str(), nullptr);
          while (Library().frame() != 0) {
          }
          return nullptr;
        },
        nullptr);
    // Some are ended while they open, some while the window is shown.
    std::this_thread::sleep_for(i % 4 == 3 ? std::chrono::microseconds(60'000)
                                           : std::chrono::microseconds(37 * (i % 101)));
    pthread_cancel(thread);
    pthread_join(thread, nullptr);
    if (i % 10 == 9) {
      EXPECT_TRUE(Becomes([] { return RunningChildren().empty(); })) << "no window outlives its thread";
    }
    if (i == rounds / 3) {
      pages = ResidentPages();
      descriptors = Descriptors();
    }
  }
  EXPECT_LT(ResidentPages(), pages + 4000);
  EXPECT_LE(Descriptors(), descriptors + 2);
  EXPECT_TRUE(Becomes([] { return RunningChildren().empty(); }));
  if (wanted != nullptr) {
    std::printf("%d rounds: pages %zu then %zu, descriptors %zu then %zu\n", rounds, pages, ResidentPages(),
                descriptors, Descriptors());
  }
}

}  // namespace
}  // namespace korvel
