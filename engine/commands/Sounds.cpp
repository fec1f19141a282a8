// Sounds and music.
#include "engine/scene/Sounds.h"

#include "engine/commands/Arguments.h"
#include "engine/commands/Tables.h"

namespace korvel {
namespace {

Value SndCreate(Session& s, const Value* a) {
  char path[kLongestPath];
  if (!s.folder.FindMedia(TextOf(a[0]), "", path)) return kNull;
  return ToValue(s.world.MakeSound(path));
}

Value SndRemove(Session& s, const Value* a) {
  auto& sound = As<Sound>(a[0]);
  s.sounds.StopSound(&sound);
  if ((sound.head.flags & kByScript) == 0) s.world.Remove(&sound.head);
  return 0;
}

Value Play(Session& s, Value sound, Fixed volume, Fixed balance, bool looped) {
  if (s.options.no_sound) return 0;
  return FromInt(s.sounds.Play(As<Sound>(sound), volume, balance, looped, s.real_time()));
}

Value SndPlay(Session& s, const Value* a) {
  return Play(s, a[0], Number(a[1]), Number(a[2]), false);
}
Value SndLoop(Session& s, const Value* a) {
  return Play(s, a[0], Number(a[1]), Number(a[2]), true);
}

Value SndPlayAt(Session& s, const Value* a) {
  const Value handle = Play(s, a[1], Number(a[2]), 0, false);
  if (Voice* voice = s.sounds.Find(Whole(handle), s.real_time())) {
    auto& source = As<Entity>(a[0]);
    voice->placed = true;
    voice->source = &source;
    voice->place[0] = source.x;
    voice->place[1] = source.y;
    voice->place[2] = source.z;
  }
  return handle;
}

Value SndStop(Session& s, const Value* a) {
  s.sounds.Stop(Whole(a[0]));
  return 0;
}

Value SndStopAll(Session& s, const Value*) {
  s.sounds.StopAll();
  return 0;
}

Value SndPlaying(Session& s, const Value* a) {
  return GiveBool(s.sounds.Find(Whole(a[0]), s.real_time()) != nullptr);
}

Value SndTune(Session& s, const Value* a) {
  const int64_t now = s.real_time();
  if (Voice* voice = s.sounds.Find(Whole(a[0]), now)) {
    s.sounds.Tune(*voice, Number(a[1]), Number(a[2]), Number(a[3]), now);
  }
  return 0;
}

Value SndMaster(Session& s, const Value* a) {
  s.sounds.master = std::clamp(Number(a[0]), 0, 100 * kOne);
  return 0;
}

Value MusicPlay(Session& s, const Value* a) {
  char path[kLongestPath];
  if (s.options.no_music || !s.folder.FindMedia(TextOf(a[0]), "", path)) return 0;
  const char* kept = s.world.KeepPath(path);
  if (kept == nullptr) return 0;
  s.sounds.music = kept;
  s.sounds.music_volume = std::clamp(Number(a[1]), 0, 100 * kOne);
  ++s.sounds.music_number;
  return kOne;
}

Value MusicStop(Session& s, const Value*) {
  s.sounds.music = nullptr;
  return 0;
}

Value MusicPlaying(Session& s, const Value*) {
  return GiveBool(s.sounds.music != nullptr);
}

Value MusicVolume(Session& s, const Value* a) {
  s.sounds.music_volume = std::clamp(Number(a[0]), 0, 100 * kOne);
  return 0;
}

constexpr Command kRows[] = {
    {"snd_create", "d:s", SndCreate},      {"snd_remove", "-:d", SndRemove},
    {"snd_play", "n:dnn", SndPlay},        {"snd_loop", "n:dnn", SndLoop},
    {"snd_play_at", "n:edn", SndPlayAt},   {"snd_stop", "-:n", SndStop},
    {"snd_stop_all", "-:", SndStopAll},    {"snd_playing", "n:n", SndPlaying},
    {"snd_tune", "-:nnnn", SndTune},       {"snd_master", "-:n", SndMaster},
    {"music_play", "n:sn", MusicPlay},     {"music_stop", "-:", MusicStop},
    {"music_playing", "n:", MusicPlaying}, {"music_volume", "-:n", MusicVolume},
};

}  // namespace

const CommandTable kSoundCommands = TableOf(kRows);

}  // namespace korvel
