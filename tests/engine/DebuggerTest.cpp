#include <atomic>
#include <thread>

#include "tests/engine/TestHost.h"

namespace korvel {
namespace {

constexpr char kGame[] =
    "var n;\n"           // 1
    "function add(a)\n"  // 2
    "{\n"                // 3
    "  var sum;\n"       // 4
    "\n"                 // 5
    "  sum = a + 1;\n"   // 6
    "  return sum;\n"    // 7
    "}\n"                // 8
    "function main()\n"  // 9
    "{\n"                // 10
    "  n = 1;\n"         // 11
    "  while (1)\n"      // 12
    "  {\n"              // 13
    "    n = add(n);\n"  // 14
    "    wait(1);\n"     // 15
    "  }\n"              // 16
    "}\n";

Fixed& Number(Session& session, const char* name) {
  return *static_cast<Fixed*>(session.FindObject(name));
}

// Frames until the script stops; the line where it does, 0 when it runs on.
uint32_t LineOfStop(Session& session, int frames = 5) {
  for (int i = 0; i < frames && session.Frame(); ++i) {
    if (session.debugger.stopped()) return session.debugger.position().line;
  }
  return 0;
}

TEST(Debugger, StopsAtBreakpointsStepsAndGoesOn) {
  GameInFolder game;
  Session& session = game.Open(kGame);
  EXPECT_FALSE(session.debugger.SetBreakpoint("other.vsl", 1, true));
  EXPECT_FALSE(session.debugger.SetBreakpoint("main.vsl", 17, true));
  EXPECT_TRUE(session.debugger.SetBreakpoint("MAIN.VSL", 5, true));  // moves on to line 6
  EXPECT_EQ(LineOfStop(session), 6u);
  EXPECT_EQ(Number(session, "a"), kOne);
  EXPECT_EQ(Number(session, "debug_mode"), kOne);
  EXPECT_TRUE(session.Frame());
  EXPECT_EQ(session.debugger.position().line, 6u) << "a frame goes by, the script does not";

  Number(session, "a") = 41 * kOne;
  std::vector<uint32_t> lines;
  for (int i = 0; i < 6; ++i) {
    Number(session, "debug_mode") = 2 * kOne;
    lines.push_back(LineOfStop(session));
    if (i == 0) {
      EXPECT_EQ(Number(session, "sum"), 42 * kOne);
      EXPECT_EQ(Number(session, "debug_result"), 42 * kOne);
    }
  }
  // Out of the function, over the wait, and into the breakpoint on the way.
  EXPECT_EQ(lines, (std::vector<uint32_t>{7, 15, 12, 14, 6, 7}));

  Number(session, "debug_mode") = 0;
  EXPECT_EQ(LineOfStop(session), 6u);
  EXPECT_TRUE(session.debugger.SetBreakpoint("main.vsl", 6, false));
  Number(session, "debug_mode") = 0;
  EXPECT_EQ(LineOfStop(session), 0u);
  EXPECT_EQ(session.debugger.position().file, nullptr);
  EXPECT_TRUE(session.debugger.SetBreakpoint("main.vsl", 14, true));
  EXPECT_EQ(LineOfStop(session), 14u);
  Number(session, "debug_mode") = -kOne;
  EXPECT_EQ(LineOfStop(session), 0u) << "breakpoints are ignored";
}

TEST(Debugger, BreaksAnEndlessLoopFromAnotherThread) {
  GameInFolder game;
  Session& session = game.Open("var n;\nfunction main()\n{\n  while (1)\n  {\n    n += 0;\n  }\n}\n");
  Fixed* mode = &Number(session, "debug_mode");
  std::thread user([mode] {
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    __atomic_store_n(mode, kOne, __ATOMIC_RELAXED);
  });
  EXPECT_TRUE(session.Frame());
  user.join();
  EXPECT_TRUE(session.debugger.stopped());
  const uint32_t line = session.debugger.position().line;
  EXPECT_TRUE(line == 4 || line == 6) << line;
}

// The results that debug_result tells at each stop, then the lines printed.
std::string ResultsAt(uint32_t line, const std::string& script) {
  GameInFolder game;
  Session& session = game.Open(script);
  EXPECT_TRUE(session.debugger.SetBreakpoint("main.vsl", line, true));
  std::string results;
  while (LineOfStop(session, 3) != 0 && results.size() < 200) {
    EXPECT_EQ(session.debugger.position().line, line);
    char number[40];
    results += std::string(number, WriteShort(number, Number(session, "debug_result"))) + " ";
    Number(session, "debug_mode") = 0;
  }
  return results + game.host.output;
}

// The script runs freely between the stops: what was assigned or tested last is known there all the same.
TEST(Debugger, TellsTheLastResultAtABreakpoint) {
  const std::string loop =
      "var total;\n"                        // 1
      "function add(a)\n"                   // 2
      "{\n"                                 // 3
      "  total = total + a * 2;\n"          // 4
      "}\n"                                 // 5
      "function main()\n"                   // 6
      "{\n"                                 // 7
      "  var i;\n"                          // 8
      "  var both;\n"                       // 9
      "  while (i < 3)\n"                   // 10
      "  {\n"                               // 11
      "    both = i > 0 && i != 2;\n"       // 12
      "    add(i);\n"                       // 13
      "    i = i + 1;\n"                    // 14
      "  }\n"                               // 15
      "  if (total == 6)\n"                 // 16
      "    print_num(\"total\", total);\n"  // 17
      "}\n";
  EXPECT_EQ(ResultsAt(4, loop), "0 1 0 total: 6.000\n") << "of the line that calls";
  EXPECT_EQ(ResultsAt(10, loop), "0 1 2 3 total: 6.000\n") << "of the line before, in the middle of a loop";
  EXPECT_EQ(ResultsAt(12, loop), "1 1 1 total: 6.000\n") << "of the condition";
  EXPECT_EQ(ResultsAt(13, loop), "0 1 0 total: 6.000\n") << "of && on both of its ways";
  EXPECT_EQ(ResultsAt(14, loop), "0 2 6 total: 6.000\n") << "of the function that was called";
  EXPECT_EQ(ResultsAt(16, loop), "0 total: 6.000\n") << "of the condition that no longer holds";
  EXPECT_EQ(ResultsAt(17, loop), "1 total: 6.000\n") << "of a test that leads nowhere else";
}

// Calls of all copies as a debugger's view would show them, innermost first, with the numbers that they hold.
std::string CallsOf(Session& session) {
  std::string text;
  session.scheduler.ForEach([&](Task& task) {
    CallStack calls(session.program, task, &task == session.debugger.stopped_task());
    for (Call call; calls.Next(&call);) {
      text += std::string(call.function->name->text) + ":" + std::to_string(call.place.line);
      for (uint32_t i = 0; i < call.function->local_count; ++i) {
        const Local& local = call.function->locals[i];
        text += std::string(" ") + local.name->text + "=";
        text += std::to_string(*static_cast<Fixed*>(FindValue(call, local)) / kOne);
      }
      text += "; ";
    }
    text += "\n";
  });
  return text;
}

TEST(Debugger, ReachesTheCallsOfAllCopiesAndTheirVariables) {
  GameInFolder game;
  Session& session = game.Open(
      "function inner(a)\n"        // 1
      "{\n"                        // 2
      "  var twice[3];\n"          // 3
      "  twice[0] = a * 2;\n"      // 4
      "  wait(1);\n"               // 5
      "  return twice[0];\n"       // 6
      "}\n"                        // 7
      "function other()\n"         // 8
      "{\n"                        // 9
      "  var n;\n"                 // 10
      "  n = 5;\n"                 // 11
      "  n = n + inner(n + 2);\n"  // 12
      "  print_num(\"n\", n);\n"   // 13
      "}\n"                        // 14
      "function main()\n"          // 15
      "{\n"                        // 16
      "  fn_start(other);\n"       // 17
      "  inner(1);\n"              // 18
      "}\n");
  EXPECT_TRUE(session.debugger.SetBreakpoint("main.vsl", 6, true));
  EXPECT_EQ(LineOfStop(session), 6u);
  EXPECT_EQ(CallsOf(session),
            "inner:6 a=1 twice=2; main:18; \n"
            "inner:5 a=7 twice=14; other:12 n=5; \n");
}

// Nothing in this game jumps back or calls: it is when a function begins, and behind a command, that somebody
// who breaks is seen.
TEST(Debugger, BreaksWhatRunsStraightOn) {
  GameInFolder game;
  Session& session = game.Open(
      "var n;\nfunction each()\n{\n  n = n + 1;\n  print(\"x\");\n  n = n + 1;\n}\n"
      "function main()\n{\n  fn_each_frame(each);\n}\n");
  EXPECT_TRUE(session.Frame());
  Number(session, "debug_mode") = kOne;
  EXPECT_EQ(LineOfStop(session), 4u);
  Number(session, "debug_mode") = 0;
  game.host.on_line = [&] { Number(session, "debug_mode") = kOne; };
  EXPECT_EQ(LineOfStop(session), 6u);
}

// As an editor does: the game runs on a thread of its own, and nothing is locked.
TEST(Debugger, IsUsedFromAnotherThread) {
  GameInFolder game;
  Session& session = game.Open(kGame);
  std::atomic<bool> done = false;
  std::thread engine([&] {
    while (!done && session.Frame()) {
    }
  });
  Fixed* mode = &Number(session, "debug_mode");
  const auto read = [&](const char* name) {
    return __atomic_load_n(static_cast<Fixed*>(session.FindObject(name)), __ATOMIC_RELAXED);
  };
  const auto until = std::chrono::steady_clock::now() + std::chrono::seconds(30);
  int stops = 0;
  for (Fixed last = 0; stops < 100 && std::chrono::steady_clock::now() < until; ++stops) {
    EXPECT_TRUE(session.debugger.SetBreakpoint("main.vsl", 6, stops % 3 != 0));
    if (stops % 3 == 0) __atomic_store_n(mode, kOne, __ATOMIC_RELEASE);
    while (!session.debugger.stopped() && std::chrono::steady_clock::now() < until) std::this_thread::yield();
    const Place place = session.debugger.position();
    EXPECT_TRUE(place.line >= 6 && place.line <= 15) << place.line;
    EXPECT_GE(read("n"), last);
    last = read("n");
    if (place.line == 6) {
      EXPECT_EQ(read("a"), last);
    }
    __atomic_store_n(mode, stops % 2 * 2 * kOne, __ATOMIC_RELEASE);
    while (session.debugger.stopped() && read("debug_mode") != kOne &&
           std::chrono::steady_clock::now() < until)
      std::this_thread::yield();
  }
  done = true;
  engine.join();
  EXPECT_EQ(stops, 100);
}

TEST(Debugger, FindsWhatAWatchAsksFor) {
  GameInFolder game;
  game.Write("ship.dat", "x");
  Session& session = game.Open(
      "entity* ship;\nvar list[4] = 1, 2, 3, 4;\npanel gauge { alpha = 60; }\nstring* none;\n"
      "function fly() { wait(100); }\n"
      "function main() { ship = ent_create(\"ship.dat\", list, fly); ship.skill3 = 5; wait(100); }\n");
  session.Frame();
  const auto* pointer = static_cast<KorvelEntityPointerObject*>(session.FindObject("SHIP"));
  ASSERT_NE(pointer, nullptr);
  EXPECT_EQ(session.KindOfAddress(pointer), kKorvelEntityPointer);
  EXPECT_EQ(pointer->target->y, 2 * kOne);
  EXPECT_EQ(pointer->target->skills[2], 5 * kOne);
  EXPECT_EQ(static_cast<Fixed*>(session.FindObject("list"))[3], 4 * kOne);
  EXPECT_EQ(session.KindOfAddress(session.FindObject("list")), 0);
  EXPECT_EQ(static_cast<KorvelPanelObject*>(session.FindObject("gauge"))->alpha, 60 * kOne);
  EXPECT_EQ(session.KindOfAddress(session.FindObject("gauge")), kKorvelPanel);
  EXPECT_EQ(session.FindObject("none"), nullptr);
  EXPECT_EQ(session.FindObject("unknown"), nullptr);
  EXPECT_NE(session.FindFunction("Fly"), nullptr);
}

}  // namespace
}  // namespace korvel
