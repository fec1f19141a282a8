#include "tests/engine/TestHost.h"

namespace korvel {
namespace {

TEST(Files, AreWrittenAndReadBack) {
  GameInFolder game;
  EXPECT_EQ(
      game.Run("string s = \"\";\n"
               "function main()\n{\n"
               "  var h;\n"
               "  h = file_open_write(\"scores.txt\");\n"
               "  file_write_line(h, \"Ada\");\n"
               "  file_write_num(h, 1.5); file_write_num(h, -3); file_close(h);\n"
               "  h = file_open_read(\"SCORES.TXT\");\n"
               "  file_read_line(h, s); print(s);\n"
               "  while (file_at_end(h) == 0) print_num(\"n\", file_read_num(h));\n"
               "  file_close(h);\n"
               "  print_num(\"exists\", file_exists(\"scores.txt\") + 2 * file_remove(\"scores.txt\"));\n"
               "  print_num(\"exists\", file_exists(\"scores.txt\"));\n"
               "}\n"),
      "Ada\nn: 1.500\nn: -3.000\nexists: 3.000\nexists: 0.000\n");
}

TEST(Files, OutsideOfTheFolderAreRefusedByLinksToo) {
  GameInFolder outside;
  outside.Write("kept.txt", "kept");
  GameInFolder game;
  game.Write("main.vsl", "");
  std::filesystem::create_symlink(outside.path("kept.txt"), game.path("link.txt"));
  std::filesystem::create_directory_symlink(outside.path(""), game.path("folder"));
  std::filesystem::create_hard_link(outside.path("kept.txt"), game.path("second.txt"));
  const std::string away = outside.path("kept.txt");
  for (const std::string& name :
       {std::string("../kept.txt"), away, std::string("link.txt"), std::string("folder/kept.txt"),
        std::string("folder/new.txt"), std::string("a/../../kept.txt"), std::string("second.txt"),
        std::string("..\\kept.txt")}) {
    EXPECT_EQ(game.Run("function main() { print_num(\"h\", file_open_write(\"" + name +
                       "\") + file_open_append(\"" + name + "\")); config_write_text(\"a\", \"b\"); }"),
              "h: 0.000\n")
        << name;
  }
  EXPECT_EQ(outside.Read("kept.txt"), "kept");
  EXPECT_FALSE(std::filesystem::exists(outside.path("new.txt")));
}

TEST(Files, KeepSettingsAndTheStateOfAGame) {
  GameInFolder game;
  EXPECT_EQ(
      game.Run("var a = 1; var list[3] = 1, 2, 3; var_nsave b = 5;\n"
               "function main()\n{\n"
               "  print_num(\"usual\", config_read(\"volume\", 70));\n"
               "  config_write(\"volume\", 12.5); config_write(\"Volume\", 13); config_write(\"map\", 1);\n"
               "  a = 7; list[1] = 0.25; b = 6;\n"
               "  game_save(\"slot.sav\");\n"
               "  a = 0; list[1] = 0; b = 8;\n"
               "  print_num(\"loaded\", game_load(\"slot.sav\"));\n"
               "  print_num(\"a\", a); print_num(\"list\", list[1]); print_num(\"b\", b);\n"
               "}\n"),
      "usual: 70.000\nloaded: 1.000\na: 7.000\nlist: 0.250\nb: 8.000\n");
  EXPECT_EQ(game.Read("config.txt"), "Volume=13\nmap=1\n");
  EXPECT_EQ(game.Read("slot.sav"), "a 7\nlist 1 0.25 3\n");
  EXPECT_EQ(game.Run("function main() { print_num(\"kept\", config_read(\"VOLUME\", 70)); }"),
            "kept: 13.000\n");
}

TEST(Files, OfScriptsAreFoundWhateverTheirCase) {
  GameInFolder game;
  game.Write("lib/Tools.VSL", "function tool() { print(\"tool\"); }\n");
  EXPECT_EQ(game.Run("path \"LIB\";\ninclude <tools.vsl>;\nfunction main() { tool(); }"), "tool\n")
      << game.Errors();
}

}  // namespace
}  // namespace korvel
