#include "engine/show/Recorder.h"

#include <algorithm>
#include <cstdio>

#include "engine/run/Screen.h"
#include "engine/run/Session.h"
#include "engine/scene/Boxes.h"
#include "engine/scene/Camera.h"

namespace korvel {
namespace {

constexpr size_t kItemsBytes = wire::kFrameBytes - sizeof(wire::Frame);
/// Of a sound with a place: where it is half as loud as nearby, in units.
constexpr double kHalfLoud = 300;

double Share(Fixed percent) {
  return std::clamp(ToDouble(percent) / 100, 0.0, 1.0);
}

wire::Rgb ColorOf(Fixed red, Fixed green, Fixed blue) {
  const auto part = [](Fixed value) { return static_cast<uint8_t>(std::clamp(Floor(value), 0, 255)); };
  return {part(red), part(green), part(blue), 0};
}
wire::Rgb ColorOf(const Color& color) {
  return {color.red, color.green, color.blue, 0};
}

Fixed LayerOf(const KorvelHead* object) {
  switch (object->kind) {
    case kKorvelPanel:
      return reinterpret_cast<const Panel*>(object)->layer;
    case kKorvelText:
      return reinterpret_cast<const Text*>(object)->layer;
    case kKorvelView:
      return reinterpret_cast<const View*>(object)->layer;
    case kKorvelSky:
      return reinterpret_cast<const Sky*>(object)->layer;
    default:
      return reinterpret_cast<const Entity*>(object)->layer;
  }
}

}  // namespace

template <class T>
T* Recorder::Add(wire::Kind kind, size_t more_bytes) {
  const size_t bytes = (sizeof(wire::Item) + sizeof(T) + more_bytes + 7) / 8 * 8;
  if (used_ + bytes > kItemsBytes) return nullptr;
  auto* item = new (begin_ + used_) wire::Item{kind, static_cast<uint32_t>(bytes)};
  used_ += static_cast<uint32_t>(bytes);
  return new (item + 1) T{};
}

void Recorder::Write(Session& session, wire::Frame* frame, uint64_t sequence) {
  begin_ = reinterpret_cast<char*>(frame + 1);
  used_ = 0;
  sequence_ = sequence;
  const Screen& screen = session.scene.screen;
  frame->sequence = sequence;
  frame->width = screen.width;
  frame->height = screen.height;
  frame->color = ColorOf(korvel::ColorOf(screen));
  frame->pointer = screen.pointer;
  frame->master = static_cast<float>(Share(session.sounds.master));
  const std::string_view title = TitleOf(screen).substr(0, sizeof frame->title - 1);
  std::copy(title.begin(), title.end(), frame->title);
  frame->title[title.size()] = 0;
  AddSounds(session);
  AddViews(session);
  AddOverlays(session);
  AddMarks(session);
  AddDebug(session);
  frame->bytes = used_;
  pixels_.Sweep(sequence);
}

void Recorder::AddSounds(Session& session) {
  Sounds& sounds = session.sounds;
  for (int i = 0; i < Sounds::kMost; ++i) {
    Voice& voice = sounds.voice(i);
    if (voice.handle == 0 || voice.file == nullptr) continue;
    double volume = Share(voice.volume);
    double balance = ToDouble(voice.balance) / 100;
    if (voice.placed) {
      if (voice.source != nullptr) {
        voice.place[0] = voice.source->x;
        voice.place[1] = voice.source->y;
        voice.place[2] = voice.source->z;
      }
      const auto* camera = static_cast<const View*>(session.world.camera());
      const Triple heard =
          CameraOf(*camera, session.scene.screen)
              .ToView({ToDouble(voice.place[0]), ToDouble(voice.place[1]), ToDouble(voice.place[2])});
      const double distance = Length(heard);
      volume *= kHalfLoud / (kHalfLoud + distance);
      balance = distance > 0 ? -heard.y / distance : 0;
    }
    const size_t bytes = std::strlen(voice.file);
    if (auto* item = Add<wire::Voice>(wire::Kind::kVoice, bytes)) {
      *item = {voice.handle,
               voice.looped,
               static_cast<float>(volume),
               static_cast<float>(balance),
               static_cast<float>(ToDouble(voice.pitch) / 100),
               static_cast<uint32_t>(bytes)};
      std::memcpy(item + 1, voice.file, bytes);
    }
  }
  if (sounds.music == nullptr) return;
  const size_t bytes = std::strlen(sounds.music);
  if (auto* item = Add<wire::Music>(wire::Kind::kMusic, bytes)) {
    *item = {sounds.music_number, static_cast<float>(Share(sounds.music_volume)),
             static_cast<uint32_t>(bytes), 0};
    std::memcpy(item + 1, sounds.music, bytes);
  }
}

void Recorder::Collect(const List<KorvelHead*>& objects) {
  for (const KorvelHead* object : objects) {
    if (IsShown(*object)) order_.Add({LayerOf(object), order_.size(), object});
  }
}

// By layer; of equal ones the first stays the first.
void Recorder::Sort() {
  std::sort(order_.begin(), order_.end(), [](const Layered& a, const Layered& b) {
    return a.layer != b.layer ? a.layer < b.layer : a.number < b.number;
  });
}

wire::View Recorder::ViewOf(Session& session, const View& view) const {
  const Scene& scene = session.scene;
  const Area area = CameraOf(view, scene.screen).area();
  wire::View wired{};
  const Triple at{ToDouble(view.x) + view.shake.x, ToDouble(view.y) + view.shake.y,
                  ToDouble(view.z) + view.shake.z};
  std::memcpy(wired.at, &at, sizeof wired.at);
  const Triple angles{ToDouble(view.pan), ToDouble(view.tilt), ToDouble(view.roll)};
  std::memcpy(wired.angles, &angles, sizeof wired.angles);
  wired.fov = ToDouble(view.fov);
  wired.x = area.x;
  wired.y = area.y;
  wired.width = area.width;
  wired.height = area.height;
  wired.offset_x = ToDouble(view.offset_x);
  wired.offset_y = ToDouble(view.offset_y);
  wired.alpha = Share(view.alpha);
  wired.ambient = Share(view.ambient);
  wired.fog = view.fog_end > view.fog_start ? Share(view.fog) : 0;
  wired.fog_start = ToDouble(view.fog_start);
  wired.fog_end = ToDouble(view.fog_end);
  wired.fog_color = view.has_fog_color
                        ? wire::Rgb{static_cast<uint8_t>(view.fog_red), static_cast<uint8_t>(view.fog_green),
                                    static_cast<uint8_t>(view.fog_blue), 0}
                        : ColorOf(korvel::ColorOf(scene.screen));
  const Triple sun = Rotate({1, 0, 0}, {scene.sun.pan, scene.sun.tilt, 0});
  std::memcpy(wired.sun, &sun, sizeof wired.sun);
  wired.sun_color = ColorOf(scene.sun.color);
  return wired;
}

void Recorder::AddViews(Session& session) {
  order_.Clear();
  Collect(session.world.all(kKorvelView));
  Sort();
  const uint32_t views = order_.size();
  Collect(session.world.all(kKorvelSky));
  std::sort(order_.begin() + views, order_.end(), [](const Layered& a, const Layered& b) {
    return a.layer != b.layer ? a.layer < b.layer : a.number < b.number;
  });
  for (uint32_t i = 0; i < views; ++i) {
    auto* item = Add<wire::View>(wire::Kind::kView);
    if (item == nullptr) return;
    *item = ViewOf(session, *reinterpret_cast<const View*>(order_[i].object));
    for (uint32_t k = views; k < order_.size(); ++k) {
      const auto& sky = *reinterpret_cast<const Sky*>(order_[k].object);
      if (auto* wired = Add<wire::Sky>(wire::Kind::kSky)) {
        *wired = {ToDouble(sky.pan), ToDouble(sky.tilt), ColorOf(sky.red, sky.green, sky.blue),
                  static_cast<uint32_t>(std::max(Floor(sky.stars), 0))};
      }
    }
    for (const Entity* entity = session.world.first_entity(); entity != nullptr; entity = entity->next) {
      if (IsShown(entity->head)) AddBody(*entity);
    }
    Add<uint64_t>(wire::Kind::kEndView);
  }
}

void Recorder::AddBody(const Entity& entity) {
  auto* body = entity.alpha > 0 ? Add<wire::Body>(wire::Kind::kBody) : nullptr;
  if (body == nullptr) return;
  const Triple at{ToDouble(entity.x), ToDouble(entity.y), ToDouble(entity.z)};
  const Triple angles{ToDouble(entity.pan), ToDouble(entity.tilt), ToDouble(entity.roll)};
  const Triple size = SizeOf(entity);
  std::memcpy(body->at, &at, sizeof body->at);
  std::memcpy(body->angles, &angles, sizeof body->angles);
  const double sizes[3] = {size.x, entity.picture != nullptr ? size.z : size.y, size.z};
  std::memcpy(body->size, sizes, sizeof body->size);
  // Another surface takes the place of the entity's own.
  const Material* surface = static_cast<const Material*>(entity.surface);
  body->color = surface != nullptr ? ColorOf(surface->red, surface->green, surface->blue)
                                   : ColorOf(entity.red, entity.green, entity.blue);
  body->ambient = Share(surface != nullptr ? surface->ambient : entity.ambient);
  body->albedo = Share(surface != nullptr ? surface->albedo : entity.albedo);
  body->alpha = Share(entity.alpha);
  if (entity.picture != nullptr) body->pixels = pixels_.Place(*entity.picture, sequence_);
}

void Recorder::AddOverlays(Session& session) {
  order_.Clear();
  Collect(session.world.all(kKorvelPanel));
  Collect(session.world.all(kKorvelText));
  Collect(session.world.all(kKorvelScreenEntity));
  Sort();
  for (const Layered& entry : order_) {
    if (entry.object->kind == kKorvelPanel) {
      AddPanel(*reinterpret_cast<const Panel*>(entry.object));
    } else if (entry.object->kind == kKorvelText) {
      AddText(*reinterpret_cast<const Text*>(entry.object));
    } else {
      AddScreenEntity(session, *reinterpret_cast<const Entity*>(entry.object));
    }
  }
}

// It stands before a view of its own that looks from the origin and fills the window.
void Recorder::AddScreenEntity(Session& session, const Entity& entity) {
  if (entity.picture == nullptr && entity.file == nullptr) return;
  View view{};
  view.fov = 60 * kOne;
  view.alpha = 100 * kOne;
  auto* item = Add<wire::View>(wire::Kind::kView);
  if (item == nullptr) return;
  *item = ViewOf(session, view);
  AddBody(entity);
  Add<uint64_t>(wire::Kind::kEndView);
}

void Recorder::AddPanel(const Panel& panel) {
  if (panel.picture == nullptr || panel.alpha <= 0) return;
  const wire::Pixels pixels = pixels_.Place(*static_cast<const Bitmap*>(panel.picture), sequence_);
  if (auto* item = Add<wire::Picture>(wire::Kind::kPicture)) {
    *item = {ToDouble(panel.pos_x),   ToDouble(panel.pos_y), ToDouble(panel.scale_x),
             ToDouble(panel.scale_y), Share(panel.alpha),    pixels};
  }
}

void Recorder::AddLine(const wire::Text& line, std::string_view face, std::string_view text) {
  if (text.empty()) return;
  auto* item = Add<wire::Text>(wire::Kind::kText, face.size() + text.size());
  if (item == nullptr) return;
  *item = line;
  item->face_bytes = static_cast<uint32_t>(face.size());
  item->text_bytes = static_cast<uint32_t>(text.size());
  char* bytes = reinterpret_cast<char*>(item + 1);
  std::copy(text.begin(), text.end(), std::copy(face.begin(), face.end(), bytes));
}

void Recorder::AddText(const Text& text) {
  const auto* font = static_cast<const Font*>(text.face);
  wire::Text line{};
  line.x = ToDouble(text.pos_x);
  line.y = ToDouble(text.pos_y);
  line.scale_x = ToDouble(text.scale_x);
  line.scale_y = ToDouble(text.scale_y);
  line.alpha = Share(text.alpha);
  line.width = font != nullptr ? font->width : kUsualFontWidth;
  line.height = font != nullptr ? font->height : kUsualFontHeight;
  line.color = ColorOf(text.red, text.green, text.blue);
  const std::string_view face = font != nullptr ? font->face : "";
  const auto lines = static_cast<uint32_t>(Floor(text.lines));
  for (uint32_t i = 0; i < lines && i < text.line_capacity; ++i) {
    std::string_view rest = static_cast<const StringObject*>(text.strings[i])->view();
    for (;;) {
      const size_t end = std::min(rest.find('\n'), rest.size());
      AddLine(line, face, rest.substr(0, end));
      line.y += line.height * line.scale_y;
      if (end == rest.size()) break;
      rest.remove_prefix(end + 1);
    }
  }
}

void Recorder::AddMarks(Session& session) {
  const Marks& marks = session.scene.marks;
  for (const Mark& mark : marks.list()) {
    switch (mark.kind) {
      case Mark::kText: {
        wire::Text line{};
        line.x = mark.x;
        line.y = mark.y;
        line.scale_x = line.scale_y = line.alpha = 1;
        line.width = mark.font_width;
        line.height = mark.font_height;
        line.color = ColorOf(mark.color);
        AddLine(line, mark.face, marks.TextOf(mark));
        break;
      }
      case Mark::kPicture:
        if (auto* item = Add<wire::Picture>(wire::Kind::kPicture)) {
          *item = {static_cast<double>(mark.x),
                   static_cast<double>(mark.y),
                   1,
                   1,
                   1,
                   pixels_.Place(*mark.picture, sequence_)};
        }
        break;
      case Mark::kLine:
      case Mark::kFill:
      case Mark::kFrame: {
        const wire::Kind kind = mark.kind == Mark::kLine   ? wire::Kind::kLine
                                : mark.kind == Mark::kFill ? wire::Kind::kFill
                                                           : wire::Kind::kFrame;
        if (auto* item = Add<wire::Mark>(kind))
          *item = {mark.x, mark.y, mark.width, mark.height, ColorOf(mark.color), 0};
        break;
      }
      default:
        break;
    }
  }
}

// Boxes and points of the level are seen in all views, then come the lines of debug_show.
void Recorder::AddDebug(Session& session) {
  const Marks& marks = session.scene.marks;
  bool any = false;
  for (const Mark& mark : marks.list()) any = any || mark.kind >= Mark::kDebugBox;
  for (const KorvelHead* head : session.world.all(kKorvelView)) {
    auto* item = any && IsShown(*head) ? Add<wire::View>(wire::Kind::kView) : nullptr;
    if (item == nullptr) continue;
    *item = ViewOf(session, *reinterpret_cast<const View*>(head));
    item->alpha = 1;
    for (const Mark& mark : marks.list()) {
      if (mark.kind < Mark::kDebugBox) continue;
      const bool box = mark.kind == Mark::kDebugBox;
      auto* body = Add<wire::Body>(box ? wire::Kind::kLevelBox : wire::Kind::kLevelPoint);
      if (body == nullptr) break;
      body->color = ColorOf(mark.color);
      const Triple high = box ? mark.high : mark.low;
      const double at[3] = {(mark.low.x + high.x) / 2, (mark.low.y + high.y) / 2, (mark.low.z + high.z) / 2};
      const double size[3] = {high.x - mark.low.x, high.y - mark.low.y, high.z - mark.low.z};
      std::memcpy(body->at, at, sizeof at);
      std::memcpy(body->size, size, sizeof size);
    }
    Add<uint64_t>(wire::Kind::kEndView);
  }
  if (!session.scene.debug_text) return;
  wire::Text line{};
  line.x = line.y = 4;
  line.scale_x = line.scale_y = line.alpha = 1;
  line.width = kUsualFontWidth;
  line.height = kUsualFontHeight;
  line.color = {255, 255, 255, 0};
  const auto add = [this, &line](const char* format, const char* name, unsigned number) {
    char text[300];
    std::snprintf(text, sizeof text, format, name, number);
    AddLine(line, "", text);
    line.y += line.height;
  };
  add("%s%u frames a second", "", static_cast<unsigned>(session.fps));
  add("%s%u entities", "", session.world.entity_count());
  for (const Function* function : session.program.functions) {
    if (function->copies > 0) add("%.200s %u", function->name->text, function->copies);
  }
}

}  // namespace korvel
