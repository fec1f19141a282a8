#include "res/Icons.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>

#include "support/Paths.h"

namespace quill {
namespace {

namespace fs = std::filesystem;
const fs::path kRes = fs::path(QUILL_SOURCE_DIR) / "res";

std::string ReadAll(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

/// Relative luminance and contrast ratio as WCAG 2 defines them.
double Luminance(std::string_view colour) {
  const double weights[] = {0.2126, 0.7152, 0.0722};
  double sum = 0;
  for (int i = 0; i < 3; ++i) {
    const double v = std::stoi(std::string(colour.substr(1 + 2 * i, 2)), nullptr, 16) / 255.0;
    sum += weights[i] * (v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4));
  }
  return sum;
}
double Contrast(std::string_view a, std::string_view b) {
  const double la = Luminance(a), lb = Luminance(b);
  return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

TEST(Icons, LinesStandOutFromLightAndDarkWindowsAndFromTheFillsBehindThem) {
  for (const IconColour& colour : IconPalette()) {
    if (!colour.isLine) continue;
    EXPECT_GE(Contrast(colour.light, "#ffffff"), 4.5) << colour.light;
    EXPECT_GE(Contrast(colour.dark, "#2b2b2b"), 4.5) << colour.dark;
    for (const IconColour& fill : IconPalette()) {
      if (fill.isLine) continue;
      EXPECT_GE(Contrast(colour.light, fill.light), 3.0) << colour.light << fill.light;
      EXPECT_GE(Contrast(colour.dark, fill.dark), 3.0) << colour.dark << fill.dark;
    }
  }
}

TEST(Icons, OnTheSixteenUnitGridUseOnlyThePalette) {
  const std::regex colour("#[0-9A-Za-z]+");
  int count = 0;
  for (const auto& entry : fs::directory_iterator(kRes / "icons")) {
    const std::string svg = ReadAll(entry.path());
    if (svg.find("viewBox=\"0 0 16 16\"") == std::string::npos) continue;
    ++count;
    for (auto it = std::sregex_iterator(svg.begin(), svg.end(), colour); it != std::sregex_iterator(); ++it) {
      const auto palette = IconPalette();
      EXPECT_TRUE(std::any_of(palette.begin(), palette.end(),
                              [&](const IconColour& c) { return c.light == it->str(); }))
          << entry.path().filename() << " " << it->str();
    }
  }
  EXPECT_GE(count, 45);
}

TEST(Icons, ForADarkWindowEveryPaletteColourIsReplacedOnce) {
  const std::string grid = "<svg viewBox=\"0 0 16 16\">";
  EXPECT_EQ(RecolourForDark(grid + "<path fill=\"#ffffff\" stroke=\"#454c57\"/>#123456 #ff"),
            grid + "<path fill=\"#3a3f47\" stroke=\"#cdd3db\"/>#123456 #ff");
  const std::string picture = ReadAll(kRes / "icons/quill.svg");
  EXPECT_EQ(RecolourForDark(picture), picture);
}

TEST(Icons, TheResourceFileListsExactlyTheFilesThatExist) {
  const std::string qrc = ReadAll(kRes / "quill.qrc");
  size_t files = 0;
  for (const auto& entry : fs::directory_iterator(kRes / "icons")) {
    const std::string name = entry.path().filename().string();
    EXPECT_NE(qrc.find("alias=\"" + name + "\">icons/" + name + "<"), std::string::npos) << name;
    ++files;
  }
  const std::regex element("<file ");
  EXPECT_EQ(std::distance(std::sregex_iterator(qrc.begin(), qrc.end(), element), {}),
            static_cast<long>(files));
}

}  // namespace
}  // namespace quill
