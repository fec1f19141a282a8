#include <benchmark/benchmark.h>

#include <memory>
#include <string>

#include "intel/outline/OutlineScanner.h"
#include "intel/vocabulary/CommandDatabase.h"
#include "intel/writing/Completion.h"

namespace quill {
namespace {

constexpr int kNames = 20000;

Outline ManyNames() {
  std::string script;
  for (int i = 0; i < kNames; ++i) {
    const int scattered = i * 7919 % kNames;
    script += (i % 3 == 0 ? "function move_" : "var ship_speed_") + std::to_string(scattered) +
              (i % 3 == 0 ? "()\n" : ";\n");
  }
  return ScanOutlineText(script);
}

void BM_OpenCompletion(benchmark::State& state) {
  const Outline outline = ManyNames();
  const CommandDatabase commands;
  for (auto _ : state) {
    const CompletionList list(std::make_shared<const CompletionNames>(outline, commands, NameSet()), "s");
    benchmark::DoNotOptimize(list.Count());
  }
}
BENCHMARK(BM_OpenCompletion)->Unit(benchmark::kMillisecond);

/// One key more, and one key back: the list is made from all names again.
void BM_NarrowCompletion(benchmark::State& state) {
  const auto names = std::make_shared<const CompletionNames>(ManyNames(), CommandDatabase(), NameSet());
  CompletionList list(names, "s");
  const bool back = state.range(0) != 0;
  for (auto _ : state) {
    state.PauseTiming();
    list.Narrow(back ? "ss" : "s");
    state.ResumeTiming();
    list.Narrow(back ? "s" : "ss");
  }
}
BENCHMARK(BM_NarrowCompletion)->ArgName("back")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace quill
