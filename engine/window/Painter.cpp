#include "engine/window/Painter.h"

#include <algorithm>
#include <cstring>

namespace korvel::window {
namespace {

constexpr int kLargestSide = 4096;

Rgb ColorOf(const wire::Rgb& color) {
  return {color.red, color.green, color.blue};
}
Triple TripleOf(const double (&numbers)[3]) {
  return {numbers[0], numbers[1], numbers[2]};
}
int Cover(double share) {
  return static_cast<int>(std::clamp(share, 0.0, 1.0) * 256 + 0.5);
}

// Stars are where they are: the same ones in each game.
struct Star {
  Triple direction;
  int bright;
};

Star StarOf(uint32_t number) {
  uint64_t state = (number + 1) * 0x9e3779b97f4a7c15u;
  const auto next = [&state] {
    state ^= state >> 30;
    state *= 0xbf58476d1ce4e5b9u;
    state ^= state >> 27;
    return static_cast<double>(state >> 11) / static_cast<double>(uint64_t{1} << 53);
  };
  const double height = 2 * next() - 1;
  const double around = 360 * kDegree * next();
  const double flat = std::sqrt(1 - height * height);
  return {{flat * std::cos(around), flat * std::sin(around), height}, 100 + static_cast<int>(155 * next())};
}

}  // namespace

Items::Items(const wire::Frame& frame)
    : at_(reinterpret_cast<const char*>(&frame + 1)),
      left_(std::min<size_t>(frame.bytes, wire::kFrameBytes - sizeof(wire::Frame))) {}

bool Items::Next() {
  at_ += item_.bytes;
  left_ -= item_.bytes;
  item_.bytes = 0;
  if (left_ < sizeof item_) return false;
  std::memcpy(&item_, at_, sizeof item_);
  if (item_.bytes >= sizeof item_ && item_.bytes <= left_) return true;
  item_.bytes = 0;
  left_ = 0;
  return false;
}

bool Items::Copy(void* to, size_t bytes) const {
  if (item_.bytes < sizeof item_ + bytes) return false;
  std::memcpy(to, at_ + sizeof item_, bytes);
  return true;
}

const Canvas& Painter::Paint(const wire::Frame& frame, const wire::Shared* memory) {
  memory_ = memory;
  canvas_.Resize(std::clamp(frame.width, 1, kLargestSide), std::clamp(frame.height, 1, kLargestSide));
  canvas_.Clear(ColorOf(frame.color));
  for (Items items(frame); items.Next();) {
    switch (items.kind()) {
      case wire::Kind::kView:
        BeginView(items);
        break;
      case wire::Kind::kEndView:
        EndView();
        break;
      case wire::Kind::kSky:
        PaintSky(items);
        break;
      case wire::Kind::kBody:
      case wire::Kind::kLevelBox:
      case wire::Kind::kLevelPoint:
        PaintBody(items);
        break;
      case wire::Kind::kText:
        PaintText(items);
        break;
      default:
        PaintFlat(items);
        break;
    }
  }
  EndView();
  return canvas_;
}

Sheet Painter::SheetOf(const wire::Pixels& pixels) const {
  if (pixels.offset < wire::kFirstPixel || pixels.offset >= wire::kFirstShot) return {};
  if (pixels.width < 1 || pixels.height < 1 || pixels.width > kLargestSide || pixels.height > kLargestSide)
    return {};
  const auto bytes = static_cast<uint64_t>(pixels.width) * static_cast<uint64_t>(pixels.height) * 3;
  if (bytes > wire::kFirstShot - pixels.offset) return {};
  return {reinterpret_cast<const uint8_t*>(memory_) + pixels.offset, pixels.width, pixels.height};
}

void Painter::BeginView(const Items& items) {
  EndView();
  if (!items.Read(&view_)) return;
  in_view_ = true;
  camera_ = Camera(TripleOf(view_.at), TripleOf(view_.angles), std::clamp(view_.fov, 5.0, 170.0),
                   {view_.x, view_.y, view_.width, view_.height}, view_.offset_x, view_.offset_y);
  const Fog fog{view_.fog, view_.fog_start, view_.fog_end, ColorOf(view_.fog_color)};
  const Light light{view_.ambient, TripleOf(view_.sun), ColorOf(view_.sun_color)};
  rasteriser_.Begin(camera_, view_.angles[2], fog, light);
  if (view_.alpha < 1)
    behind_.assign(canvas_.pixels(), canvas_.pixels() + canvas_.width() * canvas_.height());
}

void Painter::EndView() {
  if (!in_view_) return;
  in_view_ = false;
  rasteriser_.Finish();
  if (view_.alpha >= 1) return;
  const Clip& clip = rasteriser_.clip();
  const int cover = Cover(view_.alpha);
  for (int y = clip.top; y < clip.bottom; ++y) {
    uint32_t* row = canvas_.row(y);
    const uint32_t* before = behind_.data() + static_cast<size_t>(y) * static_cast<size_t>(canvas_.width());
    for (int x = clip.left; x < clip.right; ++x) row[x] = Canvas::Mix(before[x], row[x], cover);
  }
}

void Painter::PaintSky(const Items& items) {
  wire::Sky sky;
  if (!in_view_ || !items.Read(&sky)) return;
  const Clip& clip = rasteriser_.clip();
  canvas_.Fill(clip.left, clip.top, clip.right - clip.left, clip.bottom - clip.top, ColorOf(sky.color));
  const Triple angles{sky.pan, sky.tilt, 0};
  for (uint32_t i = 0; i < std::min(sky.stars, 10'000u); ++i) {
    const Star star = StarOf(i);
    const Triple way = Rotate(star.direction, angles);
    const Triple& eye = camera_.at();
    const Triple seen = camera_.ToView({eye.x + way.x, eye.y + way.y, eye.z + way.z});
    if (seen.x < 0.01) continue;
    const Spot spot = camera_.PlaceOf(seen);
    const double x = WholePixel(spot.x);
    const double y = WholePixel(spot.y);
    if (x >= clip.left && x < clip.right && y >= clip.top && y < clip.bottom)
      canvas_.row(static_cast<int>(y))[static_cast<int>(x)] =
          Canvas::Pack({star.bright, star.bright, star.bright});
  }
}

void Painter::PaintBody(const Items& items) {
  wire::Body body;
  if (!in_view_ || !items.Read(&body)) return;
  if (items.kind() == wire::Kind::kLevelBox) {
    rasteriser_.DrawEdges(TripleOf(body.at), TripleOf(body.size), ColorOf(body.color));
  } else if (items.kind() == wire::Kind::kLevelPoint) {
    rasteriser_.DrawCross(TripleOf(body.at), ColorOf(body.color));
  } else {
    const Sheet sheet = SheetOf(body.pixels);
    // Pixels for which there was no room leave a hole, not a box.
    if (body.pixels.width > 0 && sheet.pixels == nullptr) return;
    rasteriser_.Add({TripleOf(body.at), TripleOf(body.angles), TripleOf(body.size), ColorOf(body.color),
                     body.ambient, body.albedo, body.alpha, sheet});
  }
}

void Painter::PaintFlat(const Items& items) {
  wire::Mark mark;
  wire::Picture picture;
  switch (items.kind()) {
    case wire::Kind::kPicture:
      if (items.Read(&picture)) {
        const Sheet sheet = SheetOf(picture.pixels);
        canvas_.Draw(sheet, picture.x, picture.y, sheet.width * picture.scale_x,
                     sheet.height * picture.scale_y, Cover(picture.alpha));
      }
      break;
    case wire::Kind::kLine:
      if (items.Read(&mark))
        canvas_.Line(mark.x, mark.y, mark.width, mark.height, ColorOf(mark.color),
                     canvas_.Inside(0, 0, canvas_.width(), canvas_.height()));
      break;
    case wire::Kind::kFill:
      if (items.Read(&mark)) canvas_.Fill(mark.x, mark.y, mark.width, mark.height, ColorOf(mark.color));
      break;
    case wire::Kind::kFrame:
      if (items.Read(&mark)) canvas_.Frame(mark.x, mark.y, mark.width, mark.height, ColorOf(mark.color));
      break;
    default:
      break;
  }
}

void Painter::PaintText(const Items& items) {
  wire::Text text;
  if (!items.Read(&text)) return;
  const std::string_view face = items.Behind<wire::Text>(0, text.face_bytes);
  const std::string_view letters = items.Behind<wire::Text>(text.face_bytes, text.text_bytes);
  if (letters.empty()) return;
  const double width = text.width * text.scale_x;
  const double height = text.height * text.scale_y;
  // Letters are made for their height, and stretched to a width of its own only where the scales differ.
  const auto cell_height = static_cast<int>(height + 0.5);
  const auto cell_width = static_cast<int>(text.width * text.scale_y + 0.5);
  double x = text.x;
  for (const char letter : letters) {
    if (x >= canvas_.width()) break;
    if (x + width > 0) {
      const Mask mask = fonts_.Letter(face, cell_width, cell_height, static_cast<uint8_t>(letter));
      canvas_.Draw(mask, x, text.y, width, height, ColorOf(text.color), Cover(text.alpha));
    }
    x += width;
  }
}

}  // namespace korvel::window
