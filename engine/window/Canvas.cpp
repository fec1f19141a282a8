#include "engine/window/Canvas.h"

#include <algorithm>
#include <cmath>

namespace korvel::window {
namespace {

// The part of a stretch along one axis that is inside, and where in the source each of its pixels is.
struct Span {
  int begin, end;
  double from, step;

  int At(int place) const { return static_cast<int>((place + 0.5 - from) * step); }
};

Span SpanOf(double begin, double length, int source, int limit) {
  const double first = std::clamp(std::floor(begin + 0.5), 0.0, static_cast<double>(limit));
  const double last = std::clamp(std::floor(begin + length + 0.5), 0.0, static_cast<double>(limit));
  return {static_cast<int>(first), static_cast<int>(last), std::floor(begin + 0.5),
          length > 0 ? source / length : 0};
}

}  // namespace

void Canvas::Resize(int width, int height) {
  if (width == width_ && height == height_) return;
  width_ = width;
  height_ = height;
  pixels_.assign(static_cast<size_t>(width) * static_cast<size_t>(height), 0);
}

void Canvas::Clear(const Rgb& color) {
  std::fill(pixels_.begin(), pixels_.end(), Pack(color));
}

Clip Canvas::Inside(int left, int top, int right, int bottom) const {
  return {std::clamp(left, 0, width_), std::clamp(top, 0, height_), std::clamp(right, 0, width_),
          std::clamp(bottom, 0, height_)};
}

void Canvas::Fill(int64_t x, int64_t y, int64_t width, int64_t height, const Rgb& color) {
  const int left = static_cast<int>(std::clamp<int64_t>(x, 0, width_));
  const int right = static_cast<int>(std::clamp<int64_t>(x + width, 0, width_));
  const int top = static_cast<int>(std::clamp<int64_t>(y, 0, height_));
  const int bottom = static_cast<int>(std::clamp<int64_t>(y + height, 0, height_));
  if (left >= right) return;
  for (int line = top; line < bottom; ++line) std::fill(row(line) + left, row(line) + right, Pack(color));
}

void Canvas::Frame(int64_t x, int64_t y, int64_t width, int64_t height, const Rgb& color) {
  Fill(x, y, width, 1, color);
  Fill(x, y + height - 1, width, 1, color);
  Fill(x, y, 1, height, color);
  Fill(x + width - 1, y, 1, height, color);
}

void Canvas::Line(int64_t x1, int64_t y1, int64_t x2, int64_t y2, const Rgb& color, const Clip& clip) {
  if (clip.left >= clip.right || clip.top >= clip.bottom) return;
  // Along the longer way, a pixel a step; only steps inside are taken.
  const bool flat = std::abs(x2 - x1) >= std::abs(y2 - y1);
  if (!flat) {
    std::swap(x1, y1);
    std::swap(x2, y2);
  }
  if (x1 > x2) {
    std::swap(x1, x2);
    std::swap(y1, y2);
  }
  const double slope = x2 == x1 ? 0 : static_cast<double>(y2 - y1) / static_cast<double>(x2 - x1);
  const int64_t first = std::max<int64_t>(x1, flat ? clip.left : clip.top);
  const int64_t last = std::min<int64_t>(x2, (flat ? clip.right : clip.bottom) - 1);
  for (int64_t along = first; along <= last; ++along) {
    const auto across = static_cast<int64_t>(
        std::floor(static_cast<double>(y1) + slope * static_cast<double>(along - x1) + 0.5));
    const int64_t x = flat ? along : across;
    const int64_t y = flat ? across : along;
    if (x >= clip.left && x < clip.right && y >= clip.top && y < clip.bottom)
      row(static_cast<int>(y))[x] = Pack(color);
  }
}

void Canvas::Draw(const Sheet& sheet, double x, double y, double width, double height, int cover) {
  if (sheet.pixels == nullptr || !(width > 0) || !(height > 0)) return;
  const Span across = SpanOf(x, width, sheet.width, width_);
  const Span down = SpanOf(y, height, sheet.height, height_);
  for (int line = down.begin; line < down.end; ++line) {
    const int from = std::clamp(down.At(line), 0, sheet.height - 1);
    const uint8_t* source = sheet.pixels + static_cast<size_t>(from) * static_cast<size_t>(sheet.width) * 3;
    uint32_t* target = row(line);
    for (int place = across.begin; place < across.end; ++place) {
      const uint8_t* pixel = source + 3 * std::clamp(across.At(place), 0, sheet.width - 1);
      const uint32_t color = uint32_t{pixel[0]} << 16 | uint32_t{pixel[1]} << 8 | pixel[2];
      if (color != 0) target[place] = cover >= 256 ? color : Mix(target[place], color, cover);
    }
  }
}

void Canvas::Draw(const Mask& mask, double x, double y, double width, double height, const Rgb& color,
                  int cover) {
  if (mask.cover == nullptr || !(width > 0) || !(height > 0)) return;
  const Span across = SpanOf(x, width, mask.width, width_);
  const Span down = SpanOf(y, height, mask.height, height_);
  const uint32_t packed = Pack(color);
  for (int line = down.begin; line < down.end; ++line) {
    const int from = std::clamp(down.At(line), 0, mask.height - 1);
    const uint8_t* source = mask.cover + static_cast<size_t>(from) * static_cast<size_t>(mask.width);
    uint32_t* target = row(line);
    for (int place = across.begin; place < across.end; ++place) {
      const int here = source[std::clamp(across.At(place), 0, mask.width - 1)];
      // 255 covers as much as 256 shall.
      if (here != 0) target[place] = Mix(target[place], packed, (here + (here >> 7)) * cover >> 8);
    }
  }
}

}  // namespace korvel::window
