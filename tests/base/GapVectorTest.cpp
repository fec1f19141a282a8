#include "base/GapVector.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace quill {
namespace {

TEST(GapVector, HoldsWhatAVectorHoldsAfterRandomOperations) {
  std::mt19937 random(7);
  GapVector<int> gap;
  std::vector<int> plain;
  for (int step = 0; step < 20000; ++step) {
    const size_t at = random() % (plain.size() + 1);
    const int value = static_cast<int>(random());
    switch (random() % 5) {
      case 0:
        gap.PushBack(value);
        plain.push_back(value);
        break;
      case 1: {
        const std::vector<int> values(random() % 9, value);
        gap.Insert(at, values.data(), values.size());
        plain.insert(plain.begin() + at, values.begin(), values.end());
        break;
      }
      case 2:
        gap.InsertFill(at, random() % 4, value);
        plain.insert(plain.begin() + at, gap.Size() - plain.size(), value);
        break;
      default: {
        const size_t count = std::min<size_t>(random() % 6, plain.size() - at);
        gap.Erase(at, count);
        plain.erase(plain.begin() + at, plain.begin() + at + count);
      }
    }
    ASSERT_EQ(gap.Size(), plain.size());
    for (size_t i = step % 16; i < plain.size(); i += 16) ASSERT_EQ(gap[i], plain[i]) << "step " << step;
  }
  gap.Clear();
  EXPECT_EQ(gap.Size(), 0u);
}

TEST(GapVector, TakesAnElementOfItsOwn) {
  GapVector<int> gap;
  gap.PushBack(1);
  for (int i = 0; i < 1000; ++i) gap.PushBack(gap[gap.Size() - 1]);
  EXPECT_EQ(gap[1000], 1);
}

}  // namespace
}  // namespace quill
