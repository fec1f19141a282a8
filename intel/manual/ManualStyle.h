#pragma once
#include <string>
#include <string_view>

namespace quill {

/// A style sheet of the manual for a screen: every size in points multiplied by `percent`, the generic
/// family "monospace" replaced by `fixedFamily`, which is the one that the desktop means.
std::string ScaledStyleSheet(std::string_view css, int percent, std::string_view fixedFamily);

/// What a picture takes of a page: its own size times `percent`, shrunk when that is wider than `widest`.
struct PageArea {
  int width = 0;
  int height = 0;
};
PageArea FittedPicture(PageArea own, int percent, int widest);

/// A page whose pictures have the size that fits. Only those are changed that name theirs as the manual's
/// pages do: <img src="..." width="720" height="450".
std::string WithFittedPictures(std::string_view html, int percent, int widest);

}  // namespace quill
