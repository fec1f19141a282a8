#include <sys/mman.h>

#include <bit>

#include "engine/memory/Arena.h"

namespace korvel {
namespace {

constexpr size_t kReserve = size_t{8} << 30;
constexpr size_t kSmallest = size_t{256} << 20;
/// What the script's own objects may fill; the rest is kept for the engine.
constexpr size_t kShareOfScript = size_t{1} << 30;
constexpr size_t kLargest = size_t{1} << 31;

}  // namespace

bool Arena::Reset() {
  if (begin_ == nullptr) {
    for (size_t bytes = kReserve; bytes >= kSmallest; bytes /= 2) {
      void* range =
          mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
      if (range == MAP_FAILED) continue;
      // A script's memory is asked for bit by bit; large pages spare most of that.
      madvise(range, bytes, MADV_HUGEPAGE);
      begin_ = static_cast<char*>(range);
      end_ = begin_ + bytes;
      break;
    }
    if (begin_ == nullptr) return false;
  } else {
    madvise(begin_, static_cast<size_t>(end_ - begin_), MADV_DONTNEED);
  }
  next_ = begin_;
  for (Freed*& list : freed_) list = nullptr;
  exit_ = nullptr;
  return true;
}

int Arena::ClassOf(size_t bytes) {
  return bytes <= 16 ? 4 : std::bit_width(bytes - 1);
}

void* Arena::Take(int size_class) {
  const size_t bytes = size_t{1} << size_class;
  if (Freed* memory = freed_[size_class]) {
    freed_[size_class] = memory->next;
    std::memset(static_cast<void*>(memory), 0, bytes);
    return memory;
  }
  if (bytes > static_cast<size_t>(end_ - next_)) return nullptr;
  void* memory = next_;
  next_ += bytes;
  return memory;
}

void* Arena::Allocate(size_t bytes) {
  void* memory = bytes <= kLargest ? Take(ClassOf(bytes)) : nullptr;
  if (memory == nullptr) {
    if (exit_ == nullptr) __builtin_trap();
    std::longjmp(*exit_, 1);
  }
  return memory;
}

void* Arena::TryAllocate(size_t bytes) {
  const size_t share = static_cast<size_t>(end_ - begin_) / 2 < kShareOfScript
                           ? static_cast<size_t>(end_ - begin_) / 2
                           : kShareOfScript;
  if (bytes > share) return nullptr;
  const int size_class = ClassOf(bytes);
  if (freed_[size_class] == nullptr && used() + (size_t{1} << size_class) > share) return nullptr;
  return Take(size_class);
}

void Arena::Free(void* memory, size_t bytes) {
  if (memory == nullptr) return;
  const int size_class = ClassOf(bytes);
  auto* freed = static_cast<Freed*>(memory);
  freed->next = freed_[size_class];
  freed_[size_class] = freed;
}

}  // namespace korvel
