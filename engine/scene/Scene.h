// What a game shows beside its objects: the window, the draw commands of a frame, the sun.
#pragma once

#include "engine/code/Value.h"
#include "engine/memory/Arena.h"
#include "engine/objects/Objects.h"
#include "engine/scene/Space.h"

namespace korvel {

struct Color {
  uint8_t red = 0, green = 0, blue = 0;
};

/// The game's window as the script wants it.
struct Screen {
  static constexpr int kLargest = 4096;

  int width = 640;
  int height = 480;
  Color color;  ///< while no window definition is shown
  char title[256] = "";
  Window* window = nullptr;  ///< the definition that is shown, or null
  bool pointer = false;      ///< the mouse pointer is seen

  Fixed seen_mode = 0;  ///< video_mode and the definition's size as they were when they were last followed
  Fixed seen_x = 0, seen_y = 0;
};

/// A draw command of this frame.
struct Mark {
  enum Kind : uint8_t { kLine, kFill, kFrame, kText, kPicture, kDebugBox, kDebugPoint };
  Kind kind;
  Color color;
  int32_t x, y;           ///< pixels
  int32_t width, height;  ///< of a line: the other end
  const Bitmap* picture;  ///< of kPicture
  const char* face;       ///< of kText
  int32_t font_width, font_height;
  uint32_t text, length;  ///< of kText: where its characters are
  Triple low, high;       ///< of the debug kinds: points of the level
};

/// The draw commands of a frame, in their order.
class Marks {
 public:
  explicit Marks(Arena& arena) : list_(arena), characters_(arena) {}

  void Clear() {
    list_.Clear();
    characters_.Clear();
  }
  /// A new mark in the current color, or null when a frame has as many as it may have.
  Mark* Add(Mark::Kind kind);
  bool AddText(Mark& mark, std::string_view text);
  /// Leaves out what shows a bitmap that is gone.
  template <class Gone>
  void Drop(const Gone& gone) {
    uint32_t kept = 0;
    for (const Mark& mark : list_) {
      if (mark.kind != Mark::kPicture || !gone(mark.picture)) list_[kept++] = mark;
    }
    list_.Resize(kept);
  }

  const List<Mark>& list() const { return list_; }
  std::string_view TextOf(const Mark& mark) const { return {characters_.data() + mark.text, mark.length}; }

  Color color{255, 255, 255};

 private:
  static constexpr uint32_t kMost = 50'000;
  static constexpr uint32_t kMostCharacters = 1'000'000;
  List<Mark> list_;
  List<char> characters_;
};

/// Where the light comes from.
struct Sun {
  double pan = 45, tilt = 60;
  Color color{255, 255, 255};
};

struct Scene {
  explicit Scene(Arena& arena) : marks(arena) {}

  Screen screen;
  Marks marks;
  Sun sun;
  bool debug_text = false;
  int32_t shot = 0;  ///< handle of the file that gets a picture of this frame, 0 for none
};

}  // namespace korvel
