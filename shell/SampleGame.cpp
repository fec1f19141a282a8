#include "shell/SampleGame.h"

#include <filesystem>

namespace quill {

std::string SampleGame(const std::string& programFolder) {
  namespace fs = std::filesystem;
  const fs::path script =
      (fs::path(programFolder) / "../share/quill/samples/lander/main.vsl").lexically_normal();
  std::error_code ignored;
  return fs::exists(script, ignored) ? script.string() : std::string();
}

}  // namespace quill
