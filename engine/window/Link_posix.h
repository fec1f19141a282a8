// The window's end of the memory that it shares with the engine.
#pragma once

#include "engine/scene/Wire.h"

namespace korvel::window {

class Link {
 public:
  /// Maps the memory that a process holds at one of its descriptors. False when it is not, or not any more,
  /// that of this session.
  bool Open(int process, int descriptor, uint64_t session);

  /// True while the thread that plays the game is there and has not asked for the end.
  bool IsWanted() const;

  wire::Shared* shared() const { return shared_; }

 private:
  wire::Shared* shared_ = nullptr;
};

/// Lets this process be asked to end when the thread that started it ends; AskedToEnd tells.
void EndWithParent();
bool AskedToEnd();

}  // namespace korvel::window
