#include <benchmark/benchmark.h>

#include <cstdlib>

#include "ScriptFile.h"
#include "ScriptGenerator.h"
#include "find/FindInFiles.h"

namespace quill {
namespace {

namespace fs = std::filesystem;

constexpr int kFiles = 2000;
constexpr int kFilesPerFolder = 100;
constexpr int kFilesPerMatch = 100;
constexpr size_t kFileBytes = 22'500;

/// A tree of scripts, written once.
std::string TreePath() {
  const fs::path root = fs::temp_directory_path() / "quill-bench-tree";
  const fs::path complete = root / "complete";
  if (fs::exists(complete)) return root.string();
  const std::string script = bench::GeneratedScript(kFileBytes);
  for (int i = 0; i < kFiles; ++i) {
    const fs::path folder = root / std::to_string(i / kFilesPerFolder);
    if (i % kFilesPerFolder == 0) fs::create_directories(folder);
    std::ofstream file(folder / (std::to_string(i) + ".vsl"), std::ios::binary);
    file << script;
    if (i % kFilesPerMatch == 0) file << "// " << bench::kRareText << "\r\n";
  }
  std::ofstream(complete).close();
  return root.string();
}

void BM_FindInFiles(benchmark::State& state) {
  const std::string tree = TreePath();
  GrepTotals totals;
  for (auto _ : state) totals = FindInFiles(tree, bench::kRareText, [](std::span<const GrepResult>) {});
  state.SetLabel(totals.StatusText());
}
BENCHMARK(BM_FindInFiles)->Unit(benchmark::kMillisecond);

/// The yardstick: another program, its start included.
void BM_RipgrepInFiles(benchmark::State& state) {
  if (std::system("command -v rg >/dev/null") != 0) return state.SkipWithError("ripgrep is not installed");
  const std::string command =
      std::string("rg -j1 -inF ").append(bench::kRareText) + " '" + TreePath() + "' >/dev/null";
  for (auto _ : state) benchmark::DoNotOptimize(std::system(command.c_str()));
}
BENCHMARK(BM_RipgrepInFiles)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
}  // namespace quill
