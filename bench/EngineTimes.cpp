// bench_engine [ROW...]: times of the engine's machine, one row a line, the median of five runs. The same
// work for other languages is in bench/engine/; scripts/bench-engine prints both.
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "engine/run/Session.h"

namespace {

class Quiet : public korvel::HeadlessHost {
 public:
  void Line(std::string_view) override {}
  void SleepUntil(int64_t) override {}
};

std::filesystem::path folder;
korvel::Arena arena;
korvel::OpenDescriptors descriptors;
Quiet host;

korvel::Session* Open(const std::string& script) {
  std::ofstream(folder / "main.vsl") << script;
  arena.Reset();
  korvel::Session* session = korvel::Session::Make(arena, host, descriptors);
  session->Open((folder / "main.vsl").c_str());
  return session;
}

template <class Work>
double Median(Work&& work) {
  std::vector<double> times;
  for (int i = 0; i < 5; ++i) times.push_back(work());
  std::sort(times.begin(), times.end());
  return times[times.size() / 2];
}

// Of the processor, so that what else the machine does tells little.
double Now() {
  return static_cast<double>(std::clock()) * 1000 / CLOCKS_PER_SEC;
}

// The first frame runs main as a whole.
double FirstFrame(const std::string& script, int breakpoint_line = 0) {
  return Median([&] {
    korvel::Session* session = Open(script);
    if (breakpoint_line > 0)
      session->debugger.SetBreakpoint("main.vsl", static_cast<uint32_t>(breakpoint_line), true);
    const double begin = Now();
    session->Frame();
    return Now() - begin;
  });
}

std::string LoopScript(const char* where) {
  const std::string variables = "var i;\nvar s;\nvar n;\nvar rounds;\n";
  const bool global = std::string(where) == "global";
  return "function elsewhere()\n{\n  print(\"here\");\n}\n" + (global ? variables : "") +
         "function main()\n{\n" + (global ? "" : variables) +
         "  n = 2000000;\n"
         "  for (rounds = 0; rounds < 25; rounds += 1)\n  {\n    i = 0;\n    s = 0;\n"
         "    while (i < n) { s = (s + i % 7 * 3) % 1000000; i = i + 1; }\n  }\n}\n";
}

// As the table has it, except that a sum that grows without end would leave the range of numbers.
std::string PlainLoop() {
  return "function elsewhere()\n{\n  print(\"here\");\n}\n"
         "function main()\n{\n  var i;\n  var s;\n  var n;\n  var rounds;\n  n = 200000;\n"
         "  for (rounds = 0; rounds < 250; rounds += 1)\n  {\n    i = 0;\n    s = 0;\n"
         "    while (i < n) { s = s + i % 7 * 3; i = i + 1; }\n  }\n}\n";
}

constexpr char kFib[] =
    "function fib(n)\n{\n  if (n < 2) return n;\n  return fib(n - 1) + fib(n - 2);\n}\n"
    "function main()\n{\n  fib(32);\n}\n";

constexpr char kArray[] =
    "var a[50000];\nfunction main()\n{\n  var i;\n  var k;\n  for (k = 0; k < 400; k += 1)\n"
    "  {\n    for (i = 0; i < 50000; i += 1) a[i] = a[i] + i;\n    a[0] = 0;\n"
    "    if (k % 20 == 0) for (i = 0; i < 50000; i += 1) a[i] = 0;\n  }\n}\n";

double Resume() {
  korvel::Session* session = Open(
      "function one()\n{\n  while (1) wait(1);\n}\n"
      "function main()\n{\n  var i;\n  for (i = 0; i < 10000; i += 1) fn_start(one);\n}\n");
  session->Frame();
  return Median([&] {
    const double begin = Now();
    for (int i = 0; i < 100; ++i) session->Frame();
    return (Now() - begin) / 100;
  });
}

double OpenLarge() {
  std::string script = "var total;\n";
  for (int i = 0; i < 1000; ++i) {
    const std::string name = "part" + std::to_string(i);
    script += "function " + name + "(a)\n{\n  var n;\n  var sum;\n  for (n = 0; n < a; n += 1)\n  {\n" +
              "    sum += n * 2 + sin(n); // " + name +
              "\n    if (sum > 1000 && total < 5) total = sum;\n  }\n}\n";
  }
  script += "function main()\n{\n}\n";
  return Median([&] {
    std::ofstream(folder / "main.vsl") << script;
    const double begin = Now();
    arena.Reset();
    korvel::Session* session = korvel::Session::Make(arena, host, descriptors);
    session->Open((folder / "main.vsl").c_str());
    if (session->errors.count() > 0) std::puts("the large script has errors");
    return Now() - begin;
  });
}

}  // namespace

int main(int count, char** words) {
  folder = std::filesystem::temp_directory_path() / ("bench-engine-" + std::to_string(getpid()));
  std::filesystem::create_directories(folder);
  const auto row = [&](const char* name, const char* unit, const auto& measure) {
    bool wanted = count == 1;
    for (int i = 1; i < count; ++i) wanted = wanted || std::string(words[i]) == name;
    if (wanted) std::printf("%-15s %9.3f %s\n", name, measure(), unit);
  };
  row("loop", "ms", [] { return FirstFrame(PlainLoop()); });
  row("loop-break", "ms  with a breakpoint elsewhere", [] { return FirstFrame(PlainLoop(), 3); });
  row("loop-globals", "ms  % more in each round", [] { return FirstFrame(LoopScript("global")); });
  row("fib", "ms  of 32", [] { return FirstFrame(kFib); });
  row("array", "ms", [] { return FirstFrame(kArray); });
  row("resume", "ms  a frame of 10,000", Resume);
  row("open", "ms  of 10,000 lines", OpenLarge);
  std::filesystem::remove_all(folder);
}
