// run_engine SCRIPT [FRAMES]: a plain host of the engine. It plays a script until the game or the frames end,
// prints its lines, then its error list, and ends with 1 when there were errors.
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

#include "engine/korvel.h"

namespace {

void TakeLine(const char* line) {
  std::puts(line);
  std::fflush(stdout);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) {
    std::fputs("usage: run_engine SCRIPT [FRAMES]\n", stderr);
    return 2;
  }
  const std::string script = argv[1];
  const size_t slash = script.find_last_of('/');
  if (slash != std::string::npos && chdir(script.substr(0, slash).c_str()) != 0) {
    std::fprintf(stderr, "run_engine: there is no folder of %s\n", argv[1]);
    return 2;
  }
  const long frames = argc > 2 ? std::atol(argv[2]) : -1;
  engine_setoutput(TakeLine);
  if (engine_open((script.substr(slash + 1) + " -wnd -os -om").c_str(), nullptr) == nullptr) return 2;
  for (long frame = 0; frames < 0 || frame < frames; ++frame) {
    if (engine_frame() == 0) break;
  }
  engine_close();
  std::fflush(stdout);

  bool wrong = false;
  std::ifstream list("OUIETERR.TXT");
  for (std::string line; std::getline(list, line);) {
    if (line.empty() || line[0] == '<') continue;
    std::fprintf(stderr, "%s\n", line.c_str());
    wrong = true;
  }
  return wrong ? 1 : 0;
}
