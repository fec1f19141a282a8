#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>

#include "ScriptFile.h"
#include "text/buffer/CrystalTextBuffer.h"

namespace quill {
namespace {

using bench::kMegabyte;
using bench::Load;
using bench::ScriptPath;

double ResidentMegabytes() {
  long pages = 0;
  std::FILE* file = std::fopen("/proc/self/statm", "r");
  if (file == nullptr || std::fscanf(file, "%*d %ld", &pages) != 1) pages = 0;
  if (file != nullptr) std::fclose(file);
  return static_cast<double>(pages) * static_cast<double>(sysconf(_SC_PAGESIZE)) / kMegabyte;
}

void BM_Load(benchmark::State& state) {
  ScriptPath(state.range(0));
  for (auto _ : state) {
    const double before = ResidentMegabytes();
    CCrystalTextBuffer buffer;
    if (!Load(buffer, state)) return;
    state.counters["MB"] = ResidentMegabytes() - before;
    state.counters["lines"] = buffer.LineCount();
    state.PauseTiming();  // freeing the text is not loading it
    buffer.ClearBuffer();
    state.ResumeTiming();
  }
}
BENCHMARK(BM_Load)->Arg(10)->Arg(100)->Unit(benchmark::kMillisecond);

void BM_Save(benchmark::State& state) {
  CCrystalTextBuffer buffer;
  if (!Load(buffer, state)) return;
  const std::string path = ScriptPath(state.range(0)) + ".saved";
  for (auto _ : state) {
    if (const IoResult saved = buffer.SaveFile(path); !saved) state.SkipWithError(saved.Message().c_str());
  }
  std::filesystem::remove(path);
}
BENCHMARK(BM_Save)->Arg(10)->Arg(100)->Unit(benchmark::kMillisecond);

void BM_InsertLineInTheMiddle(benchmark::State& state) {
  CCrystalTextBuffer buffer;
  if (!Load(buffer, state)) return;
  const int32_t middle = buffer.LineCount() / 2;
  TextPosition end;
  for (auto _ : state) buffer.InsertTextAt(nullptr, {middle, 0}, "\twait(1);\r\n", end);
}
BENCHMARK(BM_InsertLineInTheMiddle)->Arg(10)->Arg(100);

void BM_UndoAndRedoOfOneHundredThousandRecords(benchmark::State& state) {
  CCrystalTextBuffer buffer;
  if (!Load(buffer, state)) return;
  TextPosition at;
  buffer.OpenUndoGroup();
  for (int32_t line = 0; line < 100000; ++line) buffer.InsertTextAt(nullptr, {line, 0}, "//", at);
  buffer.CloseUndoGroup();
  for (auto _ : state) {
    buffer.Undo(at);
    buffer.Redo(at);
  }
}
BENCHMARK(BM_UndoAndRedoOfOneHundredThousandRecords)->Arg(10)->Unit(benchmark::kMillisecond);

void BM_ReplaceOneHundredThousandLinesAndUndo(benchmark::State& state) {
  CCrystalTextBuffer buffer;
  if (!Load(buffer, state)) return;
  TextPosition at;
  for (auto _ : state) {
    buffer.OpenUndoGroup();
    buffer.DeleteRange(nullptr, 100, 0, 100100, 0);
    buffer.InsertTextAt(nullptr, {100, 0}, "x", at);
    buffer.CloseUndoGroup();
    buffer.Undo(at);
  }
}
BENCHMARK(BM_ReplaceOneHundredThousandLinesAndUndo)->Arg(10)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace quill
