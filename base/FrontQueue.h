#pragma once
#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <new>
#include <type_traits>
#include <utility>

namespace quill {

/// A growable array in one piece that loses elements at both ends at little cost. Elements are moved as
/// bytes; memory is given back when most of it is free.
template <class T>
class FrontQueue {
  static_assert(std::is_trivially_copyable_v<T>);

 public:
  FrontQueue() = default;
  FrontQueue(const FrontQueue&) = delete;
  FrontQueue& operator=(const FrontQueue&) = delete;
  ~FrontQueue() { std::free(m_data); }

  size_t Size() const { return m_size; }
  /// The first element.
  const T* Data() const { return m_data + m_front; }
  const T& operator[](size_t i) const { return m_data[m_front + i]; }

  /// The next `count` elements are appended without a failure.
  void Reserve(size_t count) {
    if (m_capacity - m_front - m_size < count) MakeRoom(count);
  }
  /// Copies `count` elements behind the last one; they must not lie in this array.
  void Append(const T* values, size_t count) {
    if (count == 0) return;
    Reserve(count);
    std::memcpy(static_cast<void*>(m_data + m_front + m_size), values, count * sizeof(T));
    m_size += count;
  }
  void PushBack(const T& value) { Append(&value, 1); }

  void DropFront(size_t count) {
    m_front += count;
    m_size -= count;
    if (m_front > m_size) Compact();  // each element that moves was paid for by one that went
  }
  void DropBack(size_t count) {
    m_size -= count;
    if (m_capacity / 4 > m_front + m_size) Compact();
  }
  void Clear() {
    std::free(std::exchange(m_data, nullptr));
    m_capacity = m_front = m_size = 0;
  }

 private:
  static constexpr size_t kLeastCapacity = 4096 / sizeof(T);

  void MakeRoom(size_t count) {
    Compact();
    // Never so little that the next elements would all have to move soon.
    const size_t wanted = std::max(count, m_size / 2);
    if (m_capacity - m_size >= wanted) return;
    if (!Reallocate(std::max(m_size + wanted, kLeastCapacity))) throw std::bad_alloc();
  }
  /// Moves the elements to the front, and gives memory back if it can.
  void Compact() {
    if (m_front != 0 && m_size != 0) std::memmove(static_cast<void*>(m_data), Data(), m_size * sizeof(T));
    m_front = 0;
    const size_t enough = std::max(m_size * 2, kLeastCapacity);
    if (m_capacity / 2 > enough) (void)Reallocate(enough);
  }
  bool Reallocate(size_t capacity) {
    void* moved = std::realloc(static_cast<void*>(m_data), capacity * sizeof(T));
    if (moved == nullptr) return false;
    m_data = static_cast<T*>(moved);
    m_capacity = capacity;
    return true;
  }

  T* m_data = nullptr;
  size_t m_capacity = 0;
  size_t m_front = 0;  ///< index of the first element
  size_t m_size = 0;
};

}  // namespace quill
