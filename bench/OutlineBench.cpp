#include <benchmark/benchmark.h>

#include <algorithm>

#include "ScriptFile.h"
#include "intel/outline/OutlineScanner.h"

namespace quill {
namespace {

void BM_ScanOutline(benchmark::State& state) {
  CCrystalTextBuffer buffer;
  if (!bench::Load(buffer, state)) return;
  size_t elements = 0;
  for (auto _ : state) {
    const Outline outline = ScanOutline(buffer);
    elements = outline.Elements().size();
    benchmark::DoNotOptimize(elements);
  }
  state.counters["elements"] = static_cast<double>(elements);
  state.SetBytesProcessed(state.iterations() * state.range(0) * static_cast<int64_t>(bench::kMegabyte));
}
BENCHMARK(BM_ScanOutline)->ArgName("MB")->Arg(10)->Arg(100)->Unit(benchmark::kMillisecond);

/// The yardstick: counting the line ends of the same bytes.
void BM_CountLines(benchmark::State& state) {
  const std::string text = bench::GeneratedScript(static_cast<size_t>(state.range(0)) * bench::kMegabyte);
  for (auto _ : state) benchmark::DoNotOptimize(std::count(text.begin(), text.end(), '\n'));
  state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(text.size()));
}
BENCHMARK(BM_CountLines)->ArgName("MB")->Arg(10)->Unit(benchmark::kMillisecond);

void BM_ScanOutlineOf5000Lines(benchmark::State& state) {
  const std::string text = bench::GenerateScript({.lines = 5000});
  for (auto _ : state) benchmark::DoNotOptimize(ScanOutlineText(text).Elements().size());
  state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(text.size()));
}
BENCHMARK(BM_ScanOutlineOf5000Lines)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace quill
