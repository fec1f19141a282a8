// A whole script typed key by key with the settings of a new user, by somebody who writes each bracket
// himself, leaves the indentation to the editor and never looks at the list: what was meant is what stands
// there.
#include <sstream>

#include "shell/ui/QuillDoc.h"
#include "shell/ui/QuillView.h"
#include "ui/ScreenFixture.h"

namespace quill {
namespace {

constexpr char kMeant[] = R"script(// What the game needs.
include <lander.h>;
#define SPEED_MAX 12
#ifdef WND
define WIDTH, 640;
endif;
path "media";

bmap back = <back.bmp>;
var pads[4] = { 10, 20, 30, 40 };
string title = "A {game} of (one) \"page\";
/* no code (yet) { or [so] } */
entity* ship;

panel gauge
{
	picture = back;
	pos_x = 10;
	digits = 5, 5, 4, digits_font, 1, pads[0];
	flags = VISIBLE;
}

function nearest(place, wanted)
{
	var i = 0;
	var best = -1;
	while (i < 4)
	{
		if (abs(pads[i] - place) < best || best < 0)
		{
			best = abs(pads[i] - place);
		}
		i += 1;
	}
	for (i = 0; i < 4; i++) pads[i] = clamp(pads[i], 0, (WIDTH - 20) / 2);
	return (best);
}

action fly
{
	me.ambient = 55;
	switch (my.skill1)
	{
		case 1:
		ent_turn(me, 5);
		break;
	}
	if (ship == null) { return (0); }
	while (1)
	{
		vec_set(me.x, pads); // (round)
		ent_move(me, pads, null);
		str_copy(title, "(down)");
		wait(1);
	}
}

function main()
{
	level_load("one.lev");
	ship = ent_create("ship.bmp", pads, fly);
	if (ship) nearest(ship.x, 3);
}
)script";

class TypedScript : public ScreenFixture {};

TEST_F(TypedScript, HoldsWhatWasMeant) {
  Start();
  Open("a.vsl", "");
  std::istringstream meant(kMeant);
  std::vector<std::string> lines;
  for (std::string line; std::getline(meant, line);) lines.push_back(line);
  for (const std::string& line : lines) {
    for (const char c : line.substr(std::min(line.size(), line.find_first_not_of('\t'))))
      Type(std::string(1, c));
    Press("Return");
  }
  for (int32_t i = 0; i < static_cast<int32_t>(lines.size()); ++i) {
    // An empty line keeps the indentation that it began with.
    const bool isBlank = LineAt(i).find_first_not_of('\t') == std::string::npos;
    EXPECT_EQ(isBlank ? "" : LineAt(i), lines[i]) << "line " << i + 1;
  }
  std::string rest;
  for (auto i = static_cast<int32_t>(lines.size()); i < View().Buffer()->LineCount(); ++i)
    rest += LineAt(i) + "|";
  EXPECT_EQ(rest, "|");
}

}  // namespace
}  // namespace quill
