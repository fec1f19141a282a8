#include "engine/window/Mixer.h"

#include <algorithm>

namespace korvel::window {

void Mixer::Play(int handle, const Samples& samples, bool looped, const Tone& tone) {
  const auto [voice, is_new] = voices_.try_emplace(handle, Voice{samples, looped, tone, 0});
  if (!is_new) voice->second.tone = tone;
}

void Mixer::KeepOnly(const std::vector<int>& handles) {
  std::erase_if(voices_, [&handles](const auto& voice) {
    return !std::binary_search(handles.begin(), handles.end(), voice.first);
  });
}

void Mixer::Mix(int16_t* stream, size_t count, float master) {
  for (auto& [handle, voice] : voices_) {
    const Samples& samples = voice.samples;
    if (samples.count == 0) continue;
    const float left = master * voice.tone.volume * std::min(1.0f, 1 - voice.tone.balance);
    const float right = master * voice.tone.volume * std::min(1.0f, 1 + voice.tone.balance);
    for (size_t i = 0; i < count; ++i, voice.place += voice.tone.pitch) {
      auto at = static_cast<size_t>(voice.place);
      if (at >= samples.count) {
        if (!voice.looped) break;
        while (voice.place >= static_cast<double>(samples.count))
          voice.place -= static_cast<double>(samples.count);
        at = static_cast<size_t>(voice.place);
      }
      const auto add = [](int16_t& to, float value) {
        to = static_cast<int16_t>(std::clamp(static_cast<float>(to) + value, -32768.0f, 32767.0f));
      };
      add(stream[2 * i], left * samples.data[2 * at]);
      add(stream[2 * i + 1], right * samples.data[2 * at + 1]);
    }
  }
}

}  // namespace korvel::window
