#include "intel/writing/PopupPlace.h"

#include <algorithm>

namespace quill {

PixelRect PlacePopup(const PixelRect& anchor, int width, int height, const PixelRect& screen,
                     PopupSide wanted) {
  const int above = anchor.y - screen.y;
  const int below = screen.Bottom() - anchor.Bottom();
  bool goesBelow = wanted == PopupSide::kBelow;
  if (height > (goesBelow ? below : above)) goesBelow = below >= above;
  const int x = std::max(screen.x, std::min(anchor.x, screen.Right() - width));
  return {x, goesBelow ? anchor.Bottom() : anchor.y - height, width, height};
}

}  // namespace quill
