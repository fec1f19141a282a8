#include "res/Icons.h"

#include <algorithm>

namespace quill {
namespace {

constexpr IconColour kPalette[] = {
    {"#454c57", "#cdd3db", true},   // ink
    {"#6f7782", "#9aa3af", true},   // muted ink
    {"#1c68bd", "#6ab0f5", true},   // blue
    {"#2b7d3d", "#6cc77c", true},   // green
    {"#c4313a", "#ff8585", true},   // red
    {"#9a5f00", "#eab54f", true},   // amber
    {"#7848b0", "#c6a0f0", true},   // violet
    {"#ffffff", "#3a3f47", false},  // paper
    {"#e4e7eb", "#4a515b", false},  // grey
    {"#d6e6f8", "#26425f", false},  // light blue
    {"#d5eed8", "#25492d", false},  // light green
    {"#fad7d7", "#5c2b2e", false},  // light red
    {"#fbe3ae", "#5e4714", false},  // light amber
    {"#e7dbf5", "#45325f", false},  // light violet
};
constexpr size_t kColourLength = 7;
constexpr std::string_view kIconGrid = "viewBox=\"0 0 16 16\"";

}  // namespace

std::span<const IconColour> IconPalette() {
  return kPalette;
}

std::string RecolourForDark(std::string_view svg) {
  std::string result(svg);
  if (svg.find(kIconGrid) == std::string_view::npos) return result;
  for (size_t at = result.find('#'); at != std::string::npos; at = result.find('#', at + 1)) {
    const auto colour = std::find_if(std::begin(kPalette), std::end(kPalette), [&](const IconColour& c) {
      return std::string_view(result).substr(at, kColourLength) == c.light;
    });
    if (colour != std::end(kPalette)) result.replace(at, kColourLength, colour->dark);
  }
  return result;
}

}  // namespace quill
