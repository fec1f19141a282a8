#include "text/search/DialogPlace.h"

#include <algorithm>
#include <cstdlib>

namespace quill {
namespace {

/// The nearest place within the screen; a dialog larger than the screen keeps its left and top edges.
ScreenRectangle Within(ScreenRectangle dialog, const ScreenRectangle& screen) {
  dialog.x = std::max(std::min(dialog.x, screen.Right() - dialog.width), screen.x);
  dialog.y = std::max(std::min(dialog.y, screen.Bottom() - dialog.height), screen.y);
  return dialog;
}

int Distance(const ScreenRectangle& a, const ScreenRectangle& b) {
  return std::abs(a.x - b.x) + std::abs(a.y - b.y);
}

}  // namespace

bool Overlap(const ScreenRectangle& a, const ScreenRectangle& b) {
  return a.x < b.Right() && b.x < a.Right() && a.y < b.Bottom() && b.y < a.Bottom();
}

ScreenRectangle PlaceAside(const ScreenRectangle& dialog, const ScreenRectangle& keepClear,
                           const ScreenRectangle& screen) {
  if (!Overlap(dialog, keepClear)) return dialog;
  ScreenRectangle places[] = {dialog, dialog, dialog, dialog};
  places[0].y = keepClear.y - dialog.height;
  places[1].y = keepClear.Bottom();
  places[2].x = keepClear.x - dialog.width;
  places[3].x = keepClear.Right();
  const ScreenRectangle* best = nullptr;
  for (ScreenRectangle& place : places) {
    place = Within(place, screen);
    if (Overlap(place, keepClear)) continue;
    if (best == nullptr || Distance(place, dialog) < Distance(*best, dialog)) best = &place;
  }
  return best == nullptr ? dialog : *best;
}

}  // namespace quill
