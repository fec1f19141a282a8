// The window on the screen.
#pragma once

#include <SDL.h>

#include <string>

#include "engine/scene/Wire.h"
#include "engine/window/Canvas.h"

namespace korvel::window {

class Window {
 public:
  ~Window();
  Window() = default;
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;

  /// Opens it at its first size and title, alone on the screen unless `in_window`.
  bool Open(bool in_window);

  /// Takes size, title and pointer from a frame.
  void Follow(const wire::Frame& frame);
  /// Shows a picture; Repaint shows the last one again.
  void Show(const Canvas& canvas);
  void Repaint();

  /// The largest window that the desktop can show, 0 when that is not known.
  SDL_Point Desktop() const;

 private:
  bool MakeTexture(int width, int height);

  bool in_window_ = true;
  SDL_Window* window_ = nullptr;
  SDL_Renderer* renderer_ = nullptr;
  SDL_Texture* texture_ = nullptr;
  int width_ = 640, height_ = 480;
  int texture_width_ = 0, texture_height_ = 0;
  std::string title_ = "K6 Engine";
  bool pointer_ = true;
};

}  // namespace korvel::window
