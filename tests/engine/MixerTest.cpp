// Voices as they reach the ear.
#include "engine/window/Mixer.h"

#include <gtest/gtest.h>

#include <string>

#include "engine/window/Input.h"

namespace korvel::window {
namespace {

std::string Mixed(Mixer& mixer, size_t count, float master = 1) {
  std::vector<int16_t> stream(2 * count);
  mixer.Mix(stream.data(), count, master);
  std::string text;
  for (size_t i = 0; i < count; ++i)
    text += std::to_string(stream[2 * i]) + "/" + std::to_string(stream[2 * i + 1]) + " ";
  return text;
}

TEST(Mixer, PlaysVoicesAsTheyAreTuned) {
  const int16_t data[] = {100, 1000, 200, 2000, 300, 3000, 400, 4000};
  const Samples samples{data, 4};
  Mixer mixer;
  mixer.Play(1, samples, false, {1, 0, 1});
  EXPECT_EQ(Mixed(mixer, 3), "100/1000 200/2000 300/3000 ");
  EXPECT_EQ(Mixed(mixer, 3), "400/4000 0/0 0/0 ") << "it goes on, then is over";
  mixer.Play(2, samples, true, {0.5f, -1, 2});
  EXPECT_EQ(Mixed(mixer, 3), "50/0 150/0 50/0 ") << "left, an octave higher, over and over";
  mixer.Play(2, {}, true, {1, 1, 1});
  EXPECT_EQ(Mixed(mixer, 1, 0.5f), "0/1500 ") << "tuned: right, as it is, softer";
  mixer.Play(3, samples, false, {1, 0, 0.5f});
  mixer.KeepOnly({3});
  EXPECT_FALSE(mixer.Knows(2));
  EXPECT_EQ(Mixed(mixer, 3), "100/1000 100/1000 200/2000 ");
  const int16_t loud[] = {30000, -30000};
  mixer.Play(4, {loud, 1}, true, {1, 0, 1});
  mixer.Play(5, {loud, 1}, true, {1, 0, 1});
  mixer.KeepOnly({4, 5});
  EXPECT_EQ(Mixed(mixer, 1), "32767/-32768 ");
}

TEST(Keys, HaveTheCodesOfScripts) {
  const std::pair<SDL_Keycode, int> keys[] = {
      {SDLK_a, 65},      {SDLK_z, 90},     {SDLK_0, 48},     {SDLK_F1, 112},   {SDLK_F12, 123},
      {SDLK_LEFT, 37},   {SDLK_UP, 38},    {SDLK_RIGHT, 39}, {SDLK_DOWN, 40},  {SDLK_RETURN, 13},
      {SDLK_ESCAPE, 27}, {SDLK_SPACE, 32}, {SDLK_KP_0, 96},  {SDLK_KP_9, 105}, {SDLK_LSHIFT, 16},
      {SDLK_DELETE, 46}, {SDLK_MUTE, 0}};
  for (const auto& [key, code] : keys) EXPECT_EQ(KeyCode(key), code) << SDL_GetKeyName(key);
  EXPECT_EQ(Characters("aZ \xc3\xa4\xe2\x82\xac\xe4\xb8\xad\n"), (std::vector<int>{97, 90, 32, 0xe4, 0x80}))
      << "what the code page does not have is left out";
}

}  // namespace
}  // namespace korvel::window
