#pragma once
#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "GeneratedScript.h"
#include "text/buffer/CrystalTextBuffer.h"

namespace quill::bench {

inline constexpr size_t kMegabyte = 1'000'000;

/// The path of a generated script of so many megabytes, written once.
inline std::string ScriptPath(int64_t megabytes) {
  const auto path =
      std::filesystem::temp_directory_path() / ("quill-bench-script-" + std::to_string(megabytes) + ".vsl");
  if (!std::filesystem::exists(path)) {
    std::ofstream(path, std::ios::binary) << GeneratedScript(static_cast<size_t>(megabytes) * kMegabyte);
  }
  return path.string();
}

/// Loads the script of as many megabytes as the benchmark's first argument says.
inline bool Load(CCrystalTextBuffer& buffer, benchmark::State& state) {
  const IoResult loaded = buffer.LoadFile(ScriptPath(state.range(0)));
  if (!loaded) state.SkipWithError(loaded.Message().c_str());
  return static_cast<bool>(loaded);
}

}  // namespace quill::bench
