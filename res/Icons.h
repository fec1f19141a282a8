#pragma once
#include <span>
#include <string>
#include <string_view>

namespace quill {

/// One colour of the icon set, "#rrggbb", as the files in res/icons have it (for light surroundings)
/// and as it is drawn on a dark window.
struct IconColour {
  std::string_view light;
  std::string_view dark;
  bool isLine;  ///< drawn as a line: keeps 4.5:1 against the window's colour; else a fill behind lines
};

/// The colours that the 16-unit icons are drawn with.
std::span<const IconColour> IconPalette();

/// An icon of the set for a dark window: each palette colour of the SVG replaced by its dark twin. A
/// picture that is not on the 16-unit grid (the program's icon, the file types') stays as it is.
std::string RecolourForDark(std::string_view svg);

}  // namespace quill
