#include "engine/window/Sound.h"

#include <SDL.h>
#include <SDL_mixer.h>

#include <algorithm>

#include "engine/window/Painter.h"

namespace korvel::window {

Sound::~Sound() {
  if (!open_) return;
  Mix_SetPostMix(nullptr, nullptr);
  EndMusic();
  for (auto& [path, chunk] : chunks_) {
    if (chunk != nullptr) Mix_FreeChunk(chunk);
  }
  Mix_CloseAudio();
}

bool Sound::Open() {
  if (tried_) return open_;
  tried_ = true;
  if (SDL_InitSubSystem(SDL_INIT_AUDIO) != 0 || Mix_OpenAudio(44100, AUDIO_S16SYS, 2, 1024) != 0)
    return false;
  int rate = 0, channels = 0;
  uint16_t format = 0;
  if (Mix_QuerySpec(&rate, &format, &channels) == 0 || format != AUDIO_S16SYS || channels != 2) {
    Mix_CloseAudio();
    return false;
  }
  Mix_SetPostMix(&Sound::Fill, this);
  return open_ = true;
}

void Sound::Fill(void* self, uint8_t* stream, int bytes) {
  auto* sound = static_cast<Sound*>(self);
  sound->mixer_.Mix(reinterpret_cast<int16_t*>(stream), static_cast<size_t>(bytes) / 4, sound->master_);
}

Samples Sound::SamplesOf(const std::string& path) {
  const auto [chunk, is_new] = chunks_.try_emplace(path, nullptr);
  if (is_new) chunk->second = Mix_LoadWAV(path.c_str());
  if (chunk->second == nullptr) return {};
  return {reinterpret_cast<const int16_t*>(chunk->second->abuf), chunk->second->alen / 4};
}

void Sound::Follow(const wire::Frame& frame) {
  std::vector<int> named;
  bool music = false;
  for (Items items(frame); items.Next();) {
    if (items.kind() == wire::Kind::kVoice) {
      wire::Voice voice;
      if (!sounds_ || !items.Read(&voice) || !Open()) continue;
      named.push_back(voice.handle);
      const std::string path(items.Behind<wire::Voice>(0, voice.path_bytes));
      const Samples samples = mixer_.Knows(voice.handle) ? Samples{} : SamplesOf(path);
      SDL_LockAudio();
      mixer_.Play(voice.handle, samples, voice.looped != 0,
                  {std::clamp(voice.volume, 0.0f, 1.0f), std::clamp(voice.balance, -1.0f, 1.0f),
                   std::clamp(voice.pitch, 0.1f, 4.0f)});
      SDL_UnlockAudio();
    } else if (items.kind() == wire::Kind::kMusic) {
      wire::Music wired;
      if (!music_on_ || !items.Read(&wired) || !Open()) continue;
      FollowMusic(wired, std::string(items.Behind<wire::Music>(0, wired.path_bytes)), frame.master);
      music = true;
    } else {
      break;  // sounds come first
    }
  }
  if (!open_) return;
  std::sort(named.begin(), named.end());
  SDL_LockAudio();
  master_ = std::clamp(frame.master, 0.0f, 1.0f);
  mixer_.KeepOnly(named);
  SDL_UnlockAudio();
  if (!music) EndMusic();
}

void Sound::FollowMusic(const wire::Music& music, const std::string& path, float master) {
  if (music.number != music_number_) {
    EndMusic();
    music_number_ = music.number;
    music_ = Mix_LoadMUS(path.c_str());
    if (music_ != nullptr) Mix_PlayMusic(music_, -1);
  }
  Mix_VolumeMusic(static_cast<int>(std::clamp(music.volume * master, 0.0f, 1.0f) * MIX_MAX_VOLUME + 0.5f));
}

void Sound::EndMusic() {
  if (music_ == nullptr) return;
  Mix_HaltMusic();
  Mix_FreeMusic(music_);
  music_ = nullptr;
}

}  // namespace korvel::window
