#include "base/UiThread.h"

#include <gtest/gtest.h>

#include <functional>
#include <thread>

#include "support/ScriptText.h"
#include "text/view/TextViewModel.h"

#ifndef NDEBUG

namespace quill {
namespace {

TEST(UiThreadDeathTest, ATextIsNotTouchedFromAnotherThread) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  ScriptText text("ab\ncd");
  TextViewModel model;
  model.SetBuffer(&text);
  TextPosition place;
  const struct {
    const char* what;
    std::function<void()> act;
  } cases[] = {
      {"insert",
       [&] {
         text.InsertTextAt(nullptr, {0, 0}, "x", place);
       }},
      {"delete",
       [&] {
         text.DeleteRange(nullptr, {{0, 0}, {1, 0}});
       }},
      {"undo", [&] { text.Undo(place); }},
      {"bookmark", [&] { text.SetFlagOnLine(0, line_flag::kBookmark, true); }},
      {"tell", [&] { text.NotifyViews(nullptr, nullptr, hint::kReset, -1); }},
      {"select",
       [&] {
         model.SetSelection({0, 0}, {0, 1});
       }},
  };
  for (const auto& c : cases) {
    c.act();
    EXPECT_DEATH(std::thread(c.act).join(), "only for the user-interface thread") << c.what;
  }
  std::string copy;
  std::thread([&] { text.CopyRange({{}, text.EndOfText()}, copy); }).join();
  EXPECT_EQ(copy, "xab\r\ncd") << "reading is not checked";
  model.SetBuffer(nullptr);
}

}  // namespace
}  // namespace quill

#endif
