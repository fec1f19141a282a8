// A host for tests: its clock goes on by a sixtieth of a second a frame, its keys come from a list, its lines
// are kept.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <deque>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "engine/run/Session.h"

namespace korvel {

class TestHost : public Host {
 public:
  int64_t Now() override { return now_; }
  void SleepUntil(int64_t time) override { now_ = std::max(now_, time); }
  ClockTime Clock() override { return {21, 45, 30}; }
  bool NextEvent(InputEvent* event) override {
    if (events.empty()) return false;
    *event = events.front();
    events.pop_front();
    return true;
  }
  void Line(std::string_view line) override {
    output += std::string(line) + "\n";
    if (on_line) on_line();
  }
  void Present(Session&, bool stopped) override { (stopped ? stopped_frames : frames) += 1; }

  std::deque<InputEvent> events;
  std::string output;
  std::function<void()> on_line;  ///< behind each line
  int frames = 0;
  int stopped_frames = 0;

 private:
  int64_t now_ = 1'000'000;
};

/// A folder of its own for a game, gone afterwards.
class GameInFolder {
 public:
  GameInFolder() {
    static int count = 0;
    folder_ = std::filesystem::temp_directory_path() /
              ("engine-test-" + std::to_string(getpid()) + "-" + std::to_string(++count));
    std::filesystem::create_directories(folder_);
  }
  ~GameInFolder() { std::filesystem::remove_all(folder_); }
  GameInFolder(const GameInFolder&) = delete;

  void Write(const std::string& name, const std::string& text) const {
    std::filesystem::create_directories((folder_ / name).parent_path());
    std::ofstream(folder_ / name, std::ios::binary) << text;
  }
  std::string Read(const std::string& name) const {
    std::ifstream file(folder_ / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  std::string path(const std::string& name) const { return (folder_ / name).string(); }

  /// The error list without its numbers.
  std::string Errors() const {
    std::ifstream file(folder_ / "OUIETERR.TXT");
    std::string all;
    for (std::string line; std::getline(file, line);) {
      if (!line.empty() && line[0] != '<') all += line + "\n";
    }
    return all;
  }

  /// A session of its own with this script; the one before is dropped as if its thread had been ended.
  Session& Open(const std::string& script) {
    Write("main.vsl", script);
    return OpenFile("main.vsl");
  }
  Session& OpenFile(const std::string& name, const std::string& options = "-os") {
    static Arena arena;
    static OpenDescriptors descriptors;
    host = TestHost();
    EXPECT_TRUE(arena.Reset());
    Session* session = Session::Make(arena, host, descriptors);
    session->Open((path(name) + " " + options).c_str());
    return *session;
  }

  /// Runs a script for some frames at most; what it printed.
  std::string Run(const std::string& script, int frames = 200) {
    Session& session = Open(script);
    session.machine.budget = 50'000'000;
    for (int i = 0; i < frames && session.Frame(); ++i) {
    }
    return host.output;
  }

  TestHost host;

 private:
  std::filesystem::path folder_;
};

}  // namespace korvel
