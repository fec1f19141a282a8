#include "intel/manual/ManualStyle.h"

#include <gtest/gtest.h>

namespace quill {
namespace {

TEST(ScaledStyleSheet, ScalesPointsAndNamesTheFixedFont) {
  const char* css = "body { font-size: 11pt; margin: 12px; color: #1f2328; } pre { font-family: monospace; }";
  EXPECT_EQ(ScaledStyleSheet(css, 150, "Mono X"),
            "body { font-size: 17pt; margin: 12px; color: #1f2328; } pre { font-family: 'Mono X'; }");
  EXPECT_EQ(ScaledStyleSheet("12", 100, "m"), "12");
}

TEST(FittedPictures, AreNeverWiderThanThePage) {
  const std::string page =
      "<p><img src=\"a.png\" width=\"600\" height=\"300\" alt=\"A\"></p>"
      "<img src=\"b.png\"><img src=\"c";
  const auto sizes = [&](int percent, int widest) {
    const std::string fitted = WithFittedPictures(page, percent, widest);
    EXPECT_EQ(fitted.size() - fitted.find(" alt="), page.size() - page.find(" alt="));
    const size_t start = fitted.find("width");
    return fitted.substr(start, fitted.find(" alt") - start);
  };
  EXPECT_EQ(sizes(100, 700), "width=\"600\" height=\"300\"");
  EXPECT_EQ(sizes(150, 700), "width=\"700\" height=\"350\"");
  EXPECT_EQ(sizes(50, 700), "width=\"300\" height=\"150\"");
  EXPECT_EQ(sizes(100, 1), "width=\"1\" height=\"1\"");
  EXPECT_EQ(sizes(100, -5), "width=\"600\" height=\"300\"");
  const std::string huge = "<img src=\"a\" width=\"99999999999\" height=\"1\">";
  EXPECT_EQ(WithFittedPictures(huge, 100, 700), huge);
}

}  // namespace
}  // namespace quill
