// generate_script FOLDER: writes the scripts that the benchmarks read.
// generate_script --tree FOLDER: writes a tree of many scripts to search in.
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>

#include "bench/ScriptGenerator.h"

namespace {

namespace fs = std::filesystem;
using quill::bench::GenerateLongLine;
using quill::bench::GenerateScript;

constexpr int64_t kLongLineBytes = 20'000'000;
constexpr int kTreeFiles = 20'000;
constexpr int kFilesPerFolder = 100;
constexpr int kFilesPerRareText = 200;
constexpr int64_t kTreeFileLines = 640;

bool WriteFile(const fs::path& path, const std::string& text) {
  std::ofstream file(path, std::ios::binary);
  file.write(text.data(), static_cast<std::streamsize>(text.size()));
  file.close();
  if (!file) std::fprintf(stderr, "generate_script: cannot write %s\n", path.c_str());
  return file.good();
}

bool WriteScripts(const fs::path& folder) {
  fs::create_directories(folder);
  return WriteFile(folder / "200kb.vsl", GenerateScript({.lines = 6'000})) &&
         WriteFile(folder / "10mb.vsl", GenerateScript({.lines = 300'000})) &&
         WriteFile(folder / "10mb_open.vsl", GenerateScript({.lines = 300'000, .blockComments = false})) &&
         WriteFile(folder / "100mb.vsl", GenerateScript({.lines = 3'000'000})) &&
         WriteFile(folder / "long_line.vsl", GenerateLongLine(kLongLineBytes));
}

bool WriteTree(const fs::path& root) {
  for (int i = 0; i < kTreeFiles; ++i) {
    const fs::path folder = root / ("folder" + std::to_string(i / kFilesPerFolder));
    if (i % kFilesPerFolder == 0) fs::create_directories(folder);
    std::string text = GenerateScript({.lines = kTreeFileLines, .seed = static_cast<uint32_t>(i)});
    if (i % kFilesPerRareText == 0) text.append("// ").append(quill::bench::kRareText).append("\r\n");
    if (!WriteFile(folder / ("script" + std::to_string(i) + ".vsl"), text)) return false;
  }
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 2) return WriteScripts(argv[1]) ? 0 : 1;
  if (argc == 3 && std::strcmp(argv[1], "--tree") == 0) return WriteTree(argv[2]) ? 0 : 1;
  std::fprintf(stderr, "usage: generate_script [--tree] FOLDER\n");
  return 2;
}
