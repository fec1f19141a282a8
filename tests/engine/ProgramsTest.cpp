// Small programs beside what they print. A line "//@ frames N" bounds a run, "//@ key FRAME down|up CODE"
// presses a key. A mismatch leaves a file ending in .new: look at it, then rename it.
#include <gtest/gtest.h>
#include <unistd.h>

#include <sstream>

#include "tests/engine/TestHost.h"

namespace korvel {
namespace {

std::string ReadAll(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

struct Script {
  int frames = 60;
  std::multimap<int, InputEvent> events;
};

Script ReadDirectives(const std::string& text) {
  Script script;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    std::istringstream words(line);
    std::string mark, what, way;
    words >> mark >> what;
    if (mark != "//@") continue;
    int frame = 0, code = 0;
    if (what == "frames") words >> script.frames;
    if (what == "key" && words >> frame >> way >> code) {
      const auto kind = way == "down" ? InputEvent::kKeyDown
                        : way == "up" ? InputEvent::kKeyUp
                                      : InputEvent::kCharacter;
      script.events.insert({frame, {kind, code, 0, 0}});
    }
  }
  return script;
}

TEST(Programs, PrintWhatStandsBesideThem) {
  int count = 0;
  for (const auto& entry : std::filesystem::directory_iterator(std::string(kEnginePrograms))) {
    if (entry.path().extension() != ".vsl") continue;
    ++count;
    const std::string text = ReadAll(entry.path());
    const Script script = ReadDirectives(text);
    GameInFolder game;
    Session& session = game.Open(text);
    session.machine.budget = 100'000'000;
    for (int frame = 1; frame <= script.frames; ++frame) {
      const auto [first, last] = script.events.equal_range(frame);
      for (auto event = first; event != last; ++event) game.host.events.push_back(event->second);
      if (!session.Frame()) break;
    }
    const std::string errors = game.Errors();
    const std::string seen = game.host.output + (errors.empty() ? "" : "-- errors\n" + errors);
    std::filesystem::path expected = entry.path();
    expected.replace_extension(".out");
    if (seen != ReadAll(expected)) std::ofstream(expected.string() + ".new", std::ios::binary) << seen;
    EXPECT_EQ(seen, ReadAll(expected)) << entry.path();
  }
  EXPECT_GE(count, 8);
}

// What a script prints and does wrong when each stop goes on with this value of debug_mode.
std::string Play(const std::string& text, Fixed mode) {
  GameInFolder game;
  Session& session = game.Open(text);
  session.machine.budget = 100'000'000;
  const auto go_on = [&] {
    if (void* cell = session.FindObject("debug_mode")) *static_cast<Fixed*>(cell) = mode;
  };
  go_on();
  while (session.Frame() && game.host.frames < 30) {
    if (session.debugger.stopped()) go_on();
  }
  return game.host.output + game.Errors();
}

// Stepping runs each instruction by itself, so it is the slow twin of those that are joined.
TEST(Programs, PrintTheSameStepByStep) {
  for (const char* name :
       {"defines", "faults", "flow", "joined", "numbers", "objects", "pointers", "vectors"}) {
    const std::string text = ReadAll(std::string(kEnginePrograms) + "/" + name + ".vsl");
    const std::string printed = Play(text, 0);
    EXPECT_NE(printed, "") << name;
    EXPECT_EQ(Play(text, 2 * kOne), printed) << name;
  }
}

}  // namespace
}  // namespace korvel
