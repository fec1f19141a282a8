// The picture of a frame, and flat things drawn on it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace korvel::window {

struct Rgb {
  int red, green, blue;  ///< 0 to 255
};

/// A picture that is drawn from; pure black is see-through.
struct Sheet {
  const uint8_t* pixels = nullptr;  ///< red, green and blue, row by row from the top
  int width = 0, height = 0;
};

/// How much of each place a letter covers, from 0 to 255.
struct Mask {
  const uint8_t* cover = nullptr;
  int width = 0, height = 0;
};

/// A rectangle of pixels; the right and lower edge are outside.
struct Clip {
  int left = 0, top = 0, right = 0, bottom = 0;
};

class Canvas {
 public:
  void Resize(int width, int height);
  void Clear(const Rgb& color);

  int width() const { return width_; }
  int height() const { return height_; }
  uint32_t* row(int y) { return pixels_.data() + static_cast<size_t>(y) * static_cast<size_t>(width_); }
  const uint32_t* pixels() const { return pixels_.data(); }
  /// 0xRRGGBB.
  uint32_t pixel(int x, int y) const { return pixels_[static_cast<size_t>(y) * width_ + x]; }

  /// Whole window, cut by a rectangle.
  Clip Inside(int left, int top, int right, int bottom) const;

  // Places may lie outside; a cover of 256 hides what is behind.
  void Fill(int64_t x, int64_t y, int64_t width, int64_t height, const Rgb& color);
  void Frame(int64_t x, int64_t y, int64_t width, int64_t height, const Rgb& color);
  void Line(int64_t x1, int64_t y1, int64_t x2, int64_t y2, const Rgb& color, const Clip& clip);
  void Draw(const Sheet& sheet, double x, double y, double width, double height, int cover);
  void Draw(const Mask& mask, double x, double y, double width, double height, const Rgb& color, int cover);

  static uint32_t Pack(const Rgb& color) {
    return static_cast<uint32_t>(color.red << 16 | color.green << 8 | color.blue);
  }
  static uint32_t Mix(uint32_t behind, uint32_t before, int cover) {
    const auto share = static_cast<uint32_t>(cover);
    const uint32_t rest = 256 - share;
    const uint32_t outer = ((behind & 0xff00ff) * rest + (before & 0xff00ff) * share) >> 8 & 0xff00ff;
    const uint32_t green = ((behind & 0x00ff00) * rest + (before & 0x00ff00) * share) >> 8 & 0x00ff00;
    return outer | green;
  }

 private:
  int width_ = 0, height_ = 0;
  std::vector<uint32_t> pixels_;
};

}  // namespace korvel::window
