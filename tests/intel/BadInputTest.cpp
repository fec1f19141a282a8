// What broken, monstrous and hostile scripts do to the outline, its includes, completion and hints.

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>

#include "intel/outline/EnclosingFunction.h"
#include "intel/outline/OutlineScanner.h"
#include "intel/outline/ScriptFacts.h"
#include "intel/vocabulary/CommandDatabase.h"
#include "intel/writing/Completion.h"
#include "intel/writing/Hints.h"
#include "support/Paths.h"
#include "support/ScriptText.h"
#include "support/TempFolder.h"

namespace quill {
namespace {

std::string ReadAll(const char* name) {
  std::ifstream in(std::filesystem::path(QUILL_SOURCE_DIR) / name, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

CommandDatabase SomeCommands() {
  CommandDatabase commands;
  commands.Append(std::vector<std::string>{"move", "move(vector way, number speed)", ""});
  return commands;
}

/// Asks everything that typing at the end of the text asks.
void TypeAtTheEndOf(std::string_view text) {
  static const CommandDatabase commands = SomeCommands();
  const ScriptText script(text);
  const Outline outline = ScanOutline(script);
  const TextPosition end = script.EndOfText();
  const std::string_view line = script.Line(end.line);
  const auto request = CompletionAt(line, end.character, 0, outline);
  EXPECT_TRUE(!request || request->start <= request->end);
  HintText hint;
  hint.Update(script, end, std::nullopt, commands, outline);
  EXPECT_LE(hint.Argument().end, hint.Text().size());
  IsCaretInArgumentList(script, end);
  const EnclosingFunction functions(outline);
  const auto around = functions.Around(script, end.line);
  EXPECT_TRUE(!around || around->at.line <= end.line);
}

TEST(BadInput, EveryPrefixOfAScriptIsAScript) {
  for (const char* name : {"tests/golden/outline-odd.vsl", "samples/lander/hud.vsl"}) {
    const std::string script = ReadAll(name);
    ASSERT_FALSE(script.empty());
    const size_t whole = ScanOutlineText(script).Elements().size();
    for (size_t length = 0; length < script.size(); ++length) {
      const std::string_view prefix = std::string_view(script).substr(0, length);
      // Cut inside a line, that line's name may be new and may hide a later one.
      EXPECT_LE(ScanOutlineText(prefix).Elements().size(), whole + 1);
      const size_t lastLines = prefix.size() < 600 ? 0 : prefix.size() - 600;
      TypeAtTheEndOf(prefix.substr(lastLines));
    }
  }
}

TEST(BadInput, WhatIsLeftOpenEndsWithItsLineOrTheText) {
  const std::string name(10000, 'n');
  const std::string cases[] = {
      "var \"",
      "function f(",
      "function f(\"(((",
      "path \"a",
      "include <a",
      "bmap b = <",
      "var a <<<>>>",
      "move(\"",
      "move(((((((((((",
      "))))))))))",
      "move(/*",
      "pan.",
      ".....",
      "}}}}}{{{{{",
      "var " + name + "." + name + ".",
      "function " + name + "(" + name + ")\n{\n" + name + "(" + name + ",",
      "var " + std::string(100000, ' ') + "x",
      "var " + std::string(100000, '[') + "x",
      std::string(100000, '('),
      std::string(100000, '"'),
      "var x;\rfunction y()\r{\r",
      std::string("var \0;\nfunction \0()\n", 20),
      "\xFF\xFE\x80\xA0var\xA0x;\nvar\xA0y;",
  };
  for (const std::string& text : cases) TypeAtTheEndOf(text);

  const Outline outline = ScanOutlineText("var " + name + " = 1;\nfunction " + name + "()\nvar " +
                                          std::string(70000, 'x') + ";\nvar open = \"a;\nvar next;");
  std::string elements;
  for (const OutlineElement& element : outline.Elements()) elements += element.name.substr(0, 5) + " ";
  EXPECT_EQ(elements, "nnnnn open next ") << "a name of more than 65,536 characters is none";
  EXPECT_EQ(outline.Items(OutlineRoot::kFunctions).front().text, name + "()");
}

TEST(BadInput, IncludesThatAreNoScripts) {
  const TempFolder folder;
  std::filesystem::create_directory(folder.Path("folder.vsl"));
  ASSERT_EQ(mkfifo(folder.Path("pipe.vsl").c_str(), 0600), 0);
  folder.Write("sparse.vsl", "");
  std::filesystem::resize_file(folder.Path("sparse.vsl"), uint64_t{2} << 30);
  std::filesystem::create_symlink("loop.vsl", folder.Path("loop.vsl"));
  folder.Write("good.vsl", "var good;\r\ninclude <main.vsl>;\r\ninclude <good.vsl>;");
  const ScriptText script(
      "include <folder.vsl>;\ninclude <pipe.vsl>;\ninclude <sparse.vsl>;\ninclude </dev/zero>;\n"
      "include <loop.vsl>;\ninclude <none.vsl>;\ninclude <" +
      std::string(9000, 'x') + ">;\ninclude <good.vsl>;\n");
  const auto facts = ReadScriptFacts(script, folder.Path("main.vsl"), {}, ReadScriptFile);
  EXPECT_EQ(facts->includedPaths, std::vector<std::string>{folder.Path("good.vsl")});
  EXPECT_EQ(facts->outline.Elements().size(), 1u);
}

TEST(BadInput, TooManyFoldersAndIncludesAreGivenUp) {
  std::string text;
  for (int i = 0; i < 3000; ++i) text += "path \"p" + std::to_string(i) + "\";\n";
  for (int i = 0; i < 3000; ++i) text += "include <i" + std::to_string(i % 2000) + ">;\n";
  size_t reads = 0;
  const ScriptReader none = [&reads](const std::string&, size_t) {
    ++reads;
    return std::optional<std::string>();
  };
  const IncludedFiles included = FollowIncludes(ScanOutlineText(text), "/g/main.vsl", none);
  EXPECT_TRUE(included.limitReached);
  EXPECT_EQ(reads, IncludeLimits().attempts);
}

}  // namespace
}  // namespace quill
