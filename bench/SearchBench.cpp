#include <benchmark/benchmark.h>

#include <cstdlib>

#include "ScriptFile.h"
#include "ScriptGenerator.h"
#include "text/search/ReplaceAll.h"
#include "text/search/Search.h"
#include "text/search/SearchMatches.h"

namespace quill {
namespace {

using bench::kAbsentText;
using bench::kCommonWord;
using bench::Load;
using bench::ScriptPath;

void BM_SearchAbsentText(benchmark::State& state) {
  CCrystalTextBuffer buffer;
  if (!Load(buffer, state)) return;
  const TextSearch search(kAbsentText, static_cast<uint32_t>(state.range(1)));
  TextPosition found;
  for (auto _ : state) benchmark::DoNotOptimize(search.FindInText(buffer, {}, false, found));
  state.SetBytesProcessed(state.iterations() * state.range(0) * static_cast<int64_t>(bench::kMegabyte));
}
BENCHMARK(BM_SearchAbsentText)
    ->ArgNames({"MB", "flags"})
    ->Args({10, 0})
    ->Args({10, search_flag::kMatchCase})
    ->Args({10, search_flag::kWholeWord})
    ->Unit(benchmark::kMillisecond);

/// The yardstick: another program, its start included.
void BM_GrepAbsentText(benchmark::State& state) {
  const std::string command = std::string("LC_ALL=C grep -ciF ").append(kAbsentText) + " '" +
                              ScriptPath(state.range(0)) + "' >/dev/null";
  for (auto _ : state) benchmark::DoNotOptimize(std::system(command.c_str()));
}
BENCHMARK(BM_GrepAbsentText)->ArgName("MB")->Arg(10)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_CountMatches(benchmark::State& state) {
  CCrystalTextBuffer buffer;
  if (!Load(buffer, state)) return;
  MatchCounter counter(buffer);
  for (auto _ : state) {
    counter.Start(TextSearch(kCommonWord, 0));
    counter.Advance(buffer.LineCount());
  }
  state.counters["matches"] = static_cast<double>(counter.Count());
}
BENCHMARK(BM_CountMatches)->ArgName("MB")->Arg(10)->Unit(benchmark::kMillisecond);

/// About 100,000 matches in 10 MB; `undo` measures taking them back.
void BM_ReplaceAll(benchmark::State& state) {
  CCrystalTextBuffer buffer;
  if (!Load(buffer, state)) return;
  const TextSearch search(kCommonWord, 0);
  TextPosition at;
  if (!search.FindInText(buffer, {}, false, at)) return state.SkipWithError("nothing to replace");
  const TextPosition first = at;
  const bool undo = state.range(1) != 0;
  int64_t count = 0;
  for (auto _ : state) {
    if (undo) state.PauseTiming();
    count = ReplaceAllFrom(buffer, nullptr, search, "new_velocity", first, buffer.EndOfText()).count;
    undo ? state.ResumeTiming() : state.PauseTiming();
    buffer.Undo(at);
    if (!undo) state.ResumeTiming();
  }
  state.counters["matches"] = static_cast<double>(count);
}
BENCHMARK(BM_ReplaceAll)
    ->ArgNames({"MB", "undo"})
    ->Args({10, 0})
    ->Args({10, 1})
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace quill
