// Panels and the pixels of bitmaps.
#include "engine/commands/Arguments.h"
#include "engine/commands/Tables.h"

namespace korvel {
namespace {

Value PanCreate(Session& s, const Value* a) {
  auto* panel = s.world.Make<Panel>(kKorvelPanel);
  if (panel == nullptr) {
    s.Fault("There is no more memory for another panel.");
    return kNull;
  }
  panel->picture = ToObject<Bitmap>(a[0]);
  WriteCell(&panel->layer, Number(a[1]));
  return ToValue(panel);
}

Value PanRemove(Session& s, const Value* a) {
  s.world.Remove(&As<Panel>(a[0]).head);
  return 0;
}

Value PanShow(Session&, const Value* a) {
  auto& head = As<Panel>(a[0]).head;
  head.flags = static_cast<uint8_t>(Flag(a[1]) ? head.flags | kShown : head.flags & ~kShown);
  return 0;
}

Value PanVisible(Session&, const Value* a) {
  return GiveBool(IsShown(As<Panel>(a[0]).head));
}

Value PanMove(Session&, const Value* a) {
  auto& panel = As<Panel>(a[0]);
  WriteCell(&panel.pos_x, Number(a[1]));
  WriteCell(&panel.pos_y, Number(a[2]));
  return 0;
}

Value PanAlpha(Session&, const Value* a) {
  WriteCell(&As<Panel>(a[0]).alpha, std::clamp(Number(a[1]), 0, 100 * kOne));
  return 0;
}

Value PanScale(Session&, const Value* a) {
  auto& panel = As<Panel>(a[0]);
  WriteCell(&panel.scale_x, std::clamp(Number(a[1]), 0, 1000 * kOne));
  WriteCell(&panel.scale_y, std::clamp(Number(a[2]), 0, 1000 * kOne));
  return 0;
}

Value PanBitmap(Session&, const Value* a) {
  As<Panel>(a[0]).picture = ToObject<Bitmap>(a[1]);
  return 0;
}

Value PanHit(Session&, const Value* a) {
  const auto& panel = As<Panel>(a[0]);
  if (!IsShown(panel.head) || panel.picture == nullptr) return 0;
  const double x = Real(a[1]) - ToDouble(panel.pos_x);
  const double y = Real(a[2]) - ToDouble(panel.pos_y);
  return GiveBool(x >= 0 && y >= 0 && x < panel.picture->width * ToDouble(panel.scale_x) &&
                  y < panel.picture->height * ToDouble(panel.scale_y));
}

Value BmapCreate(Session& s, const Value* a) {
  return ToValue(s.world.ReadBitmap(TextOf(a[0])));
}

Value BmapBlank(Session& s, const Value* a) {
  Bitmap* bitmap = s.world.MakeBitmap(std::clamp(Whole(a[0]), 1, 2048), std::clamp(Whole(a[1]), 1, 2048));
  if (bitmap == nullptr) s.Fault("There is no more memory for another bitmap.");
  return ToValue(bitmap);
}

Value BmapRemove(Session& s, const Value* a) {
  auto& head = As<Bitmap>(a[0]).head;
  if ((head.flags & kByScript) == 0) s.world.Remove(&head);
  return 0;
}

Value BmapWidth(Session&, const Value* a) {
  return GiveWhole(As<Bitmap>(a[0]).width);
}
Value BmapHeight(Session&, const Value* a) {
  return GiveWhole(As<Bitmap>(a[0]).height);
}

uint8_t* PixelAt(const Bitmap& bitmap, int64_t x, int64_t y) {
  if (x < 0 || y < 0 || x >= bitmap.width || y >= bitmap.height) return nullptr;
  return bitmap.pixels + 3 * (y * bitmap.width + x);
}

struct Pixel {
  uint8_t parts[3];
};

Pixel ReadColor(Value vector) {
  const auto* cells = reinterpret_cast<const Fixed*>(vector);
  Pixel color;
  for (int i = 0; i < 3; ++i) color.parts[i] = static_cast<uint8_t>(std::clamp(Floor(cells[i]), 0, 255));
  return color;
}

Value BmapPixel(Session&, const Value* a) {
  const uint8_t* pixel = PixelAt(As<Bitmap>(a[1]), Whole(a[2]), Whole(a[3]));
  if (pixel == nullptr) return 0;
  for (int i = 0; i < 3; ++i) WriteCell(reinterpret_cast<Fixed*>(a[0]) + i, FromInt(pixel[i]));
  return kOne;
}

Value BmapSetPixel(Session&, const Value* a) {
  auto& bitmap = As<Bitmap>(a[0]);
  uint8_t* pixel = PixelAt(bitmap, Whole(a[1]), Whole(a[2]));
  if (pixel == nullptr) return 0;
  std::memcpy(pixel, ReadColor(a[3]).parts, 3);
  ++bitmap.version;
  return 0;
}

void Fill(Bitmap& bitmap, int64_t left, int64_t top, int64_t right, int64_t bottom, const Pixel& color) {
  left = std::max<int64_t>(left, 0);
  top = std::max<int64_t>(top, 0);
  right = std::min<int64_t>(right, bitmap.width);
  bottom = std::min<int64_t>(bottom, bitmap.height);
  ++bitmap.version;
  for (int64_t y = top; y < bottom; ++y) {
    for (int64_t x = left; x < right; ++x) std::memcpy(PixelAt(bitmap, x, y), color.parts, 3);
  }
}

Value BmapFill(Session&, const Value* a) {
  auto& bitmap = As<Bitmap>(a[0]);
  Fill(bitmap, 0, 0, bitmap.width, bitmap.height, ReadColor(a[1]));
  return 0;
}

Value BmapBox(Session&, const Value* a) {
  const int64_t x = Whole(a[1]);
  const int64_t y = Whole(a[2]);
  Fill(As<Bitmap>(a[0]), x, y, x + Whole(a[3]), y + Whole(a[4]), ReadColor(a[5]));
  return 0;
}

Value BmapCopy(Session&, const Value* a) {
  auto& target = As<Bitmap>(a[0]);
  const auto& source = As<Bitmap>(a[1]);
  const int64_t left = Whole(a[2]);
  const int64_t top = Whole(a[3]);
  if (&target == &source && left == 0 && top == 0) return 0;
  ++target.version;
  for (int64_t y = 0; y < source.height; ++y) {
    for (int64_t x = 0; x < source.width; ++x) {
      const uint8_t* from = PixelAt(source, x, y);
      uint8_t* to = PixelAt(target, left + x, top + y);
      if (to != nullptr && (from[0] | from[1] | from[2]) != 0) std::memcpy(to, from, 3);
    }
  }
  return 0;
}

constexpr Command kRows[] = {
    {"pan_create", "p:bn", PanCreate},   {"pan_remove", "-:p", PanRemove},
    {"pan_show", "-:pn", PanShow},       {"pan_visible", "n:p", PanVisible},
    {"pan_move", "-:pnn", PanMove},      {"pan_alpha", "-:pn", PanAlpha},
    {"pan_scale", "-:pnn", PanScale},    {"pan_bitmap", "-:pb", PanBitmap},
    {"pan_hit", "n:pnn", PanHit},        {"bmap_create", "b:s", BmapCreate},
    {"bmap_blank", "b:nn", BmapBlank},   {"bmap_remove", "-:b", BmapRemove},
    {"bmap_width", "n:b", BmapWidth},    {"bmap_height", "n:b", BmapHeight},
    {"bmap_pixel", "n:Vbnn", BmapPixel}, {"bmap_set_pixel", "-:bnnv", BmapSetPixel},
    {"bmap_fill", "-:bv", BmapFill},     {"bmap_box", "-:bnnnnv", BmapBox},
    {"bmap_copy", "-:bbnn", BmapCopy},
};

}  // namespace

const CommandTable kPanelCommands = TableOf(kRows);

}  // namespace korvel
