#include "intel/manual/ManualTopic.h"

#include <gtest/gtest.h>

#include <set>

#include "intel/outline/OutlineScanner.h"

namespace quill {
namespace {

/// The topic at the "^" of the line.
std::string TopicAt(std::string line, int* outlines = nullptr) {
  static const std::set<std::string> kIndex = {"wait",   "while",      "ifdef",    "panel", "panel.pos_x",
                                               "view.x", "view.pos_x", "entity.x", "pos_x", "bmap"};
  const size_t caret = line.find('^');
  line.erase(caret, 1);
  static const Outline kOutline = ScanOutlineText("panel badge_pan\nbmap ship_map = <ship.bmp>;\nvar n;\n");
  const ManualLookup lookup{[](const std::string& topic) { return kIndex.contains(topic); },
                            [outlines]() -> const Outline& {
                              if (outlines != nullptr) ++*outlines;
                              return kOutline;
                            }};
  return FindManualTopic(line, static_cast<int32_t>(caret), lookup);
}

TEST(FindManualTopic, TellsCommandsMembersAndObjectsApart) {
  const struct {
    const char* line;
    const char* topic;
  } rows[] = {
      {"  ^wait(1);", "wait"},
      {"  WA^IT(1);", "wait"},
      {"  wait^(1);", "wait"},
      {"#^ifdef A", "ifdef"},
      {"badge_pan.^pos_x = 2;", "panel.pos_x"},
      {"Badge_Pan.POS_^X = 2;", "panel.pos_x"},
      {"camera.^x", "view.x"},
      {"me.x^", "entity.x"},
      {"other.^pos_x", "panel.pos_x"},  // of an object from another file
      {"badge_pan.^wait", "wait"},      // no such member
      {"badge_^pan.pos_x", "panel"},
      {"pan_move(badge_pan, sh^ip_map)", "bmap"},
      {"n^", ""},
      {"unknown^", ""},
      {"wait( ^ 1)", ""},
      {"a ^+ b", ""},
      {"^", ""},
  };
  for (const auto& row : rows) EXPECT_EQ(TopicAt(row.line), row.topic) << row.line;
}

TEST(FindManualTopic, ReadsTheScriptOnlyWhenTheWordAloneDoesNotTell) {
  int outlines = 0;
  EXPECT_EQ(TopicAt("wait^", &outlines), "wait");
  EXPECT_EQ(TopicAt("( ^ )", &outlines), "");
  EXPECT_EQ(outlines, 0);
}

}  // namespace
}  // namespace quill
