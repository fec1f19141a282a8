// Sounds and music that play, as far as the game knows: how long each lasts, whether somebody hears it or
// not.
#pragma once

#include "engine/code/Value.h"
#include "engine/objects/Objects.h"

namespace korvel {

/// One sound that plays. Shares are in steps of 1/1024.
struct Voice {
  int32_t handle = 0;  ///< 0 when the place is free
  const Sound* sound = nullptr;
  const char* file = nullptr;
  uint32_t length_ms = 0;
  Fixed volume = 0, balance = 0, pitch = 0;
  bool looped = false;
  bool placed = false;       ///< it comes from a place of the level
  Entity* source = nullptr;  ///< that it follows while it is there
  Fixed place[3] = {};
  int64_t since = 0;  ///< real time from which on it plays with this pitch
  double played = 0;  ///< microseconds of it before that
};

class Sounds {
 public:
  static constexpr int kMost = 64;

  /// Plays a sound from now on; its handle. When too many play, the oldest that is no loop ends.
  int32_t Play(const Sound& sound, Fixed volume, Fixed balance, bool looped, int64_t now);
  /// The voice of a handle that has not ended, or null.
  Voice* Find(int32_t handle, int64_t now);
  void Tune(Voice& voice, Fixed volume, Fixed balance, Fixed pitch, int64_t now);
  void Stop(int32_t handle);
  void StopAll();
  void StopSound(const Sound* sound);

  /// Once a frame: frees the places of what is over, with some time for those who play it.
  void Sweep(int64_t now);
  /// Leaves sources that are gone where they were.
  template <class Gone>
  void Drop(const Gone& gone) {
    for (Voice& voice : voices_) {
      if (voice.source != nullptr && gone(voice.source)) voice.source = nullptr;
    }
  }

  const Voice& voice(int i) const { return voices_[i]; }
  Voice& voice(int i) { return voices_[i]; }

  Fixed master = 100 * kOne;
  const char* music = nullptr;  ///< path, null when there is none
  Fixed music_volume = 0;
  uint32_t music_number = 0;  ///< of the music_play that began it

 private:
  static double Left(const Voice& voice, int64_t now);

  Voice voices_[kMost];
  int32_t next_handle_ = 1;
};

}  // namespace korvel
