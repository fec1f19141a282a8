#include "text/LinePool.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>

namespace quill {

char* LinePool::Allocate(int32_t capacity) {
  if (capacity > kLargestPooled) {
    void* bytes = std::malloc(static_cast<size_t>(capacity));
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
    m_chunks.emplace_back(new char[kChunkBytes]);
    m_next = m_chunks.back().get();
    m_left = kChunkBytes;
  }
  char* bytes = m_next;
  m_next += capacity;
  m_left -= static_cast<size_t>(capacity);
  return bytes;
}

void LinePool::Free(char* bytes, int32_t capacity) {
  if (bytes == nullptr) return;
  if (capacity > kLargestPooled) {
    std::free(bytes);
    return;
  }
  auto* freed = new (bytes) FreeArray{m_free[capacity / kStep]};
  m_free[capacity / kStep] = freed;
}

char* LinePool::Reallocate(char* bytes, int32_t capacity, int32_t used, int32_t newCapacity) {
  if (capacity > kLargestPooled && newCapacity > kLargestPooled) {
    void* moved = std::realloc(bytes, static_cast<size_t>(newCapacity));
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
