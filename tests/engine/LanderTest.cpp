// The sample game, played by its keys from the title to the list of the best.
#include "tests/engine/LanderPilot.h"

namespace korvel {
namespace {

using Game = LanderGame;

/// Lands until that level is reached, on another pad each time, then loses all ships. What happened, a line
/// each.
std::string PlayTo(Game& game, int last_level) {
  std::string story;
  std::set<int> pads;
  EXPECT_TRUE(game.Choose(0));
  for (int flight = 1; game.Number("level") <= last_level && game.state() != Game::kScores; ++flight) {
    const int pad = flight % 3;
    const double level = game.Number("level");
    const Game::State end = game.FlyTo(pad);
    story += "level " + std::to_string(level) + " pad " + std::to_string(pad) + " state " +
             std::to_string(end) + " fuel " + std::to_string(game.Number("ship_fuel")) + " speed " +
             std::to_string(game.Number("ship_speed", 2)) + " frame " + std::to_string(game.frames()) + "\n";
    if (end == Game::kLanded) {
      EXPECT_EQ(game.Number("landed_pad"), pad) << story;
      pads.insert(pad);
    }
    game.RunUntil([&] { return game.state() != end; });
  }
  EXPECT_EQ(game.Number("level"), last_level + 1) << story;
  EXPECT_EQ(pads.size(), 3u) << story;
  while (game.state() != Game::kScores) {
    const double lives = game.Number("lives");
    if (!game.RunUntilState(Game::kCrashed)) break;
    EXPECT_FALSE(game.IsShipShown());
    game.RunUntil([&] { return game.Number("lives") < lives; });
    story += "crash at frame " + std::to_string(game.frames()) + "\n";
    game.RunUntil([&] { return game.state() != Game::kCrashed; });
  }
  return story + "score " + std::to_string(game.Number("score")) + "\n";
}

/// Gives a name and goes back to the menu.
void EnterName(Game& game, const std::string& name) {
  ASSERT_TRUE(game.RunUntil(
      [&] { return game.Line("scores_txt", 0) == "Your name:" && game.IsShown("scores_txt"); }));
  game.Frame();
  game.Type(name);
  game.Frame();
  EXPECT_EQ(game.Line("scores_txt", 2), name + "_");
  game.Press(Game::kEnter);
  ASSERT_TRUE(game.RunUntil([&] { return game.Line("scores_txt", 0) == "High scores"; }));
  game.Press(Game::kSpace);
  ASSERT_TRUE(game.RunUntilState(Game::kMenu));
}

TEST(Lander, IsFlownThroughAllSitesAndKeepsTheScore) {
  const std::string before = "Ann\n50\nBob\n40\nCy\n30\nDi\n20\nEd\n10\n";
  Game game;
  game.folder().Write("scores.txt", before);
  const std::string story = PlayTo(game, 7);
  const auto score = std::to_string(static_cast<int>(game.Number("score")));
  EnterName(game, "Zoe");
  EXPECT_EQ(game.folder().Read("scores.txt"), "Zoe\n" + score + "\nAnn\n50\nBob\n40\nCy\n30\nDi\n20\n");
  EXPECT_FALSE(game.Choose(4));
  EXPECT_EQ(game.host().output, "Lander: 2.000\nGood bye.\n");

  game.Open();
  game.Choose(2);
  EXPECT_TRUE(game.IsShown("scores_txt"));
  EXPECT_EQ(game.Line("scores_txt", 2), "1. Zoe" + std::string(11 + 6 - score.size(), ' ') + score);
  EXPECT_EQ(game.folder().Errors(), "");

  Game again;
  EXPECT_EQ(PlayTo(again, 7), story) << "the same keys, the same game";
  EXPECT_EQ(again.folder().Errors(), "");
}

TEST(Lander, StandsStillWhilePausedAndAsksBeforeItLeaves) {
  Game game;
  game.Choose(0);
  ASSERT_TRUE(game.RunUntilState(Game::kFlying));
  game.Press(Game::kP);
  EXPECT_TRUE(game.IsShown("pause_txt"));
  EXPECT_TRUE(game.IsShown("help_txt"));
  const int32_t z = game.Ship()->z;
  game.Frames(60);
  EXPECT_EQ(game.Ship()->z, z);

  // Esc while it is paused, then a key that does not leave.
  for (const int key : {int{Game::kSpace}, int{Game::kP}}) {
    game.Press(Game::kEsc);
    EXPECT_FALSE(game.IsShown("pause_txt"));
    EXPECT_EQ(game.Line("message_txt", 0), "Esc again to give up");
    game.Press(key);
    EXPECT_FALSE(game.IsShown("pause_txt") || game.IsShown("help_txt") || game.IsShown("message_txt")) << key;
    EXPECT_EQ(game.state(), Game::kFlying);
    const int32_t before = game.Ship()->z;
    game.Frames(2);
    EXPECT_LT(game.Ship()->z, before) << "the game goes on";
  }
  game.Press(Game::kEsc);
  game.Press(Game::kEsc);
  EXPECT_TRUE(game.RunUntil([&] { return game.Line("scores_txt", 0) == "High scores"; }));
  game.RunUntil([&] { return game.IsShown("scores_txt"); });
  game.Press(Game::kEsc);
  EXPECT_TRUE(game.RunUntilState(Game::kMenu));
  EXPECT_FALSE(game.IsShown("scores_txt"));
  game.RunUntil([&] { return game.IsShown("menu_txt"); });
  EXPECT_FALSE(game.Press(Game::kEsc)) << "Esc in the menu leaves";
  EXPECT_EQ(game.folder().Errors(), "");
}

TEST(Lander, MeetsRocksAndCansOnLaterLevels) {
  Game game;
  game.Choose(0);
  ASSERT_TRUE(game.RunUntilState(Game::kFlying));
  EXPECT_EQ(game.Thing("rock.bmp"), nullptr) << "the first level is quiet";
  // After a crash the same level comes again: here it is another one.
  game.Set("level", 3);
  ASSERT_TRUE(game.RunUntilState(Game::kCrashed));
  ASSERT_TRUE(game.RunUntilState(Game::kFlying));

  Entity* can = game.Thing("can.bmp");
  ASSERT_NE(can, nullptr);
  game.Set("ship_fuel", 100);
  const double score = game.Number("score");
  can->x = game.Ship()->x;
  can->z = game.Ship()->z;
  game.Frames(2);
  EXPECT_EQ(game.Number("ship_fuel"), 220);
  EXPECT_EQ(game.Number("score"), score + 50);
  EXPECT_EQ(game.Thing("can.bmp"), nullptr) << "it is taken once";

  Entity* rock = game.Thing("rock.bmp");
  ASSERT_NE(rock, nullptr);
  ASSERT_TRUE(game.RunUntil([&] { return korvel::IsShown(rock->head); })) << "it does not come at once";
  EXPECT_EQ(game.state(), Game::kFlying);
  rock->x = game.Ship()->x;
  rock->z = game.Ship()->z;
  game.Frame();
  EXPECT_EQ(game.state(), Game::kCrashed);
  EXPECT_FALSE(game.IsShipShown());
  EXPECT_EQ(game.folder().Errors(), "");
}

TEST(Lander, KeepsScoresThatItHadNoTimeToRead) {
  const std::string mine = "Me\n9000\nYou\n8000\n";
  for (const int frames : {0, 1, 2, 5}) {
    Game game;
    game.folder().Write("scores.txt", mine);
    game.Open();
    game.Frames(frames);
    game.Send(InputEvent::kClose, 0);
    while (game.Frame()) {
    }
    EXPECT_EQ(game.folder().Read("scores.txt").substr(0, mine.size()), mine) << frames;
  }
}

TEST(Lander, PlaysLongWhateverKeysArePressed) {
  Game game;
  const int keys[] = {Game::kEnter, Game::kEsc,   Game::kSpace, Game::kLeft,  Game::kUp,
                      Game::kUp,    Game::kRight, Game::kDown,  Game::kEnter, Game::kP,
                      77,           112,          120};
  uint32_t random = 5;
  const auto next = [&](uint32_t limit) { return (random = random * 1664525 + 1013904223) / 65536 % limit; };
  std::set<int> states;
  int left = 0;
  while (game.frames() < 40'000) {
    const int key = keys[next(std::size(keys))];
    if (key == Game::kEsc && game.state() != Game::kMenu && next(3) != 0) continue;
    game.Hold(key, true);
    bool on = game.Frames(static_cast<int>(1 + next(20)));
    game.Hold(key, false);
    on = on && game.Frame();
    states.insert(game.state());
    if (game.state() == Game::kFlying && !game.IsShown("pause_txt") && next(10) == 0)
      game.FlyTo(static_cast<int>(next(3)));
    states.insert(game.state());
    if (!on) {
      EXPECT_EQ(game.folder().Errors(), "");
      game.Open();
      ++left;
    }
  }
  EXPECT_EQ(game.folder().Errors(), "");
  EXPECT_EQ(states, (std::set<int>{Game::kMenu, Game::kReady, Game::kFlying, Game::kLanded, Game::kCrashed,
                                   Game::kScores}))
      << "all but the one that lasts no frame";
  EXPECT_GT(left, 0) << "the game was never left";
}

}  // namespace
}  // namespace korvel
