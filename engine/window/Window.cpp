#include "engine/window/Window.h"

#include <cstring>

namespace korvel::window {

Window::~Window() {
  if (texture_ != nullptr) SDL_DestroyTexture(texture_);
  if (renderer_ != nullptr) SDL_DestroyRenderer(renderer_);
  if (window_ != nullptr) SDL_DestroyWindow(window_);
}

bool Window::Open(bool in_window) {
  in_window_ = in_window;
  SDL_SetHint(SDL_HINT_VIDEO_X11_NET_WM_BYPASS_COMPOSITOR, "0");
  SDL_SetHint(SDL_HINT_RENDER_SCALE_QUALITY, "nearest");
  // A frame is small and is drawn already: only one that has to be stretched needs more than a copy.
  const uint32_t kind = in_window ? SDL_RENDERER_SOFTWARE : 0;
  window_ = SDL_CreateWindow(title_.c_str(), SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED, width_, height_,
                             in_window ? SDL_WINDOW_SHOWN : SDL_WINDOW_SHOWN | SDL_WINDOW_FULLSCREEN_DESKTOP);
  if (window_ == nullptr) return false;
  renderer_ = SDL_CreateRenderer(window_, -1, kind);
  if (renderer_ == nullptr) renderer_ = SDL_CreateRenderer(window_, -1, SDL_RENDERER_SOFTWARE);
  if (renderer_ == nullptr) return false;
  SDL_RenderSetLogicalSize(renderer_, width_, height_);
  SDL_StartTextInput();
  return true;
}

void Window::Follow(const wire::Frame& frame) {
  const std::string title(frame.title, strnlen(frame.title, sizeof frame.title));
  if (title != title_) SDL_SetWindowTitle(window_, (title_ = title).c_str());
  if ((frame.pointer != 0) != pointer_) {
    pointer_ = frame.pointer != 0;
    SDL_ShowCursor(pointer_ ? SDL_ENABLE : SDL_DISABLE);
  }
  if (frame.width == width_ && frame.height == height_) return;
  width_ = frame.width;
  height_ = frame.height;
  if (in_window_) {
    SDL_SetWindowSize(window_, width_, height_);
    SDL_SetWindowPosition(window_, SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED);
  }
  // Where the desktop gives the window another size, the picture is stretched, and the pointer with it.
  SDL_RenderSetLogicalSize(renderer_, width_, height_);
}

bool Window::MakeTexture(int width, int height) {
  if (texture_ != nullptr && width == texture_width_ && height == texture_height_) return true;
  if (texture_ != nullptr) SDL_DestroyTexture(texture_);
  texture_ = SDL_CreateTexture(renderer_, SDL_PIXELFORMAT_RGB888, SDL_TEXTUREACCESS_STREAMING, width, height);
  texture_width_ = width;
  texture_height_ = height;
  return texture_ != nullptr;
}

void Window::Show(const Canvas& canvas) {
  if (!MakeTexture(canvas.width(), canvas.height())) return;
  SDL_UpdateTexture(texture_, nullptr, canvas.pixels(), canvas.width() * 4);
  Repaint();
}

void Window::Repaint() {
  SDL_SetRenderDrawColor(renderer_, 0, 0, 0, 255);
  SDL_RenderClear(renderer_);
  if (texture_ != nullptr) SDL_RenderCopy(renderer_, texture_, nullptr, nullptr);
  SDL_RenderPresent(renderer_);
}

SDL_Point Window::Desktop() const {
  SDL_Rect usable{};
  const int display = SDL_GetWindowDisplayIndex(window_);
  if (SDL_GetDisplayUsableBounds(display < 0 ? 0 : display, &usable) != 0) return {0, 0};
  return {usable.w, usable.h};
}

}  // namespace korvel::window
