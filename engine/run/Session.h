// One run of a game, from its command line to its end. Everything that it knows is in one arena.
#pragma once

#include <csetjmp>

#include "engine/code/Command.h"
#include "engine/compile/Compiler.h"
#include "engine/files/GameFolder.h"
#include "engine/objects/Members.h"
#include "engine/objects/World.h"
#include "engine/run/CallStack.h"
#include "engine/run/Debugger.h"
#include "engine/run/Input.h"
#include "engine/run/Machine.h"
#include "engine/run/Task.h"
#include "engine/scene/Host.h"
#include "engine/scene/Scene.h"
#include "engine/scene/Sounds.h"

namespace korvel {

/// What the command line asks for.
struct Options {
  bool no_sound = false;     ///< -os
  bool no_music = false;     ///< -om
  bool no_joystick = false;  ///< -nj
  bool no_mouse = false;     ///< -nm
  bool in_window = false;    ///< -wnd
};

class Session {
 public:
  /// A session in an arena that is empty; it goes when the arena is emptied.
  static Session* Make(Arena& arena, Host& host, OpenDescriptors& descriptors);

  /// Reads and compiles the script of a command line. Errors are in the error file, and end the game in its
  /// first frame.
  void Open(const char* command_line);

  /// Runs one frame. False when the game has ended.
  bool Frame();

  /// Tells a fault of the running instruction.
  void Fault(const char* sentence);
  void Fault(std::string_view sentence);
  /// The place of the running instruction.
  Place CurrentPlace() const;

  void SetMe(KorvelHead* me, KorvelHead* you) {
    __atomic_store_n(&me_cell.target, me, __ATOMIC_RELAXED);
    __atomic_store_n(&you_cell.target, you, __ATOMIC_RELAXED);
  }

  const Command& command(int32_t index) const { return *commands_[index]; }
  const Signature& signature(int32_t index) const { return signatures_[index]; }

  /// Begins a copy that runs at once, before the running one goes on. For commands that may switch.
  bool StartFunction(Function& function, KorvelHead* me, KorvelHead* you, Value first_argument = 0);
  /// Lets the running copy wait. False, with a fault, where none is allowed.
  bool Suspend(Task::State state, int64_t wake);

  void* FindObject(const char* name);
  void* FindFunction(const char* name);
  /// A string for a host; the last 16 are kept.
  void* MakeHostString(const char* content);
  int KindOfAddress(const void* address) const;

  /// Milliseconds of game time in this frame, as frame_time gives it.
  Fixed frame_time() const { return frame_time_; }
  int64_t game_time() const { return game_time_; }
  int64_t real_time() const { return host.Now() - begin_; }
  int64_t frame_count() const { return frames_; }

  Arena& arena;
  Host& host;
  GameFolder folder;
  Names names;
  Errors errors;
  Program program;
  MemberTable members;
  World world;
  Scheduler scheduler;
  Debugger debugger;
  Machine machine;
  Input input;
  Options options;
  Scene scene;
  Sounds sounds;

  Function* each_frame = nullptr;
  Function* at_exit = nullptr;
  bool exit_wanted = false;
  bool paused = false;
  Fixed time_factor = kOne;
  int frame_limit = 60;
  int64_t timers[16] = {};  ///< begin + 1, 0 when it was never started
  uint32_t random = 1;
  char next_level[kLongestPath] =
      "";  ///< of level_load, from the end of this frame on; empty: an empty level
  bool level_wanted = false;
  int64_t debug_time = 0;
  int fps = 0;
  Fixed met[3] = {};  ///< the point that the last trace_line or ent_move hit
  PointerCell me_cell{};
  PointerCell you_cell{};

 private:
  enum class Phase : uint8_t {
    kStarters,
    kMain,
    kBegun,
    kFirstLevel,
    kInput,
    kKeys,
    kWaiting,
    kFinish,
    kLevel,
    kShow,
    kExit,
    kLastFrame,
    kEnded
  };

  Session(Arena& arena, Host& host, OpenDescriptors& descriptors);

  bool Advance();
  bool Step();
  bool RunTask(Task& task);
  bool RunNew(Function& function, bool may_wait);
  void BeginFrame();
  void TakeEvents();
  void WakeWaiters();
  bool RunDue();
  bool FinishFrame();
  void ShowFrame();
  void Sweep();
  void LoadLevel();
  void MoveViews();
  void TakeWrittenLocals();
  void* FindLocal(const Name& name);

  const Command** commands_ = nullptr;
  Signature* signatures_ = nullptr;
  uint32_t command_count_ = 0;
  std::jmp_buf exit_;
  Phase phase_ = Phase::kStarters;
  bool hit_stop_ = false;
  uint32_t next_starter_ = 0;
  int next_key_ = 0;
  int64_t frames_ = 0;
  int64_t begin_ = 0;
  int64_t last_frame_ = 0;
  int64_t next_frame_ = 0;
  int64_t game_time_ = 0;
  Fixed frame_time_ = 0;
  int64_t fps_begin_ = 0;
  int fps_count_ = 0;
  StringObject host_strings_[16] = {};
  char host_texts_[16][4001] = {};
  int next_host_string_ = 0;
};

}  // namespace korvel
