// The host of a machine with a display: the window is a process of its own.
//
// The engine's thread may be ended at any instruction, again and again in one process, and a window that
// belongs to it would stay behind half drawn. So the window lives elsewhere, sees the game through shared
// memory only, and ends when it finds the thread gone. What this side holds of it, one mapping, one
// descriptor and one child, is given back before the next session, by whichever thread begins it.
#pragma once

#include <sys/types.h>

#include "engine/memory/Arena.h"
#include "engine/scene/Host.h"
#include "engine/show/Recorder.h"

namespace korvel {

struct Options;

class WindowHost : public HeadlessHost {
 public:
  /// Gives back what an earlier session left. No window of it is there afterwards.
  void Reset();

  /// Opens the window of a session where there is a display. Without one, and when it cannot be opened, the
  /// game is played unseen.
  void Begin(Arena& arena, const Options& options);

  /// Closes the window and waits until it is gone.
  void End();

  bool NextEvent(InputEvent* event) override;
  void Present(Session& session, bool stopped) override;
  ScreenSize Desktop() override;
  Picture TakePicture(Session& session) override;

 private:
  bool Connect(const char* options);
  bool IsAlive();
  void Reap(bool at_once);

  wire::Shared* shared_ = nullptr;
  Recorder* recorder_ = nullptr;  ///< in the session's arena
  Arena* arena_ = nullptr;
  wire::Writer writer_;
  uint64_t sequence_ = 0;
  uint64_t session_ = 0;
  int descriptor_ = -1;
  pid_t child_ = 0;
  bool seen_ = false;        ///< a display is there: every frame is for it
  bool told_close_ = false;  ///< the window went without being asked
};

}  // namespace korvel
