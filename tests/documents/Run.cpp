// A piece at work.
#include <regex>

#include "tests/documents/Sample.h"
#include "tests/engine/TestHost.h"

namespace documents {
namespace {

constexpr int64_t kBudget = 50'000'000;  ///< instructions

/// A picture of 8 x 8 white pixels.
std::string SmallBitmap() {
  constexpr int kSide = 8;
  std::string bytes("BM\xF6\0\0\0\0\0\0\0\x36\0\0\0\x28\0\0\0\x08\0\0\0\x08\0\0\0\x01\0\x18\0\0\0\0\0", 34);
  bytes.resize(54);
  return bytes + std::string(3 * kSide * kSide, '\xFF');
}

/// A tenth of a second of silence.
std::string SmallWave() {
  constexpr int kSamples = 1102;
  std::string bytes(
      "RIFF\0\0\0\0WAVEfmt \x10\0\0\0\x01\0\x01\0\x11\x2B\0\0\x22\x56\0\0\x02\0\x10\0data\x9C\x08\0\0", 44);
  bytes[4] = static_cast<char>((36 + 2 * kSamples) & 255);
  bytes[5] = static_cast<char>((36 + 2 * kSamples) >> 8);
  return bytes + std::string(2 * kSamples, '\0');
}

std::string Lower(std::string text) {
  for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return text;
}

void WriteFiles(const korvel::GameInFolder& game, const std::string& script) {
  static const std::regex kFile("[\"<]([A-Za-z0-9_]+\\.(bmp|wav|ogg|lev|vsl|h))[\">]", std::regex::icase);
  for (std::sregex_iterator file(script.begin(), script.end(), kFile), end; file != end; ++file) {
    const std::string name = (*file)[1];
    const std::string ending = Lower((*file)[2]);
    if (name.starts_with("missing")) continue;
    game.Write(name, ending == "bmp"                    ? SmallBitmap()
                     : ending == "lev"                  ? "# a level\nrock sample_actor.bmp 100 0 0 0 0 0 1\n"
                     : ending == "vsl" || ending == "h" ? "// nothing\n"
                                                        : SmallWave());
  }
  game.Write("sample_actor.bmp", SmallBitmap());
}

void PressKeys(korvel::TestHost& host, const std::vector<int>& keys, int frame) {
  const int index = frame / 10 - 1;
  if (index < 0 || index >= static_cast<int>(keys.size())) return;
  if (frame % 10 == 0) host.events.push_back({korvel::InputEvent::kKeyDown, keys[index], 0, 0});
  if (frame % 10 == 5) host.events.push_back({korvel::InputEvent::kKeyUp, keys[index], 0, 0});
}

}  // namespace

Seen RunSample(const Sample& sample, const std::string& stage) {
  const std::string script = WholeScript(sample, stage);
  korvel::GameInFolder game;
  WriteFiles(game, script);
  korvel::Session& session = game.Open(script);
  session.machine.budget = kBudget;
  for (int frame = 1; frame <= sample.frames; ++frame) {
    PressKeys(game.host, sample.keys, frame);
    if (!session.Frame()) break;
  }
  Seen seen{game.host.output, game.Errors()};
  if (session.machine.budget <= 0) seen.errors += "it never waits\n";
  return seen;
}

std::string Verdict(const Sample& sample, const std::string& stage) {
  const Seen seen = RunSample(sample, stage);
  std::string verdict;
  if (seen.errors != sample.errors.value_or("")) verdict += "errors:\n" + seen.errors;
  if (sample.output && seen.output != *sample.output) verdict += "output:\n" + seen.output;
  if (!verdict.empty()) verdict = sample.place + "\n" + verdict;
  return verdict;
}

}  // namespace documents
