// Pixels of bitmaps in the memory that the window sees.
#pragma once

#include "engine/memory/Arena.h"
#include "engine/objects/Objects.h"
#include "engine/scene/Wire.h"

namespace korvel {

/// Keeps a copy of each bitmap that frames show. A bitmap that has changed gets another copy; the old one is
/// given up when the window is past the last frame that names it.
class PixelStore {
 public:
  PixelStore(Arena& arena, wire::Shared* shared) : shared_(shared), copies_(arena) {}

  /// The pixels of a bitmap for a frame. Without room they are as they were last, or none.
  wire::Pixels Place(const Bitmap& bitmap, uint64_t frame);

  /// Once a frame: gives up what no frame shows any more.
  void Sweep(uint64_t frame);

  uint64_t used() const { return next_ - wire::kFirstPixel; }

 private:
  static constexpr int kClasses = 40;
  static constexpr uint32_t kNone = UINT32_MAX;
  /// How many frames a bitmap that is not shown keeps its copy.
  static constexpr uint64_t kPatience = 600;

  struct Copy {
    uint32_t bitmap;  ///< its number; 0 for a copy that is given up
    uint32_t version;
    int size_class;
    uint64_t offset;
    uint64_t last_frame;
  };

  uint64_t Take(int size_class);

  wire::Shared* shared_;
  List<Copy> copies_;
  uint64_t next_ = wire::kFirstPixel;
  uint64_t freed_[kClasses] = {};  ///< the first free piece of each size; the next one stands at its begin
};

}  // namespace korvel
