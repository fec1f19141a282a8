#include "engine/scene/PixelStore.h"

#include <bit>

namespace korvel {

wire::Pixels PixelStore::Place(const Bitmap& bitmap, uint64_t frame) {
  if (bitmap.pixels == nullptr || bitmap.width <= 0 || bitmap.height <= 0) return {};
  const auto pixels = [&bitmap](uint64_t offset) {
    return wire::Pixels{offset, bitmap.width, bitmap.height};
  };
  Copy* old = nullptr;
  for (Copy& copy : copies_) {
    if (copy.bitmap == bitmap.number) old = &copy;
  }
  if (old != nullptr && old->version == bitmap.version) {
    old->last_frame = frame;
    return pixels(old->offset);
  }
  const size_t bytes = static_cast<size_t>(bitmap.width) * static_cast<size_t>(bitmap.height) * 3;
  const int size_class = std::bit_width(bytes < 64 ? size_t{63} : bytes - 1);
  const uint64_t offset = Take(size_class);
  if (offset == 0) {
    if (old == nullptr) return {};
    old->last_frame = frame;
    return pixels(old->offset);
  }
  std::memcpy(reinterpret_cast<char*>(shared_) + offset, bitmap.pixels, bytes);
  if (old != nullptr) old->bitmap = 0;
  copies_.Add({bitmap.number, bitmap.version, size_class, offset, frame});
  return pixels(offset);
}

void PixelStore::Sweep(uint64_t frame) {
  const uint64_t held = shared_->held.load(std::memory_order_acquire);
  uint32_t kept = 0;
  for (Copy& copy : copies_) {
    if (copy.last_frame + kPatience < frame) copy.bitmap = 0;
    if (copy.bitmap == 0 && copy.last_frame < held) {
      std::memcpy(reinterpret_cast<char*>(shared_) + copy.offset, &freed_[copy.size_class], sizeof(uint64_t));
      freed_[copy.size_class] = copy.offset;
    } else {
      copies_[kept++] = copy;
    }
  }
  copies_.Resize(kept);
}

uint64_t PixelStore::Take(int size_class) {
  if (const uint64_t offset = freed_[size_class]) {
    std::memcpy(&freed_[size_class], reinterpret_cast<char*>(shared_) + offset, sizeof(uint64_t));
    return offset;
  }
  const uint64_t bytes = uint64_t{1} << size_class;
  if (next_ + bytes > wire::kFirstShot) return 0;
  const uint64_t offset = next_;
  next_ += bytes;
  return offset;
}

}  // namespace korvel
