#include "engine/scene/Sounds.h"

#include <algorithm>

namespace korvel {
namespace {

constexpr int32_t kLastHandle = 2'000'000;
/// Microseconds that a voice stays known after its end, so that whoever plays it can end it by itself.
constexpr double kAfterEnd = 250'000;

}  // namespace

int32_t Sounds::Play(const Sound& sound, Fixed volume, Fixed balance, bool looped, int64_t now) {
  Sweep(now);
  Voice* place = nullptr;
  for (Voice& voice : voices_) {
    if (voice.handle == 0) {
      place = &voice;
      break;
    }
    if (!voice.looped && (place == nullptr || voice.handle < place->handle)) place = &voice;
  }
  if (place == nullptr) place = &voices_[0];
  *place = {};
  place->handle = next_handle_;
  next_handle_ = next_handle_ < kLastHandle ? next_handle_ + 1 : 1;
  place->sound = &sound;
  place->file = sound.file;
  place->length_ms = sound.length_ms;
  place->looped = looped;
  Tune(*place, volume, balance, 100 * kOne, now);
  return place->handle;
}

void Sounds::Tune(Voice& voice, Fixed volume, Fixed balance, Fixed pitch, int64_t now) {
  if (voice.pitch != 0) voice.played += static_cast<double>(now - voice.since) * ToDouble(voice.pitch) / 100;
  voice.since = now;
  voice.volume = std::clamp(volume, 0, 100 * kOne);
  voice.balance = std::clamp(balance, -100 * kOne, 100 * kOne);
  voice.pitch = std::clamp(pitch, 10 * kOne, 400 * kOne);
}

// Microseconds of the sound that are still to come.
double Sounds::Left(const Voice& voice, int64_t now) {
  const double played = voice.played + static_cast<double>(now - voice.since) * ToDouble(voice.pitch) / 100;
  return voice.length_ms * 1000.0 - played;
}

Voice* Sounds::Find(int32_t handle, int64_t now) {
  for (Voice& voice : voices_) {
    if (handle > 0 && voice.handle == handle && (voice.looped || Left(voice, now) > 0)) return &voice;
  }
  return nullptr;
}

void Sounds::Stop(int32_t handle) {
  for (Voice& voice : voices_) {
    if (voice.handle == handle) voice = {};
  }
}

void Sounds::StopAll() {
  for (Voice& voice : voices_) voice = {};
}

void Sounds::StopSound(const Sound* sound) {
  for (Voice& voice : voices_) {
    if (voice.sound == sound) voice = {};
  }
}

void Sounds::Sweep(int64_t now) {
  for (Voice& voice : voices_) {
    if (voice.handle != 0 && !voice.looped && Left(voice, now) < -kAfterEnd * ToDouble(voice.pitch) / 100)
      voice = {};
  }
}

}  // namespace korvel
