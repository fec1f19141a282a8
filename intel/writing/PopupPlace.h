#pragma once

namespace quill {

/// In pixels of the screen.
struct PixelRect {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;
  int Right() const { return x + width; }    ///< the first column behind it
  int Bottom() const { return y + height; }  ///< the first row below it
  friend bool operator==(const PixelRect&, const PixelRect&) = default;
};

enum class PopupSide { kBelow, kAbove };

/// Where a small window of `width` by `height` goes that belongs to the text at `anchor`: the height of a
/// text line at the x of the text. It goes to the wanted side of the line; when it has no room there, to
/// the side with more room. It never covers the line. Left and right it is kept on the screen.
PixelRect PlacePopup(const PixelRect& anchor, int width, int height, const PixelRect& screen,
                     PopupSide wanted);

}  // namespace quill
