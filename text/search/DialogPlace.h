#pragma once

namespace quill {

/// A rectangle on the screen, in pixels.
struct ScreenRectangle {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;

  int Right() const { return x + width; }
  int Bottom() const { return y + height; }
  friend bool operator==(const ScreenRectangle&, const ScreenRectangle&) = default;
};

bool Overlap(const ScreenRectangle& a, const ScreenRectangle& b);

/// Where a dialog goes so that it covers nothing of `keepClear`: it stays where it is when it does not,
/// else it moves as little as possible, straight up, down, left or right, within `screen`. On a screen
/// without room beside `keepClear` it stays as well.
ScreenRectangle PlaceAside(const ScreenRectangle& dialog, const ScreenRectangle& keepClear,
                           const ScreenRectangle& screen);

}  // namespace quill
