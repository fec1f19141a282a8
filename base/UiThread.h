#pragma once
#ifndef NDEBUG
#include <atomic>
#include <cassert>
#include <thread>
#endif

namespace quill {

#ifdef NDEBUG

inline void ClaimUiThread() {}
inline void AssertUiThread() {}

#else

namespace detail {
inline std::atomic<std::thread::id> g_uiThread;
}

/// Makes the calling thread the one that texts, views and windows belong to; a program does it once, first
/// of all.
inline void ClaimUiThread() {
  detail::g_uiThread = std::this_thread::get_id();
}

/// Ends the program when it is called on another thread than the claimed one. Any thread will do while none
/// is claimed; without asserts nothing is checked.
inline void AssertUiThread() {
  const std::thread::id claimed = detail::g_uiThread;
  assert((claimed == std::thread::id() || claimed == std::this_thread::get_id()) &&
         "only for the user-interface thread");
}

#endif

/// A member of an object that any thread may make, but no other thread than its maker's may use.
class MakersThread {
 public:
#ifdef NDEBUG
  void AssertHere() const {}
#else
  void AssertHere() const {
    assert(m_maker == std::this_thread::get_id() && "only for its maker's thread");
  }

 private:
  std::thread::id m_maker = std::this_thread::get_id();
#endif
};

}  // namespace quill
