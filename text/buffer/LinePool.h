#pragma once
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <utility>
#include <vector>

namespace quill {

struct FreeBytes {
  void operator()(char* bytes) const { std::free(bytes); }
};
/// Bytes from the heap that can grow in place where the system can.
using ByteBlock = std::unique_ptr<char[], FreeBytes>;
/// Makes `block` larger, keeping its bytes; throws `std::bad_alloc`, and then leaves it as it was.
void GrowBlock(ByteBlock& block, size_t bytes);

/// Hands out the byte arrays of lines. Short ones are cut from large chunks without a header of their
/// own, since a script of millions of lines has millions of them; long ones come from the heap.
/// Capacities are multiples of `kStep` bytes. Capacity 0 stands for bytes inside an adopted block: they
/// are left alone when freed, and reallocating them moves them into an array.
class LinePool {
 public:
  static constexpr int32_t kStep = 16;
  /// So many bytes after an array may be read (what they hold is not defined): a scan that takes 16
  /// characters at a time can begin at any character of a line.
  static constexpr int32_t kReadAhead = 16;
  /// Capacity for `length` characters: at least one byte is always left over.
  static constexpr int64_t CapacityFor(int64_t length) { return (length / kStep + 1) * kStep; }

  LinePool() = default;
  LinePool(const LinePool&) = delete;
  LinePool& operator=(const LinePool&) = delete;
  ~LinePool() = default;
  void Swap(LinePool& other) {
    m_chunks.swap(other.m_chunks);
    m_free.swap(other.m_free);
    std::swap(m_next, other.m_next);
    std::swap(m_left, other.m_left);
  }

  char* Allocate(int32_t capacity);
  void Free(char* bytes, int32_t capacity);
  /// Moves `used` bytes (not more than the new capacity) into an array of the new capacity and frees the old
  /// one.
  char* Reallocate(char* bytes, int32_t capacity, int32_t used, int32_t newCapacity);
  /// Keeps a block for the lines that lie in it.
  void Adopt(ByteBlock block) { m_chunks.push_back(std::move(block)); }
  /// Frees chunks and blocks at once; the arrays that `IsLong` tells must have been freed one by one.
  void ReleaseChunks();
  static bool IsLong(int32_t capacity) { return capacity > kLargestPooled; }

 private:
  static constexpr int32_t kLargestPooled = 1024;
  static constexpr size_t kChunkBytes = size_t{1} << 20;
  struct FreeArray {
    FreeArray* next;
  };

  std::vector<ByteBlock> m_chunks;
  std::array<FreeArray*, kLargestPooled / kStep + 1> m_free{};  ///< by capacity / kStep
  char* m_next = nullptr;
  size_t m_left = 0;
};

}  // namespace quill
