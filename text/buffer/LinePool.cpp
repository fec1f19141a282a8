#include "text/buffer/LinePool.h"

#include <cstdlib>
#include <cstring>
#include <new>

namespace quill {

void GrowBlock(ByteBlock& block, size_t bytes) {
  void* grown = std::realloc(block.get(), bytes);
  if (grown == nullptr) throw std::bad_alloc();
  (void)block.release();  // realloc owned it
  block.reset(static_cast<char*>(grown));
}

char* LinePool::Allocate(int32_t capacity) {
  if (IsLong(capacity)) {
    void* bytes = std::malloc(static_cast<size_t>(capacity) + kReadAhead);
    if (bytes == nullptr) throw std::bad_alloc();
    return static_cast<char*>(bytes);
  }
  FreeArray*& head = m_free[capacity / kStep];
  if (head != nullptr) {
    char* bytes = reinterpret_cast<char*>(head);
    head = head->next;
    return bytes;
  }
  if (m_left < static_cast<size_t>(capacity)) {
    ByteBlock chunk;
    GrowBlock(chunk, kChunkBytes + kReadAhead);
    m_next = chunk.get();
    Adopt(std::move(chunk));
    m_left = kChunkBytes;
  }
  char* bytes = m_next;
  m_next += capacity;
  m_left -= static_cast<size_t>(capacity);
  return bytes;
}

void LinePool::Free(char* bytes, int32_t capacity) {
  if (capacity == 0) return;
  if (IsLong(capacity)) {
    std::free(bytes);
    return;
  }
  auto* freed = new (bytes) FreeArray{m_free[capacity / kStep]};
  m_free[capacity / kStep] = freed;
}

char* LinePool::Reallocate(char* bytes, int32_t capacity, int32_t used, int32_t newCapacity) {
  if (IsLong(capacity) && IsLong(newCapacity)) {
    void* moved = std::realloc(bytes, static_cast<size_t>(newCapacity) + kReadAhead);
    if (moved == nullptr) throw std::bad_alloc();
    return static_cast<char*>(moved);
  }
  char* moved = Allocate(newCapacity);
  if (used > 0) std::memcpy(moved, bytes, static_cast<size_t>(used));
  Free(bytes, capacity);
  return moved;
}

void LinePool::ReleaseChunks() {
  m_chunks.clear();
  m_free.fill(nullptr);
  m_next = nullptr;
  m_left = 0;
}

}  // namespace quill
