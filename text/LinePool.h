#pragma once
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace quill {

/// Hands out the byte arrays of lines. Short ones are cut from large chunks without a header of their
/// own, since a script of millions of lines has millions of them; long ones come from the heap.
/// Capacities are multiples of `kStep` bytes.
class LinePool {
 public:
  static constexpr int32_t kStep = 16;
  /// Capacity for `length` characters: at least one byte is always left over.
  static constexpr int64_t CapacityFor(int64_t length) { return (length / kStep + 1) * kStep; }

  LinePool() = default;
  LinePool(const LinePool&) = delete;
  LinePool& operator=(const LinePool&) = delete;
  ~LinePool() = default;

  char* Allocate(int32_t capacity);
  void Free(char* bytes, int32_t capacity);
  /// Moves `used` bytes into an array of the new capacity and frees the old one.
  char* Reallocate(char* bytes, int32_t capacity, int32_t used, int32_t newCapacity);
  /// Frees the chunks at once; the long arrays must have been freed one by one.
  void ReleaseChunks();

 private:
  static constexpr int32_t kLargestPooled = 1024;
  static constexpr size_t kChunkBytes = size_t{1} << 20;
  struct FreeArray {
    FreeArray* next;
  };

  std::vector<std::unique_ptr<char[]>> m_chunks;
  std::array<FreeArray*, kLargestPooled / kStep + 1> m_free{};  ///< by capacity / kStep
  char* m_next = nullptr;
  size_t m_left = 0;
};

}  // namespace quill
