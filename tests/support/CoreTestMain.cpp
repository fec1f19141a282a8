// The main function of the test programs that have no window.
#include <gtest/gtest.h>

#include "base/UiThread.h"

int main(int argc, char** argv) {
  quill::ClaimUiThread();
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
