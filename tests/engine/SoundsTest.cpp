// How long sounds last, whether somebody hears them or not.
#include "tests/engine/TestHost.h"

namespace korvel {
namespace {

// A wave file of silence: 8 bits, one channel, 1000 samples a second.
std::string Wave(uint32_t milliseconds) {
  const auto number = [](uint32_t value, int bytes) {
    std::string text;
    for (int i = 0; i < bytes; ++i) text += static_cast<char>(value >> (8 * i));
    return text;
  };
  return "RIFF" + number(36 + milliseconds, 4) + "WAVEfmt " + number(16, 4) + number(1, 2) + number(1, 2) +
         number(1000, 4) + number(1000, 4) + number(1, 2) + number(8, 2) + "data" + number(milliseconds, 4) +
         std::string(milliseconds, '\x80');
}

std::string Play(const std::string& body, const std::string& options = "") {
  GameInFolder game;
  game.Write("box.dat", "x");
  game.Write("beep.wav", Wave(300));
  game.Write("long.wav", "no sound at all");
  game.Write("song.ogg", "x");
  game.Write(
      "main.vsl",
      "sound beep = <beep.wav>; sound* s; entity* e; var h; var t; var n; var v[3];\n"
      // How long a handle plays, in frames of a sixtieth of a second.
      "function last(handle) { var n; n = 0; while (snd_playing(handle)) { n += 1; wait(1); } return n; }\n"
      "function main()\n{\n" +
          body + "\n}\n");
  Session& session = game.OpenFile("main.vsl", options);
  session.machine.budget = 50'000'000;
  for (int i = 0; i < 300 && session.Frame(); ++i) {
  }
  return game.host.output + game.Errors();
}

TEST(Sounds, LastTheirLength) {
  EXPECT_EQ(Play("wait(1); h = snd_play(beep, 50, 0); print_num(\"handle\", h); t = last(h);\n"
                 "if (t >= 17 && t <= 19) print(\"300 ms\"); print_num(\"over\", snd_playing(h));\n"
                 "h = snd_play(beep, 50, 0); snd_tune(h, 50, 0, 200); t = last(h);\n"
                 "if (t >= 8 && t <= 10) print(\"150 ms\");\n"
                 "h = snd_play(beep, 50, 0); wait(9); snd_tune(h, 50, 0, 50); t = last(h);\n"
                 "if (t >= 17 && t <= 19) print(\"half of it twice as long\");\n"),
            "handle: 1.000\n300 ms\nover: 0.000\n150 ms\nhalf of it twice as long\n");
  EXPECT_EQ(Play("h = snd_loop(beep, 0, 0); wait(60); print_num(\"loops\", snd_playing(h)); snd_stop(h);\n"
                 "print_num(\"loops\", snd_playing(h)); h = snd_loop(beep, 0, 0); snd_stop_all();\n"
                 "print_num(\"loops\", snd_playing(h) + snd_playing(0) + snd_playing(99));\n"),
            "loops: 1.000\nloops: 0.000\nloops: 0.000\n");
}

TEST(Sounds, EndWithWhatTheyBelongTo) {
  EXPECT_EQ(
      Play("s = snd_create(\"beep.wav\"); h = snd_loop(s, 9, 9); snd_remove(s); wait(2);\n"
           "print_num(\"removed\", snd_playing(h)); if (s == null) print(\"null\");\n"
           "if (snd_create(\"long.wav\") == null && snd_create(\"none.wav\") == null) print(\"none\");\n"
           "e = ent_create(\"box.dat\", v, null); h = snd_play_at(e, beep, 90); ent_remove(e); wait(2);\n"
           "print_num(\"goes on\", snd_playing(h)); for (n = 0; n < 100; n += 1) t = snd_loop(beep, 1, 1);\n"
           "print_num(\"newest\", snd_playing(t));\n"),
      "removed: 0.000\nnull\nnone\ngoes on: 1.000\nnewest: 1.000\n");
}

TEST(Sounds, AreSilentWhenSwitchedOff) {
  const std::string body =
      "h = snd_play(beep, 50, 0) + snd_loop(beep, 1, 1); print_num(\"sound\", h);\n"
      "h = music_play(\"song.ogg\", 50); print_num(\"music\", h); print_num(\"plays\", music_playing());\n"
      "music_volume(20); music_stop(); print_num(\"missing\", music_play(\"none.ogg\", 1) + "
      "music_playing());\n";
  EXPECT_EQ(Play(body), "sound: 3.000\nmusic: 1.000\nplays: 1.000\nmissing: 0.000\n");
  EXPECT_EQ(Play(body, "-eq -os"), "sound: 0.000\nmusic: 1.000\nplays: 1.000\nmissing: 0.000\n");
  EXPECT_EQ(Play(body, "-om -os"), "sound: 0.000\nmusic: 0.000\nplays: 0.000\nmissing: 0.000\n");
}

}  // namespace
}  // namespace korvel
