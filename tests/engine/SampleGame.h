// A sample in a folder of its own, with hands on its keys and eyes on its objects.
#pragma once

#include <set>
#include <string>

#include "tests/engine/TestHost.h"

namespace korvel {

class SampleGame {
 public:
  enum Key { kEnter = 13, kEsc = 27, kSpace = 32, kLeft = 37, kUp = 38, kRight = 39, kDown = 40, kP = 80 };

  explicit SampleGame(const std::string& name) {
    std::filesystem::copy(std::string(kSamples) + "/" + name, folder_.path(""),
                          std::filesystem::copy_options::recursive);
    Open();
  }

  /// Begins the game anew, with the files that it left.
  void Open() {
    held_.clear();
    session_ = &folder_.OpenFile("main.vsl");
    session_->machine.budget = int64_t{1} << 40;
  }

  GameInFolder& folder() { return folder_; }
  TestHost& host() { return folder_.host; }
  Session& session() { return *session_; }

  /// Runs one frame; false when the game has ended.
  bool Frame() {
    ++frames_;
    return session_->Frame();
  }
  bool Frames(int count) {
    while (count-- > 0) {
      if (!Frame()) return false;
    }
    return true;
  }
  /// Runs frames until this holds; false when it does not within a minute of the game.
  template <class Condition>
  bool RunUntil(Condition condition) {
    for (int i = 0; i < 3600; ++i) {
      if (condition()) return true;
      if (!Frame()) return false;
    }
    return condition();
  }
  int frames() const { return frames_; }

  double Number(const char* name, int index = 0) {
    const auto* cells = static_cast<const Fixed*>(session_->FindObject(name));
    return cells == nullptr ? -1 : cells[index] / 1024.0;
  }
  void Set(const char* name, int value) { *static_cast<Fixed*>(session_->FindObject(name)) = FromInt(value); }
  template <class Object>
  const Object& Find(const char* name) {
    return *static_cast<const Object*>(session_->FindObject(name));
  }
  bool IsShown(const char* object) { return korvel::IsShown(Find<KorvelHead>(object)); }
  std::string Line(const char* text, int line) { return Find<KorvelTextObject>(text).strings[line]->text; }

  void Send(InputEvent::Kind kind, int code, int x = 0, int y = 0) {
    host().events.push_back({kind, code, x, y});
  }
  void Hold(int key, bool down) {
    if (held_.contains(key) == down) return;
    Send(down ? InputEvent::kKeyDown : InputEvent::kKeyUp, key);
    if (down) {
      held_.insert(key);
    } else {
      held_.erase(key);
    }
  }
  void ReleaseAll() {
    while (!held_.empty()) Hold(*held_.begin(), false);
  }
  /// Presses a key for one frame.
  bool Press(int key) {
    Hold(key, true);
    const bool on = Frame();
    Hold(key, false);
    return Frame() && on;
  }
  void Type(const std::string& text) {
    for (const char character : text) Send(InputEvent::kCharacter, character);
  }

 private:
  GameInFolder folder_;
  Session* session_ = nullptr;
  std::set<int> held_;
  int frames_ = 0;
};

}  // namespace korvel
