// Draws a frame that the engine has written.
#pragma once

#include <string_view>

#include "engine/scene/Wire.h"
#include "engine/window/Fonts.h"
#include "engine/window/Rasteriser.h"

namespace korvel::window {

/// One item of a frame after the other. Sizes that do not fit end the walk: who wrote them may have been
/// ended.
class Items {
 public:
  explicit Items(const wire::Frame& frame);

  /// Goes to the next item; false at the end.
  bool Next();
  wire::Kind kind() const { return item_.kind; }
  /// Its content; false when it is too short.
  template <class T>
  bool Read(T* value) const {
    return Copy(value, sizeof(T));
  }
  /// The bytes behind a content of type T.
  template <class T>
  std::string_view Behind(size_t begin, size_t count) const {
    begin += sizeof(wire::Item) + sizeof(T);
    return begin <= item_.bytes && count <= item_.bytes - begin ? std::string_view(at_ + begin, count)
                                                                : std::string_view();
  }

 private:
  bool Copy(void* to, size_t bytes) const;

  const char* at_;
  size_t left_;
  wire::Item item_{wire::Kind::kEndView, 0};
};

class Painter {
 public:
  Painter() : rasteriser_(canvas_) {}

  /// Draws a frame. `memory` is what offsets of pixels count from.
  const Canvas& Paint(const wire::Frame& frame, const wire::Shared* memory);
  const Canvas& canvas() const { return canvas_; }

 private:
  void BeginView(const Items& items);
  void EndView();
  void PaintSky(const Items& items);
  void PaintBody(const Items& items);
  void PaintFlat(const Items& items);
  void PaintText(const Items& items);
  Sheet SheetOf(const wire::Pixels& pixels) const;

  Canvas canvas_;
  Rasteriser rasteriser_;
  Fonts fonts_;
  const wire::Shared* memory_ = nullptr;
  wire::View view_{};
  bool in_view_ = false;
  Camera camera_{{0, 0, 0}, {0, 0, 0}, 60, {0, 0, 0, 0}, 0, 0};
  std::vector<uint32_t> behind_;  ///< what a view that can be seen through covers
};

}  // namespace korvel::window
