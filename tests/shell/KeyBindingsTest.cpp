#include "shell/KeyBindings.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace quill {
namespace {

using Keys = std::vector<std::string>;

const Command& CommandNamed(std::string_view name) {
  return *FindCommand(name);
}

TEST(KeyBindings, TheUsersKeysReplaceTheTablesAndLeaveTheOtherCommand) {
  KeyBindings bindings;
  EXPECT_TRUE(bindings.IsEmpty());
  EXPECT_EQ(bindings.KeysOf(CommandNamed("edit.redo")), (Keys{"Ctrl+Y", "Ctrl+Shift+Z"}));
  bindings.Set("file.new", {"Ctrl+Y", "F7"});
  bindings.Set("file.open", {});
  EXPECT_EQ(bindings.KeysOf(CommandNamed("file.new")), (Keys{"Ctrl+Y", "F7"}));
  EXPECT_EQ(bindings.KeysOf(CommandNamed("edit.redo")), (Keys{"Ctrl+Shift+Z"}));
  EXPECT_EQ(bindings.KeysOf(CommandNamed("file.open")), Keys{});
  bindings.Reset("file.new");
  EXPECT_EQ(bindings.KeysOf(CommandNamed("file.new")), (Keys{"Ctrl+N"}));
}

TEST(KeyBindings, BytesGiveTheSameBindingsBackAndEveryPrefixIsRefused) {
  KeyBindings bindings;
  bindings.Set("edit.redo", {"F7", "Ctrl+Alt+Y"});
  bindings.Set("of.a.later.version", {});
  const std::string bytes = bindings.ToBytes();
  EXPECT_EQ(KeyBindings::FromBytes(bytes), bindings);
  for (size_t length = 0; length < bytes.size(); ++length) {
    EXPECT_FALSE(KeyBindings::FromBytes(std::string_view(bytes).substr(0, length))) << length;
  }
  EXPECT_FALSE(KeyBindings::FromBytes(bytes + "x"));
  EXPECT_FALSE(KeyBindings::FromBytes("QKB1\xFF\xFF"));
  EXPECT_THROW(bindings.Set("x", {std::string(256, 'F')}), std::invalid_argument);
}

TEST(KeyBindings, AnyNumberOfCommandsComesBack) {
  for (const int count : {0, 1, 255, 256, 257, 300, 600}) {
    KeyBindings bindings;
    for (int i = 0; i < count; ++i) bindings.Set("command." + std::to_string(i), {"F" + std::to_string(i)});
    EXPECT_EQ(KeyBindings::FromBytes(bindings.ToBytes()), bindings) << count;
  }
  KeyBindings longest;
  longest.Set(std::string(255, 'c'), Keys(255, std::string(255, 'F')));
  EXPECT_EQ(KeyBindings::FromBytes(longest.ToBytes()), longest);
}

}  // namespace
}  // namespace quill
