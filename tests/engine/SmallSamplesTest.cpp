// The small samples, used by keys and by the mouse.
#include "tests/engine/SampleGame.h"

namespace korvel {
namespace {

TEST(TasksSample, RunsItsFunctionsSideBySide) {
  SampleGame game("tasks");
  EXPECT_TRUE(game.Frames(60));
  game.Press(SampleGame::kSpace);
  game.Press(SampleGame::kSpace);
  EXPECT_TRUE(game.Frames(60));
  EXPECT_EQ(game.Line("help_txt", 1), "Balls: 3");
  EXPECT_EQ(game.Line("help_txt", 2), "Seconds: 2");
  EXPECT_TRUE(game.RunUntil([&] { return game.Line("help_txt", 1) == "Balls: 0"; })) << "balls come to rest";
  game.Press(SampleGame::kSpace);
  game.Press(SampleGame::kSpace);
  game.Press(SampleGame::kEnter);
  EXPECT_EQ(game.host().output, "balls taken away: 2.000\n");
  EXPECT_FALSE(game.Press(SampleGame::kEsc));
  EXPECT_EQ(game.folder().Errors(), "");
}

TEST(PanelSample, IsUsedByTheMouse) {
  SampleGame game("panel");
  const auto mouse = [&](InputEvent::Kind kind, int x, int y) {
    game.Send(kind, kind == InputEvent::kMouseMove ? 0 : 1, x, y);
    return game.Frame();
  };
  const auto picture = [&](const char* panel) { return game.Find<KorvelPanelObject>(panel).picture; };
  const auto* plain = &game.Find<KorvelBitmapObject>("button_map");
  const auto* hot = &game.Find<KorvelBitmapObject>("button_hot_map");
  game.Frames(2);
  EXPECT_EQ(game.Line("light_txt", 0), "Light: 50");
  mouse(InputEvent::kMouseMove, 100, 150);
  EXPECT_EQ(picture("cold_pan"), hot);
  EXPECT_EQ(picture("warm_pan"), plain);
  mouse(InputEvent::kButtonDown, 100, 150);
  EXPECT_EQ(game.Number("tint", 2), 200);
  mouse(InputEvent::kButtonUp, 100, 150);

  // The knob follows until the button is let go, also beside the rail.
  mouse(InputEvent::kMouseMove, 60 + 60, 286);
  mouse(InputEvent::kButtonDown, 60 + 60, 286);
  EXPECT_EQ(game.Line("light_txt", 0), "Light: 25");
  mouse(InputEvent::kMouseMove, 60 + 120, 150);
  EXPECT_EQ(game.Line("light_txt", 0), "Light: 50");
  EXPECT_EQ(picture("cold_pan"), plain) << "the pointer is busy";
  mouse(InputEvent::kMouseMove, 1000, 150);
  EXPECT_EQ(game.Line("light_txt", 0), "Light: 100");
  mouse(InputEvent::kMouseMove, 60 + 180, 150);
  mouse(InputEvent::kButtonUp, 60 + 180, 150);
  mouse(InputEvent::kMouseMove, 100, 210);
  EXPECT_EQ(game.Line("light_txt", 0), "Light: 75");
  EXPECT_EQ(picture("leave_pan"), hot);
  EXPECT_FALSE(mouse(InputEvent::kButtonDown, 100, 210) && game.Frame());
  EXPECT_EQ(game.folder().Read("config.txt"), "light=75\n");

  game.Open();
  game.Frames(2);
  EXPECT_EQ(game.Line("light_txt", 0), "Light: 75");
  EXPECT_EQ(game.folder().Errors(), "");
}

}  // namespace
}  // namespace korvel
