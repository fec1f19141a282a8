// All memory of a session. Nothing here takes a lock or calls malloc, so a thread that is ended at any
// instruction leaves nothing behind that the next session could trip over.
#pragma once

#include <csetjmp>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <new>
#include <utility>

namespace korvel {

/// A range of addresses that is filled from its begin and emptied as a whole.
class Arena {
 public:
  /// Makes the arena empty, giving all its memory back to the system. Returns false when there are no
  /// addresses.
  bool Reset();

  /// Zeroed memory for what has to be there; jumps to the exit of SetExit when the arena is full.
  void* Allocate(size_t bytes);

  /// Zeroed memory for what a script asks for, or null when it has had its share.
  void* TryAllocate(size_t bytes);

  /// Takes memory back of the same size for a later allocation. It stays readable.
  void Free(void* memory, size_t bytes);

  /// Where a full arena jumps to.
  void SetExit(std::jmp_buf* exit) { exit_ = exit; }

  /// A new T in memory that has to be there.
  template <class T, class... Arguments>
  T* New(Arguments&&... arguments) {
    return new (Allocate(sizeof(T))) T(std::forward<Arguments>(arguments)...);
  }

  size_t used() const { return static_cast<size_t>(next_ - begin_); }

 private:
  static constexpr int kClasses = 40;
  struct Freed {
    Freed* next;
  };

  static int ClassOf(size_t bytes);
  void* Take(int size_class);

  char* begin_ = nullptr;
  char* next_ = nullptr;
  char* end_ = nullptr;
  Freed* freed_[kClasses] = {};
  std::jmp_buf* exit_ = nullptr;
};

/// A growing array of plain values in an arena.
template <class T>
class List {
 public:
  explicit List(Arena& arena) : arena_(&arena) {}

  void Add(const T& value) {
    if (size_ == capacity_) Grow(size_ + 1);
    data_[size_++] = value;
  }
  void Resize(uint32_t size) {
    if (size > capacity_) Grow(size);
    size_ = size;
  }
  void Clear() { size_ = 0; }
  void RemoveLast() { --size_; }

  T& operator[](size_t i) { return data_[i]; }
  const T& operator[](size_t i) const { return data_[i]; }
  T& back() { return data_[size_ - 1]; }
  uint32_t size() const { return size_; }
  bool empty() const { return size_ == 0; }
  T* data() { return data_; }
  const T* data() const { return data_; }
  T* begin() { return data_; }
  T* end() { return data_ + size_; }
  const T* begin() const { return data_; }
  const T* end() const { return data_ + size_; }

 private:
  void Grow(uint32_t wanted) {
    uint32_t capacity = capacity_ < 4 ? 8 : capacity_ * 2;
    if (capacity < wanted) capacity = wanted;
    T* data = static_cast<T*>(arena_->Allocate(sizeof(T) * capacity));
    if (size_ > 0) std::memcpy(static_cast<void*>(data), data_, sizeof(T) * size_);
    if (data_ != nullptr) arena_->Free(data_, sizeof(T) * capacity_);
    data_ = data;
    capacity_ = capacity;
  }

  Arena* arena_;
  T* data_ = nullptr;
  uint32_t size_ = 0;
  uint32_t capacity_ = 0;
};

}  // namespace korvel
