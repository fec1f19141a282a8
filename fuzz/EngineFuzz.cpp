// Any bytes as a script: they end in errors, or run within a budget.
#include <cstdio>
#include <cstdlib>
#include <string>

#include "engine/run/Session.h"

namespace {

class SilentHost : public korvel::Host {
 public:
  int64_t Now() override { return now_ += 1000; }
  void SleepUntil(int64_t time) override { now_ = time > now_ ? time : now_; }
  korvel::ClockTime Clock() override { return {12, 0, 0}; }
  bool NextEvent(korvel::InputEvent*) override { return false; }
  void Line(std::string_view) override {}
  void Present(korvel::Session&, bool) override {}

 private:
  int64_t now_ = 0;
};

const std::string& Folder() {
  static const std::string folder = [] {
    char name[] = "/tmp/engine-fuzz-XXXXXX";
    return std::string(mkdtemp(name)) + "/";
  }();
  return folder;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static korvel::Arena arena;
  static korvel::OpenDescriptors descriptors;
  const std::string script = Folder() + "main.vsl";
  if (FILE* file = std::fopen(script.c_str(), "wb")) {
    std::fwrite(data, 1, size, file);
    std::fclose(file);
  }
  SilentHost host;
  if (!arena.Reset()) return 0;
  korvel::Session* session = korvel::Session::Make(arena, host, descriptors);
  session->Open(script.c_str());
  session->machine.budget = 20'000;
  for (int i = 0; i < 5 && session->Frame(); ++i) {
  }
  return 0;
}
