#include "tests/engine/TestHost.h"

namespace korvel {
namespace {

// A game with two boxes of 32 units, at 0 and at 100 on the x axis.
std::string WithBoxes(const std::string& body) {
  return "entity* a; entity* b; var v[3]; var w[3]; string s = \"\";\n"
         "function gone() { print(\"begun\"); while (1) wait(1); }\n"
         "function main()\n{\n  var i;\n  entity* e;\n"
         "  a = ent_create(\"box.dat\", v, null); vec_fill(v, 100, 0, 0); b = ent_create(\"box.dat\", v, "
         "null);\n" +
         body + "\n}\n";
}

std::string Play(const std::string& body) {
  GameInFolder game;
  game.Write("box.dat", "any file is a box");
  game.Write("one.lev", "# a level\nrock box.dat 1 2 3 90 0 0 2\nlamp box.dat 5 0 0 0 0 0 1 gone\n");
  const std::string output = game.Run(WithBoxes(body));
  return output + game.Errors();
}

TEST(Entities, MoveUntilTheyMeetAnother) {
  EXPECT_EQ(Play("vec_fill(v, 200, 0, 0); print_num(\"moved\", ent_move(a, v)); print_num(\"x\", a.x);\n"
                 "if (you == b) print(\"met\"); trace_point(w); print_vec(\"at\", w);\n"
                 "print_num(\"touch\", ent_touch(a, b)); a.x += 1; print_num(\"touch\", ent_touch(a, b));\n"),
            "moved: 68.000\nx: 68.000\nmet\nat: 68.000 0.000 0.000\ntouch: 0.000\ntouch: 1.000\n");
  EXPECT_EQ(Play("ent_solid(b, 0); vec_fill(v, 200, 0, 0); print_num(\"moved\", ent_move(a, v));\n"
                 "if (you == null) print(\"free\");"),
            "moved: 200.000\nfree\n");
  EXPECT_EQ(Play("a.pan = 90; vec_fill(v, 10, 0, 0); ent_move_local(a, v); print_vec(\"a\", a.x);"),
            "a: 0.000 10.000 0.000\n");
  EXPECT_EQ(Play("vec_fill(v, 50, 0, 0); vec_fill(w, 500, 0, 0); print_num(\"hit\", trace_line(v, w));\n"
                 "ent_show(b, 0); print_num(\"hit\", trace_line(v, w));"),
            "hit: 34.000\nhit: 0.000\n");
}

TEST(Entities, AreGoneAtTheEndOfTheFrame) {
  EXPECT_EQ(Play("e = a; ent_action(a, gone); print_num(\"count\", ent_count()); ent_remove(a);\n"
                 "print_num(\"count\", ent_count()); print_num(\"runs\", fn_running(gone)); wait(2);\n"
                 "print_num(\"count\", ent_count()); print_num(\"runs\", fn_running(gone));\n"
                 "if (a == null && e == null && b != null) print(\"null\"); a.x = 3;"),
            "begun\ncount: 2.000\ncount: 2.000\nruns: 1.000\ncount: 1.000\nruns: 0.000\nnull\n"
            "main.vsl(11): Error: null has no members.\n");
}

TEST(Entities, AreFoundAndNamed) {
  EXPECT_EQ(Play("e = ent_next(null); while (e) { ent_name(s, e); print(s); e = ent_next(e); }\n"
                 "if (ent_find(\"box_2\") == b) print(\"found\"); vec_fill(v, 99, 0, 0);\n"
                 "if (ent_near(null, v, 5) == b) print(\"near\"); ent_size(v, b); print_vec(\"size\", v);\n"
                 "ent_face(b, a.x); print_num(\"pan\", b.pan);"),
            "box_1\nbox_2\nfound\nnear\nsize: 32.000 32.000 32.000\npan: 180.000\n");
}

TEST(Entities, ComeFromLevelFiles) {
  EXPECT_EQ(Play("print_num(\"found\", level_load(\"one.lev\") + 2 * level_load(\"two.lev\")); wait(1);\n"
                 "print_num(\"count\", ent_count()); e = ent_find(\"rock\"); print_vec(\"rock\", e.x);\n"
                 "print_num(\"scale\", e.scale_y); if (a == null) print(\"old ones are gone\");"),
            "found: 1.000\nbegun\ncount: 2.000\nrock: 1.000 2.000 3.000\nscale: 2.000\nold ones are gone\n");
}

TEST(Entities, DoNotFillTheMemoryWhenTheyComeAndGo) {
  GameInFolder game;
  game.Write("box.dat", "x");
  Session& session = game.Open(
      "function spark() { wait(1); ent_remove(me); }\n"
      "function main() { while (1) { ent_create(\"box.dat\", camera.x, spark); wait(1); } }\n");
  for (int i = 0; i < 1000; ++i) session.Frame();
  const size_t used = session.arena.used();
  for (int i = 0; i < 20'000; ++i) session.Frame();
  EXPECT_EQ(session.arena.used(), used);
  EXPECT_EQ(game.Errors(), "");
}

}  // namespace
}  // namespace korvel
