// bench_find_in_files FOLDER TEXT: the time that finding a text in a tree of scripts takes.
#include <chrono>
#include <cstdio>

#include "find/FindInFiles.h"

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fprintf(stderr, "usage: bench_find_in_files FOLDER TEXT\n");
    return 2;
  }
  const auto start = std::chrono::steady_clock::now();
  const quill::GrepTotals totals =
      quill::FindInFiles(argv[1], argv[2], [](std::span<const quill::GrepResult>) {});
  const std::chrono::duration<double, std::milli> elapsed = std::chrono::steady_clock::now() - start;
  std::fprintf(stderr, "%s\n", totals.StatusText().c_str());
  if (totals.lines == 0) return 1;
  std::printf("find_in_files\t%.4f\tms\n", elapsed.count());
  return 0;
}
