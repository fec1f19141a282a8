#include "engine/run/Screen.h"

#include <algorithm>

#include "engine/run/Session.h"
#include "engine/scene/Camera.h"

namespace korvel {
namespace {

struct Mode {
  int number, width, height;
};
constexpr Mode kModes[] = {{6, 640, 480}, {7, 800, 600}, {8, 1024, 768}};

Fixed Read(const Fixed& cell) {
  return __atomic_load_n(&cell, __ATOMIC_RELAXED);
}

void Write(Fixed& cell, Fixed value) {
  __atomic_store_n(&cell, value, __ATOMIC_RELAXED);
}

uint8_t Part(const Fixed& cell) {
  return static_cast<uint8_t>(std::clamp(Floor(Read(cell)), 0, 255));
}

Fixed& ModeCell(Session& session) {
  return session.program.cells[session.program.video_mode->cell];
}

}  // namespace

bool SetScreenSize(Session& session, int width, int height) {
  Screen& screen = session.scene.screen;
  const ScreenSize desktop = session.host.Desktop();
  screen.width = std::clamp(width, 1, std::min(desktop.width, Screen::kLargest));
  screen.height = std::clamp(height, 1, std::min(desktop.height, Screen::kLargest));
  screen.seen_mode = 0;
  for (const Mode& mode : kModes) {
    if (mode.width == screen.width && mode.height == screen.height) screen.seen_mode = FromInt(mode.number);
  }
  Write(ModeCell(session), screen.seen_mode);
  if (screen.window != nullptr) {
    Write(screen.window->size_x, FromInt(screen.width));
    Write(screen.window->size_y, FromInt(screen.height));
    screen.seen_x = screen.window->size_x;
    screen.seen_y = screen.window->size_y;
  }
  return screen.width == width && screen.height == height;
}

void FollowScreen(Session& session) {
  Screen& screen = session.scene.screen;
  const Fixed mode = Read(ModeCell(session));
  if (mode != screen.seen_mode) {
    screen.seen_mode = mode;
    for (const Mode& known : kModes) {
      if (FromInt(known.number) == mode) SetScreenSize(session, known.width, known.height);
    }
  }
  if (const Window* window = screen.window) {
    const Fixed x = Read(window->size_x);
    const Fixed y = Read(window->size_y);
    if (x != screen.seen_x || y != screen.seen_y) SetScreenSize(session, Floor(x), Floor(y));
  }
}

void ShowWindow(Session& session, Window& window) {
  Screen& screen = session.scene.screen;
  screen.window = &window;
  screen.title[0] = 0;
  const int width = Floor(Read(window.size_x));
  const int height = Floor(Read(window.size_y));
  SetScreenSize(session, width > 0 ? width : screen.width, height > 0 ? height : screen.height);
}

Color ColorOf(const Screen& screen) {
  if (screen.window == nullptr) return screen.color;
  return {Part(screen.window->red), Part(screen.window->green), Part(screen.window->blue)};
}

std::string_view TitleOf(const Screen& screen) {
  if (screen.title[0] != 0) return screen.title;
  if (screen.window != nullptr && screen.window->title != nullptr && screen.window->title->length > 0)
    return {screen.window->title->text, screen.window->title->length};
  return "K6 Engine";
}

Camera CameraOf(const View& view, const Screen& screen) {
  const double x = ToDouble(view.pos_x);
  const double y = ToDouble(view.pos_y);
  const double width = view.size_x > 0 ? ToDouble(view.size_x) : screen.width - x;
  const double height = view.size_y > 0 ? ToDouble(view.size_y) : screen.height - y;
  return Camera({ToDouble(view.x), ToDouble(view.y), ToDouble(view.z)},
                {ToDouble(view.pan), ToDouble(view.tilt), ToDouble(view.roll)}, ToDouble(view.fov),
                {x, y, std::max(width, 0.0), std::max(height, 0.0)}, ToDouble(view.offset_x),
                ToDouble(view.offset_y));
}

void WriteShot(Session& session) {
  Scene& scene = session.scene;
  if (scene.shot == 0) return;
  GameFile* file = session.folder.Find(scene.shot);
  const Picture picture = session.host.TakePicture(session);
  const auto width = static_cast<uint32_t>(picture.pixels != nullptr ? picture.width : scene.screen.width);
  const auto height = static_cast<uint32_t>(picture.pixels != nullptr ? picture.height : scene.screen.height);
  const Color plain = ColorOf(scene.screen);
  const uint32_t row = (width * 3 + 3) / 4 * 4;
  char head[54] = "BM";
  const auto put = [&head](size_t at, uint32_t value, size_t count) {
    for (size_t i = 0; i < count; ++i) head[at + i] = static_cast<char>(value >> (8 * i));
  };
  put(2, sizeof head + row * height, 4);
  put(10, sizeof head, 4);
  put(14, 40, 4);
  put(18, width, 4);
  put(22, height, 4);
  put(26, 1, 2);
  put(28, 24, 2);
  put(34, row * height, 4);
  char line[Screen::kLargest * 3 + 4] = {};
  bool written = file != nullptr && session.folder.Write(*file, {head, sizeof head});
  for (uint32_t y = height; written && y-- > 0;) {
    for (uint32_t x = 0; x < width; ++x) {
      const uint32_t pixel = picture.pixels != nullptr
                                 ? picture.pixels[y * width + x]
                                 : uint32_t{plain.red} << 16 | uint32_t{plain.green} << 8 | plain.blue;
      line[3 * x] = static_cast<char>(pixel);
      line[3 * x + 1] = static_cast<char>(pixel >> 8);
      line[3 * x + 2] = static_cast<char>(pixel >> 16);
    }
    written = session.folder.Write(*file, {line, row});
  }
  if (!written) session.errors.Fault({}, "The picture of the screen could not be written.");
  session.folder.Close(scene.shot);
  scene.shot = 0;
}

}  // namespace korvel
