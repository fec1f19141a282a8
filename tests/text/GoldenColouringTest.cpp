// Scripts in tests/golden beside what they look like. A mismatch leaves the new form in a file with
// ".new" appended; look at it, and rename it when it is right. A script without a form gets one that way.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "base/CodePage1252.h"
#include "support/Paths.h"
#include "support/ScriptText.h"
#include "text/parse/ParsedText.h"

namespace quill {
namespace {

namespace fs = std::filesystem;

void CompareWithGolden(const fs::path& golden, const std::string& actual) {
  std::ifstream in(golden, std::ios::binary);
  const std::string expected{std::istreambuf_iterator<char>(in), {}};
  const fs::path fresh(golden.string() + ".new");
  if (in && expected == actual) {
    fs::remove(fresh);
    return;
  }
  std::ofstream(fresh, std::ios::binary) << actual;
  ADD_FAILURE() << "differs: compare " << golden << " with " << fresh;
}

/// Each line, and under it a letter for the colour of each column.
std::string ColouredForm(ScriptText& script, LineStateCache& states, const WordClasses& words) {
  std::string form;
  for (int32_t i = 0; i < script.LineCount(); ++i) {
    const std::string_view line = script.Line(i);
    form.append("  ").append(line).append("\n| ");
    form.append(Letters(line, script.Blocks(i, states.StateAt(i), words))).append("\n");
  }
  return form;
}

std::string FoldingForm(const ScriptText& script) {
  std::string form;
  const std::string marks = script.Marks();
  for (int32_t i = 0; i < script.LineCount(); ++i) {
    form.append(1, marks[static_cast<size_t>(i)]).append(" ").append(script.Line(i)).append("\n");
  }
  return form;
}

TEST(GoldenColouring, LooksAsItDidWhenAPersonLastLooked) {
  const TestWords words;
  int scripts = 0;
  for (const auto& entry : fs::directory_iterator(fs::path(QUILL_SOURCE_DIR) / "tests/golden")) {
    const std::string extension = entry.path().extension().string();
    if (extension != ".vsl") continue;
    if (!fs::exists(fs::path(entry.path()).replace_extension(".coloured")) &&
        !entry.path().stem().string().starts_with("colour-")) {
      continue;  // another test's script
    }
    ++scripts;
    ScriptText whole;
    ASSERT_TRUE(whole.LoadFile(entry.path().string()));
    ParsedText parsed(whole);
    parsed.States().ParseAll();
    CompareWithGolden(fs::path(entry.path()).replace_extension(".folding"), FoldingForm(whole));

    ScriptText byLine;
    ASSERT_TRUE(byLine.LoadFile(entry.path().string()));
    ParsedText parsedByLine(byLine);
    const std::string form = ColouredForm(byLine, parsedByLine.States(), words.classes);
    EXPECT_EQ(form, ColouredForm(whole, parsed.States(), words.classes)) << entry.path();
    CompareWithGolden(fs::path(entry.path()).replace_extension(".coloured"), form);
  }
  EXPECT_GT(scripts, 0);
}

}  // namespace
}  // namespace quill
