// The sound device: plays the voices and the music that a frame names.
#pragma once

#include <map>
#include <string>

#include "engine/scene/Wire.h"
#include "engine/window/Mixer.h"

struct Mix_Chunk;
struct _Mix_Music;

namespace korvel::window {

class Sound {
 public:
  /// Opens no device before there is something to play.
  Sound(bool sounds, bool music) : sounds_(sounds), music_on_(music) {}
  ~Sound();
  Sound(const Sound&) = delete;
  Sound& operator=(const Sound&) = delete;

  /// Lets be heard what a frame names, and ends what it does not name any more.
  void Follow(const wire::Frame& frame);

 private:
  bool Open();
  Samples SamplesOf(const std::string& path);
  void FollowMusic(const wire::Music& music, const std::string& path, float master);
  void EndMusic();
  static void Fill(void* self, uint8_t* stream, int bytes);

  bool sounds_, music_on_;
  bool tried_ = false, open_ = false;
  Mixer mixer_;
  float master_ = 1;
  std::map<std::string, Mix_Chunk*> chunks_;
  _Mix_Music* music_ = nullptr;
  uint32_t music_number_ = 0;
};

}  // namespace korvel::window
