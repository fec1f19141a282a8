// engine_window PROCESS DESCRIPTOR SESSION -[w][s][m][j][p]: shows the game that a thread of a process plays,
// until that thread ends. w: in a window, not alone on the screen; s, m, j: no sounds, music, controllers; p:
// draws only pictures that are asked for, and shows nothing.
#include <SDL.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "engine/window/Input.h"
#include "engine/window/Link_posix.h"
#include "engine/window/Painter.h"
#include "engine/window/Sound.h"
#include "engine/window/Window.h"

namespace korvel::window {
namespace {

/// How long nothing may happen before it looks again, and between two looks whether the thread is there.
constexpr int kPatience = 3;
constexpr uint32_t kBetweenLooks = 100;

// Hands over the newest picture when the engine wants one.
void ServePicture(wire::Shared* shared, wire::Reader& reader, Painter& painter, bool painted) {
  const uint64_t wanted = shared->shot_wanted.load(std::memory_order_acquire);
  const wire::Frame* frame = reader.frame(shared);
  if (wanted == shared->shot_done.load(std::memory_order_relaxed) || frame == nullptr) return;
  if (frame->sequence < wanted) return;
  const Canvas& canvas = painted ? painter.canvas() : painter.Paint(*frame, shared);
  const size_t bytes = static_cast<size_t>(canvas.width()) * static_cast<size_t>(canvas.height()) * 4;
  if (bytes > wire::kShotBytes) return;
  std::memcpy(reinterpret_cast<char*>(shared) + wire::kFirstShot, canvas.pixels(), bytes);
  shared->shot_width = canvas.width();
  shared->shot_height = canvas.height();
  shared->shot_done.store(wanted, std::memory_order_release);
}

int DrawPictures(const Link& link) {
  wire::Reader reader;
  Painter painter;
  while (link.IsWanted()) {
    reader.Take(link.shared());
    ServePicture(link.shared(), reader, painter, false);
    SDL_Delay(kPatience);
  }
  return 0;
}

int ShowGame(const Link& link, const char* options) {
  const auto has = [options](char letter) { return std::strchr(options, letter) != nullptr; };
  wire::Shared* shared = link.shared();
  Window window;
  // A key that ends the program, or a signal, is not the player's wish to close the game.
  SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
  if (SDL_Init(SDL_INIT_VIDEO) != 0 || !window.Open(has('w'))) {
    shared->state.store(wire::kFailed, std::memory_order_release);
    return 1;
  }
  const SDL_Point desktop = window.Desktop();
  shared->desktop_width.store(desktop.x, std::memory_order_relaxed);
  shared->desktop_height.store(desktop.y, std::memory_order_relaxed);
  shared->state.store(wire::kOpen, std::memory_order_release);

  Input input(shared, !has('j'));
  Sound sound(!has('s'), !has('m'));
  Painter painter;
  wire::Reader reader;
  for (uint32_t looked = SDL_GetTicks(); !AskedToEnd();) {
    if (shared->ended.load(std::memory_order_acquire) != 0) break;
    if (SDL_GetTicks() - looked >= kBetweenLooks) {
      looked = SDL_GetTicks();
      if (!link.IsWanted()) break;
    }
    SDL_Event event;
    bool uncovered = false;
    while (SDL_PollEvent(&event) != 0) {
      input.Take(event);
      if (event.type == SDL_WINDOWEVENT && (event.window.event == SDL_WINDOWEVENT_EXPOSED ||
                                            event.window.event == SDL_WINDOWEVENT_SIZE_CHANGED)) {
        uncovered = true;
      }
    }
    if (reader.Take(shared)) {
      const wire::Frame* frame = reader.frame(shared);
      sound.Follow(*frame);
      window.Follow(*frame);
      window.Show(painter.Paint(*frame, shared));
    } else if (uncovered) {
      window.Repaint();
    }
    ServePicture(shared, reader, painter, true);
    if ((shared->ready.load(std::memory_order_acquire) & wire::kFresh) == 0)
      SDL_WaitEventTimeout(nullptr, kPatience);
  }
  return 0;
}

}  // namespace
}  // namespace korvel::window

int main(int argc, char** argv) {
  korvel::window::EndWithParent();
  korvel::window::Link link;
  if (argc != 5) {
    std::fputs("engine_window is started by the engine itself\n", stderr);
    return 2;
  }
  // The game may be over before its window is there.
  if (!link.Open(std::atoi(argv[1]), std::atoi(argv[2]), std::strtoull(argv[3], nullptr, 10))) return 1;
  if (std::strchr(argv[4], 'p') != nullptr) return korvel::window::DrawPictures(link);
  const int result = korvel::window::ShowGame(link, argv[4]);
  SDL_Quit();
  return result;
}
