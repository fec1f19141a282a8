#pragma once
#include <cstdint>

namespace quill {

/// A colour reference 0x00BBGGRR.
constexpr uint32_t Rgb(uint32_t red, uint32_t green, uint32_t blue) {
  return red | green << 8 | blue << 16;
}

/// Colours of the desktop that stand in as defaults; whoever has a window hands them in.
struct DesktopColours {
  uint32_t window = Rgb(255, 255, 255);
  uint32_t buttonFace = Rgb(240, 240, 240);
};

/// What each colour is drawn for. Schemes and options name colours by their settings value; everything
/// that paints names them by these.
enum ColourIndex : int32_t {
  kColourBackground = 0,
  kColourBackground2 = 1,  ///< always that of 0: it has no settings value of its own
  kColourText = 2,         ///< normal text, every bracket included
  kColourMarginText = 3,
  kColourFolding = 4,  ///< folding marks and block lines
  kColourBrace = 5,    ///< the matching brace
  kColourMargin = 6,
  kColourSelectionBackground = 7,
  kColourSelectionText = 8,
  kColourIndentGuide = 9,
  kColourKeyword = 10,
  kColourCommand = 11,
  kColourFunction = 12,
  kColourVariable = 13,
  kColourComment = 14,
  kColourNumber = 15,
  kColourUnused = 16,  ///< nothing is drawn with it; black
  kColourString = 17,
  kColourPreprocessor = 18,
  kColourCaretLine = 25,
};
inline constexpr int32_t kColourIndexLimit = 26;

}  // namespace quill
