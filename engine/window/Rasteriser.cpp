#include "engine/window/Rasteriser.h"

#include <algorithm>
#include <cmath>

namespace korvel::window {
namespace {

int Cover(double share) {
  return static_cast<int>(std::clamp(share, 0.0, 1.0) * 256 + 0.5);
}

int Shade(int part, double light) {
  return static_cast<int>(part * std::clamp(light, 0.0, 1.0) + 0.5);
}

// The six sides of a box: its outward direction, and its corners counted by the bits x, y, z.
struct Side {
  Triple out;
  int corners[4];
};
constexpr Side kSides[] = {
    {{1, 0, 0}, {1, 3, 7, 5}},  {{-1, 0, 0}, {0, 4, 6, 2}}, {{0, 1, 0}, {2, 6, 7, 3}},
    {{0, -1, 0}, {0, 1, 5, 4}}, {{0, 0, 1}, {4, 5, 7, 6}},  {{0, 0, -1}, {0, 2, 3, 1}},
};

Triple CornerOf(const Triple& size, int bits) {
  return {(bits & 1 ? 0.5 : -0.5) * size.x, (bits & 2 ? 0.5 : -0.5) * size.y,
          (bits & 4 ? 0.5 : -0.5) * size.z};
}

Triple Sum(const Triple& a, const Triple& b) {
  return {a.x + b.x, a.y + b.y, a.z + b.z};
}

// The point of a line at the nearest depth.
Triple AtNear(const Triple& a, const Triple& b) {
  const double share = (kNear - a.x) / (b.x - a.x);
  return {kNear, a.y + (b.y - a.y) * share, a.z + (b.z - a.z) * share};
}

}  // namespace

int Fog::CoverAt(double depth) const {
  if (strength <= 0 || end <= begin) return 0;
  return Cover(std::clamp((depth - begin) / (end - begin), 0.0, 1.0) * strength);
}

void Rasteriser::Begin(const Camera& camera, double roll, const Fog& fog, const Light& light) {
  camera_ = camera;
  roll_ = roll;
  fog_ = fog;
  light_ = light;
  const Area& area = camera.area();
  const auto edge = [](double place) {
    return static_cast<int>(std::clamp(std::floor(place + 0.5), -1e6, 1e6));
  };
  clip_ = canvas_.Inside(edge(area.x), edge(area.y), edge(area.x + area.width), edge(area.y + area.height));
  depth_.assign(static_cast<size_t>(canvas_.width()) * static_cast<size_t>(canvas_.height()), 0);
  later_.clear();
}

void Rasteriser::Add(const Solid& solid) {
  if (solid.alpha >= 1) return Draw(solid);
  if (solid.alpha > 0) later_.push_back({camera_.ToView(solid.at).x, solid});
}

void Rasteriser::Finish() {
  std::stable_sort(later_.begin(), later_.end(),
                   [](const Later& a, const Later& b) { return a.depth > b.depth; });
  for (const Later& later : later_) Draw(later.solid);
  later_.clear();
}

void Rasteriser::Draw(const Solid& solid) {
  if (clip_.left >= clip_.right || clip_.top >= clip_.bottom) return;
  if (solid.sheet.pixels != nullptr) {
    DrawPicture(solid);
  } else {
    DrawBox(solid);
  }
}

// What covers all keeps others behind it from being seen; of equal depths the later one is seen.
void Rasteriser::Put(int x, int y, float inverse, uint32_t color, int cover) {
  float& depth =
      depth_[static_cast<size_t>(y) * static_cast<size_t>(canvas_.width()) + static_cast<size_t>(x)];
  if (inverse < depth) return;
  uint32_t& pixel = canvas_.row(y)[x];
  if (cover >= 256) {
    depth = inverse;
    pixel = color;
  } else {
    pixel = Canvas::Mix(pixel, color, cover);
  }
}

void Rasteriser::DrawBox(const Solid& solid) {
  Triple corners[8];
  for (int i = 0; i < 8; ++i)
    corners[i] = camera_.ToView(Sum(solid.at, Rotate(CornerOf(solid.size, i), solid.angles)));
  for (const Side& side : kSides) {
    const Triple out = Rotate(side.out, solid.angles);
    const Triple middle = Sum(solid.at, Rotate({side.out.x * solid.size.x / 2, side.out.y * solid.size.y / 2,
                                                side.out.z * solid.size.z / 2},
                                               solid.angles));
    const Triple& eye = camera_.at();
    if (Dot(out, {middle.x - eye.x, middle.y - eye.y, middle.z - eye.z}) >= 0) continue;
    Corner face[8];
    int count = 0;
    for (int i = 0; i < 4; ++i) {
      const Triple& a = corners[side.corners[i]];
      const Triple& b = corners[side.corners[(i + 1) % 4]];
      const auto add = [&](const Triple& point) {
        const Spot spot = camera_.PlaceOf(point);
        face[count++] = {spot.x, spot.y, 1 / spot.depth};
      };
      if (a.x >= kNear) add(a);
      if ((a.x >= kNear) != (b.x >= kNear)) add(AtNear(a, b));
    }
    if (count < 3) continue;
    const double sun = std::max(Dot(out, light_.sun), 0.0) * solid.albedo;
    const double own = solid.ambient + light_.ambient;
    const Rgb color{Shade(solid.color.red, own + sun * light_.color.red / 255),
                    Shade(solid.color.green, own + sun * light_.color.green / 255),
                    Shade(solid.color.blue, own + sun * light_.color.blue / 255)};
    FillFace(face, count, color, Cover(solid.alpha));
  }
}

// A convex face, line by line. 1 / depth changes evenly over the picture.
void Rasteriser::FillFace(const Corner* corners, int count, const Rgb& color, int cover) {
  double top = corners[0].y, bottom = corners[0].y;
  for (int i = 1; i < count; ++i) {
    top = std::min(top, corners[i].y);
    bottom = std::max(bottom, corners[i].y);
  }
  const uint32_t plain = Canvas::Pack(color);
  const uint32_t fog = Canvas::Pack(fog_.color);
  const int first = static_cast<int>(std::max<double>(std::ceil(top - 0.5), clip_.top));
  const int last = static_cast<int>(std::min<double>(std::ceil(bottom - 0.5), clip_.bottom));
  for (int y = first; y < last; ++y) {
    Corner left{1e30, 0, 0}, right{-1e30, 0, 0};
    for (int i = 0; i < count; ++i) {
      const Corner& a = corners[i];
      const Corner& b = corners[(i + 1) % count];
      if ((a.y <= y + 0.5) == (b.y <= y + 0.5)) continue;
      const double share = (y + 0.5 - a.y) / (b.y - a.y);
      const Corner cut{a.x + (b.x - a.x) * share, 0, a.inverse + (b.inverse - a.inverse) * share};
      if (cut.x < left.x) left = cut;
      if (cut.x > right.x) right = cut;
    }
    if (left.x > right.x) continue;
    const double slope = right.x > left.x ? (right.inverse - left.inverse) / (right.x - left.x) : 0;
    const int begin = static_cast<int>(std::max<double>(std::ceil(left.x - 0.5), clip_.left));
    const int end = static_cast<int>(std::min<double>(std::ceil(right.x - 0.5), clip_.right));
    for (int x = begin; x < end; ++x) {
      const double inverse = left.inverse + slope * (x + 0.5 - left.x);
      if (inverse * kFar < 1) continue;
      const int veil = fog_.strength > 0 ? fog_.CoverAt(1 / inverse) : 0;
      Put(x, y, static_cast<float>(inverse), veil > 0 ? Canvas::Mix(plain, fog, veil) : plain, cover);
    }
  }
}

// It always faces the view; only its roll, and that of the view, turn it.
void Rasteriser::DrawPicture(const Solid& solid) {
  const Triple middle = camera_.ToView(solid.at);
  if (middle.x < kNear || middle.x > kFar) return;
  const Spot spot = camera_.PlaceOf(middle);
  const double width = solid.size.x * camera_.focal() / middle.x;
  const double height = solid.size.y * camera_.focal() / middle.x;
  if (!(width > 0) || !(height > 0)) return;
  const double turn = (solid.angles.z - roll_) * kDegree;
  const double across = std::cos(turn), down = std::sin(turn);
  const double reach_x = (std::abs(across) * width + std::abs(down) * height) / 2;
  const double reach_y = (std::abs(down) * width + std::abs(across) * height) / 2;
  const int left =
      static_cast<int>(std::clamp<double>(std::floor(spot.x - reach_x), clip_.left, clip_.right));
  const int right =
      static_cast<int>(std::clamp<double>(std::ceil(spot.x + reach_x) + 1, clip_.left, clip_.right));
  const int top = static_cast<int>(std::clamp<double>(std::floor(spot.y - reach_y), clip_.top, clip_.bottom));
  const int bottom =
      static_cast<int>(std::clamp<double>(std::ceil(spot.y + reach_y) + 1, clip_.top, clip_.bottom));

  // Pictures have no sides that the sun could reach: their usual ambient of one half shows them as they are.
  const double bright = std::clamp(2 * (solid.ambient + light_.ambient), 0.0, 1.0);
  const int tint[3] = {static_cast<int>(solid.color.red * bright * 256 / 255 + 0.5),
                       static_cast<int>(solid.color.green * bright * 256 / 255 + 0.5),
                       static_cast<int>(solid.color.blue * bright * 256 / 255 + 0.5)};
  const uint32_t fog = Canvas::Pack(fog_.color);
  const int veil = fog_.CoverAt(middle.x);
  const int cover = Cover(solid.alpha);
  const auto inverse = static_cast<float>(1 / middle.x);
  const Sheet& sheet = solid.sheet;
  for (int y = top; y < bottom; ++y) {
    for (int x = left; x < right; ++x) {
      const double dx = x + 0.5 - spot.x;
      const double dy = y + 0.5 - spot.y;
      const double u = (across * dx - down * dy) / width + 0.5;
      const double v = (down * dx + across * dy) / height + 0.5;
      if (u < 0 || u >= 1 || v < 0 || v >= 1) continue;
      const size_t at = static_cast<size_t>(v * sheet.height) * static_cast<size_t>(sheet.width) +
                        static_cast<size_t>(u * sheet.width);
      const uint8_t* pixel = sheet.pixels + 3 * at;
      if ((pixel[0] | pixel[1] | pixel[2]) == 0) continue;
      uint32_t color =
          Canvas::Pack({pixel[0] * tint[0] >> 8, pixel[1] * tint[1] >> 8, pixel[2] * tint[2] >> 8});
      if (veil > 0) color = Canvas::Mix(color, fog, veil);
      Put(x, y, inverse, color, cover);
    }
  }
}

void Rasteriser::DrawLevelLine(Triple from, Triple to, const Rgb& color) {
  from = camera_.ToView(from);
  to = camera_.ToView(to);
  if (from.x < kNear && to.x < kNear) return;
  if (from.x < kNear) from = AtNear(from, to);
  if (to.x < kNear) to = AtNear(to, from);
  const Spot a = camera_.PlaceOf(from);
  const Spot b = camera_.PlaceOf(to);
  const auto pixel = [](double place) {
    return static_cast<int64_t>(std::clamp(WholePixel(place), -1e6, 1e6));
  };
  canvas_.Line(pixel(a.x), pixel(a.y), pixel(b.x), pixel(b.y), color, clip_);
}

void Rasteriser::DrawEdges(const Triple& at, const Triple& size, const Rgb& color) {
  for (int from = 0; from < 8; ++from) {
    for (int bit = 1; bit < 8; bit *= 2) {
      if ((from & bit) == 0)
        DrawLevelLine(Sum(at, CornerOf(size, from)), Sum(at, CornerOf(size, from | bit)), color);
    }
  }
}

void Rasteriser::DrawCross(const Triple& at, const Rgb& color) {
  const Triple middle = camera_.ToView(at);
  if (middle.x < kNear) return;
  const Spot spot = camera_.PlaceOf(middle);
  const auto x = static_cast<int64_t>(std::clamp(WholePixel(spot.x), -1e6, 1e6));
  const auto y = static_cast<int64_t>(std::clamp(WholePixel(spot.y), -1e6, 1e6));
  canvas_.Line(x - 4, y, x + 4, y, color, clip_);
  canvas_.Line(x, y - 4, x, y + 4, color, clip_);
}

}  // namespace korvel::window
