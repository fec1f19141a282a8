#pragma once
#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <new>
#include <type_traits>
#include <utility>

namespace quill {

/// A growable array with a movable gap: inserting and erasing near the previous such place costs no
/// walk over the rest of the array. Elements are moved as bytes.
template <class T>
class GapVector {
  static_assert(std::is_trivially_copyable_v<T>);

 public:
  GapVector() = default;
  GapVector(const GapVector&) = delete;
  GapVector& operator=(const GapVector&) = delete;
  ~GapVector() { std::free(m_data); }
  void Swap(GapVector& other) {
    std::swap(m_data, other.m_data);
    std::swap(m_size, other.m_size);
    std::swap(m_capacity, other.m_capacity);
    std::swap(m_gap, other.m_gap);
  }

  size_t Size() const { return m_size; }
  T& operator[](size_t i) { return m_data[i < m_gap ? i : i + m_capacity - m_size]; }
  const T& operator[](size_t i) const { return m_data[i < m_gap ? i : i + m_capacity - m_size]; }

  void PushBack(const T& value) {
    const T copy = value;  // it may lie in this array, which moves when it grows
    *OpenGap(m_size, 1) = copy;
  }
  /// Copies `count` elements in before index `at`; they must not lie in this array.
  void Insert(size_t at, const T* values, size_t count) {
    if (count != 0) std::memcpy(OpenGap(at, count), values, count * sizeof(T));
  }
  void InsertFill(size_t at, size_t count, const T& value) {
    if (count == 0) return;
    const T copy = value;
    T* place = OpenGap(at, count);
    std::fill(place, place + count, copy);
  }
  void Erase(size_t at, size_t count) {
    if (count == 0) return;
    MoveGap(at);
    m_size -= count;
  }
  void Clear() {
    std::free(std::exchange(m_data, nullptr));
    m_size = m_capacity = m_gap = 0;
  }

 private:
  void MoveGap(size_t at) {
    const size_t gap = m_capacity - m_size;
    if (gap != 0 && at < m_gap) {
      std::memmove(m_data + at + gap, m_data + at, (m_gap - at) * sizeof(T));
    } else if (gap != 0 && at > m_gap) {
      std::memmove(m_data + m_gap, m_data + m_gap + gap, (at - m_gap) * sizeof(T));
    }
    m_gap = at;
  }

  T* OpenGap(size_t at, size_t count) {
    if (m_capacity - m_size < count) {
      MoveGap(m_size);
      const size_t capacity = std::max(m_size + count, m_capacity + m_capacity / 2 + 16);
      void* grown = std::realloc(static_cast<void*>(m_data), capacity * sizeof(T));
      if (grown == nullptr) throw std::bad_alloc();
      m_data = static_cast<T*>(grown);
      m_capacity = capacity;
    }
    MoveGap(at);
    T* place = m_data + m_gap;
    m_gap += count;
    m_size += count;
    return place;
  }

  T* m_data = nullptr;
  size_t m_size = 0;
  size_t m_capacity = 0;
  size_t m_gap = 0;  ///< index at which the free space begins
};

}  // namespace quill
