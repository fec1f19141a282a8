// What a frame looks like, pixel by pixel.
#include "tests/engine/Drawing.h"

namespace korvel {
namespace {

TEST(Picture, PanelsLieAtTheirPlacesInTheirLayers) {
  GameInFolder game;
  game.Write("four.bmp", PictureFile({"rg", "bk"}));
  Drawing drawing(
      game,
      "bmap four = <four.bmp>; bmap* sheet; panel* p; var c[3];\n"
      "panel low { picture = four; pos_x = 10; pos_y = 20; scale_x = 3; scale_y = 2; }\n"
      "panel thin { picture = four; pos_x = 100; pos_y = 20; alpha = 50; scale_x = 4; scale_y = 4; }\n"
      "panel hidden { picture = four; pos_x = 60; pos_y = 60; }\n"
      "panel edge { picture = four; pos_x = 638; pos_y = -1; scale_x = 3; scale_y = 3; }\n"
      "function mark() { draw_color(1, 2, 3); draw_box(13, 21, 1, 1); draw_frame(200, 200, 4, 4);\n"
      "  draw_line(300, 300, 302, 304); draw_picture(400, 400, four); }\n"
      "function main()\n{\n"
      "  screen_color(0, 0, 64); pan_show(low, 1); pan_show(thin, 1); pan_show(edge, 1);\n"
      "  sheet = bmap_blank(2, 2); vec_fill(c, 255, 255, 255); bmap_fill(sheet, c);\n"
      "  p = pan_create(sheet, 0.5); pan_move(p, 10, 20); pan_show(p, 1);\n"
      "  p = pan_create(sheet, 2); pan_move(p, 15, 23); pan_show(p, 1); fn_each_frame(mark);\n}\n");
  EXPECT_EQ(drawing.At(9, 20), "000040");
  EXPECT_EQ(drawing.At(10, 20), "ff0000");
  EXPECT_EQ(drawing.At(12, 21), "ff0000");
  EXPECT_EQ(drawing.At(13, 20), "00ff00");
  EXPECT_EQ(drawing.At(15, 21), "00ff00");
  EXPECT_EQ(drawing.At(16, 20), "000040");
  EXPECT_EQ(drawing.At(10, 22), "0000ff");
  EXPECT_EQ(drawing.At(13, 22), "000040") << "black is see-through";
  EXPECT_EQ(drawing.At(15, 23), "ffffff") << "a higher layer";
  EXPECT_EQ(drawing.At(100, 20), "7f0020");
  EXPECT_EQ(drawing.At(60, 60), "000040");
  EXPECT_EQ(drawing.At(639, 0), "ff0000");
  EXPECT_EQ(drawing.At(639, 2), "0000ff");
  EXPECT_EQ(drawing.At(13, 21), "010203") << "draw commands are above all";
  EXPECT_EQ(drawing.At(200, 200) + drawing.At(203, 202) + drawing.At(201, 201), "010203010203000040");
  EXPECT_EQ(drawing.At(301, 302) + drawing.At(302, 304) + drawing.At(300, 302), "010203010203000040");
  EXPECT_EQ(drawing.At(401, 400) + drawing.At(401, 401), "00ff00000040");
}

TEST(Picture, AMissingOneHasSquaresInItsPlace) {
  GameInFolder game;
  game.Write("short.bmp", PictureFile({"rg", "bk"}).substr(0, 56));
  for (const char* file : {"missing.bmp", "short.bmp"}) {
    const std::string script = "bmap lost = <" + std::string(file) +
                               ">;\npanel p { picture = lost; pos_x = 10; pos_y = 20; }\n"
                               "function main() { screen_color(0, 0, 64); pan_show(p, 1); }\n";
    const Drawing drawing(
        game, script, 3,
        "main.vsl(1): Error: The file of this definition was not found, or cannot be read.\n");
    EXPECT_EQ(drawing.At(10, 20) + drawing.At(18, 20) + drawing.At(18, 28), "ff00ff3c3c3cff00ff") << file;
    EXPECT_EQ(drawing.At(41, 51) + drawing.At(42, 51), "ff00ff000040") << file;
  }
}

TEST(Picture, TextsAreAsWideAsTheirWidthSays) {
  GameInFolder game;
  const std::string head =
      "font small = \"Courier New\", 20; string s = \"MMM\";\n"
      "text words { face = small; pos_x = 50; pos_y = 60; lines = 2; content = \"HH\", \"HHHH\"; red = 0; "
      "}\n";
  Drawing one(game,
              head + "function main() { txt_show(words, 1); print_num(\"width\", txt_width(words)); }\n");
  EXPECT_EQ(game.host.output, "width: 40.000\n");
  const std::vector<int> around = one.Around("000000");
  EXPECT_GE(around[0], 50);
  EXPECT_LE(around[0], 53);
  EXPECT_GE(around[1], 60);
  EXPECT_GE(around[2], 86);
  EXPECT_LT(around[2], 90);
  EXPECT_LT(around[3], 100);
  bool second = false;
  for (int x = 75; x < 90; ++x) {
    EXPECT_EQ(one.At(x, 70), "000000") << "the first line has two letters";
    second = second || one.Green(x, 90) > 128;
    EXPECT_EQ(one.Red(x, 90), 0);
  }
  EXPECT_TRUE(second);
  Drawing wide(game, head + "function main() { txt_show(words, 1); words.scale_x = 3; }\n");
  EXPECT_GT(wide.Around("000000")[2], 155);
  EXPECT_LT(wide.Around("000000")[2], 170);
  Drawing drawn(game, head +
                          "function mark() { draw_color(0, 255, 0); draw_text(100, 200, small, s); }\n"
                          "function main() { fn_each_frame(mark); debug_show(0); }\n");
  EXPECT_GE(drawn.Around("000000")[0], 100);
  EXPECT_LT(drawn.Around("000000")[2], 130);
  EXPECT_EQ(drawn.Around("000000")[1] / 20, 10);
  Drawing debug(game, "function main() { debug_show(1); while (1) wait(1); }\n");
  EXPECT_LT(debug.Around("000000")[1], 20);
  EXPECT_GT(debug.Around("000000")[3], 40) << "the name of main stands in the third line";
}

// Two boxes before the camera, a red one at `red` and a green one at `green` along x.
std::string Boxes(int red, int green, const std::string& more = "") {
  return "entity* a; entity* b; var v[3];\nfunction main()\n{\n  vec_fill(v, " + std::to_string(red) +
         ", 0, 0); a = ent_create(\"box.dat\", v, null); ent_color(a, 255, 0, 0);\n  vec_fill(v, " +
         std::to_string(green) + ", 0, 0); b = ent_create(\"box.dat\", v, null); ent_color(b, 0, 255, 0);\n" +
         more + "}\n";
}

TEST(Picture, NearBodiesHideFarOnes) {
  GameInFolder game;
  game.Write("box.dat", "x");
  for (const bool red_is_near : {true, false}) {
    Drawing drawing(game, Boxes(red_is_near ? 100 : 300, red_is_near ? 300 : 100));
    EXPECT_EQ(drawing.Red(320, 240) > 0, red_is_near);
    EXPECT_EQ(drawing.Green(320, 240) > 0, !red_is_near);
  }
  // Half of one stands in the other: each is seen where it is nearer.
  Drawing through(game, Boxes(100, 100, "  b.y = 10; b.x = 104; b.scale_x = 2;\n"));
  EXPECT_GT(through.Green(300, 240), 0) << "to the left, before the red one";
  // Seen through: both, whichever was made first.
  for (const std::string& thin : {std::string("a"), std::string("b")}) {
    Drawing drawing(game,
                    Boxes(thin == "a" ? 100 : 300, thin == "a" ? 300 : 100, "  " + thin + ".alpha = 50;\n"));
    EXPECT_GT(drawing.Red(320, 240), 20);
    EXPECT_GT(drawing.Green(320, 240), 20);
  }
  // A box around the camera has no sides towards it, and one that begins behind it is cut.
  Drawing inside(game, Boxes(10, 5000));
  EXPECT_EQ(inside.Red(320, 240), 0);
  Drawing cut(game, Boxes(18, 5000, "  a.y = 24; a.scale_x = 1.1;\n"));
  EXPECT_GT(cut.Red(20, 240), 0);
}

TEST(Picture, LightComesFromTheSunAndFromEverywhere) {
  GameInFolder game;
  game.Write("box.dat", "x");
  const auto red = [&game](const std::string& more) {
    return Drawing(game, Boxes(100, 5000, more)).Red(320, 240);
  };
  EXPECT_EQ(red("  sun_set(180, 0, 255, 255, 255);\n"), 255) << "half from everywhere, half from the sun";
  EXPECT_EQ(red("  sun_set(0, 0, 255, 255, 255);\n"), 128) << "the sun is behind it";
  EXPECT_EQ(red("  sun_set(180, 0, 0, 255, 255);\n"), 128) << "no red in the light";
  EXPECT_EQ(red("  sun_set(180, 0, 255, 255, 255); a.albedo = 0; a.ambient = 20;\n"), 51);
  EXPECT_EQ(red("  sun_set(0, 0, 0, 0, 0); a.ambient = 20; camera.ambient = 20;\n"), 102);
}

TEST(Picture, FogHidesWhatIsFar) {
  GameInFolder game;
  game.Write("box.dat", "x");
  game.Write("dot.bmp", PictureFile({"r"}));
  const std::string light = "  sun_set(180, 0, 255, 255, 255); screen_color(0, 0, 255);\n";
  // The near side is at 84.
  EXPECT_EQ(Drawing(game, Boxes(100, 5000, light + "  view_fog(camera, 84, 200);\n")).At(320, 240), "ff0000");
  EXPECT_EQ(Drawing(game, Boxes(100, 5000, light + "  view_fog(camera, 0, 84);\n")).At(320, 240), "0000ff");
  EXPECT_EQ(
      Drawing(game, Boxes(100, 5000, light + "  view_fog(camera, 0, 84); camera.fog = 50;\n")).At(320, 240),
      "7f007f");
  EXPECT_EQ(Drawing(game, Boxes(100, 5000, light + "  view_fog(camera, 0, 168);\n")).At(320, 240), "7f007f");
  EXPECT_EQ(Drawing(game, Boxes(100, 5000, light + "  view_fog(camera, 50, 0);\n")).At(320, 240), "ff0000");
  EXPECT_EQ(Drawing(game, Boxes(100, 5000,
                                light + "  view_fog(camera, 0, 84); view_fog_color(camera, 0, 255, 0);\n"))
                .At(320, 240),
            "00ff00");
  EXPECT_EQ(Drawing(game, Boxes(-50, -90,
                                light + "  vec_fill(v, 10, 0, 0); a = ent_create(\"dot.bmp\", v, null);\n"
                                        "  ent_scale(a, 4); view_fog(camera, 0, 10);\n"))
                .At(320, 240),
            "0000ff");
}

TEST(Picture, ViewToScreenSaysWhereABodyIsDrawn) {
  GameInFolder game;
  game.Write("dot.bmp", PictureFile({"w"}));
  const std::string views[] = {"", "camera.pan = 20; camera.tilt = -10; camera.roll = 15;",
                               "camera.z = 90; camera.fov = 90; camera.offset_x = 40; camera.offset_y = -25;",
                               "view_area(camera, 300, 100, 250, 300); camera.y = -30;"};
  for (const std::string& view : views) {
    Drawing drawing(
        game,
        "var v[3]; var s[3];\nfunction main()\n{\n  vec_fill(v, 200, 30, 20); " + view +
            "\n  vec_copy(s, v); view_to_screen(s, camera); print_num(\"x\", s[0]); print_num(\"y\", s[1]);\n"
            "  ent_create(\"dot.bmp\", v, null);\n}\n");
    int x = 0, y = 0;
    ASSERT_EQ(std::sscanf(game.host.output.c_str(), "x: %d.000\ny: %d.000", &x, &y), 2) << game.host.output;
    const std::vector<int> around = drawing.Around("000000");
    EXPECT_LE(around[0], x) << view;
    EXPECT_GE(around[2], x) << view;
    EXPECT_LE(around[1], y) << view;
    EXPECT_GE(around[3], y) << view;
    EXPECT_LT(around[2] - around[0], 6) << view;
  }
}

TEST(Picture, PicturesFaceTheViewAndStandUpright) {
  GameInFolder game;
  game.Write("top.bmp", PictureFile({"rr", "gg"}));
  const auto draw = [&game](const std::string& more) {
    Drawing drawing(game,
                    "entity* e; var v[3];\nfunction main()\n{\n  vec_fill(v, 100, 0, 0);\n"
                    "  e = ent_create(\"top.bmp\", v, null); ent_scale(e, 10); " +
                        more + "\n}\n");
    std::string seen;
    const std::pair<int, int> places[] = {{320, 210}, {350, 240}, {320, 270}, {290, 240}};
    for (const auto& [x, y] : places) {
      const std::string color = drawing.At(x, y);
      seen += color == "ff0000" ? 'r' : color == "00ff00" ? 'g' : color == "000000" ? '-' : '?';
    }
    return seen;
  };
  // Above, right, below, left of the middle.
  EXPECT_EQ(draw("e.pan = 60; e.tilt = 40; ent_scale(e, 14);").substr(0, 1), "r");
  EXPECT_EQ(draw("e.roll = 90; ent_scale(e, 14);").substr(1, 1) + draw("e.roll = 90;").substr(3, 1), "gr")
      << "it leans to the left";
  EXPECT_EQ(draw("camera.roll = 90;").substr(1, 1), "r") << "the world leans to the other side";
  EXPECT_EQ(draw("e.red = 0; e.green = 0; e.blue = 0; ent_scale(e, 14);").substr(0, 1), "-");
  EXPECT_EQ(draw("ent_show(e, 0);"), "----");
}

TEST(Picture, ViewsCoverEachOtherByTheirLayers) {
  GameInFolder game;
  game.Write("dot.bmp", PictureFile({"w"}));
  Drawing drawing(
      game,
      "view map { layer = 2; pos_x = 400; pos_y = 300; size_x = 100; size_y = 80; alpha = 50; }\n"
      "sky night { red = 40; stars = 400; }\n"
      "entity badge { model = <dot.bmp>; x = 100; y = 40; scale_x = 20; scale_y = 20; layer = 3; }\n"
      "function main() { screen_color(0, 0, 80); map.z = 9999; view_show(map, 1); sky_show(night, 1); }\n");
  int stars = 0;
  for (int y = 0; y < 480; ++y) {
    for (int x = 0; x < 640; ++x) stars += drawing.Red(x, y) > 90 && drawing.Green(x, y) > 90;
  }
  EXPECT_GT(stars, 10);
  EXPECT_EQ(drawing.Red(5, 5), 40) << "the sky covers the color of the window";
  EXPECT_EQ(drawing.Around("280000")[0] < 640, true);
  // The defined entity stands to the left of the middle, above the views.
  EXPECT_EQ(drawing.At(320 - 222, 240), "ffffff");
  Drawing hidden(game,
                 "view map { layer = 2; pos_x = 400; size_x = 100; size_y = 80; }\n"
                 "sky night { green = 90; }\n"
                 "function main() { view_show(camera, 0); view_show(map, 1); sky_show(night, 1); }\n");
  EXPECT_EQ(
      hidden.At(399, 0) + hidden.At(400, 0) + hidden.At(499, 79) + hidden.At(500, 0) + hidden.At(400, 80),
      "000000005a00005a00000000000000");
}

TEST(Picture, DebugMarksAreAboveAll) {
  GameInFolder game;
  game.Write("box.dat", "x");
  Drawing drawing(game,
                  "entity* e; var v[3]; var p[3];\n"
                  "function mark() { draw_color(255, 255, 0); debug_box(e); debug_point(p); }\n"
                  "function main()\n{\n  vec_fill(v, 116, 0, 0); vec_fill(p, 500, 0, 0);\n"
                  "  e = ent_create(\"box.dat\", v, null); ent_alpha(e, 0); fn_each_frame(mark);\n}\n");
  EXPECT_EQ(drawing.At(320, 240), "ffff00");
  // The near side is 32 units wide at a depth of 100.
  const std::vector<int> around = drawing.Around("000000");
  EXPECT_NEAR(around[0], 320 - 16 * 5.543, 1);
  EXPECT_NEAR(around[3], 240 + 16 * 5.543, 1);
}

}  // namespace
}  // namespace korvel
