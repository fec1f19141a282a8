// Adds the sounds that play to what is heard.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <vector>

namespace korvel::window {

/// A decoded sound: 16 bits, left and right by turns.
struct Samples {
  const int16_t* data = nullptr;
  size_t count = 0;  ///< of pairs
};

/// How a voice is to be heard: volume 0 to 1, balance -1 (left) to 1 (right), pitch 1 for as it is.
struct Tone {
  float volume, balance, pitch;
};

/// The voices by their handles. Whoever calls it from several threads locks around it.
class Mixer {
 public:
  /// Begins a voice, or changes one that plays.
  void Play(int handle, const Samples& samples, bool looped, const Tone& tone);
  /// Ends all voices that are not in this list, which is sorted.
  void KeepOnly(const std::vector<int>& handles);
  bool Knows(int handle) const { return voices_.count(handle) != 0; }

  /// Adds to `count` pairs of a stream. A voice that is over keeps silent until KeepOnly forgets it.
  void Mix(int16_t* stream, size_t count, float master);

 private:
  struct Voice {
    Samples samples;
    bool looped;
    Tone tone;
    double place;
  };
  std::map<int, Voice> voices_;
};

}  // namespace korvel::window
