#include "base/FrontQueue.h"

#include <gtest/gtest.h>

#include <deque>
#include <numeric>
#include <random>
#include <vector>

namespace quill {
namespace {

TEST(FrontQueue, HoldsWhatADequeHoldsAfterRandomOperations) {
  std::mt19937 random(11);
  FrontQueue<uint32_t> queue;
  std::deque<uint32_t> plain;
  for (int step = 0; step < 3000; ++step) {
    const size_t most = step % 1000 < 500 ? 20000 : 2000;  // grows, and shrinks again
    std::vector<uint32_t> values(random() % most);
    std::iota(values.begin(), values.end(), random());
    queue.Append(values.data(), values.size());
    plain.insert(plain.end(), values.begin(), values.end());
    const size_t back = random() % (std::min<size_t>(plain.size(), 4000) + 1);
    queue.DropBack(back);
    plain.resize(plain.size() - back);
    const size_t front = random() % (std::min<size_t>(plain.size(), 8000) + 1);
    queue.DropFront(front);
    plain.erase(plain.begin(), plain.begin() + static_cast<std::ptrdiff_t>(front));
    ASSERT_EQ(queue.Size(), plain.size());
    for (size_t i = static_cast<size_t>(step) % 997; i < plain.size(); i += 997)
      ASSERT_EQ(queue[i], plain[i]);
    if (!plain.empty()) {
      ASSERT_EQ(queue.Data()[0], plain.front());
      ASSERT_EQ(queue[plain.size() - 1], plain.back());
    }
  }
  queue.Clear();
  queue.PushBack(7);
  EXPECT_EQ(queue[0], 7u);
}

}  // namespace
}  // namespace quill
